#include <QScopeGuard>
#include <QThreadPool>
#include <QtTest>

#include "controller_log.h"
#include "plan_item_role.h"
#include "plan_test.h"
#include "standard_plan_model.h"
#include "view_model_data_manager.h"
#include "view_sort_filter_proxy_model.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using TarnTest::CPlanFixture;
using TarnTest::CPlanTest;
using TarnTest::CRecordingServices;
using TarnTest::Outline;

// Rows move and vanish, trees reload and controllers die while the host still works on a request.
class StaleAnswersTest : public CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void init();
  void cleanup();
  void RowMovedMeanwhile();
  void RowRemovedMeanwhile_data();
  void RowRemovedMeanwhile();
  void DeletedPlanDoesNotSurviveAReload();
  void GroupDeletedWhileItLoads();
  void PlanDeletedWhileItsGroupLoads();
  void PlanMovedAndRenamedWhileItsGroupLoads();
  void ReloadedRowTakesAdditions();
  void AnswerOfAnotherUser();
  void IndexesOfAProxy();
  void ControllerDies_data();
  void ControllerDies();
  void ASlotEndsTheController();
  void ManySlowRequestsInAnyOrder();
  void ChangesOfOneRowKeepTheirOrder();
  void OwnAnswerAfterANewerNotice();
  void ChangesUnderEveryRootOutlastANotice_data();
  void ChangesUnderEveryRootOutlastANotice();
  void AChangeThatWaitedIsNotTheNextUsers_data();
  void AChangeThatWaitedIsNotTheNextUsers();

 private:
  QModelIndex Group(const QString& name) { return fixture_.Public()->FindIndexByIndexCode(fixture_.Code(name), true); }
  QModelIndex Plan(const QString& name) { return fixture_.Public()->FindIndexByIndexCode(fixture_.Code(name), false); }
  /// Other requests may be held meanwhile.
  void Expand(const QString& name) {
    const QPersistentModelIndex row(name.isEmpty() ? fixture_.Public()->index(0, 0) : Group(name));
    controller_->OnExpandViewTreeItem(row);
    QTRY_VERIFY(fixture_.Public()->AreChildrenFetched(row));
  }

  std::unique_ptr<CStandardViewController> controller_;
  std::unique_ptr<CControllerLog> log_;
};

void StaleAnswersTest::init() {
  Open();
  controller_ = std::make_unique<CStandardViewController>(fixture_.Public());
  Expand({});
  Expand("Public A");
  log_ = std::make_unique<CControllerLog>(controller_.get());
}

void StaleAnswersTest::cleanup() {
  Services().ReleaseAll();
  CPlanFixture::Drain();
  log_.reset();
  controller_.reset();
  Shut();
}

void StaleAnswersTest::RowMovedMeanwhile() {
  Services().Hold("UpdatePlanGroup");
  controller_->UpdatePlanGroupName(Group("Public B"), "renamed");
  QVERIFY(Services().WaitUntilHeld("UpdatePlanGroup"));
  // "Public B" goes to another place and another row takes its old one.
  QStandardItem* root = fixture_.Public()->item(0);
  root->insertRow(0, root->takeRow(1));
  Services().Release("UpdatePlanGroup");
  CPlanFixture::Drain();
  QCOMPARE(Outline(fixture_.Public()), QString("Plans(renamed,Public A(A1,Public A plan 2,Public A plan 10))"));
}

void StaleAnswersTest::RowRemovedMeanwhile_data() {
  QTest::addColumn<QString>("call");
  for (const char* call : {"UpdatePlanGroup", "DeletePlanGroup", "AddPlanGroup", "GetPlansInGroup"}) {
    QTest::newRow(call) << call;
  }
}

void StaleAnswersTest::RowRemovedMeanwhile() {
  QFETCH(QString, call);
  Services().Hold(call);
  if (call == "UpdatePlanGroup") {
    controller_->UpdatePlanGroupName(Group("Public B"), "x");
  } else if (call == "DeletePlanGroup") {
    controller_->DeletePlanGroupByIndex(Group("Public B"));
  } else if (call == "AddPlanGroup") {
    controller_->AddPlanGroupByIndexName(Group("Public B"), "x");
  } else {
    controller_->OnExpandViewTreeItem(Group("Public B"));
  }
  QVERIFY(Services().WaitUntilHeld(call));
  log_->Take();
  CViewModelDataManager::Instance().OnViewGroupChildRemoved(fixture_.Code("Public B"), ResourceData::RT_VIEW_GROUP);
  Services().Release(call);
  CPlanFixture::Drain();
  QCOMPARE(Outline(fixture_.Public()), QString("Plans(Public A(A1,Public A plan 2,Public A plan 10))"));
  const QMap<QString, QString> said = {{"UpdatePlanGroup", "renamed - x"},
                                       {"DeletePlanGroup", "group deleted -"},
                                       {"AddPlanGroup", "group added - x 0"},
                                       {"GetPlansInGroup", "list - 0 2"}};
  QCOMPARE(log_->lines.value(0), said[call]);
}

void StaleAnswersTest::DeletedPlanDoesNotSurviveAReload() {
  const QString code = fixture_.Code("Public A plan 2");
  Services().Hold("DeletePlan");
  controller_->DeletePlanByIndex(Plan("Public A plan 2"));
  QVERIFY(Services().WaitUntilHeld("DeletePlan"));
  CViewModelDataManager::Instance().OnUpdateViewModelData();
  QTRY_COMPARE(Outline(fixture_.Public()), QString("Plans"));
  Expand({});
  Expand("Public A");
  QVERIFY(Plan("Public A plan 2").isValid());  // the host still has it
  Services().Release("DeletePlan");
  CPlanFixture::Drain();
  for (CStandardPlanModel* model : fixture_.Models()) {
    QVERIFY(!model->FindItemByIndexCode(code, false));
  }
}

void StaleAnswersTest::GroupDeletedWhileItLoads() {
  Services().Hold("GetPlansInGroup", CRecordingServices::AfterCall);
  controller_->OnExpandViewTreeItem(Group("Public B"));
  QVERIFY(Services().WaitUntilHeld("GetPlansInGroup"));
  controller_->DeletePlanGroupByIndex(Group("Public B"));
  QTRY_VERIFY(log_->lines.contains("tip 0 DeleteTheSuccess"));
  Services().Release("GetPlansInGroup");
  CPlanFixture::Drain();
  QCOMPARE(Outline(fixture_.Public()), QString("Plans(Public A(A1,Public A plan 2,Public A plan 10))"));
}

void StaleAnswersTest::PlanDeletedWhileItsGroupLoads() {
  Services().Hold("GetPlansInGroup", CRecordingServices::AfterCall);
  controller_->OnExpandViewTreeItem(Group("Public B"));
  QVERIFY(Services().WaitUntilHeld("GetPlansInGroup"));
  // Another panel, which has the group open, deletes one of its plans; then the older answer comes.
  CViewModelDataManager::Instance().InsertSubPlanNode(fixture_.Code("Public B"), 0);
  controller_->DeletePlanByIndex(Plan("Public B plan 2"));
  QTRY_VERIFY(log_->lines.contains("tip 0 DeleteTheSuccess"));
  Services().Release("GetPlansInGroup");
  CPlanFixture::Drain();
  QCOMPARE(Outline(fixture_.Public()), QString("Plans(Public A(A1,Public A plan 2,Public A plan 10),"
                                               "Public B(Public B plan 10))"));
}

void StaleAnswersTest::PlanMovedAndRenamedWhileItsGroupLoads() {
  Services().Hold("GetPlansInGroup", CRecordingServices::AfterCall);
  controller_->OnExpandViewTreeItem(Group("Public B"));
  QVERIFY(Services().WaitUntilHeld("GetPlansInGroup"));
  UpdatePlanRequest move;
  move.plan_index_code = fixture_.Code("Public B plan 2").toStdString();
  move.plan_name = "moved";
  move.parent_index_code = fixture_.Code("A1").toStdString();  // not loaded: no row anywhere
  UpdatePlanRequest rename = move;
  rename.plan_index_code = fixture_.Code("Public B plan 10").toStdString();
  rename.plan_name = "renamed";
  rename.parent_index_code = fixture_.Code("Public B").toStdString();
  controller_->UpdatePlanParam(move, "");
  controller_->UpdatePlanParam(rename, "");
  QTRY_COMPARE(log_->lines.count("tip 0 SaveSuccessfulYCFI2BGO"), 2);
  Services().Release("GetPlansInGroup");
  CPlanFixture::Drain();
  QCOMPARE(Outline(fixture_.Public()), QString("Plans(Public A(A1,Public A plan 2,Public A plan 10),"
                                               "Public B(renamed))"));
}

void StaleAnswersTest::ReloadedRowTakesAdditions() {
  Services().Hold("GetPlanGroups", CRecordingServices::AfterCall);
  controller_->OnExpandViewTreeItem(fixture_.Public()->index(0, 0));
  QVERIFY(Services().WaitUntilHeld("GetPlanGroups"));
  CViewModelDataManager::Instance().OnUpdateViewModelData();
  QTRY_COMPARE(Outline(fixture_.Public()), QString("Plans"));
  Services().Release("GetPlanGroups");
  CPlanFixture::Drain();
  QCOMPARE(Outline(fixture_.Public()), QString("Plans(Public A,Public B)"));
  // The new root shows its children, so what is added to it must show, too.
  controller_->AddPlanGroupByIndexName(fixture_.Public()->index(0, 0), "added");
  CPlanFixture::Drain();
  QCOMPARE(Outline(fixture_.Public()), QString("Plans(Public A,Public B,added)"));
}

void StaleAnswersTest::AnswerOfAnotherUser() {
  CStandardViewController own(fixture_.Own());
  Services().Hold("GetPlanGroups", CRecordingServices::AfterCall);
  own.OnExpandViewTreeItem(fixture_.Own()->index(0, 0));
  QVERIFY(Services().WaitUntilHeld("GetPlanGroups"));
  const QPersistentModelIndex old_root(fixture_.Own()->index(0, 0));
  QString error;
  QVERIFY(fixture_.Store().LogIn("viewer", &error));
  QTRY_VERIFY(!old_root.isValid());  // the tree was loaded anew, and its root has the same code
  QTRY_COMPARE(Outline(fixture_.Own()), QString("Plans"));
  Services().Release("GetPlanGroups");
  CPlanFixture::Drain();
  QCOMPARE(Outline(fixture_.Own()), QString("Plans"));
}

void StaleAnswersTest::IndexesOfAProxy() {
  CViewSortFilterProxyModel proxy(nullptr, false);
  CPlanFixture::Watch(&proxy);
  proxy.setSourceModel(fixture_.Public());
  Services().Hold("GetPlansInGroup");
  controller_->OnExpandViewTreeItem(proxy.mapFromSource(Group("Public B")));
  QVERIFY(Services().WaitUntilHeld("GetPlansInGroup"));
  proxy.invalidate();
  CViewModelDataManager::Instance().OnUpdateViewModelData();
  QTRY_COMPARE(Outline(fixture_.Public()), QString("Plans"));
  Services().Hold("GetPlanGroups");
  log_->Take();
  controller_->OnExpandViewTreeItem(proxy.index(0, 0));
  Services().ReleaseAll();
  CPlanFixture::Drain();
  QVERIFY(log_->lines.contains("list Plans 2 0"));
  QVERIFY(log_->lines.contains("list - 0 2") || log_->lines.contains("list Public B 0 2"));
  QVERIFY(Outline(&proxy).startsWith("Plans(Public A"));
}

void StaleAnswersTest::ASlotEndsTheController() {
  log_.reset();
  connect(controller_.get(), &CStandardViewController::SignalDeletePlanSucc, this, [this] { controller_.reset(); });
  controller_->DeletePlanByIndex(Plan("Public A plan 2"));
  QTRY_VERIFY(!controller_);
  QVERIFY(!Plan("Public A plan 2").isValid());
  controller_ = std::make_unique<CStandardViewController>(fixture_.Public());
  Services().Fail("GetPlanGroups", "no");
  connect(controller_.get(), &CStandardViewController::SignalFinishAnsyGetSubItem, this,
          [this] { controller_.reset(); });
  controller_->OnExpandViewTreeItem(Group("Public B"));
  QTRY_VERIFY(!controller_);
}

void StaleAnswersTest::ControllerDies_data() {
  QTest::addColumn<bool>("with_model");
  QTest::newRow("alone") << false;
  QTest::newRow("with its model") << true;
}

void StaleAnswersTest::ControllerDies() {
  QFETCH(bool, with_model);
  auto model = std::make_unique<CStandardPlanModel>(ViewManagerParam(PublicTheme, "x"), nullptr);
  CViewModelDataManager::Instance().AddViewManagerModel(model.get());
  auto* controller = new CStandardViewController(model.get());
  const QPointer<CStandardViewController> alive = controller;
  const QString before = Outline(fixture_.Public());
  for (const char* call : {"AddPlanGroup", "GetPlansInGroup", "GetPlanDetail"}) {
    Services().Hold(call);
  }
  controller->AddPlanGroupByIndexName(Group("Public A"), "orphan");
  controller->OnExpandViewTreeItem(Group("Public B"));
  controller->PlayPlanViewByIndexCode(fixture_.Code("Public A plan 2").toStdString());
  QVERIFY(Services().WaitUntilHeld("AddPlanGroup"));
  if (with_model) {
    CViewModelDataManager::Instance().RemViewManagerModel(model.get());
    model.reset();
  } else {
    delete controller;
    CViewModelDataManager::Instance().RemViewManagerModel(model.get());
  }
  QVERIFY(!alive);
  Services().ReleaseAll();
  CPlanFixture::Drain();
  QVERIFY(!fixture_.Code("orphan").isEmpty());   // the host did it
  QCOMPARE(Outline(fixture_.Public()), before);  // and nobody was told
}

void StaleAnswersTest::ManySlowRequestsInAnyOrder() {
  const int threads = QThreadPool::globalInstance()->maxThreadCount();
  QThreadPool::globalInstance()->setMaxThreadCount(8);
  Services().Hold("AddPlanGroup");
  for (int i = 0; i < 6; ++i) {
    controller_->AddPlanGroupByIndexName(Group("A1"), QString("slow %1").arg(i));
  }
  QVERIFY(Services().WaitUntilHeld("AddPlanGroup", 6));
  Expand("A1");  // meanwhile the group is opened
  Services().Release("AddPlanGroup");
  CPlanFixture::Drain();
  QThreadPool::globalInstance()->setMaxThreadCount(threads);
  QStringList rows;
  for (int row = 0; row < fixture_.Public()->rowCount(Group("A1")); ++row) {
    rows << fixture_.Public()->index(row, 0, Group("A1")).data().toString();
  }
  std::sort(rows.begin(), rows.begin() + 6);  // groups first, in the order of their answers
  QCOMPARE(rows, QStringList({"slow 0", "slow 1", "slow 2", "slow 3", "slow 4", "slow 5", "A1 plan 2", "A1 plan 10"}));
}

void StaleAnswersTest::ChangesOfOneRowKeepTheirOrder() {
  const int threads = QThreadPool::globalInstance()->maxThreadCount();
  const auto restore = qScopeGuard([threads] { QThreadPool::globalInstance()->setMaxThreadCount(threads); });
  QThreadPool::globalInstance()->setMaxThreadCount(8);
  Services().Hold("UpdatePlanGroup");
  controller_->UpdatePlanGroupName(Group("Public A"), "first");
  CStandardViewController other(fixture_.Public());
  other.UpdatePlanGroupName(Group("Public A"), "second");
  controller_->UpdatePlanGroupName(Group("Public A"), "last");
  QVERIFY(Services().WaitUntilHeld("UpdatePlanGroup", 1));
  controller_->UpdatePlanGroupName(Group("Public B"), "beside it");
  QVERIFY(Services().WaitUntilHeld("UpdatePlanGroup", 2));
  const auto requests = [this] { return Services().Requests<view_plugin_protocol::UpdatePlanGroupRequest>(); };
  QVERIFY(!QTest::qWaitFor([&] { return requests().size() > 2; }, 100));
  Services().Release("UpdatePlanGroup");
  CPlanFixture::Drain();
  QStringList names;
  for (const auto& request : requests()) {
    names << QString::fromStdString(request.name);
  }
  names.removeOne("beside it");
  QCOMPARE(names, QStringList({"first", "second", "last"}));
  QCOMPARE(Outline(fixture_.Public()), QString("Plans(last(A1,Public A plan 2,Public A plan 10),beside it)"));
}

// The own change is made; before its answer comes, somebody else's newer one is told. The tree ends as the store does.
void StaleAnswersTest::OwnAnswerAfterANewerNotice() {
  auto& manager = CViewModelDataManager::Instance();
  auto& store = fixture_.Store();
  Expand("Public B");
  const QStringList calls{"UpdatePlanGroup", "UpdatePlan", "AddPlan", "AddPlanGroup"};
  for (const QString& call : calls) {
    Services().Hold(call, CRecordingServices::AfterCall);
  }
  const QString renamed = fixture_.Code("Public B"), away = fixture_.Code("Public A plan 2"),
                gone = fixture_.Code("Public A plan 10");
  UpdatePlanRequest update;
  update.parent_index_code = fixture_.Code("A1").toStdString();
  update.plan_index_code = away.toStdString();
  update.plan_name = "put below A1";
  controller_->UpdatePlanGroupName(Group("Public B"), "own name");
  QVERIFY(Services().WaitUntilHeld("UpdatePlanGroup"));
  controller_->UpdatePlanParam(update, "");
  QVERIFY(Services().WaitUntilHeld("UpdatePlan"));

  UpdatePlanGroupResponse group_answer;
  QVERIFY(store.UpdatePlanGroup({renamed.toStdString(), "their name", false}, group_answer));
  manager.OnViewGroupNameChanged(renamed, "their name");
  UpdatePlanResponse plan_answer;
  update.parent_index_code = renamed.toStdString();
  update.plan_name = "their place";
  QVERIFY(store.UpdatePlan(update, plan_answer));
  manager.OnViewChanged(away);
  Services().ReleaseAll();
  CPlanFixture::Drain();
  QCOMPARE(Outline(fixture_.Public()), QString("Plans(Public A(A1,Public A plan 10),"
                                               "their name(Public B plan 2,Public B plan 10,their place))"));

  for (const QString& call : calls) {
    Services().Hold(call, CRecordingServices::AfterCall);
  }
  update.plan_index_code = gone.toStdString();
  update.plan_name = "saved";
  controller_->UpdatePlanParam(update, "");
  QVERIFY(Services().WaitUntilHeld("UpdatePlan"));
  controller_->AddPlanGroupByIndexName(Group("Public A"), "added");
  QVERIFY(Services().WaitUntilHeld("AddPlanGroup"));
  DeletePlanResponse plan_deleted;
  QVERIFY(store.DeletePlan({gone.toStdString(), "", "", "", ""}, plan_deleted));
  manager.OnViewGroupChildRemoved(gone, ResourceData::RT_VIEW);
  DeletePlanGroupResponse group_deleted;
  QVERIFY(store.DeletePlanGroup({fixture_.Code("added").toStdString(), "", 0}, group_deleted));
  Services().ReleaseAll();
  CPlanFixture::Drain();
  QCOMPARE(Outline(fixture_.Public()),
           QString("Plans(Public A(A1),their name(Public B plan 2,Public B plan 10,their place))"));
}

void StaleAnswersTest::ChangesUnderEveryRootOutlastANotice_data() {
  QTest::addColumn<int>("theme");
  QTest::newRow("public") << int(PublicTheme);
  QTest::newRow("own") << int(OwnTheme);
  QTest::newRow("received") << int(ReceivedTheme);
}

// The look that follows the notice must find what was just added, renamed and saved directly under the root.
void StaleAnswersTest::ChangesUnderEveryRootOutlastANotice() {
  QFETCH(int, theme);
  auto& manager = CViewModelDataManager::Instance();
  CStandardPlanModel model(ViewManagerParam(static_cast<ThemeNodeType>(theme), "mine"), nullptr);
  manager.AddViewManagerModel(&model);
  model.LoadPlanModel();
  QTRY_COMPARE(model.rowCount(), 1);
  const QPersistentModelIndex root = model.index(0, 0);
  const QString root_code = root.data(GroupIndexCodeRole).toString();
  CStandardViewController controller(&model);
  controller.OnExpandViewTreeItem(root);
  QTRY_VERIFY(model.AreChildrenFetched(root));
  manager.OnSetGroupNodeLoaded(root_code, true);  // received rows are not marked by being expanded
  controller.AddPlanGroupByIndexName(root, "group");
  QTRY_VERIFY(Outline(&model).contains("group"));

  const QStringList calls{"AddPlanGroup", "UpdatePlanGroup", "AddPlan"};
  for (const QString& call : calls) {
    Services().Hold(call, CRecordingServices::AfterCall);
  }
  const QModelIndex group = model.match(root, Qt::DisplayRole, "group", 1, Qt::MatchRecursive).value(0);
  AddPlanRequest plan;
  plan.plan_name = "saved";
  plan.index_type = theme;
  plan.parent_index_code = root_code.toStdString();
  controller.UpdatePlanGroupName(group, "renamed");
  controller.AddPlanGroupByIndexName(root, "added");
  controller.AddPlanParam(plan);
  for (const QString& call : calls) {
    QVERIFY2(Services().WaitUntilHeld(call), qPrintable(call));
  }
  manager.OnViewGroupNameChanged(fixture_.Code("A1"), "A1");  // of something else
  Services().ReleaseAll();
  CPlanFixture::Drain();
  for (const char* name : {"renamed", "added", "saved"}) {
    QVERIFY2(Outline(&model).contains(name), qPrintable(name + (" in " + Outline(&model))));
  }
  manager.RemViewManagerModel(&model);
}

void StaleAnswersTest::AChangeThatWaitedIsNotTheNextUsers_data() {
  QTest::addColumn<QString>("failing");
  QTest::addColumn<QString>("reason");
  QTest::newRow("switched") << ""
                            << "the user was switched";
  QTest::newRow("not known when asked for") << "asked"
                                            << "tip 1 The line is down";
  QTest::newRow("not known at its turn") << "turn"
                                         << "tip 1 The line is down";
  QTest::newRow("never known") << "asked, turn"
                               << "tip 1 The line is down";
}

void StaleAnswersTest::AChangeThatWaitedIsNotTheNextUsers() {
  QFETCH(QString, failing);
  QFETCH(QString, reason);
  const auto fail_at = [&](const char* time) {
    failing.contains(time) ? Services().Fail("GetCurrentUser", "The line is down") : Services().Mend("GetCurrentUser");
  };
  const QString code = fixture_.Code("Public A");
  const QModelIndex row = Group("Public A");
  Services().Hold("UpdatePlanGroup", CRecordingServices::AfterCall);
  controller_->UpdatePlanGroupName(row, "first");
  QVERIFY(Services().WaitUntilHeld("UpdatePlanGroup"));
  fail_at("asked");
  controller_->UpdatePlanGroupName(row, "waits");
  fail_at("turn");
  QString error;
  QVERIFY(!failing.isEmpty() || fixture_.Store().LogIn("viewer", &error));
  Services().ReleaseAll();
  CPlanFixture::Drain();
  QCOMPARE(Services().Requests<UpdatePlanGroupRequest>().size(), 1u);  // the host was not asked in another's name
  QCOMPARE(fixture_.Code("first"), code);
  const QString said = log_->lines.join('\n');
  QVERIFY2(said.contains(reason), qPrintable(said));
  QCOMPARE(said.contains("switched"), failing.isEmpty());
}

QTEST_MAIN(StaleAnswersTest)
#include "test_stale_answers.moc"
