#include <QSemaphore>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QThreadPool>
#include <QtTest>

#include "host_calls/call_pool.h"
#include "item_type.h"
#include "plan_item_role.h"
#include "plan_test.h"
#include "record_item.h"
#include "standard_plan_model.h"
#include "standard_view_controller.h"
#include "view_model_data_manager.h"
#include "view_model_data_manager_export.h"

using namespace TarnPlanView;
using TarnTest::CPlanFixture;
using TarnTest::CPlanTest;
using TarnTest::Outline;

namespace {

const char kWholePublic[] =
    "Plans(Public A(A1(A1 plan 2,A1 plan 10),Public A plan 2,Public A plan 10),"
    "Public B(Public B plan 2,Public B plan 10),Public root plan)";

QString Info(const char* function, const char* text) {
  return QStringLiteral("LyraClientInfo 1 [TarnPlanView::CViewModelDataManager::%1(#)] - %2").arg(function, text);
}

}  // namespace

// Start-up, the wait for the download, full and empty trees, reload and shut-down of the plan data.
class ManagerLoadingTest : public CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void init() { HostCalls::CallPool().setMaxThreadCount(threads_); }
  void NineModelsInOrder();
  void OnDemandLoadsTheTopAlone();
  void LoadAllDescendsThroughTheFirstModel();
  void LoadAllGetsLaterWhatTheHostDidNotAnswer();
  void LoadAllInsertsOnceAParentAndSharesRecords();
  void SecondLoadRepeatsTheSignalAlone();
  void HostNotReady();
  void FailedTopLevelStillInitialises();
  void WaitsForTheDownload();
  void StoppedWaitNeverLoads_data();
  void StoppedWaitNeverLoads();
  void WholeTreeEventReloads();
  void UninitDropsEverythingAndInitBringsItBack();
  void ModelsOfOnesOwnTakePart();

 private:
  CViewModelDataManager& Manager() { return CViewModelDataManager::Instance(); }
  void UseOneThread() { HostCalls::CallPool().setMaxThreadCount(1); }

  const int threads_ = HostCalls::CallPool().maxThreadCount();
};

void ManagerLoadingTest::NineModelsInOrder() {
  Open({}, false);
  for (const char* id : {"0", "1", "2", "3"}) {
    for (const ThemeNodeType theme : {PublicTheme, OwnTheme}) {
      const CStandardPlanModel* model = Manager().GetViewManagerByTheme(id, theme);
      QVERIFY(model && model->parent() == &Manager());
      QVERIFY(model->GetViewMangageParam().flag8 && !model->GetViewMangageParam().flag9);
    }
  }
  QVERIFY(Manager().GetViewManagerByTheme("system_config", OwnTheme));
  for (const auto& [id, theme] : {std::pair("system_config", PublicTheme), {"0", ReceivedTheme}, {"4", OwnTheme}}) {
    QVERIFY(!Manager().GetViewManagerByTheme(id, theme));
  }
  // A model is registered once, and of two with one name the first is found.
  CStandardPlanModel twin(ViewManagerParam(PublicTheme, "0"), nullptr);
  CStandardPlanModel* const first = Manager().GetViewManagerByTheme("0", PublicTheme);
  Manager().AddViewManagerModel(&twin);
  Manager().AddViewManagerModel(&twin);
  QCOMPARE(Manager().GetViewManagerByTheme("0", PublicTheme), first);
  Manager().RemViewManagerModel(first);
  QCOMPARE(Manager().GetViewManagerByTheme("0", PublicTheme), &twin);
  Manager().RemViewManagerModel(&twin);
  QVERIFY(!Manager().GetViewManagerByTheme("0", PublicTheme));
  Manager().RemViewManagerModel(&twin);
}

void ManagerLoadingTest::OnDemandLoadsTheTopAlone() {
  Open();
  QVERIFY(Manager().IsViewModelInitFinish());
  QVERIFY(Manager().IsViewResourceDownLoadFinish());
  for (CStandardPlanModel* model : fixture_.Models()) {
    QCOMPARE(Outline(model), QString("Plans"));
    const bool is_public = model->GetViewManagerThemeNodeType() == PublicTheme;
    QCOMPARE(model->index(0, 0).data(GroupIndexCodeRole).toString(), QString(is_public ? "-1" : "-2"));
  }
  QCOMPARE(Services().Count("GetPlanGroups"), 1);  // one answer serves all nine
  QCOMPARE(Services().Count("GetPlansInGroup"), 0);
  QCOMPARE(fixture_.Log().Lines(),
           QStringList({Info("LoadAllViewManagerModelData", "Resource DownLoad Finish View Init"),
                        Info("ClearModelData", "ClearModelData View Data"), Info("OnViewUiTreeInit", "InitRootItem")}));
  // Only the root is observed until something is listed.
  QCOMPARE(Services().ObserverCount(), 1);
  QVERIFY(Services().ObserverOf(16001, "root"));
}

void ManagerLoadingTest::LoadAllDescendsThroughTheFirstModel() {
  Open({{"load_all", 1}});
  for (CStandardPlanModel* model : fixture_.Models()) {
    // The first model shows public plans: of the other family one level comes with the load, no more.
    QCOMPARE(Outline(model), model->GetViewManagerThemeNodeType() == PublicTheme
                                 ? QString(kWholePublic)
                                 : QString("Plans(Own C,Own root plan)"));
  }
  QVERIFY(fixture_.Log().Lines().contains(Info("OnViewUiTreeInit", "Is Load All.")));
  // Though no model shows the third family, the host is asked for it.
  QStringList asked;
  for (const auto& request : Services().Requests<view_plugin_protocol::GetPlanGroupsRequest>()) {
    asked << QString::fromStdString(request.parent_index_code) + ":" + QString::number(request.node_type);
  }
  QCOMPARE(asked.front(), QString("root:0"));
  QCOMPARE(asked.mid(1, 1), QStringList("-1:0"));
  QCOMPARE(asked.mid(asked.size() - 2), QStringList({"-2:1", "-4:2"}));
  const QModelIndex a1 = fixture_.Public()->FindIndexByIndexCode(fixture_.Code("A1"), true);
  QVERIFY(a1.data(GroupLoadedRole).toBool());
  QVERIFY(!fixture_.Public()->canFetchMore(a1));
  // Registering a group's observer brings what the descent left out: own trees fill to the bottom.
  QTRY_COMPARE(Outline(fixture_.Own()), QString("Plans(Own C(C1(C1 plan 2,C1 plan 10),Own C plan 2,Own C plan 10),"
                                                "Own root plan)"));
  CPlanFixture::Drain();
  QCOMPARE(Outline(fixture_.Public()), QString(kWholePublic));
  // However deep the group: what the descent reads the host need not say.
  QMap<std::string, int> times;
  for (const auto& request : Services().Requests<view_plugin_protocol::GetPlansInGroupRequest>()) {
    times[request.group_index_code] += 1;
  }
  QCOMPARE(times[fixture_.Code("C1").toStdString()], 1);
  QCOMPARE(times[fixture_.Code("A1").toStdString()], 1);
  // A group that came from elsewhere, too.
  const std::string parent = fixture_.Code("Public A").toStdString();
  std::string made;
  QCOMPARE(fixture_.InStore().AddGroup(parent, "made", &made), QString());
  QCOMPARE(fixture_.InStore().AddGroup(made, "below"), QString());
  QCOMPARE(fixture_.InStore().AddPlan(made, "plan"), QString());
  Services().ForgetCalls();
  Services().ObserverOf(16001, parent)->OnResourceUpdate({3, parent, made, ResourceData::RT_VIEW_GROUP});
  QTRY_VERIFY(Outline(fixture_.Public()).contains("made(below,plan)"));
  CPlanFixture::Drain();
  const auto read = Services().Requests<view_plugin_protocol::GetPlansInGroupRequest>();
  QCOMPARE(std::count_if(read.begin(), read.end(), [&](const auto& one) { return one.group_index_code == made; }), 1);
}

void ManagerLoadingTest::LoadAllGetsLaterWhatTheHostDidNotAnswer() {
  Open({{"load_all", 1}});
  for (const char* call : {"GetPlanGroups", "GetPlansInGroup"}) {
    Manager().ClearAllViewModelData();
    QTRY_VERIFY(Manager().IsViewResourceDownLoadFinish());
    Manager().InitRootItem();
    Services().Fail(call);
    Manager().InsertAllChildItem("-1", PublicTheme);
    Services().Mend(call);
    QVERIFY(Outline(fixture_.Public()) != kWholePublic);
    QTRY_COMPARE(Outline(fixture_.Public()), QString(kWholePublic));
  }
}

void ManagerLoadingTest::LoadAllInsertsOnceAParentAndSharesRecords() {
  Open({{"load_all", 1}});
  CPlanFixture::Drain();
  QSet<QString> parents;
  int notices = 0;
  connect(fixture_.Public(), &QAbstractItemModel::rowsInserted, this, [&](const QModelIndex& parent) {
    parents << parent.data().toString();
    ++notices;
  });
  Manager().OnViewUiTreeInit();
  QCOMPARE(Outline(fixture_.Public()), QString(kWholePublic));
  QCOMPARE(parents, QSet<QString>({"", "Plans", "Public A", "A1", "Public B"}));
  QCOMPARE(notices, parents.size());
  // Also of a parent that has groups: what is new comes to stand in one row behind them.
  const QString a = fixture_.Code("Public A");
  fixture_.Public()->FindTargetItemByIndexCode(a, true)->removeRows(1, 2);
  QCOMPARE(fixture_.InStore().AddGroup(a.toStdString(), "made"), QString());
  notices = 0;
  Manager().InsertAllChildItem(a, PublicTheme);
  QVERIFY(Outline(fixture_.Public()).contains("made,Public A plan 2,Public A plan 10)"));
  QCOMPARE(notices, 1);
  for (const auto& [name, is_group] : {std::pair("A1", true), {"A1 plan 2", false}}) {
    const QString code = fixture_.Code(name);
    QSet<const CRowRecord*> records;
    for (CStandardPlanModel* model : fixture_.Models()) {
      if (const auto* row = dynamic_cast<const CRecordItem*>(model->FindTargetItemByIndexCode(code, is_group))) {
        records << &row->Record();
        QCOMPARE(int(row->Record().ref.loadRelaxed()), 4);  // the models of the public family
      }
    }
    QCOMPARE(records.size(), 1);
  }
}

void ManagerLoadingTest::SecondLoadRepeatsTheSignalAlone() {
  Open();
  QSignalSpy finished(&Manager(), &CViewModelDataManager::SignalDataDownloadFinished);
  const int calls = Services().Count("GetPlanGroups");
  const QPersistentModelIndex root = fixture_.Public()->index(0, 0);
  Manager().LoadAllViewManagerModelData();
  CPlanFixture::Drain();
  QCOMPARE(finished.count(), 1);
  QVERIFY(root.isValid());
  QCOMPARE(Services().Count("GetPlanGroups"), calls);
  // A load that comes about otherwise says so before the trees empty.
  int rows = -1;
  fixture_.Public()->appendRow(new QStandardItem("left over"));
  connect(&Manager(), &CViewModelDataManager::SignalDataDownloadFinished, fixture_.Public(),
          [this, &rows] { rows = fixture_.Public()->rowCount(); });
  Manager().OnViewUiTreeInit();
  QCOMPARE(rows, 2);
  QCOMPARE(Outline(fixture_.Public()), QString("Plans"));
}

void ManagerLoadingTest::HostNotReady() {
  for (const char* call : {"IsInitViewGroupFinish", "IsInitViewFinish"}) {
    Open();
    Manager().ClearAllViewModelData();
    QTRY_VERIFY(Manager().IsViewResourceDownLoadFinish());
    Services().Fail(call);
    fixture_.Log().Clear();
    QSignalSpy finished(&Manager(), &CViewModelDataManager::SignalDataDownloadFinished);
    Manager().LoadAllViewManagerModelData();
    QCOMPARE(finished.count(), 1);  // the wait page goes all the same
    QVERIFY(!Manager().IsViewModelInitFinish());
    QCOMPARE(fixture_.Public()->rowCount(), 0);
    // Both failures log the text of the groups.
    QCOMPARE(fixture_.Log().Lines().last(),
             QString("LyraClientError 3 [TarnPlanView::CViewModelDataManager::OnViewUiTreeInit(#)] [0x00000000] - "
                     "IsInitViewGroupFinish is Failed"));
    Services().Mend(call);
    Manager().LoadAllViewManagerModelData();  // counts as requested: only the signal again
    QCOMPARE(finished.count(), 2);
    QCOMPARE(fixture_.Public()->rowCount(), 0);
    Shut();
  }
}

void ManagerLoadingTest::FailedTopLevelStillInitialises() {
  Open({{"load_all", 1}}, false);
  Services().Fail("GetPlanGroups");
  fixture_.Start();
  QVERIFY(Manager().IsViewModelInitFinish());
  QCOMPARE(fixture_.Public()->rowCount(), 0);
}

void ManagerLoadingTest::WaitsForTheDownload() {
  Open({}, false);
  Services().Fail("IsViewResourceDownFinish");
  fixture_.Start();
  QSignalSpy finished(&Manager(), &CViewModelDataManager::SignalDataDownloadFinished);
  QSignalSpy down(&Manager(), &CViewModelDataManager::SignalViewResourceDownFinish);
  const int asked = Services().Count("IsViewResourceDownFinish");
  QTRY_VERIFY(Services().Count("IsViewResourceDownFinish") >= asked + 2);  // it asks again and again
  QCOMPARE(finished.count(), 0);
  Manager().LoadAllViewManagerModelData();
  QCOMPARE(finished.count(), 1);  // a second request while waiting
  Services().Mend("IsViewResourceDownFinish");
  QTRY_COMPARE(down.count(), 1);
  QCOMPARE(finished.count(), 2);
  QVERIFY(Manager().IsViewModelInitFinish());
  QCOMPARE(Outline(fixture_.Public()), QString("Plans"));
  QCOMPARE(Services().Count("GetPlanGroups"), 1);
  QVERIFY(fixture_.Log().Lines().join('\n').contains("- Resource DownLoading View Init"));

  // A load that need not wait ends the wait of the one before it.
  Services().Fail("IsViewResourceDownFinish");
  for (int load = 0; load < 2; ++load) {
    Manager().ClearAllViewModelData();
    QTRY_VERIFY(fixture_.Store().IsViewResourceDownFinish());
    if (load == 1) {
      Services().Mend("IsViewResourceDownFinish");
    }
    Manager().LoadAllViewManagerModelData();
  }
  QCOMPARE(finished.count(), 3);
  CPlanFixture::Drain();
  QCOMPARE(finished.count(), 3);
  QCOMPARE(Services().Count("GetPlanGroups"), 2);
}

void ManagerLoadingTest::StoppedWaitNeverLoads_data() {
  QTest::addColumn<QString>("end");
  for (const char* end : {"uninit", "destroyed", "application quits"}) {
    QTest::newRow(end) << end;
  }
}

void ManagerLoadingTest::StoppedWaitNeverLoads() {
  QFETCH(QString, end);
  Open({}, false);
  UseOneThread();
  Services().Fail("IsViewResourceDownFinish");
  fixture_.Start();
  QTRY_VERIFY(Services().Count("IsViewResourceDownFinish") >= 3);
  QSemaphore others_turn;  // the wait lends its thread
  HostCalls::CallPool().start([&others_turn] { others_turn.release(); });
  QVERIFY(others_turn.tryAcquire(1, 5000));
  if (end == "uninit") {
    Manager().UninitManager();
  } else if (end == "destroyed") {
    CViewModelDataManager::Release();
  } else {
    QMetaObject::invokeMethod(qApp, "aboutToQuit", Qt::DirectConnection);
  }
  QVERIFY(HostCalls::CallPool().waitForDone(5000));  // the task ends although there is no time limit
  Services().Mend("IsViewResourceDownFinish");
  CPlanFixture::Drain();
  QVERIFY(!Manager().IsViewModelInitFinish());
  QCOMPARE(Services().Count("GetPlanGroups"), 0);
}

void ManagerLoadingTest::WholeTreeEventReloads() {
  Open({{"load_all", 1}});
  CPlanFixture::Drain();
  const QString whole_own = Outline(fixture_.Own());
  QVERIFY(whole_own.contains("C1("));
  fixture_.Public()->appendRow(new QStandardItem("left over"));
  Services().ForgetCalls();
  Services().ObserverOf(16001, "root")->OnResourceUpdate({8, "root", "", ResourceData::RT_NONE});
  QTRY_VERIFY(Manager().IsViewModelInitFinish());
  QCOMPARE(Services().Count("ClearViewData"), 1);
  QCOMPARE(Outline(fixture_.Public()), QString(kWholePublic));
  QTRY_COMPARE(Outline(fixture_.Own()), whole_own);  // down to the bottom once more
  // The log-in of another user is such an event: the own plans of the first are gone.
  QVERIFY(fixture_.Store().LogIn({"viewer"}).IsDone());
  QTRY_COMPARE(Outline(fixture_.Own()), QString("Plans"));
  QTRY_COMPARE(Outline(fixture_.Public()), QString(kWholePublic));
}

void ManagerLoadingTest::UninitDropsEverythingAndInitBringsItBack() {
  Open({{"load_all", 1}});
  CPlanFixture::Drain();
  const auto models = fixture_.Models();
  QVERIFY(Services().ObserverCount() > 10);
  CStandardViewController controller(fixture_.Public());
  const QModelIndex root = fixture_.Public()->index(0, 0);
  Services().Hold("AddPlanGroup", TarnTest::CRecordingServices::AfterCall);
  Services().Hold("AddPlan", TarnTest::CRecordingServices::AfterCall);
  controller.AddPlanGroupByIndexName(root, "late");
  controller.AddPlanParam(TarnTest::NewPlan("late", fixture_.Code("A1")));
  QVERIFY(Services().WaitUntilHeld("AddPlanGroup") && Services().WaitUntilHeld("AddPlan"));
  Manager().UninitManager();
  QCOMPARE(Services().ObserverCount(), 0);
  Services().ReleaseAll();
  CPlanFixture::Drain();
  QCOMPARE(Services().ObserverCount(), 0);  // late answers are of no tree any more
  QVERIFY(!Manager().IsViewModelInitFinish());
  QVERIFY(!fixture_.Public());
  for (const CStandardPlanModel* model : models) {
    QCOMPARE(model->rowCount(), 0);  // panels may still hold it
  }
  Manager().InitManager();
  Manager().InitManager();
  QCOMPARE(fixture_.Models(), models);
  QCOMPARE(Services().ObserverCount(), 1);
  Manager().LoadAllViewManagerModelData();
  CPlanFixture::Drain();
  const QString late_too =
      QString(kWholePublic).replace("A1 plan 10", "A1 plan 10,late").replace(",Public root", ",late,Public root");
  QCOMPARE(Outline(fixture_.Public()), late_too);
}

void ManagerLoadingTest::ModelsOfOnesOwnTakePart() {
  Open();
  CStandardPlanModel received(ViewManagerParam(ReceivedTheme, "mine"), nullptr);
  Manager().AddViewManagerModel(&received);
  received.LoadPlanModel();
  QTRY_COMPARE(received.index(0, 0).data(GroupIndexCodeRole).toString(), QString("-4"));
  Manager().OnViewUiTreeInit();
  QCOMPARE(received.rowCount(), 1);
  Manager().RemViewManagerModel(&received);
  Manager().OnViewUiTreeInit();
  QCOMPARE(received.rowCount(), 1);
}

QTEST_MAIN(ManagerLoadingTest)
#include "test_manager_loading.moc"
