#include <QSignalSpy>
#include <QtTest>
#include <functional>

#include "controller_log.h"
#include "item_type.h"
#include "method_names.h"
#include "plan_item_role.h"
#include "plan_test.h"
#include "standard_plan_model.h"
#include "view_model_data_manager.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using TarnTest::CPlanFixture;
using TarnTest::CPlanTest;
using TarnTest::NewPlan;
using TarnTest::Outline;

namespace {

// `filled` windows over pages of sixteen, and among them empty ones that must not count.
std::list<PlanPage> Pages(int filled) {
  std::list<PlanPage> pages;
  for (int made = 0; made < filled; ++made) {
    if (made % 16 == 0) {
      pages.push_back(TarnTest::Page(static_cast<int>(pages.size()) + 1, 8, {}));
    }
    const bool by_code = made % 2 == 0;  // either a code or a kind makes a window count
    pages.back().windows.push_back(by_code ? TarnTest::Window(made % 16 + 1, "12", 0)
                                           : TarnTest::Window(made % 16 + 1, "", 1));
  }
  pages.push_back(TarnTest::Page(static_cast<int>(pages.size()) + 1, 8, {}));
  pages.back().windows.resize(2);
  return pages;
}

const QString kSaved = QStringLiteral("tip 0 SaveSuccessfulYCFI2BGO");
const QString kDeleted = QStringLiteral("tip 0 DeleteTheSuccess");

}  // namespace

// What the controller asks of the host, what it says about the answer, and when it stays silent.
class ControllerTest : public CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void cleanup();
  void AddGroup();
  void GroupsOfEveryKindOfRow();
  void DeleteAndRenameGroup();
  void AddUpdateDeletePlan();
  void PlayAndFetchDetail();
  void DefaultView();
  void FailuresShowTheHostsText();
  void GuardsAreSilent();
  void WindowLimit_data();
  void WindowLimit();
  void Expand();
  void ExpandWhenEverythingIsLoaded();
  void ExpandOddRows();
  void ExpandFailures();
  void HasChildren();
  void SignalsStandInTheirOrder();

 private:
  void Start(const QMap<QString, int>& switches = {});
  QModelIndex Root() { return fixture_.Public()->index(0, 0); }
  /// A row of its own at the top, as another host might send it.
  QStandardItem* AddRow(int type, const QVariant& code) {
    auto* row = new QStandardItem("row");
    row->setData(type, ItemTypeRole);
    row->setData(code, GroupIndexCodeRole);
    fixture_.Public()->appendRow(row);
    return row;
  }
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
    controller_->OnExpandViewTreeItem(GroupRow("Public A"));
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
  controller_->AddPlanGroupByIndexName(GroupRow("Public A"), name);
  QVERIFY(log_->lines.isEmpty());  // never before the event loop runs
  QCOMPARE(Said(), QStringList({"group added Public A " + name + " 0", "tip 0 AddASuccess"}));
  const auto request = Sent<AddPlanGroupRequest>();
  QCOMPARE(QString::fromStdString(request.name), name);
  QCOMPARE(request.parent_index_code, fixture_.Code("Public A").toStdString());
  QCOMPARE(QString::fromStdString(log_->last_group.index_code), fixture_.Code(name));
  QCOMPARE(log_->last_group.parent_index_code, request.parent_index_code);
  QVERIFY(GroupRow(name).isValid());
  for (const auto& call : Services().Calls()) {
    QVERIFY2(!call.on_gui_thread || call.name != "AddPlanGroup", "the GUI thread waited for the host");
  }
  controller_->AddPlanGroupByIndexName(Root(), "top");
  Said();
  QCOMPARE(Sent<AddPlanGroupRequest>().parent_index_code, std::string("-1"));
  QCOMPARE(Outline(fixture_.Model("3", PublicTheme)).count("top"), 1);
}

void ControllerTest::GroupsOfEveryKindOfRow() {
  Start();
  Services().Fail("AddPlanGroup");
  for (int type = -1; type <= 13; ++type) {
    const bool is_public = type == PublicRootItem || type == PublicGroupItem;
    const bool received = type == ReceivedRootItem || type == ReceivedGroupItem;
    const QModelIndex row = AddRow(type, "5")->index();
    controller_->AddPlanGroupByIndexName(row, "x");
    controller_->UpdatePlanGroupName(row, "y");
    CPlanFixture::Drain();
    QCOMPARE(Sent<AddPlanGroupRequest>().kind == 0, is_public);
    QCOMPARE(Sent<AddPlanGroupRequest>().kind == 2, received);
    QCOMPARE(Sent<AddPlanGroupRequest>().flag, received);
    QCOMPARE(Sent<UpdatePlanGroupRequest>().flag, type == ReceivedGroupItem);
  }
}

void ControllerTest::DeleteAndRenameGroup() {
  Start();
  const std::string code = fixture_.Code("A1").toStdString();
  controller_->UpdatePlanGroupName(GroupRow("A1"), "A1 new");
  QCOMPARE(Said(), QStringList({"renamed A1 new A1 new", "tip 0 EditSuccess"}));  // the trees have it already
  QCOMPARE(Sent<UpdatePlanGroupRequest>().index_code, code);
  QCOMPARE(Sent<UpdatePlanGroupRequest>().name, std::string("A1 new"));
  controller_->DeletePlanGroupByIndex(GroupRow("A1 new"));
  QCOMPARE(Said(), QStringList({"group deleted -", kDeleted}));
  const auto request = Sent<DeletePlanGroupRequest>();
  QCOMPARE(request.index_code, code);
  QCOMPARE(request.name, std::string("A1 new"));
  QCOMPARE(request.type, 0);
  QCOMPARE(Outline(fixture_.Model("2", PublicTheme)),
           QString("Plans(Public A(Public A plan 2,Public A plan 10),Public B)"));
}

void ControllerTest::AddUpdateDeletePlan() {
  Start();
  AddPlanRequest add = NewPlan("new", fixture_.Code("Public A"), Pages(1));
  add.thumbnail = "png";
  controller_->AddPlanParam(add);
  QCOMPARE(Said(), QStringList({"plan added new", kSaved}));
  QCOMPARE(log_->last_code, fixture_.Code("new"));
  QCOMPARE(Sent<AddPlanRequest>().thumbnail, std::string("png"));
  const auto update = TarnTest::ChangedPlan(log_->last_code, "newer", fixture_.Code("Public A"), add.pages);
  controller_->UpdatePlanParam(update, "new");
  QCOMPARE(Said(), QStringList({"updated newer", kSaved}));
  QCOMPARE(Sent<UpdatePlanRequest>().plan_index_code, update.plan_index_code);
  controller_->DeletePlanByIndex(PlanRow("newer"));
  QCOMPARE(Said(), QStringList({"plan deleted -", kDeleted}));
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
  QVERIFY(logged[0].automatic && !logged[0].from_history);  // in the order of their requests
  QVERIFY(!logged[1].automatic && logged[1].from_history);
}

void ControllerTest::DefaultView() {
  Start();
  auto& manager = CViewModelDataManager::Instance();
  QStringList answers;
  const auto ask = [&] {
    controller_->InitGetViewDefaultConfig({}, [&](const auto& a) { answers << (a.ok ? "is " : "fails ") + a.text; });
  };
  ask();
  QCOMPARE(Said(), QStringList());  // "-3": none
  QCOMPARE(answers, QStringList("is "));
  ClienDefaultViewConfigRequest request;
  request.index_code = fixture_.Code("Public A plan 2").toStdString();
  request.type = ResourceData::RT_VIEW;
  QVERIFY(controller_->SetClientViewDefaultConfig(request));
  QCOMPARE(log_->Take(), QStringList(kSaved));  // answers before it returns
  QVERIFY(controller_->GetClientViewDefaultConfig({}));
  QCOMPARE(manager.GetSeverResponseData().index_code, request.index_code);
  controller_->InitGetViewDefaultConfig({});
  QCOMPARE(Said(), QStringList(QString("default %1 16000").arg(request.index_code.c_str())));
  Services().Fail("GetClientViewConfig", "no get");
  Services().Fail("SetClientViewConfig", "no set");
  ask();
  QCOMPARE(Said(), QStringList("tip 1 no get"));
  QCOMPARE(answers.last(), QString("fails no get"));
  QVERIFY(!controller_->GetClientViewDefaultConfig({}));
  QVERIFY(!controller_->SetClientViewDefaultConfig(request));
  QCOMPARE(log_->Take(), QStringList({"tip 1 no get", "tip 1 no set"}));
  QCOMPARE(manager.GetSeverResponseData().index_code, request.index_code);  // kept
}

void ControllerTest::FailuresShowTheHostsText() {
  Start();
  const QString before = Outline(fixture_.Public());
  const std::string code = fixture_.Code("Public A plan 2").toStdString();
  const std::pair<const char*, std::function<void()>> requests[] = {
      {"AddPlanGroup", [&] { controller_->AddPlanGroupByIndexName(Root(), "x"); }},
      {"DeletePlanGroup", [&] { controller_->DeletePlanGroupByIndex(GroupRow("A1")); }},
      {"DeletePlan", [&] { controller_->DeletePlanByIndex(PlanRow("Public A plan 2")); }},
      {"UpdatePlanGroup", [&] { controller_->UpdatePlanGroupName(GroupRow("A1"), "x"); }},
      {"AddPlan", [&] { controller_->AddPlanParam({}); }},
      {"UpdatePlan", [&] { controller_->UpdatePlanParam({}, "x"); }},
      {"GetPlanDetail", [&] { controller_->PlayPlanViewByIndexCode(code); }},
      {"GetPlanDetail", [&] { controller_->GetPlanInfoByIndexCode(code); }},
      {"GetClientViewConfig", [&] { controller_->InitGetViewDefaultConfig({}); }},
  };
  for (const auto& [call, ask] : requests) {
    for (const char* text : {"F\xC3\xA4hler", ""}) {  // a blank text is still a tip
      Services().Fail(call, text);
      ask();
      QCOMPARE(Said(), QStringList("tip 1 " + QString(text)));  // one tip and nothing else
    }
  }
  QCOMPARE(Outline(fixture_.Public()), before);
}

void ControllerTest::GuardsAreSilent() {
  Start();
  const QModelIndex bare = AddRow(-1, QVariant())->index();
  Services().ForgetCalls();
  controller_->AddPlanGroupByIndexName({}, "x");
  controller_->AddPlanGroupByIndexName(Root(), "");
  controller_->DeletePlanGroupByIndex({});
  controller_->DeletePlanGroupByIndex(bare);
  controller_->DeletePlanGroupByIndex(PlanRow("Public A plan 2"));  // no group code
  controller_->PlayPlanViewByIndexCode("");
  controller_->AddOperationPlayPlan("", true, true);
  controller_->OnExpandViewTreeItem({});
  QVERIFY(!controller_->IsHaveChilds({}));
  QVERIFY(!controller_->IsHaveChilds(bare));
  QCOMPARE(Said(), QStringList());
  QVERIFY(Services().Calls().empty());
}

void ControllerTest::WindowLimit_data() {
  QTest::addColumn<int>("filled");
  QTest::addColumn<bool>("passes");
  QTest::newRow("128") << 128 << true;
  QTest::newRow("129") << 129 << false;
}

void ControllerTest::WindowLimit() {
  QFETCH(int, filled);
  QFETCH(bool, passes);
  Start();
  const AddPlanRequest add = NewPlan("many", fixture_.Code("Public A"), Pages(filled));
  const QStringList refusal("tip 1 Orbis-ControlClient.84c1323492ea472ca4d571b907908b8e.msg");
  const QStringList at_once = passes ? QStringList() : refusal;
  QCOMPARE(controller_->IsExceedAddLimit(add.pages), !passes);
  QCOMPARE(log_->Take(), at_once);
  controller_->AddPlanParam(add);
  QCOMPARE(log_->Take(), at_once);
  const QString plan = fixture_.Code("Public A plan 2");
  controller_->UpdatePlanParam(TarnTest::ChangedPlan(plan, "many", fixture_.Code("Public A"), add.pages), "");
  QCOMPARE(log_->Take(), at_once);
  Said();
  QCOMPARE(Services().Count("AddPlan") + Services().Count("UpdatePlan"), passes ? 2 : 0);
}

void ControllerTest::Expand() {
  Start();
  const QString b = fixture_.Code("Public B");
  controller_->OnExpandViewTreeItem(GroupRow("Public B"));
  QCOMPARE(log_->Take(), QStringList("loaded " + b + " 1"));  // before the fetch
  QVERIFY(GroupRow("Public B").data(GroupLoadedRole).toBool());
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
  controller_->OnExpandViewTreeItem(PlanRow("Public A plan 2"));
  QCOMPARE(Said(), QStringList("finished Public A plan 2 1"));
  QVERIFY(Services().Calls().empty());
  Q_EMIT fixture_.Public()->SignalFinshCreateRootPlan();
  QCOMPARE(Said(), QStringList("roots"));
}

void ControllerTest::ExpandWhenEverythingIsLoaded() {
  Start({{"load_all", 1}});
  controller_->OnExpandViewTreeItem(GroupRow("A1"));
  QCOMPARE(log_->Take(), QStringList({"loaded " + fixture_.Code("A1") + " 1", "finished A1 1"}));
  controller_->OnExpandViewTreeItem(PlanRow("A1 plan 2"));
  QCOMPARE(Said(), QStringList("finished A1 plan 2 1"));
  QCOMPARE(Services().Count("GetPlanGroups"), 0);
}

void ControllerTest::ExpandOddRows() {
  Start();
  // A group without a code keeps waiting: there is nothing to ask for and nothing to say.
  for (const int type : {int(OwnGroupItem), int(ReceivedGroupItem)}) {
    QStandardItem* row = AddRow(type, QVariant());
    row->setData(true, IsGroupRole);
    Services().ForgetCalls();
    controller_->OnExpandViewTreeItem(row->index());
    QCOMPARE(Said(), QStringList());
    QVERIFY(Services().Calls().empty());
  }
  // Groups of the third family are never marked.
  QStandardItem* received = AddRow(ReceivedGroupItem, "77");
  received->setData(true, IsGroupRole);
  controller_->OnExpandViewTreeItem(received->index());
  QVERIFY(Said().filter("loaded").isEmpty());
}

void ControllerTest::ExpandFailures() {
  Start();
  const QString loaded = "loaded " + fixture_.Code("Public B") + " 1";
  Services().Fail("GetPlansInGroup", "no plans");
  controller_->OnExpandViewTreeItem(GroupRow("Public B"));
  QCOMPARE(Said(), QStringList({loaded, "finished Public B 1", "tip 1 no plans"}));
  Services().Fail("GetPlanGroups", "");
  Services().ForgetCalls();
  controller_->OnExpandViewTreeItem(GroupRow("Public B"));
  QCOMPARE(Said(), QStringList({loaded, "finished Public B 1", "tip 1 "}));
  QCOMPARE(Services().Count("GetPlansInGroup"), 0);
  QCOMPARE(fixture_.Public()->rowCount(GroupRow("Public B")), 0);
  QVERIFY(fixture_.Public()->canFetchMore(GroupRow("Public B")));  // can be tried again
  Services().Mend("GetPlanGroups");
  Services().Mend("GetPlansInGroup");
  controller_->OnExpandViewTreeItem(GroupRow("Public B"));
  Said();
  QCOMPARE(fixture_.Public()->rowCount(GroupRow("Public B")), 2);
}

void ControllerTest::HasChildren() {
  Start();
  controller_->AddPlanGroupByIndexName(Root(), "empty");
  CPlanFixture::Drain();
  log_->Take();
  QVERIFY(controller_->IsHaveChilds(GroupRow("Public A")));
  QVERIFY(controller_->IsHaveChilds(GroupRow("Public B")));  // plans alone
  QVERIFY(controller_->IsHaveChilds(Root()));
  QVERIFY(!controller_->IsHaveChilds(PlanRow("Public A plan 2")));
  QVERIFY(!controller_->IsHaveChilds(GroupRow("empty")));
  for (const auto& call : Services().Calls()) {
    QVERIFY(!call.on_gui_thread || call.name == "GetCurrentUser");  // on whose behalf the group is added
  }
  Services().Fail("GetPlansInGroup");
  QVERIFY(controller_->IsHaveChilds(GroupRow("Public A")));
  QVERIFY(!controller_->IsHaveChilds(GroupRow("Public B")));  // the host cannot say
  Services().Fail("GetPlanGroups");
  QVERIFY(!controller_->IsHaveChilds(GroupRow("Public A")));
  QCOMPARE(Said(), QStringList());  // the probe says nothing to the user
}

void ControllerTest::SignalsStandInTheirOrder() {
  QCOMPARE(TarnTest::MethodsOf(CStandardViewController::staticMetaObject).mid(0, 18),
           QStringList({"SignalFinshCreateRootPlan()", "SignalPlayPlanView(plan_info)",
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
