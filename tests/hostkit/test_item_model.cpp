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
  void UnknownChildrenShowAnExpander();
  void CheckSpreads();
  void CheckLeavesPlainRowsAlone();
};

void ItemModelTest::UnknownChildrenShowAnExpander() {
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

void ItemModelTest::CheckSpreads() {
  CStandardItemModel model;
  QList<CStandardItem*> all;
  const auto add = [&all](QStandardItem* parent, const QString& name) {
    all << new CStandardItem(name);
    all.last()->setCheckable(true);
    all.last()->setCheckState(Qt::Unchecked);
    parent->appendRow(all.last());
    return all.last();
  };
  CStandardItem* root = add(model.invisibleRootItem(), "root");
  CStandardItem* left = add(root, "left");
  CStandardItem* right = add(root, "right");
  CStandardItem* leaf = add(left, "leaf");
  CStandardItem* other = add(left, "other");

  root->setCheckState(Qt::Checked);
  for (const CStandardItem* item : qAsConst(all)) {
    QCOMPARE(item->checkState(), Qt::Checked);
  }
  leaf->setCheckState(Qt::Unchecked);
  QCOMPARE(left->checkState(), Qt::PartiallyChecked);
  QCOMPARE(root->checkState(), Qt::PartiallyChecked);
  QCOMPARE(right->checkState(), Qt::Checked);
  leaf->setCheckState(Qt::Checked);
  QCOMPARE(root->checkState(), Qt::Checked);
  QCOMPARE(other->checkState(), Qt::Checked);

  QSignalSpy changed(&model, &CStandardItemModel::dataChanged);
  leaf->setCheckState(Qt::Checked);
  QCOMPARE(changed.size(), 0);
  model.setData(left->index(), Qt::Unchecked, Qt::CheckStateRole);
  QCOMPARE(leaf->checkState(), Qt::Unchecked);
  QCOMPARE(root->checkState(), Qt::PartiallyChecked);
}

void ItemModelTest::CheckLeavesPlainRowsAlone() {
  CStandardItemModel model;
  auto* root = new CStandardItem("no check");
  auto* middle = new CStandardItem("check");
  middle->setCheckable(true);
  auto* plain = new CStandardItem("no check either");
  auto* deep = new CStandardItem("check below");
  deep->setCheckable(true);
  model.appendRow(root);
  root->appendRow(middle);
  middle->appendRow(plain);
  plain->appendRow(deep);
  middle->setCheckState(Qt::Checked);
  QVERIFY(!root->data(Qt::CheckStateRole).isValid());
  QVERIFY(!plain->data(Qt::CheckStateRole).isValid());
  QCOMPARE(deep->checkState(), Qt::Checked);
}

QTEST_MAIN(ItemModelTest)
#include "test_item_model.moc"
