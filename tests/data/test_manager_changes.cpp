#include <QSignalSpy>
#include <QtTest>
#include <memory>

#include "plan_item_role.h"
#include "plan_test.h"
#include "standard_plan_model.h"
#include "standard_view_controller.h"
#include "view_model_data_manager.h"
#include "view_model_data_manager_p.h"
#include "view_sort_filter_proxy_model.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using ResourceData::RT_NONE;
using ResourceData::RT_VIEW;
using ResourceData::RT_VIEW_GROUP;
using TarnTest::ChangedPlan;
using TarnTest::CPlanFixture;
using TarnTest::CPlanTest;
using TarnTest::GroupRecord;
using TarnTest::Outline;
using TarnTest::PlanRecord;

// What the manager does with results of the panel's own operations and with notices of changes made elsewhere. Whole
// series of them, and two clients on one file, are the random test's.
class ManagerChangesTest : public CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void ExpandedRowsGoIntoEveryModel();
  void AnswersForNoRow();
  void NewGroup();
  void NewPlanStopsAtTheFirstUnloadedGroup();
  void UpdatedPlanLooksAtEachModel();
  void FollowsAPlanThatChangedElsewhere();
  void HasOneViewForAPlan();
  void Deletions();
  void TimedPlayIsCheckedAfterPlansAlone();
  void Renames();
  void InsertSubNodes();
  void RecordsAreMadeOfNewsAlone();
  void SignsFollowChangesElsewhere();
  void PlayStates();
  void PlayMarkComesBackByExpandingAlone();
  void NoticesByKindAndType();

 private:
  CViewModelDataManager& Manager() { return CViewModelDataManager::Instance(); }
  CStandardPlanModel* PublicOf(const char* monitor) const { return fixture_.Model(monitor, PublicTheme); }
  /// Opens the store and expands the roots, then the groups with these names.
  void OpenExpanded(const QStringList& names, const QMap<QString, int>& switches = {});
  /// As a reload leaves it: the group's rows come when it is expanded.
  void Unload(const char* group, const char* monitor) {
    PublicOf(monitor)->setData(GroupRow(group, PublicOf(monitor)), false, GroupLoadedRole);
  }
  /// The outline of the public trees; all of them when they differ.
  QString PublicOutlines();
};

void ManagerChangesTest::OpenExpanded(const QStringList& names, const QMap<QString, int>& switches) {
  Open(switches);
  for (CStandardPlanModel* model : {fixture_.Public(), fixture_.Own()}) {
    CStandardViewController controller(model);
    controller.OnExpandViewTreeItem(model->index(0, 0));
    CPlanFixture::Drain();
    for (const QString& name : names) {
      controller.OnExpandViewTreeItem(GroupRow(name, model));
      CPlanFixture::Drain();
    }
  }
}

QString ManagerChangesTest::PublicOutlines() {
  QStringList outlines;
  for (const char* monitor : {"0", "1", "2", "3"}) {
    outlines << Outline(PublicOf(monitor));
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
  for (int time = 1; time <= 2; ++time) {
    controller.OnExpandViewTreeItem(root);
    CPlanFixture::Drain();
    QCOMPARE(PublicOutlines(), QString("Plans(Public A,Public B,Public root plan)"));
    QCOMPARE(Services().ObserverCount(), 4);  // root, two groups and a plan, once each and not once a model
    QCOMPARE(public_view.count(), time);
    QCOMPARE(added.count(), time);
  }
  QCOMPARE(Outline(fixture_.Own()), QString("Plans"));
  for (const auto& spy : finished) {  // every model, also those without the row
    QCOMPARE(spy->count(), 2);
    QCOMPARE(spy->front().front().toModelIndex(), root);
  }
  QVERIFY(!fixture_.Public()->canFetchMore(root));
  QVERIFY(fixture_.Public()->canFetchMore(GroupRow("Public A")));
  controller.OnExpandViewTreeItem(GroupRow("Public A"));
  CPlanFixture::Drain();
  QCOMPARE(public_view.count(), 2);  // for roots alone
  QCOMPARE(added.count(), 3);
}

void ManagerChangesTest::AnswersForNoRow() {
  OpenExpanded({});
  const QString before = PublicOutlines();
  QSignalSpy public_view(&Manager(), &CViewModelDataManager::SignalFinshExpandPublicView);
  QSignalSpy added(&Manager(), &CViewModelDataManager::SignalFinshAddGroupPlanList);
  QSignalSpy changed(&Manager(), &CViewModelDataManager::SignalPlanStateChanged);
  GetPlanGroupsResponse groups;
  groups.groups << GroupRecord("900", "stray");
  GetPlansInGroupResponse plans;
  plans.plans << PlanRecord("901", "stray");
  Manager().OnGetPlanGroupListSucc({}, groups, plans);
  QCOMPARE(added.count(), 1);
  Manager().OnDeletePlanGroupPlanSucc({});
  Manager().OnUpdatePlanGroupNameSucc({}, "x");
  Manager().OnAddPlanGroupSucc({}, GroupRecord("902", "stray"));
  Manager().OnSetGroupNodeLoaded("", true);
  Manager().OnViewGroupNameChanged("no such", "x");
  Manager().OnViewGroupChildRemoved("no such", RT_VIEW);
  Manager().OnViewGroupChildAdded("no such", RT_VIEW_GROUP);
  Manager().OnViewChanged("no such");
  Manager().InsertAllChildItem("", 0);
  Manager().InsertSubGroupNode("", 0);
  Manager().InsertSubPlanNode("", 0);
  Manager().SetPlanPlayStateByIndexCode("0", "", true);
  Manager().addPlanGroupList(nullptr, nullptr, groups);
  Manager().addPlanList(fixture_.Public(), nullptr, plans);
  Manager().addPlanView(nullptr, fixture_.Public()->item(0), PlanRecord("903", "stray"));
  QCOMPARE(changed.count(), 0);
  QCOMPARE(PublicOutlines(), before);
  // Nor does a root of the third family end its fetch with the public signal.
  CStandardPlanModel received(ViewManagerParam(ReceivedTheme, "0"), nullptr);
  GetPlanGroupsResponse roots;
  roots.groups << GroupRecord("r", "received", ReceivedTheme);
  received.AddRootNode(roots);
  Manager().OnGetPlanGroupListSucc(received.index(0, 0), {}, {});
  QCOMPARE(public_view.count(), 0);
  QCOMPARE(added.count(), 2);
}

void ManagerChangesTest::NewGroup() {
  OpenExpanded({"Public A"});
  // Never expanded: no row, but an observer.
  Manager().OnAddPlanGroupSucc(GroupRow("Public B"), GroupRecord("900", "new"));
  QCOMPARE(fixture_.Public()->rowCount(GroupRow("Public B")), 0);
  QVERIFY(Services().ObserverOf(RT_VIEW_GROUP, "900"));
  // Expanded: after the last group and before the plans of every tree, once.
  const QModelIndex a = GroupRow("Public A");
  Manager().OnAddPlanGroupSucc(a, GroupRecord("901", "new"));
  Manager().OnAddPlanGroupSucc(a, GroupRecord("901", "again"));
  QCOMPARE(PublicOutlines(), QString("Plans(Public A(A1,new,Public A plan 2,Public A plan 10),Public B)"));
  // Only the given row's own mark counts; the copies in the other trees are not looked at.
  Unload("Public A", "1");
  Manager().OnAddPlanGroupSucc(a, GroupRecord("902", "late"));
  QVERIFY(PublicOf("1")->FindItemByIndexCode("902", true));
}

void ManagerChangesTest::NewPlanStopsAtTheFirstUnloadedGroup() {
  OpenExpanded({"Public A", "Public B"});
  Unload("Public A", "2");
  AddPlanRequest request = TarnTest::NewPlan("new", fixture_.Code("Public A"));
  request.pages.resize(3);
  request.pages.front().split_type = 4;
  QStringList order;
  connect(&Manager(), &CViewModelDataManager::SignalPlanStateChanged, this, [&order] { order << "changed"; });
  connect(&Manager(), &CViewModelDataManager::SignalAddPlanSucc, this, [&order](const QString& c) { order << c; });
  Manager().OnAddPlanSucc(request, "950");
  QCOMPARE(order, QStringList({"changed", "950"}));
  for (const auto& [monitor, there] : {std::pair("0", true), {"1", true}, {"2", false}, {"3", false}}) {
    QCOMPARE(PublicOf(monitor)->FindItemByIndexCode("950", false), there);
  }
  QVERIFY(Services().ObserverOf(RT_VIEW, "950"));
  const auto record = fixture_.Public()->FindIndexByIndexCode("950", false).data(ItemRecordRole).value<PlanBasicInfo>();
  QCOMPARE(record.page_count, 3);
  QCOMPARE(record.split_type, 4);
  QCOMPARE(record.group_index_code, request.parent_index_code);
  Manager().OnAddPlanSucc(request, "950");
  QCOMPARE(fixture_.Public()->rowCount(GroupRow("Public A")), 4);
  request.parent_index_code = "no such group";
  Manager().OnAddPlanSucc(request, "951");
  QCOMPARE(order.last(), QString("951"));  // the signals do not depend on rows
}

void ManagerChangesTest::UpdatedPlanLooksAtEachModel() {
  OpenExpanded({"Public A", "Public B"});
  Unload("Public B", "1");
  const QString plan = fixture_.Code("Public A plan 2");
  Manager().SetPlanPlayStateByIndexCode("0", plan, true);
  QStringList order;
  const auto note = [this, plan, &order](const char* signal) {
    order << signal + (": " + fixture_.Public()->FindIndexByIndexCode(plan, false).data().toString());
  };
  connect(&Manager(), &CViewModelDataManager::SignalPlanStateChanged, this, [note] { note("changed"); });
  connect(&Manager(), &CViewModelDataManager::SignalUpdatePlanSucc, this, [note] { note("updated"); });
  Manager().OnUpdatePlanSucc(ChangedPlan(plan, "moved", fixture_.Code("Public B")));
  QCOMPARE(order, QStringList({"changed: moved", "updated: moved"}));  // the rows stand before it is announced
  const QString moved = "Plans(Public A(A1,Public A plan 10),Public B(Public B plan 2,Public B plan 10,moved))";
  QCOMPARE(Outline(PublicOf("0")), moved);
  QCOMPARE(Outline(PublicOf("1")), QString(moved).remove(",moved"));
  QCOMPARE(Outline(PublicOf("2")), moved);
  QVERIFY(!fixture_.Public()->FindItemPlanPlaying());  // a new row; the player marks it again
}

void ManagerChangesTest::FollowsAPlanThatChangedElsewhere() {
  OpenExpanded({"Public A", "Public B"});
  const QString plan = fixture_.Code("Public A plan 2");
  const auto change_to = [&](const char* name, const QString& group) {
    QCOMPARE(fixture_.InStore().Update(ChangedPlan(plan, name, group)), QString());
    Services().ObserverOf(RT_VIEW, plan.toStdString())->OnResourceUpdate({2, plan.toStdString(), name, RT_VIEW});
  };
  change_to("renamed", fixture_.Code("Public A"));
  QCOMPARE(PublicOutlines(),
           QString("Plans(Public A(A1,renamed,Public A plan 10),Public B(Public B plan 2,Public B plan 10))"));
  // It comes into every tree up to the first whose group is not loaded.
  Unload("Public B", "1");
  change_to("moved", fixture_.Code("Public B"));
  const auto parent = [&](const char* monitor) {
    return PublicOf(monitor)->FindIndexByIndexCode(plan, false).parent().data().toString();
  };
  QCOMPARE(parent("0"), QString("Public B"));
  QCOMPARE(parent("1"), QString());  // comes when the group is expanded
  QCOMPARE(parent("2"), QString("Public A"));
  // Where its group has no row it goes from every tree.
  QCOMPARE(fixture_.InStore().AddGroup(fixture_.Code("A1"), "hidden"), QString());
  change_to("hidden", fixture_.Code("hidden"));
  QCOMPARE(parent("0") + parent("2") + parent("3"), QString());
}

// Which is made for the first notice, or for who asks for it, and hears of the plan until that goes.
void ManagerChangesTest::HasOneViewForAPlan() {
  OpenExpanded({"Public A"});
  for (const char* name : {"Public A plan 2", "Public A plan 10"}) {
    const QString plan = fixture_.Code(name);
    const auto change = [&](const QString& new_name) {
      QCOMPARE(fixture_.InStore().Update(ChangedPlan(plan, new_name, fixture_.Code("Public A"))), QString());
      Services()
          .ObserverOf(RT_VIEW, plan.toStdString())
          ->OnResourceUpdate({2, plan.toStdString(), new_name.toStdString(), RT_VIEW});
    };
    if (name == QString("Public A plan 2")) {
      change("heard before");
    }
    const std::shared_ptr<CView> view = Manager().CreateView(PlanRecord(plan, "any"));
    QCOMPARE(Manager().CreateView(PlanRecord(plan, "any")), view);
    QCOMPARE(view->GetIndexCode(), plan.toStdString());
    QSignalSpy changed(view.get(), &CView::SignalViewChanged);
    change("heard after");
    QCOMPARE(changed.count(), 1);
    QCOMPARE(PublicOf("3")->FindIndexByIndexCode(plan, false).data().toString(), QString("heard after"));
    Manager().DeleteView(plan.toStdString());
    QVERIFY(!Services().ObserverOf(RT_VIEW, plan.toStdString()));
    view->OnResourceUpdate({2, plan.toStdString(), "late", RT_VIEW});
    QCOMPARE(changed.count(), 2);
  }
}

void ManagerChangesTest::Deletions() {
  OpenExpanded({"Public A", "A1"});
  QSignalSpy changed(&Manager(), &CViewModelDataManager::SignalPlanStateChanged);
  const auto observer = [this](int type, const char* name) {
    return Services().ObserverOf(type, fixture_.Code(name).toStdString());
  };
  // By the row of another tree, which itself goes in the course of it.
  Manager().OnDeletePlanGroupPlanSucc(PlanRow("Public A plan 2", PublicOf("3")));
  QCOMPARE(PublicOutlines(), QString("Plans(Public A(A1(A1 plan 2,A1 plan 10),Public A plan 10),Public B)"));
  QVERIFY(!observer(RT_VIEW, "Public A plan 2"));
  Manager().OnDeletePlanGroupPlanSucc(GroupRow("Public A"));
  QCOMPARE(PublicOutlines(), QString("Plans(Public B)"));
  QCOMPARE(changed.count(), 2);
  QVERIFY(!observer(RT_VIEW_GROUP, "Public A"));
  // What stood below keeps its observers: it may come back.
  QVERIFY(observer(RT_VIEW_GROUP, "A1") && observer(RT_VIEW, "A1 plan 2"));
  const int notices = Manager().GetNoticeCount();
  Manager().OnRestored("-1", true);
  QCOMPARE(PublicOutlines(), QString("Plans(Public B,Public A)"));
  QCOMPARE(Manager().GetNoticeCount(), notices);  // it is a change of one's own
}

void ManagerChangesTest::TimedPlayIsCheckedAfterPlansAlone() {
  for (const int timed_play : {1, 0}) {
    OpenExpanded({"Public A"}, {{"timed_play", timed_play}});
    const auto automatic_queries = [this] {
      const auto requests = Services().Requests<GetPlanDetailRequest>();
      return std::count_if(requests.begin(), requests.end(), [](const auto& r) { return r.query_kind == 1; });
    };
    Services().ForgetCalls();
    QList<std::ptrdiff_t> asked_before;  // a plan is announced before its time is looked at
    QObject receiver;
    const auto note = [&asked_before, automatic_queries] { asked_before << automatic_queries(); };
    connect(&Manager(), &CViewModelDataManager::SignalAddPlanSucc, &receiver, note);
    connect(&Manager(), &CViewModelDataManager::SignalUpdatePlanSucc, &receiver, note);
    Manager().OnDeletePlanGroupPlanSucc(GroupRow("A1"));
    QCOMPARE(automatic_queries(), std::ptrdiff_t(0));
    Manager().OnDeletePlanGroupPlanSucc(PlanRow("Public A plan 2"));
    Manager().OnAddPlanSucc({}, "950");
    Manager().OnUpdatePlanSucc({});
    QCOMPARE(asked_before, QList<std::ptrdiff_t>({timed_play, 2 * timed_play}));
    QCOMPARE(automatic_queries(), std::ptrdiff_t(3 * timed_play));
    Shut();
  }
}

void ManagerChangesTest::Renames() {
  OpenExpanded({"Public A"});
  const QString camera = QString::fromUtf8("\xD7\xA9\xD7\x9C \xF0\x9F\x8E\xA5");
  Manager().OnUpdatePlanGroupNameSucc(GroupRow("Public A", PublicOf("2")), "first");
  QCOMPARE(PublicOutlines(), QString("Plans(first(A1,Public A plan 2,Public A plan 10),Public B)"));
  Manager().OnViewGroupNameChanged(fixture_.Code("Public A"), camera);
  QCOMPARE(GroupRow("Public A").data().toString(), camera);
  // Renamed through a sorted tree, the row moves away from under its index; still no neighbour gets its name.
  CViewSortFilterProxyModel sorted(nullptr, false);
  sorted.setSourceModel(fixture_.Public());
  Manager().OnUpdatePlanGroupNameSucc(sorted.mapFromSource(GroupRow("Public A")), "Z last");
  QCOMPARE(PublicOutlines(), QString("Plans(Z last(A1,Public A plan 2,Public A plan 10),Public B)"));
  // The record stays as the host gave it.
  QCOMPARE(GroupRow("Public A").data(ItemRecordRole).value<PlanGroup>().name, std::string("Public A"));
}

void ManagerChangesTest::InsertSubNodes() {
  OpenExpanded({"Public A", "A1"});
  CStandardPlanModel* tree = fixture_.Public();
  tree->removeRow(1, GroupRow("A1"));
  tree->setData(GroupRow("A1"), "old name", Qt::DisplayRole);
  tree->setData(PlanRow("A1 plan 2"), "old name", Qt::DisplayRole);
  Unload("A1", "0");
  Unload("Public A", "0");
  Manager().InsertSubGroupNode(fixture_.Code("Public A"), 0);
  Manager().InsertSubPlanNode(fixture_.Code("A1"), 0);
  // Existing groups get their text renewed, existing plans do not; only who got rows is marked loaded.
  QCOMPARE(Outline(tree),
           QString("Plans(Public A(A1(old name,A1 plan 10),Public A plan 2,Public A plan 10),Public B)"));
  QVERIFY(!GroupRow("Public A").data(GroupLoadedRole).toBool());
  QVERIFY(GroupRow("A1").data(GroupLoadedRole).toBool());
  // New groups stand after the groups and before the plans.
  tree->removeRow(0, GroupRow("Public A"));
  Manager().InsertSubGroupNode(fixture_.Code("Public A"), 0);
  QCOMPARE(tree->index(0, 0, GroupRow("Public A")).data().toString(), QString("A1"));
  QVERIFY(GroupRow("Public A").data(GroupLoadedRole).toBool());
}

// A notice is about one child of perhaps thousands.
void ManagerChangesTest::RecordsAreMadeOfNewsAlone() {
  OpenExpanded({"Public A"});
  const QString group = fixture_.Code("Public A");
  QList<PlanGroup> groups{GroupRecord(fixture_.Code("A1"), "A1")};
  QList<PlanBasicInfo> plans{PlanRecord(fixture_.Code("Public A plan 2"), "renamed elsewhere"),
                             PlanRecord(fixture_.Code("Public A plan 10"), "Public A plan 10")};
  const auto made = [&] {
    QStringList names;
    for (const auto& record :
         RecordsToShow(fixture_.Models(), group, groups) + RecordsToShow(fixture_.Models(), group, plans)) {
      names << record->Name();
    }
    return names.join(',');
  };
  QCOMPARE(made(), QString());
  groups[0].name = "other";
  plans << PlanRecord("900", "new");
  QCOMPARE(made(), QString("other,new"));
  PublicOf("3")->removeRow(2, GroupRow("Public A", PublicOf("3")));  // one that lacks it is enough
  QCOMPARE(made(), QString("other,Public A plan 10,new"));
  PublicOf("2")->removeRows(0, 3, GroupRow("Public A", PublicOf("2")));
  QCOMPARE(made().count(','), 3);
}

void ManagerChangesTest::SignsFollowChangesElsewhere() {
  OpenExpanded({"Public A"});
  const QString code = fixture_.Code("Public A plan 2");
  auto change = TarnTest::Unchanged(fixture_.InStore().Detail(code.toStdString()));
  change.auto_play = true;
  change.begin_time = "08:00:00";
  change.end_time = "09:00:00";
  change.pages.push_back(TarnTest::Page(2, 1, {}));
  QCOMPARE(fixture_.InStore().Update(change), QString());
  Manager().OnViewChanged(code);
  for (const char* monitor : {"1", "2"}) {
    const QModelIndex row = PublicOf(monitor)->FindIndexByIndexCode(code, false);
    const auto now = row.data(CurrentRecordRole).value<PlanBasicInfo>();
    QVERIFY(now.auto_run && now.page_count == 2);
    QVERIFY(row.data(Qt::AccessibleDescriptionRole).toString().startsWith("tour"));
  }
}

void ManagerChangesTest::PlayStates() {
  OpenExpanded({"Public A"});
  const QString code = fixture_.Code("Public A plan 2");
  const auto playing = [this](const char* monitor) {
    const QStandardItem* row = PublicOf(monitor)->FindItemPlanPlaying();
    return row ? row->text() : QString();
  };
  Manager().SetPlanPlayStateByIndexCode("1", code, true);
  QCOMPARE(playing("1"), QString("Public A plan 2"));
  QCOMPARE(playing("0"), QString());  // other monitors are left alone
  QSignalSpy touched(PublicOf("1"), &QAbstractItemModel::dataChanged);
  Manager().SetPlanPlayStateByIndexCode("1", code, true);
  QCOMPARE(touched.count(), 0);  // already so
  Manager().SetPlanPlayStateByIndexCode("1", fixture_.Code("Public A plan 10"), true);
  QCOMPARE(playing("1"), QString("Public A plan 10"));
  Manager().SetPlanPlayStateByIndexCode("1", "no such plan", true);
  QCOMPARE(playing("1"), QString());  // the old one ended all the same
  Manager().SetPlanPlayStateByIndexCode("1", code, true);
  Manager().SetPlanPlayStateByIndexCode("1", code, false);
  QCOMPARE(playing("1"), QString());
}

void ManagerChangesTest::PlayMarkComesBackByExpandingAlone() {
  OpenExpanded({});
  fixture_.Public()->SetPlayingIndexCode(fixture_.Code("Public A plan 2"));
  CStandardViewController controller(fixture_.Public());
  controller.OnExpandViewTreeItem(GroupRow("Public A"));
  CPlanFixture::Drain();
  QVERIFY(PlanRow("Public A plan 2").data(PlayingRole).toBool());
  QVERIFY(!PublicOf("1")->FindItemPlanPlaying());
  fixture_.Public()->removeRows(0, 3, GroupRow("Public A"));
  Manager().InsertSubPlanNode(fixture_.Code("Public A"), 0);
  QVERIFY(PlanRow("Public A plan 2").isValid());
  QVERIFY(!fixture_.Public()->FindItemPlanPlaying());
}

void ManagerChangesTest::NoticesByKindAndType() {
  OpenExpanded({"Public A"});
  const std::string a = fixture_.Code("Public A").toStdString();
  ResourceData::IResourceObserver* const group = Services().ObserverOf(RT_VIEW_GROUP, a);
  ResourceData::IResourceObserver* const root = Services().ObserverOf(RT_VIEW_GROUP, "root");
  QVERIFY(group && root);
  group->OnResourceUpdate({2, a, "renamed", RT_NONE});
  QCOMPARE(GroupRow("Public A").data().toString(), QString("renamed"));
  const std::pair<ResourceData::ResourceType, std::string> children[] = {
      {RT_VIEW_GROUP, fixture_.Code("A1").toStdString()}, {RT_VIEW, fixture_.Code("Public A plan 2").toStdString()}};
  for (const auto& [type, code] : children) {
    group->OnResourceUpdate({4, a, code, type});
  }
  QCOMPARE(PublicOutlines(), QString("Plans(renamed(Public A plan 10),Public B)"));
  for (const auto& [type, code] : children) {
    group->OnResourceUpdate({3, a, code, type});
  }
  const QString settled = "Plans(renamed(A1,Public A plan 10,Public A plan 2),Public B)";
  QCOMPARE(PublicOutlines(), settled);
  const int observers = Services().ObserverCount();
  Services().ForgetCalls();
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
  QVERIFY(Services().Calls().empty());
  // Notices of the root ask for the top level of all three families.
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

QTEST_MAIN(ManagerChangesTest)
#include "test_manager_changes.moc"
