#pragma once

#include <QMimeData>
#include <QStandardItemModel>
#include <memory>

#include "TarnUIDataController/popup_menu.h"
#include "plan_item_role.h"
#include "plan_test.h"
#include "plan_view_tree.h"
#include "standard_plan_model.h"
#include "standard_view_controller.h"
#include "view_sort_filter_proxy_model.h"

namespace TarnTest {

/// The plan tree alone over the public plans, wired as the panel does it.
class CTreeStage {
 public:
  explicit CTreeStage(CPlanFixture& fixture)
      : proxy(nullptr, false), controller(new TarnPlanView::CStandardViewController(fixture.Public())), tree(nullptr) {
    TarnPlanView::CStandardPlanModel* model = fixture.Public();
    fixture.Messages().Expect("This plugin does not support");  // pop-ups without a display
    controller->setParent(nullptr);
    proxy.setSourceModel(model);
    tree.SetFilterSortModel(&proxy);
    tree.SetShowRightHoverDelgete();
    tree.ExpandWhenLoaded(QStringLiteral("-1"));
    using TarnPlanView::CPlanViewTree;
    using TarnPlanView::CStandardViewController;
    QObject::connect(&tree, &CPlanViewTree::AsynchronousExpand, controller.get(),
                     &CStandardViewController::OnExpandViewTreeItem);
    QObject::connect(controller.get(), &CStandardViewController::SignalFinishAnsyGetSubItem, &tree,
                     &CPlanViewTree::OnFinishAnsyFilterExpandedTree);
    QObject::connect(model, &TarnPlanView::CStandardPlanModel::SignalFinshAsynchronous, &tree,
                     &CPlanViewTree::OnFinishAnsySourceExpandedTree);
    tree.resize(320, 500);
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));
    QTRY_VERIFY(tree.isExpanded(Root()));
  }

  /// Invalid when no such row is loaded.
  QModelIndex Row(const QString& name, const QModelIndex& below = QModelIndex()) const {
    for (int row = 0; row < proxy.rowCount(below); ++row) {
      const QModelIndex child = proxy.index(row, 0, below);
      const QModelIndex found = child.data().toString() == name ? child : Row(name, child);
      if (found.isValid()) {
        return found;
      }
    }
    return QModelIndex();
  }
  /// A row of any type below none, as the model itself would not make it.
  QPersistentModelIndex Add(const QString& name, int type) {
    auto* item = new QStandardItem(name);
    item->setData(type, TarnPlanView::ItemTypeRole);
    static_cast<QStandardItemModel*>(proxy.sourceModel())->appendRow(item);
    return Row(name);
  }
  void Remove(const QModelIndex& row) { proxy.removeRow(row.row(), row.parent()); }
  QModelIndex Root() const { return proxy.index(0, 0); }
  QPoint Middle(const QModelIndex& row) const { return tree.visualRect(row).center(); }
  QPoint MoreButton(const QModelIndex& row) const {
    const QRect rect = tree.visualRect(row);
    return {rect.right() - 12, rect.center().y()};
  }
  void Press(const QModelIndex& row, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mousePress(tree.viewport(), button, Qt::NoModifier, Middle(row));
  }
  void Release(const QModelIndex& row) {
    QTest::mouseRelease(tree.viewport(), Qt::LeftButton, Qt::NoModifier, Middle(row));
  }

  TarnPlanView::CViewSortFilterProxyModel proxy;
  std::unique_ptr<TarnPlanView::CStandardViewController> controller;
  TarnPlanView::CPlanViewTree tree;
};

}  // namespace TarnTest
