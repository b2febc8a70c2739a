#include <QSignalSpy>
#include <QStandardItemModel>
#include <QStringListModel>
#include <QtTest>
#include <algorithm>
#include <random>
#include <vector>

#include "item_type.h"
#include "level_places.h"
#include "plan_item_role.h"
#include "plan_rows.h"
#include "plan_rules/row_order.h"
#include "plan_test.h"
#include "view_group_item.h"
#include "view_plan_item.h"
#include "view_sort_filter_proxy_model.h"
#include "view_sort_filter_proxy_model_export.h"

using namespace TarnPlanView;
using TarnTest::CPlanFixture;
using TarnTest::CPlanTest;
using TarnTest::Outline;

namespace {

QStandardItem* Row(const QString& name, const QVariant& type) {
  auto* item = new QStandardItem;
  if (!name.isNull()) {
    item->setText(name);
  }
  item->setData(type, ItemTypeRole);
  return item;
}

}  // namespace

class ProxyTest : public CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void SortsByTypeThenName();
  void FilterByTypeRightAndMode_data();
  void FilterByTypeRightAndMode();
  void SettersDoNotRefilter();
  void ExpandersNeedNoSorting();
  void ComparesRowsAsTheyAre();
  void TreesOfTheSameRecordsShareAnOrder();
  void HandleOwnsTheRealProxy();
};

namespace {

class CountingProxy : public CViewSortFilterProxyModel {
 public:
  using CViewSortFilterProxyModel::CViewSortFilterProxyModel;
  bool lessThan(const QModelIndex& left, const QModelIndex& right) const override {
    ++comparisons;
    return CViewSortFilterProxyModel::lessThan(left, right);
  }
  mutable int comparisons = 0;
};

}  // namespace

// A view asks every row whether it has children; the last of them may go before anybody has seen them.
void ProxyTest::ExpandersNeedNoSorting() {
  QStandardItemModel source;
  auto* group = new QStandardItem("group");
  source.appendRow(group);
  CountingProxy proxy(nullptr, false);
  proxy.setSourceModel(&source);
  const QPersistentModelIndex row = proxy.index(0, 0);
  group->appendRows({new QStandardItem("b"), new QStandardItem("a")});
  QSortFilterProxyModel* unseen = &proxy;
  unseen->invalidate();
  proxy.comparisons = 0;
  QVERIFY(unseen->hasChildren(row));
  QCOMPARE(proxy.comparisons, 0);
  QSignalSpy removed(&proxy, &QAbstractItemModel::rowsRemoved);
  group->removeRows(0, 2);
  QCOMPARE(removed.size(), 1);
  QVERIFY(!proxy.hasChildren(row));
}

void ProxyTest::SortsByTypeThenName() {
  QStandardItemModel source;
  for (const auto& [name, type] : {std::pair("Plan 10", PublicPlanItem),
                                   {"zz", PublicGroupItem},
                                   {"plan 2", PublicPlanItem},
                                   {"Own", OwnRootItem},
                                   {"Root", PublicRootItem},
                                   {"Plan 2", PublicPlanItem},
                                   {"<Empty>", PlaceholderItem}}) {
    source.appendRow(Row(name, type));
  }
  CViewSortFilterProxyModel proxy(nullptr, false);
  CPlanFixture::Watch(&proxy);
  proxy.setSourceModel(&source);
  // Numbers by value, names without regard to case: "plan 2" and "Plan 2" stand together before "Plan 10".
  QString outline = Outline(&proxy);
  QCOMPARE(outline.replace("Plan 2,plan 2", "plan 2,Plan 2"), QString("<Empty>,Root,zz,plan 2,Plan 2,Plan 10,Own"));
  source.item(0)->setText("Plan 1");
  QCOMPARE(proxy.index(3, 0).data().toString(), QString("Plan 1"));  // a renamed row moves
  QVERIFY(!proxy.lessThan(QModelIndex(), source.index(0, 0)));
  QVERIFY(!proxy.lessThan(source.index(0, 0), QModelIndex()));
  source.item(1)->setData(QVariant(), ItemTypeRole);
  QCOMPARE(proxy.GetIndexType(source.index(0, 0), source.index(1, 0)), qMakePair(int(PublicPlanItem), -1));
  // Rows without a text come first; of two of them the left one counts as smaller.
  source.appendRow(Row(QString(), PublicPlanItem));
  source.appendRow(Row(QString(), PublicPlanItem));
  QVERIFY(proxy.lessThan(source.index(7, 0), source.index(0, 0)));
  QVERIFY(!proxy.lessThan(source.index(0, 0), source.index(7, 0)));
  QVERIFY(proxy.lessThan(source.index(7, 0), source.index(8, 0)));
  QVERIFY(proxy.lessThan(source.index(8, 0), source.index(7, 0)));
}

// What it has read of a row for one comparison must not outlive a change of that row, or of the rows above it.
void ProxyTest::ComparesRowsAsTheyAre() {
  CStandardPlanModel source(ViewManagerParam(PublicTheme, "0"), nullptr);
  CViewSortFilterProxyModel proxy(nullptr, false);
  proxy.setSourceModel(&source);
  std::mt19937 random(11);
  const auto name_of = [&random](int number) {
    return QString(random() % 2 ? "%1 %2" : "North building, west hall, camera %1 %2").arg(random() % 10).arg(number);
  };
  const auto many = [&] {
    QList<QStandardItem*> rows;
    for (int number = 0; number < 40; ++number) {
      view_plugin_protocol::PlanBasicInfo plan;
      plan.name = name_of(1000 + number).toStdString();
      rows << new CViewPlanItem({}, plan);
    }
    return rows;
  };
  for (int step = 0; step < 300; ++step) {
    const QString name = name_of(step);
    const int type = PublicGroupItem + static_cast<int>(random() % 2);
    const int row = static_cast<int>(random() % (source.rowCount() + 1));
    QStandardItem* item = source.item(row);
    switch (random() % 6) {
      case 0:
        source.insertRow(row, Row(name, type));
        break;
      case 1:  // so many that the level is read for the sort
        source.invisibleRootItem()->insertRows(row, many());
        break;
      case 2:
        source.removeRows(0, source.rowCount() > 6 ? row : 0);
        break;
      case 3:
        source.sort(0, random() % 2 ? Qt::AscendingOrder : Qt::DescendingOrder);
        break;
      case 4:
        item ? item->setText(name) : source.clear();
        break;
      default:
        source.setData(source.index(row, 0), type, ItemTypeRole);
        break;
    }
    CViewSortFilterProxyModel fresh(nullptr, false);
    fresh.setSourceModel(&source);
    QCOMPARE(Outline(&proxy), Outline(&fresh));
    for (int next = 1; next < proxy.rowCount(); ++next) {
      const QModelIndex before = proxy.index(next - 1, 0), after = proxy.index(next, 0);
      QVERIFY(!view_plugin_protocol::StandsBefore(after.data(ItemTypeRole).toInt(), after.data().toString(),
                                                  before.data(ItemTypeRole).toInt(), before.data().toString()));
    }
  }

  QStringListModel other({"b", "a"});
  QVERIFY(!proxy.lessThan(other.index(0, 0), other.index(1, 0)));
  proxy.setSourceModel(&other);
  QCOMPARE(Outline(&proxy), QString("a,b"));
  other.setStringList({"a", "b"});
  QCOMPARE(Outline(&proxy), QString("a,b"));
  QVERIFY(other.moveRows({}, 0, 1, {}, 2));
  QCOMPARE(Outline(&proxy), QString("a,b"));
  other.setStringList({"b", "a", "c"});
  QVERIFY(!proxy.lessThan(other.index(0), other.index(1)));
  other.removeRow(0);  // leads to no comparison by itself
  QVERIFY(proxy.lessThan(other.index(0), other.index(1)));
}

namespace {

ChildRecords ManyRecords() {
  std::mt19937 random(5);
  QList<view_plugin_protocol::PlanGroup> groups;
  QList<view_plugin_protocol::PlanBasicInfo> plans;
  for (int number = 0; number < 400; ++number) {
    const std::string name = (random() % 2 ? "Hall " : "hall ") + std::to_string(random() % 150);  // some alike
    if (random() % 8 == 0) {
      groups.append({name, "-1", std::to_string(1000 + number), 0});
    } else {
      view_plugin_protocol::PlanBasicInfo plan;
      plan.index_code = std::to_string(1000 + number);
      plan.name = name;
      plans.append(plan);
    }
  }
  return ChildRecords::Of(groups, plans);
}

void AppendRowsOf(const ChildRecords& records, QStandardItem* level) {
  QList<QStandardItem*> rows;
  for (const CRowRecord::Ptr& group : records.of_groups) {
    rows << new CViewGroupItem({}, group);
  }
  for (const CRowRecord::Ptr& plan : records.of_plans) {
    rows << new CViewPlanItem({}, plan);
  }
  level->appendRows(rows);
}

// Codes as they should stand, by the rule alone.
QStringList Ordered(const CStandardPlanModel& source) {
  std::vector<QModelIndex> rows;
  for (int row = 0; row < source.rowCount(); ++row) {
    rows.push_back(source.index(row, 0));
  }
  std::stable_sort(rows.begin(), rows.end(), [](const QModelIndex& left, const QModelIndex& right) {
    return view_plugin_protocol::StandsBefore(left.data(ItemTypeRole).toInt(), left.data().toString(),
                                              right.data(ItemTypeRole).toInt(), right.data().toString());
  });
  QStringList codes;
  for (const QModelIndex& row : rows) {
    codes << CodeOfRow(row);
  }
  return codes;
}

QStringList Shown(const CViewSortFilterProxyModel& proxy) {
  QStringList codes;
  for (int row = 0; row < proxy.rowCount(); ++row) {
    codes << CodeOfRow(proxy.index(row, 0));
  }
  return codes;
}

}  // namespace

// Which must not reach a tree where a row has a name of its own by then, nor keep records that no tree has any more.
void ProxyTest::TreesOfTheSameRecordsShareAnOrder() {
  for (const bool is_placed_before : {true, false}) {
    ChildRecords records = ManyRecords();
    if (is_placed_before) {
      records.PlaceAll();
      CLevelPlaces::Share(records.places);
    }
    const ViewManagerParam param(PublicTheme, "0");
    CStandardPlanModel first(param, nullptr), second(param, nullptr), renamed(param, nullptr);
    for (CStandardPlanModel* source : {&first, &second, &renamed}) {
      AppendRowsOf(records, source->invisibleRootItem());
    }
    renamed.item(0)->setText("Hall 77");
    QCOMPARE(CLevelPlaces::Known(first.invisibleRootItem()) != nullptr, is_placed_before);
    CViewSortFilterProxyModel of_first(nullptr, false), of_second(nullptr, false), of_renamed(nullptr, false);
    of_renamed.setSourceModel(&renamed);
    of_first.setSourceModel(&first);
    of_second.setSourceModel(&second);
    QCOMPARE(Shown(of_renamed), Ordered(renamed));
    QCOMPARE(Shown(of_first), Ordered(first));
    QVERIFY(CLevelPlaces::Known(second.invisibleRootItem()));
    QVERIFY(!CLevelPlaces::Known(renamed.invisibleRootItem()));
    QCOMPARE(Shown(of_second), Ordered(second));
    second.item(second.rowCount() - 1)->setText("Hall 0");
    QCOMPARE(Shown(of_second), Ordered(second));
    second.removeRow(3);
    of_second.invalidate();
    QCOMPARE(Shown(of_second), Ordered(second));
    QVERIFY(Shown(of_second) != Shown(of_first));
    records = {};
    QTRY_VERIFY(!CLevelPlaces::Known(first.invisibleRootItem()));
  }
}

void ProxyTest::FilterByTypeRightAndMode_data() {
  QTest::addColumn<QString>("user");
  QTest::addColumn<bool>("add");
  QTest::addColumn<bool>("theme2");
  QTest::addColumn<int>("right");
  QTest::addColumn<QList<int>>("shown");
  const QList<int> own{OwnRootItem, OwnGroupItem};
  const QList<int> all = QList<int>{PublicRootItem, PublicGroupItem} + own;
  const QList<int> received{ReceivedRootItem, ReceivedGroupItem};
  QTest::newRow("may, adding") << "operator" << true << false << 5 << all;
  QTest::newRow("may, editing") << "operator" << false << true << 6 << all + received;
  QTest::newRow("may add only, adding") << "adder" << true << false << 5 << all;
  QTest::newRow("may add only, editing") << "adder" << false << false << 6 << own;
  QTest::newRow("may nothing, adding") << "viewer" << true << true << 5 << own + received;
}

void ProxyTest::FilterByTypeRightAndMode() {
  QFETCH(QString, user);
  QFETCH(bool, add);
  QFETCH(bool, theme2);
  QFETCH(int, right);
  QFETCH(QList<int>, shown);
  TarnTest::PlanFixtureOptions options;
  options.user = user;
  options.site = [] {
    TarnHost::PlanSite site = TarnTest::SmallSite();
    site.users.push_back({"adder", {5}});
    return site;
  };
  QString error;
  QVERIFY2(fixture_.Open(options, &error), qPrintable(error));
  QStandardItemModel source;
  for (int type = -1; type <= 14; ++type) {
    source.appendRow(Row("row", type));
  }
  source.appendRow(Row("row", QVariant()));
  CViewSortFilterProxyModel proxy(nullptr, true, theme2);
  CPlanFixture::Watch(&proxy);
  proxy.SetAddOrEdit(!add);
  proxy.SetAddOrEdit(add);
  Services().ForgetCalls();
  proxy.setSourceModel(&source);
  QList<int> types;
  for (int row = 0; row < proxy.rowCount(); ++row) {
    types << proxy.index(row, 0).data(ItemTypeRole).toInt();
  }
  QCOMPARE(types, shown);
  // Asked for every row of family 0, for none else, and for nothing but the mode's right.
  const std::vector<int> asked = Services().Requests<int>();
  QVERIFY(!asked.empty() && asked.size() % 2 == 0);
  QCOMPARE(std::count(asked.begin(), asked.end(), right), std::ptrdiff_t(asked.size()));
}

void ProxyTest::SettersDoNotRefilter() {
  Open({}, false);
  QStandardItemModel source;
  source.appendRow(Row("plan", PublicPlanItem));
  source.appendRow(Row("own", OwnRootItem));
  source.appendRow(Row("public", PublicRootItem));
  source.item(1)->appendRow(Row("own group", OwnGroupItem));
  source.item(2)->appendRow(Row("own group", OwnGroupItem));
  CViewSortFilterProxyModel proxy(nullptr, false);
  proxy.setSourceModel(&source);
  proxy.SetFilterEnabled(true);
  proxy.SetAddOrEdit(true);
  QCOMPARE(proxy.rowCount(), 3);
  QCOMPARE(Services().Count("CheckControlPermission"), 0);
  Services().Fail("CheckControlPermission");
  proxy.invalidate();
  QCOMPARE(Outline(&proxy), QString("own(own group)"));  // a hidden row hides what is below it
}

void ProxyTest::HandleOwnsTheRealProxy() {
  Open({}, false);
  QStandardItemModel source;
  source.appendRow(Row("plan", PublicPlanItem));
  source.appendRow(Row("group", OwnGroupItem));
  QObject owner;
  auto* handle = new CViewSortFilterProxyModelExport(&owner, true);
  QCOMPARE(handle->parent(), &owner);
  const QPointer<QSortFilterProxyModel> inner = handle->GetQSortFilterModel();
  QVERIFY(qobject_cast<CViewSortFilterProxyModel*>(inner));
  QCOMPARE(inner->parent(), handle);
  handle->SetQSortFilterModel(&source);
  QCOMPARE(Outline(inner), QString("group"));
  QVERIFY(!handle->sourceModel());  // the handle itself stays unused
  handle->SetFilterEnabled(false);
  handle->SetAddOrEdit(true);
  inner->invalidate();
  QCOMPARE(Outline(inner), QString("plan,group"));
  delete handle;
  QVERIFY(!inner);
}

QTEST_MAIN(ProxyTest)
#include "test_proxy.moc"
