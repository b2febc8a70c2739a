#include <QSignalSpy>
#include <QtTest>
#include <functional>

#include "controller_log.h"
#include "item_type.h"
#include "plan_item_role.h"
#include "plan_test.h"
#include "standard_plan_model.h"
#include "view_model_data_manager.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using TarnTest::CPlanFixture;
using TarnTest::CPlanTest;
using TarnTest::Outline;

namespace {

// `filled` windows over pages of sixteen, and among them empty ones that must not count.
std::list<PlanPage> Pages(int filled) {
  std::list<PlanPage> pages;
  for (int made = 0; made < filled; ++made) {
    if (made % 16 == 0) {
      pages.emplace_back();
      pages.back().split_type = 8;
      pages.back().page_no = static_cast<int32_t>(pages.size());
    }
    PlanWindow window;
    window.window_no = made % 16 + 1;
    // Either a code or a kind makes a window count.
    window.resource_code = made % 2 ? "" : "12";
    window.content_kind = made % 2 ? 1 : 0;
    pages.back().windows.push_back(window);
  }
  pages.emplace_back();
  pages.back().page_no = static_cast<int32_t>(pages.size());
  pages.back().windows.resize(2);
  return pages;
}

}  // namespace

// What the controller asks of the host, what it says about the answer, and when it stays silent.
class ControllerTest : public CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void cleanup();
  void AddGroup();
  void AddGroupKinds_data();
  void AddGroupKinds();
  void DeleteAndRenameGroup();
  void AddUpdateDeletePlan();
  void PlayAndFetchDetail();
  void DefaultView();
  void FailuresShowTheHostsText_data();
  void FailuresShowTheHostsText();
  void GuardsAreSilent();
  void WindowLimit_data();
  void WindowLimit();
  void Expand();
  void ExpandUnderRootAsksForPlansWhenTheyMayStandThere();
  void ExpandWhenEverythingIsLoaded();
  void ExpandOddRows();
  void ExpandFailures();
  void HasChildren();
  void MetaObjectIsAContract();

 private:
  void Start(const QMap<QString, int>& switches = {});
  QModelIndex Group(const QString& name) { return fixture_.Public()->FindIndexByIndexCode(fixture_.Code(name), true); }
  QModelIndex Plan(const QString& name) { return fixture_.Public()->FindIndexByIndexCode(fixture_.Code(name), false); }
  QModelIndex Root() { return fixture_.Public()->index(0, 0); }
  QStringList Said() {
    CPlanFixture::Drain();
    return log_->Take();
  }
  template <class Request>
  Request Sent() {
    const auto requests = Services().Requests<Request>();
    return requests.empty() ? Request() : requests.back();
  }

  std::unique_ptr<CStandardViewController> controller_;
  std::unique_ptr<CControllerLog> log_;
};

/// Brings everything up with the first two levels of the public tree loaded.
void ControllerTest::Start(const QMap<QString, int>& switches) {
  Open(switches);
  controller_ = std::make_unique<CStandardViewController>(fixture_.Public());
  log_ = std::make_unique<CControllerLog>(controller_.get());
  if (!switches.value("load_all")) {
    controller_->OnExpandViewTreeItem(Root());
    CPlanFixture::Drain();
    controller_->OnExpandViewTreeItem(Group("Public A"));
  }
  Said();
  Services().ForgetCalls();
}

void ControllerTest::cleanup() {
  log_.reset();
  controller_.reset();
  Shut();
}

void ControllerTest::AddGroup() {
  Start();
  QCOMPARE(controller_->parent(), fixture_.Public());
  const QString name = QString::fromUtf8("N\xC3\xB6rd \xF0\x9F\x8E\xA5");
  controller_->AddPlanGroupByIndexName(Group("Public A"), name);
  QVERIFY(log_->lines.isEmpty());  // never before the event loop runs
  QCOMPARE(Said(), QStringList({"group added Public A " + name + " 0", "tip 0 AddASuccess"}));
  const auto request = Sent<AddPlanGroupRequest>();
  QCOMPARE(QString::fromStdString(request.name), name);
  QCOMPARE(request.parent_index_code, fixture_.Code("Public A").toStdString());
  QCOMPARE(QString::fromStdString(log_->last_group.index_code), fixture_.Code(name));
  QCOMPARE(log_->last_group.parent_index_code, request.parent_index_code);
  QVERIFY(Group(name).isValid());
  for (const auto& call : Services().Calls()) {
    QVERIFY2(!call.on_gui_thread || call.name != "AddPlanGroup", "the GUI thread waited for the host");
  }
  controller_->AddPlanGroupByIndexName(Root(), "top");
  Said();
  QCOMPARE(Sent<AddPlanGroupRequest>().parent_index_code, std::string("-1"));
  QCOMPARE(Outline(fixture_.Model("3", PublicTheme)).count("top"), 1);
}

void ControllerTest::AddGroupKinds_data() {
  QTest::addColumn<int>("type");
  QTest::addColumn<int>("kind");
  QTest::addColumn<bool>("flag");
  for (int type = -1; type <= 13; ++type) {
    const bool is_public = type == 1 || type == 2, received = type == 10 || type == 11;
    QTest::newRow(qPrintable(QString::number(type))) << type << (is_public ? 0 : received ? 2 : 1) << received;
  }
}

void ControllerTest::AddGroupKinds() {
  QFETCH(int, type);
  QFETCH(int, kind);
  QFETCH(bool, flag);
  Start();
  Services().Fail("AddPlanGroup");
  auto* row = new QStandardItem("parent");
  row->setData(type, ItemTypeRole);
  row->setData("5", GroupIndexCodeRole);
  fixture_.Public()->appendRow(row);
  controller_->AddPlanGroupByIndexName(row->index(), "x");
  controller_->UpdatePlanGroupName(row->index(), "y");
  CPlanFixture::Drain();
  QCOMPARE(Sent<AddPlanGroupRequest>().kind, kind);
  QCOMPARE(Sent<AddPlanGroupRequest>().flag, flag);
  QCOMPARE(Sent<UpdatePlanGroupRequest>().flag, type == 11);
}

void ControllerTest::DeleteAndRenameGroup() {
  Start();
  const std::string code = fixture_.Code("A1").toStdString();
  controller_->UpdatePlanGroupName(Group("A1"), "A1 new");
  QCOMPARE(Said(), QStringList({"renamed A1 new A1 new", "tip 0 EditSuccess"}));  // the trees have it already
  QCOMPARE(Sent<UpdatePlanGroupRequest>().index_code, code);
  QCOMPARE(Sent<UpdatePlanGroupRequest>().name, std::string("A1 new"));
  controller_->DeletePlanGroupByIndex(Group("A1 new"));
  QCOMPARE(Said(), QStringList({"group deleted -", "tip 0 DeleteTheSuccess"}));
  const auto request = Sent<DeletePlanGroupRequest>();
  QCOMPARE(request.index_code, code);
  QCOMPARE(request.name, std::string("A1 new"));
  QCOMPARE(request.type, 0);
  QVERIFY(fixture_.Code("A1 new").isEmpty());
  QCOMPARE(Outline(fixture_.Model("2", PublicTheme)),
           QString("Plans(Public A(Public A plan 2,Public A plan 10),Public B)"));
}

void ControllerTest::AddUpdateDeletePlan() {
  Start();
  AddPlanRequest add;
  add.plan_name = "new";
  add.parent_index_code = fixture_.Code("Public A").toStdString();
  add.pages = Pages(1);
  add.thumbnail = "png";
  controller_->AddPlanParam(add);
  QCOMPARE(Said(), QStringList({"plan added new", "tip 0 SaveSuccessfulYCFI2BGO"}));
  QCOMPARE(log_->last_code, fixture_.Code("new"));
  QCOMPARE(Sent<AddPlanRequest>().thumbnail, std::string("png"));
  UpdatePlanRequest update;
  static_cast<AddPlanRequest&>(update) = add;
  update.plan_name = "newer";
  update.plan_index_code = log_->last_code.toStdString();
  controller_->UpdatePlanParam(update, "new");
  QCOMPARE(Said(), QStringList({"updated newer", "tip 0 SaveSuccessfulYCFI2BGO"}));
  QCOMPARE(Sent<UpdatePlanRequest>().plan_index_code, update.plan_index_code);
  controller_->DeletePlanByIndex(Plan("newer"));
  QCOMPARE(Said(), QStringList({"plan deleted -", "tip 0 DeleteTheSuccess"}));
  const auto request = Sent<DeletePlanResquest>();
  QCOMPARE(request.plan_index_code, update.plan_index_code);
  QCOMPARE(request.plan_name, std::string("newer"));
  QCOMPARE(request.group_index_code, add.parent_index_code);
  QCOMPARE(request.group_name, std::string("Public A"));
  QVERIFY(request.reserved.empty());
  QCOMPARE(Outline(fixture_.Public()), QString("Plans(Public A(A1,Public A plan 2,Public A plan 10),Public B)"));
}

void ControllerTest::PlayAndFetchDetail() {
  Start();
  const std::string code = fixture_.Code("Public A plan 2").toStdString();
  controller_->PlayPlanViewByIndexCode(code);
  QCOMPARE(Said(), QStringList("play Public A plan 2"));
  QCOMPARE(Sent<GetPlanDetailRequest>().plan_index_code, code);
  QVERIFY(Sent<GetPlanDetailRequest>().play);
  QCOMPARE(Sent<GetPlanDetailRequest>().query_kind, 0);
  controller_->GetPlanInfoByIndexCode(code);
  QCOMPARE(Said(), QStringList("info Public A plan 2"));
  QVERIFY(!Sent<GetPlanDetailRequest>().play);
  controller_->AddOperationPlayPlan("Gate", true, false);
  Services().Fail("AddPlanLog");
  controller_->AddOperationPlayPlan("Gate", false, true);
  QCOMPARE(Said(), QStringList());
  const auto logged = Services().Requests<AddPlanLogRequestParam>();
  QCOMPARE(logged.size(), size_t(2));
  const bool in_order = logged[0].automatic;  // the two tasks may overtake each other
  QVERIFY(logged[in_order ? 0 : 1].automatic && !logged[in_order ? 0 : 1].from_history);
  QVERIFY(!logged[in_order ? 1 : 0].automatic && logged[in_order ? 1 : 0].from_history);
}

void ControllerTest::DefaultView() {
  Start();
  auto& manager = CViewModelDataManager::Instance();
  controller_->InitGetViewDefaultConfig({});
  QCOMPARE(Said(), QStringList());  // "-3": none
  ClienDefaultViewConfigRequest request;
  request.index_code = fixture_.Code("Public A plan 2").toStdString();
  request.type = ResourceData::RT_VIEW;
  QVERIFY(controller_->SetClientViewDefaultConfig(request));
  QCOMPARE(log_->Take(), QStringList("tip 0 SaveSuccessfulYCFI2BGO"));  // answers before it returns
  QVERIFY(controller_->GetClientViewDefaultConfig({}));
  QCOMPARE(manager.GetSeverResponseData().index_code, request.index_code);
  controller_->InitGetViewDefaultConfig({});
  QCOMPARE(Said(), QStringList(QString("default %1 16000").arg(request.index_code.c_str())));
  Services().Fail("GetClientViewConfig", "no get");
  Services().Fail("SetClientViewConfig", "no set");
  QVERIFY(!controller_->GetClientViewDefaultConfig({}));
  QVERIFY(!controller_->SetClientViewDefaultConfig(request));
  QCOMPARE(log_->Take(), QStringList({"tip 1 no get", "tip 1 no set"}));
  QCOMPARE(manager.GetSeverResponseData().index_code, request.index_code);  // kept
}

void ControllerTest::FailuresShowTheHostsText_data() {
  QTest::addColumn<QString>("call");
  QTest::addColumn<QString>("text");
  for (const char* call : {"AddPlanGroup", "DeletePlanGroup", "DeletePlan", "UpdatePlanGroup", "AddPlan", "UpdatePlan",
                           "GetPlanDetail", "GetClientViewConfig"}) {
    QTest::newRow(call) << call << QString::fromUtf8("F\xC3\xA4hler");
  }
  QTest::newRow("blank text") << "AddPlanGroup"
                              << "";  // still a tip
}

void ControllerTest::FailuresShowTheHostsText() {
  QFETCH(QString, call);
  QFETCH(QString, text);
  Start();
  const QString before = Outline(fixture_.Public());
  Services().Fail(call, text.toStdString());
  const std::string code = fixture_.Code("Public A plan 2").toStdString();
  const QMap<QString, std::function<void()>> requests = {
      {"AddPlanGroup", [&] { controller_->AddPlanGroupByIndexName(Root(), "x"); }},
      {"DeletePlanGroup", [&] { controller_->DeletePlanGroupByIndex(Group("A1")); }},
      {"DeletePlan", [&] { controller_->DeletePlanByIndex(Plan("Public A plan 2")); }},
      {"UpdatePlanGroup", [&] { controller_->UpdatePlanGroupName(Group("A1"), "x"); }},
      {"AddPlan", [&] { controller_->AddPlanParam({}); }},
      {"UpdatePlan", [&] { controller_->UpdatePlanParam({}, "x"); }},
      {"GetPlanDetail", [&] { controller_->PlayPlanViewByIndexCode(code); }},
      {"GetClientViewConfig", [&] { controller_->InitGetViewDefaultConfig({}); }},
  };
  requests[call]();
  QCOMPARE(Said(), QStringList("tip 1 " + text));  // one tip and nothing else
  if (call == "GetPlanDetail") {
    controller_->GetPlanInfoByIndexCode(code);
    QCOMPARE(Said(), QStringList("tip 1 " + text));
  }
  QCOMPARE(Outline(fixture_.Public()), before);
}

void ControllerTest::GuardsAreSilent() {
  Start();
  auto* bare = new QStandardItem("bare");
  fixture_.Public()->appendRow(bare);
  Services().ForgetCalls();
  controller_->AddPlanGroupByIndexName({}, "x");
  controller_->AddPlanGroupByIndexName(Root(), "");
  controller_->DeletePlanGroupByIndex({});
  controller_->DeletePlanGroupByIndex(bare->index());
  controller_->DeletePlanGroupByIndex(Plan("Public A plan 2"));  // no group code
  controller_->PlayPlanViewByIndexCode("");
  controller_->AddOperationPlayPlan("", true, true);
  controller_->OnExpandViewTreeItem({});
  QVERIFY(!controller_->IsHaveChilds({}));
  QVERIFY(!controller_->IsHaveChilds(bare->index()));
  QCOMPARE(Said(), QStringList());
  QVERIFY(Services().Calls().empty());
}

void ControllerTest::WindowLimit_data() {
  QTest::addColumn<int>("filled");
  QTest::addColumn<bool>("passes");
  QTest::newRow("none") << 0 << true;
  QTest::newRow("128") << 128 << true;
  QTest::newRow("129") << 129 << false;
}

void ControllerTest::WindowLimit() {
  QFETCH(int, filled);
  QFETCH(bool, passes);
  Start();
  AddPlanRequest add;
  add.plan_name = "many";
  add.parent_index_code = fixture_.Code("Public A").toStdString();
  add.pages = Pages(filled);
  UpdatePlanRequest update;
  static_cast<AddPlanRequest&>(update) = add;
  update.plan_index_code = fixture_.Code("Public A plan 2").toStdString();
  const QString refusal = "tip 1 Orbis-ControlClient.84c1323492ea472ca4d571b907908b8e.msg";
  QCOMPARE(controller_->IsExceedAddLimit(add.pages), !passes);
  QCOMPARE(log_->Take(), passes ? QStringList() : QStringList(refusal));
  controller_->AddPlanParam(add);
  if (!passes) {
    QCOMPARE(log_->Take(), QStringList(refusal));  // at once
  }
  controller_->UpdatePlanParam(update, "");
  Said();
  QCOMPARE(Services().Count("AddPlan"), passes ? 1 : 0);
  QCOMPARE(Services().Count("UpdatePlan"), passes ? 1 : 0);
}

void ControllerTest::Expand() {
  Start();
  const QString b = fixture_.Code("Public B");
  controller_->OnExpandViewTreeItem(Group("Public B"));
  QCOMPARE(log_->Take(), QStringList("loaded " + b + " 1"));  // before the fetch
  QVERIFY(Group("Public B").data(GroupLoadedRole).toBool());
  QCOMPARE(Said(), QStringList("list Public B 0 2"));
  QCOMPARE(Sent<GetPlanGroupsRequest>().parent_index_code, b.toStdString());
  QCOMPARE(Sent<GetPlanGroupsRequest>().node_type, int(PublicGroupItem));
  QCOMPARE(Sent<GetPlansInGroupRequest>().group_index_code, b.toStdString());
  QCOMPARE(Sent<GetPlansInGroupRequest>().node_type, int(PublicGroupItem));
  // Plans may not stand under the root: they are not asked for.
  Services().ForgetCalls();
  controller_->OnExpandViewTreeItem(Root());
  QCOMPARE(Said(), QStringList({"loaded -1 1", "list Plans 2 0"}));
  QCOMPARE(Services().Count("GetPlansInGroup"), 0);
  // A plan has nothing below it.
  Services().ForgetCalls();
  controller_->OnExpandViewTreeItem(Plan("Public A plan 2"));
  QCOMPARE(Said(), QStringList("finished Public A plan 2 1"));
  QVERIFY(Services().Calls().empty());
  Q_EMIT fixture_.Public()->SignalFinshCreateRootPlan();
  QCOMPARE(Said(), QStringList("roots"));
}

void ControllerTest::ExpandUnderRootAsksForPlansWhenTheyMayStandThere() {
  Start({{"create_under_root", 1}});
  controller_->OnExpandViewTreeItem(Root());
  QCOMPARE(Said(), QStringList({"loaded -1 1", "list Plans 2 1"}));
  QCOMPARE(Sent<GetPlansInGroupRequest>().group_index_code, std::string("-1"));
}

void ControllerTest::ExpandWhenEverythingIsLoaded() {
  Start({{"load_all", 1}});
  controller_->OnExpandViewTreeItem(Group("A1"));
  QCOMPARE(log_->Take(), QStringList({"loaded " + fixture_.Code("A1") + " 1", "finished A1 1"}));
  controller_->OnExpandViewTreeItem(Plan("A1 plan 2"));
  QCOMPARE(Said(), QStringList("finished A1 plan 2 1"));
  QCOMPARE(Services().Count("GetPlanGroups"), 0);
}

void ControllerTest::ExpandOddRows() {
  Start();
  // A group without a code keeps waiting: there is nothing to ask for and nothing to say.
  for (const int type : {int(OwnGroupItem), int(ReceivedGroupItem)}) {
    auto* row = new QStandardItem("odd");
    row->setData(true, IsGroupRole);
    row->setData(type, ItemTypeRole);
    fixture_.Public()->appendRow(row);
    Services().ForgetCalls();
    controller_->OnExpandViewTreeItem(row->index());
    QCOMPARE(Said(), QStringList());
    QVERIFY(Services().Calls().empty());
    row->setData("77", GroupIndexCodeRole);
  }
  // Groups of the third family are never marked.
  const QModelIndex received = fixture_.Public()->index(2, 0);
  QCOMPARE(received.data(ItemTypeRole).toInt(), int(ReceivedGroupItem));
  controller_->OnExpandViewTreeItem(received);
  for (const QString& line : Said()) {
    QVERIFY2(!line.startsWith("loaded"), qPrintable(line));
  }
}

void ControllerTest::ExpandFailures() {
  Start();
  const QString loaded = "loaded " + fixture_.Code("Public B") + " 1";
  Services().Fail("GetPlansInGroup", "no plans");
  controller_->OnExpandViewTreeItem(Group("Public B"));
  QCOMPARE(Said(), QStringList({loaded, "finished Public B 1", "tip 1 no plans"}));
  Services().Fail("GetPlanGroups", "");
  Services().ForgetCalls();
  controller_->OnExpandViewTreeItem(Group("Public B"));
  QCOMPARE(Said(), QStringList({loaded, "finished Public B 1", "tip 1 "}));
  QCOMPARE(Services().Count("GetPlansInGroup"), 0);
  QCOMPARE(fixture_.Public()->rowCount(Group("Public B")), 0);
  QVERIFY(fixture_.Public()->canFetchMore(Group("Public B")));  // can be tried again
  Services().Mend("GetPlanGroups");
  Services().Mend("GetPlansInGroup");
  controller_->OnExpandViewTreeItem(Group("Public B"));
  Said();
  QCOMPARE(fixture_.Public()->rowCount(Group("Public B")), 2);
}

void ControllerTest::HasChildren() {
  Start();
  QVERIFY(controller_->IsHaveChilds(Group("Public A")));
  QVERIFY(controller_->IsHaveChilds(Group("Public B")));  // plans alone
  QVERIFY(controller_->IsHaveChilds(Root()));
  QVERIFY(!controller_->IsHaveChilds(Plan("Public A plan 2")));
  controller_->AddPlanGroupByIndexName(Root(), "empty");
  CPlanFixture::Drain();
  QVERIFY(!controller_->IsHaveChilds(Group("empty")));
  for (const auto& call : Services().Calls()) {
    QVERIFY(!call.on_gui_thread || call.name == "GetCurrentUser");  // on whose behalf the group is added
  }
  Services().Fail("GetPlansInGroup");
  QVERIFY(controller_->IsHaveChilds(Group("Public A")));
  QVERIFY(!controller_->IsHaveChilds(Group("Public B")));  // the host cannot say
  Services().Fail("GetPlanGroups");
  QVERIFY(!controller_->IsHaveChilds(Group("Public A")));
  log_->Take();
  QCOMPARE(Said(), QStringList());  // the probe says nothing to the user
}

void ControllerTest::MetaObjectIsAContract() {
  Start();
  const QMetaObject& meta = CStandardViewController::staticMetaObject;
  QStringList names;
  for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
    names << meta.method(i).name() + "(" + meta.method(i).parameterNames().join(",") + ")";
  }
  QCOMPARE(names, QStringList({"SignalFinshCreateRootPlan()", "SignalPlayPlanView(plan_info)",
                               "SignalGetPlanGroupListSucc(index,plan_group_list,plan_list)",
                               "SignalAddPlanGroupSucc(index,plan_group)", "SignalDeletePlanGroupSucc(index)",
                               "SignalDeletePlanSucc(index)", "SignalUpdatePlanGroupNameSucc(index,group_name)",
                               "SignalUpdatePlanSucc(plan_param)", "SignalAddPlanSucc(plan_param,get_plan_index_code)",
                               "SignalGetPlanInfo(plan_info)", "SignalFinishAnsyGetSubItem(index,b_expand)",
                               "SignalFinishAnsyGetSubItem(index)", "signalSetNodeLoaded(index_code,is_loaded)",
                               "signalShowMessage(message_tip,state)", "SignalGetViewConfigData(response_param)",
                               "SignalSetViewConfigData(response_param)", "SignalConfigPlayView(,type)",
                               "OnExpandViewTreeItem()"}));
}

QTEST_MAIN(ControllerTest)
#include "test_controller.moc"
