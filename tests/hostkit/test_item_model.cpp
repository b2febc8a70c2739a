#include <QAbstractItemModelTester>
#include <QSortFilterProxyModel>
#include <QtTest>

#include "MarUIControl/standard_item.h"
#include "MarUIControl/standard_item_model.h"

using MarUIControl::CModelKeyMapping;
using MarUIControl::CStandardItem;
using MarUIControl::CStandardItemModel;

class ItemModelTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void UnknownChildrenShowAnExpander() {
    CStandardItemModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    auto* group = new CStandardItem("group");
    group->setData(true, CModelKeyMapping::GroupMarkRole);
    model.appendRow(group);
    model.appendRow(new CStandardItem("plan"));
    const QModelIndex row = group->index();
    const auto expandable = [&](bool children, bool more) {
      return proxy.hasChildren(proxy.mapFromSource(row)) == children && model.canFetchMore(row) == more &&
             proxy.canFetchMore(proxy.mapFromSource(row)) == more;
    };
    QVERIFY(expandable(true, true));
    QVERIFY(!model.hasChildren(model.index(1, 0)));
    QVERIFY(!model.canFetchMore(QModelIndex()));

    group->appendRow(new CStandardItem("added elsewhere"));
    QVERIFY(expandable(true, true));
    QSignalSpy changed(&model, &CStandardItemModel::dataChanged);
    model.SetChildrenFetched(row, true);
    QCOMPARE(changed.size(), 1);
    QVERIFY(model.AreChildrenFetched(row));
    QVERIFY(expandable(true, false));
    group->removeRow(0);
    QVERIFY(expandable(false, false));
    model.SetChildrenFetched(row, false);
    QVERIFY(expandable(true, true));
    model.SetChildrenFetched(QModelIndex(), true);
  }

  void CheckSpreads() {
    CStandardItemModel model;
    const auto add = [](QStandardItem* parent, const QString& name, bool checkable = true) {
      auto* item = new CStandardItem(name);
      item->setCheckable(checkable);
      if (checkable) {
        item->setCheckState(Qt::Unchecked);
      }
      parent->appendRow(item);
      return item;
    };
    CStandardItem* top = add(model.invisibleRootItem(), "no check", false);
    CStandardItem* root = add(top, "root");
    CStandardItem *left = add(root, "left"), *right = add(root, "right");
    CStandardItem *leaf = add(left, "leaf"), *other = add(left, "other");
    CStandardItem* plain = add(right, "no check either", false);
    CStandardItem* deep = add(plain, "below it");

    root->setCheckState(Qt::Checked);
    for (const CStandardItem* item : {left, right, leaf, other, deep}) {
      QCOMPARE(item->checkState(), Qt::Checked);
    }
    QVERIFY(!top->data(Qt::CheckStateRole).isValid() && !plain->data(Qt::CheckStateRole).isValid());
    leaf->setCheckState(Qt::Unchecked);
    QVERIFY(left->checkState() == Qt::PartiallyChecked && root->checkState() == Qt::PartiallyChecked);
    QCOMPARE(right->checkState(), Qt::Checked);
    leaf->setCheckState(Qt::Checked);
    QVERIFY(root->checkState() == Qt::Checked && other->checkState() == Qt::Checked);

    QSignalSpy changed(&model, &CStandardItemModel::dataChanged);
    leaf->setCheckState(Qt::Checked);
    QCOMPARE(changed.size(), 0);
    model.setData(left->index(), Qt::Unchecked, Qt::CheckStateRole);
    QVERIFY(leaf->checkState() == Qt::Unchecked && root->checkState() == Qt::PartiallyChecked);
  }
};

QTEST_MAIN(ItemModelTest)
#include "test_item_model.moc"
