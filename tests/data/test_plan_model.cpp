#include <QSignalSpy>
#include <QtTest>

#include "item_type.h"
#include "method_names.h"
#include "plan_item_role.h"
#include "plan_test.h"
#include "qt/known_types.h"
#include "standard_plan_model.h"
#include "view_config_manager.h"
#include "view_group_item.h"
#include "view_plan_item.h"
#include "view_sort_filter_proxy_model.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using TarnTest::CPlanFixture;
using TarnTest::CPlanTest;
using TarnTest::GroupRecord;
using TarnTest::Outline;
using TarnTest::PlanRecord;

// One plan tree by itself: loading, look-ups, the contract of its meta-object.
class PlanModelTest : public CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void LoadsOnce_data();
  void LoadsOnce();
  void FailedLoadCountsAsLoaded_data();
  void FailedLoadCountsAsLoaded();
  void LateAnswersAddNothing();
  void RootsByTheme_data();
  void RootsByTheme();
  void PlaceholderComesFirst();
  void ForeignIndexesMapByCode();
  void MetaObjectIsAContract();
};

void PlanModelTest::LoadsOnce_data() {
  QTest::addColumn<int>("load_all");
  QTest::newRow("on the calling thread") << 1;
  QTest::newRow("on a pool thread") << 0;
}

void PlanModelTest::LoadsOnce() {
  QFETCH(int, load_all);
  Open({{"load_all", load_all}}, false);
  CStandardPlanModel model(ViewManagerParam(PublicTheme, "x"), nullptr);
  CPlanFixture::Watch(&model);
  QSignalSpy answered(&model, &CStandardPlanModel::SignalGetRootPlanGroupSucc);
  for (int life = 1; life <= 2; ++life) {
    model.LoadPlanModel();
    QCOMPARE(model.rowCount(), load_all ? 1 : 0);  // at once, or not before the event loop runs
    model.LoadPlanModel();
    QTRY_COMPARE(model.rowCount(), 1);
    CPlanFixture::Drain();
    QCOMPARE(Services().Count("GetPlanGroups"), life);
    QCOMPARE(answered.count(), load_all ? 0 : life);
    QCOMPARE(Outline(&model), QString("Plans"));
    model.UninitModelRootItem();  // only this makes it load again
    QCOMPARE(model.rowCount(), 0);
  }
  for (const auto& call : Services().Calls()) {
    QVERIFY(call.name != "GetPlanGroups" || call.on_gui_thread == bool(load_all));
  }
  QCOMPARE(Services().Requests<GetPlanGroupsRequest>().front().parent_index_code, std::string("root"));
}

void PlanModelTest::FailedLoadCountsAsLoaded_data() {
  LoadsOnce_data();
}

void PlanModelTest::FailedLoadCountsAsLoaded() {
  QFETCH(int, load_all);
  Open({{"load_all", load_all}}, false);
  Services().Fail("GetPlanGroups");
  CStandardPlanModel model(ViewManagerParam(OwnTheme, "x"), nullptr);
  QSignalSpy answered(&model, &CStandardPlanModel::SignalGetRootPlanGroupSucc);
  model.LoadPlanModel();
  CPlanFixture::Drain();
  Services().Mend("GetPlanGroups");
  model.LoadPlanModel();
  CPlanFixture::Drain();
  QCOMPARE(model.rowCount(), 0);
  QCOMPARE(Services().Count("GetPlanGroups"), 1);
  QCOMPARE(answered.count(), load_all ? 0 : 1);  // the empty answer is delivered all the same
}

void PlanModelTest::LateAnswersAddNothing() {
  Open({}, false);
  auto model = std::make_unique<CStandardPlanModel>(ViewManagerParam(PublicTheme, "x"), nullptr);
  CPlanFixture::Watch(model.get());
  Services().Hold("GetPlanGroups", TarnTest::CRecordingServices::AfterCall);
  model->LoadPlanModel();
  QVERIFY(Services().WaitUntilHeld("GetPlanGroups"));
  model->UninitModelRootItem();
  model->LoadPlanModel();
  QVERIFY(Services().WaitUntilHeld("GetPlanGroups", 2));
  Services().Release("GetPlanGroups");
  CPlanFixture::Drain();
  QCOMPARE(model->rowCount(), 1);  // the second answer alone

  Services().Hold("GetPlanGroups");
  model->UninitModelRootItem();
  model->LoadPlanModel();
  QVERIFY(Services().WaitUntilHeld("GetPlanGroups"));
  model.reset();
  Services().Release("GetPlanGroups");
  CPlanFixture::Drain();
}

void PlanModelTest::RootsByTheme_data() {
  QTest::addColumn<int>("theme");
  QTest::addColumn<int>("type");
  QTest::addColumn<QString>("code");
  QTest::newRow("public") << int(PublicTheme) << int(PublicRootItem) << "-1";
  QTest::newRow("own") << int(OwnTheme) << int(OwnRootItem) << "-2";
  QTest::newRow("received") << int(ReceivedTheme) << int(ReceivedRootItem) << "-4";
  QTest::newRow("unknown keeps the group's values") << 5 << int(PublicGroupItem) << "root code";
}

void PlanModelTest::RootsByTheme() {
  QFETCH(int, theme);
  CStandardPlanModel model(ViewManagerParam(static_cast<ThemeNodeType>(theme), "x"), nullptr);
  CPlanFixture::Watch(&model);
  GetPlanGroupsResponse response;
  response.groups = {GroupRecord("root code", "root"), GroupRecord("root code", "root")};
  model.AddRootNode(response);
  QCOMPARE(model.rowCount(), 2);  // appended without looking for duplicates
  const QModelIndex root = model.index(1, 0);
  QTEST(root.data(ItemTypeRole).toInt(), "type");
  QTEST(root.data(GroupIndexCodeRole).toString(), "code");
  QCOMPARE(root.data().toString(), QString("root"));
  QCOMPARE(root.data(IsGroupRole), QVariant(true));
  QCOMPARE(root.data(GroupLoadedRole), QVariant(false));
}

void PlanModelTest::PlaceholderComesFirst() {
  ViewManagerParam param(OwnTheme, "x");
  param.flag9 = true;
  CStandardPlanModel model(param, nullptr);
  CPlanFixture::Watch(&model);
  GetPlanGroupsResponse response;
  response.groups = {GroupRecord("r", "root")};
  model.AddRootNode(response);
  QCOMPARE(Outline(&model), QString("<Empty>,root"));
  const QStandardItem* item = model.item(0);
  QCOMPARE(item->data(ItemMarkRole), QVariant(true));
  QCOMPARE(item->data(ItemTypeRole), QVariant(-1));
  QCOMPARE(item->data(GroupIndexCodeRole), QVariant("-3"));
  QCOMPARE(item->font().family(), QString("Segoe UI Semibold"));
  QCOMPARE(item->font().pixelSize(), 13);
  QCOMPARE(item->foreground(), QBrush(QColor(51, 51, 51, 255)));
  QVERIFY(!item->isEditable());
  QCOMPARE(model.index(1, 0).data(ItemMarkRole), QVariant(false));  // the flag's other effect
}

void PlanModelTest::ForeignIndexesMapByCode() {
  CStandardPlanModel first(ViewManagerParam(PublicTheme, "0"), nullptr);
  CStandardPlanModel second(ViewManagerParam(PublicTheme, "1"), nullptr);
  QStandardItem* rows[2][2];
  int place = 0;
  for (CStandardPlanModel* model : {&first, &second}) {
    rows[place][0] = new CViewGroupItem(model->GetViewMangageParam(), GroupRecord("5", "group"));
    rows[place][1] = new CViewPlanItem(model->GetViewMangageParam(), PlanRecord("5", "plan"));
    rows[place][0]->appendRow(rows[place][1]);
    model->appendRow(rows[place][0]);
    ++place;
  }
  first.appendRow(new QStandardItem("no code"));
  CViewSortFilterProxyModel proxy(nullptr, false);
  CPlanFixture::Watch(&proxy);
  proxy.setSourceModel(&first);
  for (int kind = 0; kind < 2; ++kind) {
    QCOMPARE(second.FindItemByIndex(rows[1][kind]->index()), rows[1][kind]);
    QCOMPARE(second.FindItemByIndex(rows[0][kind]->index()), rows[1][kind]);
    QCOMPARE(second.FindItemByIndex(proxy.mapFromSource(rows[0][kind]->index())), rows[1][kind]);
  }
  QVERIFY(!second.FindItemByIndex(first.index(1, 0)));
  QVERIFY(first.FindItemByIndex(first.index(1, 0)));  // its own row needs no code
  QVERIFY(!second.FindItemByIndex(QModelIndex()));
}

void PlanModelTest::MetaObjectIsAContract() {
  // Hosts connect by number, and by name.
  QCOMPARE(TarnTest::MethodsOf(CStandardPlanModel::staticMetaObject).mid(0, 5),
           QStringList({"SignalGetRootPlanGroupSucc(lst_group)", "SignalFinshCreateRootPlan()",
                        "SignalFinshExpandPublicView()", "SignalFinshAsynchronous(index,b_expand)",
                        "SignalLoadFinishNotExpand(index)"}));
  QVERIFY(CStandardPlanModel::staticMetaObject.indexOfSlot(
              "OnAddRootPlanGroup(view_plugin_protocol::GetPlanGroupsResponse)") >= 0);
  CStandardPlanModel model(ViewManagerParam(), nullptr);
  for (const char* name : {"QList<view_plugin_protocol::PlanGroup>", "QList<view_plugin_protocol::PlanBasicInfo>",
                           "view_plugin_protocol::GetPlanGroupsResponse"}) {
    QVERIFY2(TarnQt::IsKnownType(name), name);
  }
  QSignalSpy finished(&model, &CStandardPlanModel::SignalFinshAsynchronous);
  model.FinishAddChildItems(QModelIndex());
  QCOMPARE(finished.count(), 1);
  QCOMPARE(finished.front().at(1).toBool(), true);
}

QTEST_MAIN(PlanModelTest)
#include "test_plan_model.moc"
