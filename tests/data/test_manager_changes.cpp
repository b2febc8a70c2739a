#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include "plan_item_role.h"
#include "plan_test.h"
#include "standard_plan_model.h"
#include "standard_view_controller.h"
#include "view_model_data_manager.h"
#include "view_sort_filter_proxy_model.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using ResourceData::RT_NONE;
using ResourceData::RT_VIEW;
using ResourceData::RT_VIEW_GROUP;
using TarnTest::CPlanFixture;
using TarnTest::CPlanTest;
using TarnTest::Outline;

namespace {

PlanGroup Group(const QString& code, const QString& name, int family = 0) {
  PlanGroup group;
  group.index_code = code.toStdString();
  group.name = name.toStdString();
  group.type = family;
  return group;
}

PlanBasicInfo Plan(const QString& code, const QString& name) {
  PlanBasicInfo plan;
  plan.index_code = code.toStdString();
  plan.name = name.toStdString();
  return plan;
}

}  // namespace

// What the manager does with results of the panel's own operations and with news from elsewhere.
class ManagerChangesTest : public CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void ExpandedRowsGoIntoEveryModel();
  void AnswersForNoRow();
  void NewGroup();
  void NewPlanStopsAtTheFirstUnloadedGroup();
  void UpdatedPlanLooksAtEachModel();
  void Deletions();
  void TimedPlayIsCheckedAfterPlansAlone();
  void Renames();
  void InsertSubNodes();
  void PlayStates();
  void PlayMarkComesBackByExpandingAlone();
  void ChangedPlan_data();
  void ChangedPlan();
  void ChangedPlanStopsAtTheFirstUnloadedGroup();
  void NoticesByKindAndType();
  void OtherProcessesOnTheSameFile();

 private:
  CViewModelDataManager& Manager() { return CViewModelDataManager::Instance(); }
  void Expand(const QStringList& names);
  QStandardItem* GroupRow(const QString& name, CStandardPlanModel* model = nullptr) {
    return (model ? model : fixture_.Public())->FindTargetItemByIndexCode(fixture_.Code(name), true);
  }
  QStandardItem* PlanRow(const QString& name, CStandardPlanModel* model = nullptr) {
    return (model ? model : fixture_.Public())->FindTargetItemByIndexCode(fixture_.Code(name), false);
  }
  QString PublicOutlines();
};

/// Expands the roots, then the groups with these names.
void ManagerChangesTest::Expand(const QStringList& names) {
  for (CStandardPlanModel* model : {fixture_.Public(), fixture_.Own()}) {
    CStandardViewController controller(model);
    controller.OnExpandViewTreeItem(model->index(0, 0));
    CPlanFixture::Drain();
    for (const QString& name : names) {
      controller.OnExpandViewTreeItem(model->FindIndexByIndexCode(fixture_.Code(name), true));
      CPlanFixture::Drain();
    }
  }
}

/// The outline of the public trees; all of them when they differ.
QString ManagerChangesTest::PublicOutlines() {
  QStringList outlines;
  for (int monitor = 0; monitor < 4; ++monitor) {
    outlines << Outline(fixture_.Model(QString::number(monitor), PublicTheme));
  }
  outlines.removeDuplicates();
  return outlines.join(" | ");
}

void ManagerChangesTest::ExpandedRowsGoIntoEveryModel() {
  Open({{"create_under_root", 1}});
  QSignalSpy public_view(&Manager(), &CViewModelDataManager::SignalFinshExpandPublicView);
  QSignalSpy added(&Manager(), &CViewModelDataManager::SignalFinshAddGroupPlanList);
  std::vector<std::unique_ptr<QSignalSpy>> finished;
  for (CStandardPlanModel* model : fixture_.Models()) {
    finished.push_back(std::make_unique<QSignalSpy>(model, &CStandardPlanModel::SignalFinshAsynchronous));
  }
  const QModelIndex root = fixture_.Public()->index(0, 0);
  CStandardViewController controller(fixture_.Public());
  controller.OnExpandViewTreeItem(root);
  CPlanFixture::Drain();
  QCOMPARE(PublicOutlines(), QString("Plans(Public A,Public B,Public root plan)"));
  QCOMPARE(Outline(fixture_.Own()), QString("Plans"));
  QCOMPARE(public_view.count(), 1);
  QCOMPARE(added.count(), 1);
  for (const auto& spy : finished) {  // every model, also those without the row
    QCOMPARE(spy->count(), 1);
    QCOMPARE(spy->front().front().toModelIndex(), root);
  }
  QVERIFY(!fixture_.Public()->canFetchMore(root));
  QVERIFY(fixture_.Public()->canFetchMore(GroupRow("Public A")->index()));
  QCOMPARE(Services().ObserverCount(), 4);  // root, two groups and a plan, once each and not once a model
  controller.OnExpandViewTreeItem(root);
  CPlanFixture::Drain();
  QCOMPARE(PublicOutlines(), QString("Plans(Public A,Public B,Public root plan)"));
  QCOMPARE(Services().ObserverCount(), 4);
  controller.OnExpandViewTreeItem(GroupRow("Public A")->index());
  CPlanFixture::Drain();
  QCOMPARE(public_view.count(), 2);  // for roots alone
  QCOMPARE(added.count(), 3);
}

void ManagerChangesTest::AnswersForNoRow() {
  Open();
  Expand({});
  const QString before = PublicOutlines();
  QSignalSpy public_view(&Manager(), &CViewModelDataManager::SignalFinshExpandPublicView);
  QSignalSpy added(&Manager(), &CViewModelDataManager::SignalFinshAddGroupPlanList);
  QSignalSpy changed(&Manager(), &CViewModelDataManager::SignalPlanStateChanged);
  GetPlanGroupsResponse groups;
  groups.groups << Group("900", "stray");
  GetPlansInGroupResponse plans;
  plans.plans << Plan("901", "stray");
  Manager().OnGetPlanGroupListSucc({}, groups, plans);
  QCOMPARE(public_view.count(), 0);
  QCOMPARE(added.count(), 1);
  Manager().OnDeletePlanGroupPlanSucc({});
  Manager().OnUpdatePlanGroupNameSucc({}, "x");
  Manager().OnAddPlanGroupSucc({}, Group("902", "stray"));
  Manager().OnSetGroupNodeLoaded("", true);
  Manager().OnViewGroupNameChanged("no such", "x");
  Manager().OnViewGroupChildRemoved("no such", RT_VIEW);
  Manager().OnViewGroupChildAdded("no such", RT_VIEW_GROUP);
  Manager().InsertAllChildItem("", 0);
  Manager().InsertSubGroupNode("", 0);
  Manager().InsertSubPlanNode("", 0);
  Manager().SetPlanPlayStateByIndexCode("0", "", true);
  Manager().addPlanGroupList(nullptr, nullptr, groups);
  Manager().addPlanList(fixture_.Public(), nullptr, plans);
  Manager().addPlanView(nullptr, fixture_.Public()->item(0), Plan("903", "stray"));
  QCOMPARE(changed.count(), 0);
  QCOMPARE(PublicOutlines(), before);
  // A root of the third family ends its fetch without the public signal.
  CStandardPlanModel received(ViewManagerParam(ReceivedTheme, "0"), nullptr);
  GetPlanGroupsResponse roots;
  roots.groups << Group("r", "received", 2);
  received.AddRootNode(roots);
  Manager().OnGetPlanGroupListSucc(received.index(0, 0), {}, {});
  QCOMPARE(public_view.count(), 0);
  QCOMPARE(added.count(), 2);
}

void ManagerChangesTest::NewGroup() {
  Open();
  Expand({"Public A"});
  // Never expanded: no row, but an observer.
  Manager().OnAddPlanGroupSucc(GroupRow("Public B")->index(), Group("900", "new"));
  QCOMPARE(GroupRow("Public B")->rowCount(), 0);
  QVERIFY(Services().ObserverOf(RT_VIEW_GROUP, "900"));
  // Expanded: after the last group and before the plans of every tree, once.
  const QModelIndex a = GroupRow("Public A")->index();
  Manager().OnAddPlanGroupSucc(a, Group("901", "new"));
  Manager().OnAddPlanGroupSucc(a, Group("901", "again"));
  QCOMPARE(PublicOutlines(), QString("Plans(Public A(A1,new,Public A plan 2,Public A plan 10),Public B)"));
  // Only the given row's own mark counts; the copies in the other trees are not looked at.
  CStandardPlanModel* const second = fixture_.Model("1", PublicTheme);
  GroupRow("Public A", second)->setData(false, GroupLoadedRole);
  Manager().OnAddPlanGroupSucc(a, Group("902", "late"));
  QVERIFY(second->FindItemByIndexCode("902", true));
}

void ManagerChangesTest::NewPlanStopsAtTheFirstUnloadedGroup() {
  Open();
  Expand({"Public A", "Public B"});
  GroupRow("Public A", fixture_.Model("2", PublicTheme))->setData(false, GroupLoadedRole);
  AddPlanRequest request;
  request.plan_name = "new";
  request.parent_index_code = fixture_.Code("Public A").toStdString();
  request.pages.resize(3);
  request.pages.front().split_type = 4;
  QStringList order;
  connect(&Manager(), &CViewModelDataManager::SignalPlanStateChanged, this, [&order] { order << "changed"; });
  connect(&Manager(), &CViewModelDataManager::SignalAddPlanSucc, this, [&order](const QString& c) { order << c; });
  Manager().OnAddPlanSucc(request, "950");
  QCOMPARE(order, QStringList({"changed", "950"}));
  for (const auto& [monitor, there] : {std::pair("0", true), {"1", true}, {"2", false}, {"3", false}}) {
    QCOMPARE(fixture_.Model(monitor, PublicTheme)->FindItemByIndexCode("950", false), there);
  }
  QVERIFY(Services().ObserverOf(RT_VIEW, "950"));
  const auto record = fixture_.Public()->FindIndexByIndexCode("950", false).data(ItemRecordRole).value<PlanBasicInfo>();
  QCOMPARE(record.page_count, 3);
  QCOMPARE(record.split_type, 4);
  QCOMPARE(record.group_index_code, request.parent_index_code);
  Manager().OnAddPlanSucc(request, "950");
  QCOMPARE(GroupRow("Public A")->rowCount(), 4);
  request.parent_index_code = "no such group";
  Manager().OnAddPlanSucc(request, "951");
  QCOMPARE(order.last(), QString("951"));  // the signals do not depend on rows
}

void ManagerChangesTest::UpdatedPlanLooksAtEachModel() {
  Open();
  Expand({"Public A", "Public B"});
  GroupRow("Public B", fixture_.Model("1", PublicTheme))->setData(false, GroupLoadedRole);
  UpdatePlanRequest request;
  request.plan_index_code = fixture_.Code("Public A plan 2").toStdString();
  request.plan_name = "moved";
  request.parent_index_code = fixture_.Code("Public B").toStdString();
  Manager().SetPlanPlayStateByIndexCode("0", fixture_.Code("Public A plan 2"), true);
  QStringList order;
  const auto note = [this, &order](const char* signal) {
    order << signal + (": " + PlanRow("Public A plan 2")->text());
  };
  connect(&Manager(), &CViewModelDataManager::SignalPlanStateChanged, this, [note] { note("changed"); });
  connect(&Manager(), &CViewModelDataManager::SignalUpdatePlanSucc, this, [note] { note("updated"); });
  Manager().OnUpdatePlanSucc(request);
  QCOMPARE(order, QStringList({"changed: moved", "updated: moved"}));  // the rows stand before anybody hears of it
  const QString moved = "Plans(Public A(A1,Public A plan 10),Public B(Public B plan 2,Public B plan 10,moved))";
  QCOMPARE(Outline(fixture_.Public()), moved);
  QCOMPARE(Outline(fixture_.Model("1", PublicTheme)),
           QString("Plans(Public A(A1,Public A plan 10),Public B(Public B plan 2,Public B plan 10))"));
  QCOMPARE(Outline(fixture_.Model("2", PublicTheme)), moved);
  QVERIFY(!fixture_.Public()->FindItemPlanPlaying());  // a new row; whoever plays it marks it again
}

void ManagerChangesTest::Deletions() {
  Open();
  Expand({"Public A", "A1"});
  QSignalSpy changed(&Manager(), &CViewModelDataManager::SignalPlanStateChanged);
  const std::string a = fixture_.Code("Public A").toStdString(), a1 = fixture_.Code("A1").toStdString();
  const std::string deep = fixture_.Code("A1 plan 2").toStdString();
  const std::string plan = fixture_.Code("Public A plan 2").toStdString();
  // By the row of another tree, which itself goes in the course of it.
  Manager().OnDeletePlanGroupPlanSucc(PlanRow("Public A plan 2", fixture_.Model("3", PublicTheme))->index());
  QCOMPARE(PublicOutlines(), QString("Plans(Public A(A1(A1 plan 2,A1 plan 10),Public A plan 10),Public B)"));
  QVERIFY(!Services().ObserverOf(RT_VIEW, plan));
  Manager().OnDeletePlanGroupPlanSucc(GroupRow("Public A")->index());
  QCOMPARE(PublicOutlines(), QString("Plans(Public B)"));
  QCOMPARE(changed.count(), 2);
  QVERIFY(!Services().ObserverOf(RT_VIEW_GROUP, a));
  // What stood below keeps its observers: its codes are never used again.
  QVERIFY(Services().ObserverOf(RT_VIEW_GROUP, a1));
  QVERIFY(Services().ObserverOf(RT_VIEW, deep));
}

void ManagerChangesTest::TimedPlayIsCheckedAfterPlansAlone() {
  for (const int timed_play : {1, 0}) {
    Open({{"timed_play", timed_play}});
    Expand({"Public A"});
    const auto automatic_queries = [this] {
      const auto requests = Services().Requests<GetPlanDetailRequest>();
      return std::count_if(requests.begin(), requests.end(), [](const auto& r) { return r.query_kind == 1; });
    };
    Services().ForgetCalls();
    Manager().OnDeletePlanGroupPlanSucc(GroupRow("A1")->index());
    QCOMPARE(automatic_queries(), std::ptrdiff_t(0));
    Manager().OnDeletePlanGroupPlanSucc(PlanRow("Public A plan 2")->index());
    QCOMPARE(automatic_queries(), std::ptrdiff_t(timed_play));
    QList<std::ptrdiff_t> asked_before;  // whoever hears of a plan hears of it before its time is looked at
    const auto note = [&asked_before, automatic_queries] { asked_before << automatic_queries(); };
    const auto added = connect(&Manager(), &CViewModelDataManager::SignalAddPlanSucc, this, note);
    const auto updated = connect(&Manager(), &CViewModelDataManager::SignalUpdatePlanSucc, this, note);
    Manager().OnAddPlanSucc({}, "950");
    Manager().OnUpdatePlanSucc({});
    QCOMPARE(automatic_queries(), std::ptrdiff_t(3 * timed_play));
    QCOMPARE(asked_before, QList<std::ptrdiff_t>({timed_play, 2 * timed_play}));
    disconnect(added);
    disconnect(updated);
    Shut();
  }
}

void ManagerChangesTest::Renames() {
  Open();
  Expand({"Public A"});
  const QString code = fixture_.Code("Public A");
  Manager().OnUpdatePlanGroupNameSucc(GroupRow("Public A", fixture_.Model("2", PublicTheme))->index(), "first");
  QCOMPARE(PublicOutlines(), QString("Plans(first(A1,Public A plan 2,Public A plan 10),Public B)"));
  Manager().OnViewGroupNameChanged(code, QString::fromUtf8("\xD7\xA9\xD7\x9C \xF0\x9F\x8E\xA5"));
  QCOMPARE(fixture_.Public()->FindIndexByIndexCode(code, true).data().toString(),
           QString::fromUtf8("\xD7\xA9\xD7\x9C \xF0\x9F\x8E\xA5"));
  // Renamed through a sorted tree, the row moves away from under its index; still no neighbour gets its name.
  CViewSortFilterProxyModel sorted(nullptr, false);
  sorted.setSourceModel(fixture_.Public());
  const QModelIndex shown = sorted.mapFromSource(fixture_.Public()->FindIndexByIndexCode(code, true));
  Manager().OnUpdatePlanGroupNameSucc(shown, "Z last");
  QCOMPARE(PublicOutlines(), QString("Plans(Z last(A1,Public A plan 2,Public A plan 10),Public B)"));
  // The record stays as the host gave it.
  const QModelIndex row = fixture_.Public()->FindIndexByIndexCode(code, true);
  QCOMPARE(row.data(ItemRecordRole).value<PlanGroup>().name, std::string("Public A"));
}

void ManagerChangesTest::InsertSubNodes() {
  Open();
  Expand({"Public A", "A1"});
  const QString a1 = fixture_.Code("A1");
  for (CStandardPlanModel* model : fixture_.Models()) {
    if (QStandardItem* row = model->FindTargetItemByIndexCode(a1, true)) {
      row->setText("old name");
      row->removeRow(1);
      row->setData(false, GroupLoadedRole);
    }
  }
  QStandardItem* a = GroupRow("Public A");
  a->setData(false, GroupLoadedRole);
  PlanRow("A1 plan 2")->setText("old name");
  Manager().InsertSubGroupNode(fixture_.Code("Public A"), 0);
  Manager().InsertSubPlanNode(a1, 0);
  // Existing groups get their text renewed, existing plans do not; only who got rows is marked loaded.
  QCOMPARE(Outline(fixture_.Public()),
           QString("Plans(Public A(A1(old name,A1 plan 10),Public A plan 2,Public A plan 10),Public B)"));
  QVERIFY(!a->data(GroupLoadedRole).toBool());
  QVERIFY(GroupRow("A1")->data(GroupLoadedRole).toBool());
  // New groups stand after the groups and before the plans.
  a->removeRow(0);
  Manager().InsertSubGroupNode(fixture_.Code("Public A"), 0);
  QCOMPARE(a->child(0)->text(), QString("A1"));
  QVERIFY(a->data(GroupLoadedRole).toBool());
  Services().Fail("GetPlansInGroup");
  Manager().InsertSubPlanNode(fixture_.Code("Public B"), 0);
  QCOMPARE(GroupRow("Public B")->rowCount(), 0);
}

void ManagerChangesTest::PlayStates() {
  Open();
  Expand({"Public A"});
  const QString code = fixture_.Code("Public A plan 2"), other = fixture_.Code("Public A plan 10");
  const auto playing = [this](const char* monitor) {
    const QStandardItem* row = fixture_.Model(monitor, PublicTheme)->FindItemPlanPlaying();
    return row ? row->text() : QString();
  };
  Manager().SetPlanPlayStateByIndexCode("1", code, true);
  QCOMPARE(playing("1"), QString("Public A plan 2"));
  QCOMPARE(playing("0"), QString());  // other monitors are left alone
  QSignalSpy touched(fixture_.Model("1", PublicTheme), &QAbstractItemModel::dataChanged);
  Manager().SetPlanPlayStateByIndexCode("1", code, true);
  QCOMPARE(touched.count(), 0);  // already so
  Manager().SetPlanPlayStateByIndexCode("1", other, true);
  QCOMPARE(playing("1"), QString("Public A plan 10"));
  Manager().SetPlanPlayStateByIndexCode("1", "no such plan", true);
  QCOMPARE(playing("1"), QString());  // the old one ended all the same
  Manager().SetPlanPlayStateByIndexCode("1", code, true);
  Manager().SetPlanPlayStateByIndexCode("1", code, false);
  QCOMPARE(playing("1"), QString());
}

void ManagerChangesTest::PlayMarkComesBackByExpandingAlone() {
  Open();
  Expand({});
  const QString code = fixture_.Code("Public A plan 2");
  fixture_.Public()->SetPlayingIndexCode(code);
  Expand({"Public A"});
  QCOMPARE(fixture_.Public()->FindItemPlanPlaying(), PlanRow("Public A plan 2"));
  QVERIFY(!fixture_.Model("1", PublicTheme)->FindItemPlanPlaying());
  const QModelIndex group = GroupRow("Public A")->index();
  fixture_.Public()->removeRows(0, 3, group);
  Manager().InsertSubPlanNode(fixture_.Code("Public A"), 0);
  QVERIFY(PlanRow("Public A plan 2"));
  QVERIFY(!fixture_.Public()->FindItemPlanPlaying());
}

void ManagerChangesTest::ChangedPlan_data() {
  QTest::addColumn<QString>("target");
  QTest::addColumn<QString>("outline");
  QTest::newRow("renamed in its group") << "Public A"
                                        << "Plans(Public A(A1,changed,Public A plan 10),"
                                           "Public B(Public B plan 2,Public B plan 10))";
  QTest::newRow("to a loaded group") << "Public B"
                                     << "Plans(Public A(A1,Public A plan 10),"
                                        "Public B(Public B plan 2,Public B plan 10,changed))";
  QTest::newRow("to a group without a row") << "hidden"
                                            << "Plans(Public A(A1,Public A plan 10),"
                                               "Public B(Public B plan 2,Public B plan 10))";
}

void ManagerChangesTest::ChangedPlan() {
  QFETCH(QString, target);
  Open();
  Expand({"Public A", "Public B"});
  AddPlanGroupResponse hidden;
  QVERIFY(fixture_.Store().AddPlanGroup({"hidden", fixture_.Code("A1").toStdString()}, hidden));
  const QString code = fixture_.Code("Public A plan 2");
  Manager().OnViewChanged("no such plan");
  Services().Fail("GetPlanDetail");
  Manager().OnViewChanged(code);
  Services().Mend("GetPlanDetail");
  UpdatePlanRequest request;
  request.plan_index_code = code.toStdString();
  request.plan_name = "changed";
  request.parent_index_code = fixture_.Code(target).toStdString();
  UpdatePlanResponse response;
  QVERIFY2(fixture_.Store().UpdatePlan(request, response), response.error_info.c_str());
  Services()
      .ObserverOf(RT_VIEW, request.plan_index_code)
      ->OnResourceUpdate({2, request.plan_index_code, "changed", RT_VIEW});
  QTEST(PublicOutlines(), "outline");
}

void ManagerChangesTest::ChangedPlanStopsAtTheFirstUnloadedGroup() {
  Open();
  Expand({"Public A", "Public B"});
  UpdatePlanRequest request;
  request.plan_index_code = fixture_.Code("Public A plan 2").toStdString();
  request.plan_name = "changed";
  request.parent_index_code = fixture_.Code("Public B").toStdString();
  UpdatePlanResponse response;
  QVERIFY(fixture_.Store().UpdatePlan(request, response));
  GroupRow("Public B", fixture_.Model("1", PublicTheme))->setData(false, GroupLoadedRole);
  Manager().OnViewChanged(QString::fromStdString(request.plan_index_code));
  const QString code = QString::fromStdString(request.plan_index_code);
  const auto parent = [&](const char* monitor) {
    return fixture_.Model(monitor, PublicTheme)->FindIndexByIndexCode(code, false).parent().data().toString();
  };
  QCOMPARE(parent("0"), QString("Public B"));
  QCOMPARE(parent("1"), QString());  // comes when the group is expanded
  QCOMPARE(parent("2"), QString("Public A"));
}

void ManagerChangesTest::NoticesByKindAndType() {
  Open();
  Expand({"Public A"});
  const std::string a = fixture_.Code("Public A").toStdString();
  ResourceData::IResourceObserver* const group = Services().ObserverOf(RT_VIEW_GROUP, a);
  ResourceData::IResourceObserver* const root = Services().ObserverOf(RT_VIEW_GROUP, "root");
  QVERIFY(group && root);
  group->OnResourceUpdate({2, a, "renamed", RT_NONE});
  QCOMPARE(fixture_.Public()->index(0, 0, fixture_.Public()->index(0, 0)).data().toString(), QString("renamed"));
  group->OnResourceUpdate({4, a, fixture_.Code("A1").toStdString(), RT_VIEW_GROUP});
  group->OnResourceUpdate({4, a, fixture_.Code("Public A plan 2").toStdString(), RT_VIEW});
  QCOMPARE(PublicOutlines(), QString("Plans(renamed(Public A plan 10),Public B)"));
  group->OnResourceUpdate({3, a, fixture_.Code("A1").toStdString(), RT_VIEW_GROUP});
  group->OnResourceUpdate({3, a, fixture_.Code("Public A plan 2").toStdString(), RT_VIEW});
  QCOMPARE(PublicOutlines(), QString("Plans(renamed(A1,Public A plan 10,Public A plan 2),Public B)"));
  const QString settled = PublicOutlines();
  const int observers = Services().ObserverCount();
  const int calls = static_cast<int>(Services().Calls().size());
  for (const int event : {0, 1, 5, 8, 99}) {
    group->OnResourceUpdate({event, a, "x", RT_VIEW});
  }
  for (const int event : {0, 1, 2, 5}) {
    root->OnResourceUpdate({event, "root", "x", RT_VIEW});
  }
  for (const int event : {3, 4}) {  // types that are neither groups nor plans
    group->OnResourceUpdate({event, a, "x", static_cast<ResourceData::ResourceType>(123)});
    root->OnResourceUpdate({event, "root", "x", RT_NONE});
  }
  QCOMPARE(PublicOutlines(), settled);
  QCOMPARE(Services().ObserverCount(), observers);
  QCOMPARE(static_cast<int>(Services().Calls().size()), calls);
  // News of the root asks for the top level of all three families.
  Services().ForgetCalls();
  root->OnResourceUpdate({3, "root", "77", RT_VIEW});
  QStringList asked;
  for (const auto& request : Services().Requests<GetPlansInGroupRequest>()) {
    asked << QString::fromStdString(request.group_index_code) + ":" + QString::number(request.node_type);
  }
  QCOMPARE(asked, QStringList({"-1:0", "-2:1", "-4:2"}));
  QVERIFY(Services().ObserverOf(RT_VIEW, "77"));
  QVERIFY(PublicOutlines().contains("Public root plan"));
  root->OnResourceUpdate({4, "root", fixture_.Code("Public B").toStdString(), RT_VIEW_GROUP});
  QVERIFY(!PublicOutlines().contains("Public B"));
}

void ManagerChangesTest::OtherProcessesOnTheSameFile() {
  QTemporaryDir folder;
  TarnTest::PlanFixtureOptions options;
  options.url = "sqlite:" + folder.filePath("plans.db");
  QString error;
  QVERIFY2(fixture_.Open(options, &error), qPrintable(error));
  fixture_.Start();
  Expand({"Public A", "Public B", "Own C"});
  TarnHost::PlanStoreOptions other_options;
  other_options.url = options.url;
  const auto other = TarnHost::CPlanStore::Open(other_options, &error);
  QVERIFY2(other && other->LogIn("operator", &error), qPrintable(error));
  QTRY_VERIFY(other->IsViewResourceDownFinish());
  const std::string a = fixture_.Code("Public A").toStdString(), b = fixture_.Code("Public B").toStdString();
  AddPlanGroupResponse group;
  QVERIFY(other->AddPlanGroup({"New group", a}, group));
  AddPlanRequest add;
  add.plan_name = "New plan";
  add.parent_index_code = group.index_code;
  AddPlanResponse added;
  QVERIFY(other->AddPlan(add, added));
  UpdatePlanRequest update;
  update.plan_index_code = fixture_.Code("Public A plan 2").toStdString();
  update.plan_name = "Moved";
  update.parent_index_code = b;
  UpdatePlanResponse updated;
  QVERIFY(other->UpdatePlan(update, updated));
  DeletePlanResponse deleted;
  QVERIFY(other->DeletePlan({fixture_.Code("Public B plan 10").toStdString(), "", "", "", ""}, deleted));
  UpdatePlanGroupResponse renamed;
  QVERIFY(other->UpdatePlanGroup({fixture_.Code("Own C").toStdString(), "Own renamed"}, renamed));
  QTRY_COMPARE(PublicOutlines(), QString("Plans(Public A(A1,New group(New plan),Public A plan 10),"
                                         "Public B(Public B plan 2,Moved))"));
  for (CStandardPlanModel* model : fixture_.Models()) {
    if (model->GetViewManagerThemeNodeType() == OwnTheme) {
      QTRY_COMPARE(Outline(model), QString("Plans(Own renamed(C1,Own C plan 2,Own C plan 10))"));
    }
  }
  DeletePlanGroupResponse gone;
  QVERIFY(other->DeletePlanGroup({a, "", 0}, gone));
  QTRY_COMPARE(PublicOutlines(), QString("Plans(Public B(Public B plan 2,Moved))"));
  other->Close();
}

QTEST_MAIN(ManagerChangesTest)
#include "test_manager_changes.moc"
