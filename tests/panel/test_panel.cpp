#include <QLineEdit>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QtTest>

#include "TarnUIDataController/popup_menu.h"
#include "item_type.h"
#include "panel_stage.h"
#include "share_view_wgt.h"
#include "tarn_add_plan_widget.h"
#include "view_model_data_manager.h"
#include "view_name_edit.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using tarn_ui_data_controller::MsgType;
using TarnTest::CPanelStage;
using TarnTest::CPlanFixture;

// The bar, the pop-ups that it opens, and what becomes of their answers.
class PanelTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void StartsWaitingAndThenShowsTheTree();
  void BarShowsWhatTheRowGrants();
  void NamesTheMissingRight();
  void AddsGroupsDownToTheSixthLevel();
  void NewGroupGoesWhereItWasBegun();
  void RenamesTheRowThatTheEditorWasOpenedFor();
  void MenuCommands();
  void MenuOfAVanishedRowTouchesNoOther();
  void WhateverDiesFirstDoesNoHarm();
  void SwitchOfUserEndsWhatIsUnderWay();
  void PlayingPlanIsMarkedAndCurrent();
  void FillsTheUpdateOfThePlayingPlan();
  void SignalsStandInTheirOrder();
  void ReloadKeepsTheCurrentRow_data();
  void ReloadKeepsTheCurrentRow();
  void PreviewsThePlanUnderTheMouse();
  void PlanEditorOpensBesideThePanel();

 private:
  void openNameEditor(CPanelStage& stage, const char* button, const QString& name);
  QVector<int> AskedRights() {
    const auto asked = Services().Requests<int>();
    return QVector<int>(asked.begin(), asked.end());
  }
};

void PanelTest::StartsWaitingAndThenShowsTheTree() {
  Open({}, false);
  Services().Hold(QStringLiteral("GetPlansInGroup"));
  auto& manager = CViewModelDataManager::Instance();
  manager.InitManager();
  CPanelStage stage(fixture_);
  QCOMPARE(stage.PageName(), QStringLiteral("wait_widget"));
  QCOMPARE(stage.Enabled(), QStringLiteral("----"));
  QVERIFY(stage.Button("search_btn")->isEnabled());
  manager.LoadAllViewManagerModelData();
  QCOMPARE(stage.PageName(), QStringLiteral("tree"));
  Services().ReleaseAll();
  // The root opens by itself and becomes current, so that keys work at once.
  QTRY_COMPARE(stage.Tree().model()->rowCount(stage.Tree().model()->index(0, 0)), 2);
  QTRY_COMPARE(stage.Tree().currentIndex(), stage.Tree().model()->index(0, 0));
  QCOMPARE(stage.Enabled(), QStringLiteral("g---"));
  stage.Panel().SwitchUserUpdate();
  QCOMPARE(stage.PageName(), QStringLiteral("wait_widget"));
  QCOMPARE(stage.Enabled(), QStringLiteral("----"));
}

void PanelTest::BarShowsWhatTheRowGrants() {
  Open();
  CPanelStage stage(fixture_);
  QStandardItemModel rows;
  rows.appendRow(new QStandardItem);
  const auto select = [&](const QModelIndex& row) {
    QMetaObject::invokeMethod(&stage.Panel(), "onCurrentIndexChanged", Q_ARG(QModelIndex, row),
                              Q_ARG(QModelIndex, QModelIndex()));
  };
  const struct {
    int type;
    bool may_edit;
    const char* buttons;
  } cases[] = {{PublicPlanItem, true, "gped"},
               {ReceivedPlanItem, false, "g-ed"},
               {PublicRootItem, false, "g---"},
               {ReceivedRootItem, true, "g---"},
               {PublicGroupItem, false, "gp-d"}};
  for (const auto& one : cases) {
    Services().SetRight(6, one.may_edit);
    Services().ForgetCalls();
    rows.item(0)->setData(one.type, ItemTypeRole);
    select(rows.index(0, 0));
    QCOMPARE(stage.Enabled(), QString(one.buttons));
    const bool is_public = one.type <= PublicLeafItem;
    QCOMPARE(stage.Tree().IsMovePermitted(), one.may_edit || !is_public);
    QCOMPARE(Services().Requests<int>(), std::vector<int>({5, 6, 7}));  // each right once
  }
  select(QModelIndex());
  QCOMPARE(stage.Enabled(), QString("gp-d"));
}

void PanelTest::NamesTheMissingRight() {
  Open();
  CPanelStage stage(fixture_);
  Services().SetRight(7, false);
  stage.Choose(QStringLiteral("Public A plan 2"));
  QVERIFY(!stage.Button("delete_btn")->isEnabled());
  QVERIFY(stage.Button("delete_btn")->toolTip().contains(QLatin1String("right to delete")));
  QVERIFY(!stage.Button("edit_btn")->toolTip().contains(QLatin1String("right to")));
  // The key is refused with the reason, not silently.
  QTest::keyClick(&stage.Tree(), Qt::Key_Delete);
  QCOMPARE(stage.TakeQuestions(), QStringList());
  QCOMPARE(stage.TakeTips().size(), 1);
  // Sharing has no button: the entry of the menu says it.
  for (const bool may_add : {false, true}) {
    Services().SetRight(5, may_add);
    QTest::keyClick(&stage.Tree(), Qt::Key_Menu);
    auto* menu = stage.Tree().GetViewMoreMenu();
    const auto share = tarn_ui_data_controller::Share;
    QCOMPARE(menu->MenuItem(share)->isEnabled(), may_add);
    QCOMPARE(menu->MenuItem(share)->toolTip().contains(QLatin1String("right to share")), !may_add);
    menu->close();
    Q_EMIT stage.Tree().SignalMenuClicked(share, QVariant());
    QCOMPARE(stage.TakeTips().size(), may_add ? 0 : 1);
    QCOMPARE(stage.Panel().findChild<CShareViewWgt*>() != nullptr, may_add);
  }
}

void PanelTest::openNameEditor(CPanelStage& stage, const char* button, const QString& name) {
  fixture_.Messages().Expect(QStringLiteral("Argument missing"));  // without a catalogue the texts are bare keys
  QTest::mouseClick(stage.Button(button), Qt::LeftButton);
  auto* editor = stage.Panel().findChild<CViewNameEdit*>();
  QVERIFY(editor && editor->isVisible());
  const QWidget* shown_by = stage.Button(button);
  QCOMPARE(editor->pos(), shown_by->mapToGlobal(QPoint(0, shown_by->height() + 1)));
  editor->findChild<QLineEdit*>(QStringLiteral("ptr_name_edit"))->setText(name);
}

void PanelTest::AddsGroupsDownToTheSixthLevel() {
  Open();
  CPanelStage stage(fixture_);
  stage.Choose(QStringLiteral("A1 plan 2"));  // a plan: its group is meant; root, Public A and A1 are three levels
  for (const char* name : {"Level 4", "Level 5", "Level 6", "Level 7"}) {
    openNameEditor(stage, "add_group_btn", QString::fromLatin1(name));
    QTest::keyClick(stage.Panel().findChild<QLineEdit*>(QStringLiteral("ptr_name_edit")), Qt::Key_Return);
    fixture_.Drain();
    if (QByteArray(name) != "Level 7") {
      stage.Choose(QString::fromLatin1(name));
    }
  }
  QVERIFY(!stage.Row(QStringLiteral("Level 7")).isValid());
  QCOMPARE(Services().Count(QStringLiteral("AddPlanGroup")), 3);
  QVERIFY(fixture_.Log().Lines().join('\n').contains(
      QLatin1String("CNomalMessageManager::Instance().ShowMessage ViewGroup Tips Show")));
}

void PanelTest::NewGroupGoesWhereItWasBegun() {
  Open();
  CPanelStage stage(fixture_);
  stage.Row(QStringLiteral("A1 plan 2"));
  stage.Choose(QStringLiteral("Public A plan 2"));
  openNameEditor(stage, "add_group_btn", QStringLiteral("Yard"));
  stage.Choose(QStringLiteral("Public B"));  // while the name was typed
  auto* editor = stage.Panel().findChild<CViewNameEdit*>();
  QMetaObject::invokeMethod(editor, "OnClickedBtn");
  QTRY_COMPARE(stage.Row(QStringLiteral("Yard")).parent().data().toString(), QStringLiteral("Public A"));

  stage.Choose(QStringLiteral("A1"));
  openNameEditor(stage, "add_group_btn", QStringLiteral("Gate"));
  CViewModelDataManager::Instance().OnDeletePlanGroupPlanSucc(stage.Row(QStringLiteral("A1")));
  QVERIFY(stage.Tree().currentIndex().isValid());
  stage.TakeTips();
  Services().ForgetCalls();
  QMetaObject::invokeMethod(editor, "OnClickedBtn");
  fixture_.Drain();
  QCOMPARE(Services().Count(QStringLiteral("AddPlanGroup")), 0);
  QCOMPARE(stage.TakeTips().size(), 1);
  stage.Choose(QStringLiteral("Public B"));
  QTest::mouseClick(stage.Button("add_group_btn"), Qt::LeftButton);  // what was typed is not lost
  QTest::keyClick(editor->findChild<QLineEdit*>(), Qt::Key_Return);
  QTRY_COMPARE(stage.Row(QStringLiteral("Gate")).parent().data().toString(), QStringLiteral("Public B"));

  // Closed without a name: a name that comes without the pop-up goes into the current group.
  stage.Choose(QStringLiteral("Public A"));
  QTest::mouseClick(stage.Button("add_group_btn"), Qt::LeftButton);
  QTest::keyClick(editor, Qt::Key_Escape);
  stage.Choose(QStringLiteral("Public B"));
  QMetaObject::invokeMethod(&stage.Panel(), "onAddPlanViewGroupName", Q_ARG(QString, QStringLiteral("Roof")));
  QTRY_COMPARE(stage.Row(QStringLiteral("Roof")).parent().data().toString(), QStringLiteral("Public B"));
}

void PanelTest::RenamesTheRowThatTheEditorWasOpenedFor() {
  Open();
  CPanelStage stage(fixture_);
  stage.Choose(QStringLiteral("Public A"));
  openNameEditor(stage, "edit_btn", QStringLiteral("  Yard \n"));
  stage.Choose(QStringLiteral("Public B"));  // another row becomes current while the editor is open
  auto* editor = stage.Panel().findChild<CViewNameEdit*>();
  QMetaObject::invokeMethod(editor, "OnClickedBtn");
  fixture_.Drain();
  QVERIFY(stage.Row(QStringLiteral("Yard")).isValid());
  QVERIFY(stage.Row(QStringLiteral("Public B")).isValid());

  stage.TakeTips();
  stage.Choose(QStringLiteral("A1"));
  openNameEditor(stage, "edit_btn", QStringLiteral("Too late"));
  DeletePlanGroupResponse ignored;
  QVERIFY(fixture_.Store().DeletePlanGroup({fixture_.Code(QStringLiteral("A1")).toStdString(), "A1", 0}, ignored));
  CViewModelDataManager::Instance().OnDeletePlanGroupPlanSucc(stage.Row(QStringLiteral("A1")));
  Services().ForgetCalls();
  QMetaObject::invokeMethod(editor, "OnClickedBtn");
  fixture_.Drain();
  QCOMPARE(Services().Count(QStringLiteral("UpdatePlanGroup")), 0);
  QCOMPARE(stage.TakeTips().size(), 1);
}

void PanelTest::MenuCommands() {
  Open({{QStringLiteral("creation_info"), 1}});
  CPanelStage stage(fixture_);
  stage.Choose(QStringLiteral("Public A plan 2"));
  const QString plan = fixture_.Code(QStringLiteral("Public A plan 2"));
  const QString group = fixture_.Code(QStringLiteral("Public A"));
  const auto click = [&](int type, const QString& code) {
    QMetaObject::invokeMethod(&stage.Panel(), "OnMenuClicked",
                              Q_ARG(tarn_ui_data_controller::MsgType, static_cast<MsgType>(type)),
                              Q_ARG(QVariant, QVariant(code)));
  };
  QSignalSpy played(&stage.Controller(), &CStandardViewController::SignalPlayPlanView);
  QSignalSpy to_monitor(&stage.Panel(), &CViewExternWidget::SignalPlayPlanToMonitor);
  QSignalSpy cycle(&stage.Panel(), &CViewExternWidget::SignalPlanGroupCycle);
  stage.Panel().SetMonitorId(QStringLiteral("0"));
  for (const int nothing : {28, 29, 30, 99}) {
    click(nothing, plan);
  }
  click(31, QStringLiteral("4711"));  // unknown
  click(34, plan);                    // no group
  fixture_.Drain();
  QCOMPARE(played.size() + cycle.size() + to_monitor.size(), 0);

  click(31, plan);
  QTRY_COMPARE(played.size(), 1);
  QCOMPARE(to_monitor.value(0).value(0).toMap().value(QStringLiteral("plan_code")).toString(), plan);
  click(34, group);
  QCOMPARE(cycle.value(0), (QVariantList{group, 20}));

  click(27, plan);
  const auto box = [&]() -> QWidget* { return stage.Panel().findChild<QWidget*>(QStringLiteral("CreationInfoDlgUi")); };
  QTRY_VERIFY(box() && box()->isVisible());
  QCOMPARE(box()->geometry().center() - QRect(stage.Panel().mapToGlobal(QPoint()), stage.Panel().size()).center(),
           QPoint(0, 0));
  Services().Fail(QStringLiteral("GetPlanDetail"), "gone");
  stage.TakeTips();
  click(27, plan);
  fixture_.Drain();
  QCOMPARE(stage.TakeTips(), QStringList("1:gone"));
}

void PanelTest::MenuOfAVanishedRowTouchesNoOther() {
  Open();
  CPanelStage stage(fixture_);
  stage.Choose(QStringLiteral("Public A plan 2"));
  const QString code = fixture_.Code(QStringLiteral("Public A plan 2"));
  CViewModelDataManager::Instance().OnDeletePlanGroupPlanSucc(stage.Tree().currentIndex());
  QVERIFY(stage.Tree().currentIndex().isValid());  // the tree has gone on to another row
  for (const int command : {32, 33, 35, 31}) {
    Q_EMIT stage.Tree().SignalMenuClicked(static_cast<MsgType>(command), code);
  }
  fixture_.Drain();
  QCOMPARE(stage.TakeQuestions(), QStringList());
  QCOMPARE(stage.TakeTips(), QStringList());
  QCOMPARE(Services().Count(QStringLiteral("DeletePlan")), 0);
  QVERIFY(!stage.Panel().findChild<QWidget*>(QStringLiteral("CShareViewWgt")));
}

void PanelTest::WhateverDiesFirstDoesNoHarm() {
  Open();
  {
    CPanelStage stage(fixture_);
    auto* model = new CStandardPlanModel(ViewManagerParam(PublicTheme, QStringLiteral("wall")), nullptr);
    GetPlanGroupsResponse roots;
    QVERIFY(fixture_.Store().GetPlanGroups({"root", 0}, roots));
    model->AddRootNode(roots);
    stage.Panel().SetModel(model);
    QCOMPARE(stage.Tree().model()->rowCount(), 1);
    delete model;
    stage.Panel().grab();
    stage.Button("delete_btn")->click();
    stage.Button("add_group_btn")->click();
    QCOMPARE(stage.TakeQuestions(), QStringList());
  }
  {
    // A controller that dies leaves no row waiting for ever.
    CPanelStage stage(fixture_);
    const QPersistentModelIndex group(stage.Row(QStringLiteral("Public A")));
    Services().Hold(QStringLiteral("GetPlanGroups"));
    stage.Tree().ExpandAsync(group);
    QVERIFY(stage.Tree().IsWaiting(group));
    auto* other = new CStandardViewController(fixture_.Public());
    stage.Panel().SetStandardViewControl(other);
    QVERIFY(!stage.Tree().IsWaiting(group));
    Services().ReleaseAll();
    delete other;
    fixture_.Drain();
  }
  // Slots that end the panel while it tells them something.
  const auto end_at = [&](auto signal, const std::function<void(CViewExternWidget*)>& act) {
    auto* panel = new CViewExternWidget(nullptr);
    CStandardViewController controller(fixture_.Public());
    controller.setParent(nullptr);
    panel->SetModel(fixture_.Public());
    panel->SetStandardViewControl(&controller);
    panel->SetMonitorId(QStringLiteral("0"));
    const QPointer<CViewExternWidget> alive(panel);
    connect(panel, signal, &controller, [panel] { delete panel; });
    connect(panel, &CViewExternWidget::SignalMessageTipNeeded, &controller, [panel] { delete panel; });
    act(panel);
    fixture_.Drain();
    QVERIFY(!alive);
  };
  end_at(&CViewExternWidget::SignalPlayPlanToMonitor,
         [](CViewExternWidget* panel) { panel->PlayPlanByString(QStringLiteral("12"), false); });
  Services().Fail(QStringLiteral("SearchPlan"), "no answer");
  end_at(&CViewExternWidget::SignalPlayPlanToMonitor, [](CViewExternWidget* panel) {
    qobject_cast<QLineEdit*>(panel->GetLocateViewWidget())->setText(QStringLiteral("plan"));
    panel->OnFuzzySearchPlan();
  });
  const auto open_editor = [](CViewExternWidget* panel) {
    const QSignalBlocker quiet(panel);
    QMetaObject::invokeMethod(panel, "onAddPlanBtnClicked");
    QVERIFY(panel->IsEditorOpen());
  };
  for (const auto end : {&CViewExternWidget::SwitchUserUpdate, &CViewExternWidget::StopWorking}) {
    end_at(&CViewExternWidget::SignalEditorChanged, [&](CViewExternWidget* panel) {
      open_editor(panel);
      (panel->*end)();
    });
  }
  // A panel that ends with its editor says nothing any more.
  auto* panel = new CViewExternWidget(nullptr);
  CStandardViewController controller(fixture_.Public());
  controller.setParent(nullptr);
  panel->SetModel(fixture_.Public());
  panel->SetStandardViewControl(&controller);
  open_editor(panel);
  QSignalSpy changed(panel, &CViewExternWidget::SignalEditorChanged);
  delete panel;
  QCOMPARE(changed.count(), 0);
}

void PanelTest::SwitchOfUserEndsWhatIsUnderWay() {
  Open();
  CPanelStage stage(fixture_);
  stage.Choose(QStringLiteral("Public A plan 2"));
  stage.while_asking = [&] { stage.Panel().SwitchUserUpdate(); };
  stage.Button("delete_btn")->click();
  QCOMPARE(stage.TakeQuestions().size(), 1);
  Services().Hold(QStringLiteral("GetPlanDetail"));
  Q_EMIT stage.Tree().SignalMenuClicked(tarn_ui_data_controller::CreationInfo,
                                        fixture_.Code(QStringLiteral("Public A plan 2")));
  const QPersistentModelIndex onto(stage.Row(QStringLiteral("Public B")));
  const QRect from = stage.Tree().visualRect(stage.Row(QStringLiteral("Public A plan 2")));
  Q_EMIT stage.Tree().SignalMoveRow(from.center(), stage.Tree().visualRect(onto).center(),
                                    stage.Tree().visualRect(onto));
  QVERIFY(Services().WaitUntilHeld(QStringLiteral("GetPlanDetail"), 2));
  // The bar goes by the new user's rights at once, before there are rows of his.
  Services().SetRight(5, false);
  const int asked_before = AskedRights().size();
  stage.Panel().SwitchUserUpdate();
  QCOMPARE(AskedRights().mid(asked_before), QVector<int>({5, 6, 7}));
  QVERIFY(stage.Button("add_view_btn")->toolTip().contains(QStringLiteral("lack the right")));
  Services().SetRight(5, true);
  Services().ReleaseAll();
  fixture_.Drain();
  QCOMPARE(Services().Count(QStringLiteral("DeletePlan")), 0);
  QCOMPARE(Services().Count(QStringLiteral("UpdatePlan")), 0);
  QVERIFY(!stage.Panel().findChild<QWidget*>(QStringLiteral("CreationInfoDlgUi")));
  // The next load finds the row again where the tree stood before it.
  Q_EMIT CViewModelDataManager::Instance().SignalDataDownloadFinished();
  stage.Choose(QStringLiteral("Public A plan 2"));
  CViewModelDataManager::Instance().OnUpdateViewModelData();
  QTRY_COMPARE(stage.PageName(), QStringLiteral("tree"));
  QTRY_COMPARE(stage.Tree().currentIndex().data().toString(), QStringLiteral("Public A plan 2"));
}

void PanelTest::PlayingPlanIsMarkedAndCurrent() {
  Open();
  CPanelStage stage(fixture_);
  stage.Row(QStringLiteral("A1 plan 2"));
  const QString first = fixture_.Code(QStringLiteral("A1 plan 2"));
  stage.Tree().collapseAll();
  stage.Panel().SetCurPlanByIndexCode(first);
  QCOMPARE(stage.Panel().GetCurrentSelectedViewID(), first);
  QVERIFY(stage.Tree().isExpanded(stage.Tree().currentIndex().parent()));

  stage.Panel().SetCurPlayItemByIndexCode(first);
  QVERIFY(stage.Row(QStringLiteral("A1 plan 2")).data(PlayingRole).toBool());
  TarnPlanViewInfo info;
  stage.Panel().GetCurrentSelectedViewInfo(info);
  QVERIFY(info.playing && !info.is_group);
  QCOMPARE(info.group_name, std::string("A1"));
  stage.Panel().SetCurPlayItemByIndexCode(fixture_.Code(QStringLiteral("Public A plan 2")));
  QVERIFY(!stage.Row(QStringLiteral("A1 plan 2")).data(PlayingRole).toBool());
  stage.Panel().SetCurPlayItemByIndexCode(QString());
  QVERIFY(!stage.Row(QStringLiteral("Public A plan 2")).data(PlayingRole).toBool());
  QCOMPARE(stage.Tree().currentIndex().data().toString(), QStringLiteral("Public A plan 2"));
}

void PanelTest::FillsTheUpdateOfThePlayingPlan() {
  Open({{QStringLiteral("create_under_root"), 1}});
  CPanelStage stage(fixture_, true);
  for (const char* name : {"C1 plan 2", "Own root plan"}) {
    stage.Choose(QString::fromLatin1(name));
    UpdatePlanRequest request;
    request.plan_index_code = fixture_.Code(QString::fromLatin1(name)).toStdString();
    request.begin_time = "05:00:00";
    stage.Panel().GetSaveAsPlanInfo(request);
    QCOMPARE(QString::fromStdString(request.plan_name), QString::fromLatin1(name));
    QCOMPARE(request.index_type, 1);
    QCOMPARE(request.begin_time, std::string("05:00:00"));
    QCOMPARE(QString::fromStdString(request.parent_index_code),
             QByteArray(name) == "C1 plan 2" ? fixture_.Code(QStringLiteral("C1")) : QStringLiteral("-2"));
  }
}

// Hosts that connect by number go by this order; signals of a later day stand behind.
void PanelTest::SignalsStandInTheirOrder() {
  const QMetaObject& panel = CViewExternWidget::staticMetaObject;
  QByteArrayList names;
  for (int method = panel.methodOffset(); method < panel.methodOffset() + 8; ++method) {
    QCOMPARE(panel.method(method).methodType(), QMetaMethod::Signal);
    names << panel.method(method).name();
  }
  QCOMPARE(names, QByteArrayList({"SignalPlayPlanToMonitor", "SignalStopPlan", "SignalPlanStateChanged",
                                  "SignalSavePlanAs", "SignalMessageTipNeeded", "SignalPlanGroupCycle",
                                  "signalSucceedToGetCreationInfo", "signalGetSearchedResult"}));
}

void PanelTest::ReloadKeepsTheCurrentRow_data() {
  QTest::addColumn<QString>("row");
  QTest::addColumn<bool>("load_all");
  QTest::addColumn<bool>("collapsed");
  QTest::addColumn<QString>("act");
  QTest::addColumn<QString>("current");
  for (const bool load_all : {false, true}) {
    const char* when = load_all ? "loaded" : "on demand";
    QTest::addRow("plan, %s", when) << "A1 plan 10" << load_all << false << ""
                                    << "A1 plan 10";
    QTest::addRow("group, %s", when) << "A1" << load_all << false << ""
                                     << "A1";
    QTest::addRow("below a closed group, %s", when) << "A1 plan 2" << load_all << true << ""
                                                    << "A1 plan 2";
  }
  QTest::newRow("root") << "Plans" << false << false << ""
                        << "Plans";
  QTest::newRow("gone since") << "A1 plan 10" << false << false << "delete"
                              << "Plans";
  QTest::newRow("user goes on") << "A1 plan 10" << false << false << "choose"
                                << "Public B";
  QTest::newRow("next user") << "A1 plan 10" << false << false << "switch"
                             << "Plans";
  QTest::newRow("second loss before the rows are back") << "A1 plan 10" << false << false << "again"
                                                        << "A1 plan 10";
}

// A lost connection ends in a reload of all trees; the user finds the tree as he left it.
void PanelTest::ReloadKeepsTheCurrentRow() {
  QFETCH(QString, row);
  QFETCH(bool, load_all);
  QFETCH(bool, collapsed);
  QFETCH(QString, act);
  QFETCH(QString, current);
  Open({{QStringLiteral("load_all"), load_all}});
  CPanelStage stage(fixture_);
  stage.Choose(row);
  if (collapsed) {
    stage.Tree().collapse(stage.Row(QStringLiteral("Public A")));
    QCOMPARE(stage.Tree().currentIndex().data().toString(), row);
  }
  if (act == QLatin1String("delete")) {
    DeletePlanResponse deleted;
    QVERIFY(fixture_.Store().DeletePlan({fixture_.Code(row).toStdString(), "", "", "", ""}, deleted));
  } else if (act == QLatin1String("switch")) {
    stage.Panel().SwitchUserUpdate();
  }
  auto& manager = CViewModelDataManager::Instance();
  const auto back = [&] { return stage.Tree().isExpanded(stage.Tree().model()->index(0, 0)); };
  Services().Hold(QStringLiteral("GetPlansInGroup"));
  manager.OnUpdateViewModelData();
  QTRY_VERIFY(manager.IsViewModelInitFinish() && back());
  if (act == QLatin1String("again")) {
    manager.OnUpdateViewModelData();
    QTRY_VERIFY(manager.IsViewModelInitFinish() && back());
  } else if (act == QLatin1String("choose")) {
    const QAbstractItemModel* rows = stage.Tree().model();
    stage.Tree().setCurrentIndex(rows->match(rows->index(0, 0), Qt::DisplayRole, current, 1, Qt::MatchRecursive)[0]);
  }
  Services().ReleaseAll();
  QTRY_COMPARE(stage.Tree().currentIndex().data().toString(), current);
  fixture_.Drain();
  QCOMPARE(stage.Tree().currentIndex().data().toString(), current);
}

void PanelTest::PreviewsThePlanUnderTheMouse() {
  for (const int thumbnail : {1, 0}) {
    Open({{QStringLiteral("thumbnail"), thumbnail}});
    {
      CPanelStage stage(fixture_);
      const auto preview = [&] { return stage.Panel().findChild<QFrame*>(QStringLiteral("plan_preview")); };
      const auto shown = [&] { return preview() && preview()->isVisible(); };
      const QPersistentModelIndex plan(stage.Row(QStringLiteral("Public A plan 2")));
      Q_EMIT stage.Tree().SignalPlanViewMouseMove(stage.Row(QStringLiteral("Public A")),
                                                  MarUIControl::CItemDataRole::TextPart);
      Q_EMIT stage.Tree().SignalPlanViewMouseMove(plan, MarUIControl::CItemDataRole::TextPart);
      if (!thumbnail) {
        QVERIFY(!preview());
      } else {
        QTRY_VERIFY(shown());
        QVERIFY(stage.Panel().rect().contains(preview()->geometry()));
        Q_EMIT stage.Tree().SignalHideThumbnail(QPoint());
        QVERIFY(!shown());
        // An answer that comes when the mouse has long gone on shows nothing.
        const QModelIndex other = stage.Row(QStringLiteral("Public A plan 10"));
        Services().Hold(QStringLiteral("GetPlanDetail"));
        Q_EMIT stage.Tree().SignalPlanViewMouseMove(other, MarUIControl::CItemDataRole::TextPart);
        QVERIFY(Services().WaitUntilHeld(QStringLiteral("GetPlanDetail")));
        Q_EMIT stage.Tree().SignalHideThumbnail(QPoint());
        Services().ReleaseAll();
        fixture_.Drain();
        QVERIFY(!shown());
      }
    }
    Shut();
  }
}

void PanelTest::PlanEditorOpensBesideThePanel() {
  Open();
  CPanelStage stage(fixture_);
  const auto editor = [&] { return stage.Panel().window()->findChild<CTarnAddPlanWidget*>(); };
  stage.Choose(QStringLiteral("Public A"));
  QTest::mouseClick(stage.Button("add_view_btn"), Qt::LeftButton);
  QVERIFY(editor() && editor()->isVisible());
  QCOMPARE(editor()->objectName(), QStringLiteral("add_edit_plan_widget"));
  QCOMPARE(stage.Enabled(), QStringLiteral("-p--"));
  const QString log = fixture_.Log().Lines().join('\n');
  QVERIFY(log.indexOf(QLatin1String("Add plan button clicked")) <
          log.indexOf(QLatin1String("Add plan dock widget show.")));
  editor()->Cancel();
  QTRY_VERIFY(!editor() || !editor()->isVisible());
  QCOMPARE(stage.Enabled(), QStringLiteral("gped"));

  stage.Choose(QStringLiteral("Public A plan 2"));
  QTest::keyClick(&stage.Tree(), Qt::Key_F2);
  QVERIFY(editor()->isVisible());
  fixture_.Drain();
  QVERIFY(!editor()->IsDirty());
  // Leaving closes an editor that holds nothing new.
  QVERIFY(stage.Panel().MayLeave());
  QTRY_VERIFY(!editor() || !editor()->isVisible());
  stage.Choose(QStringLiteral("Public A plan 2"));
  QTest::keyClick(&stage.Tree(), Qt::Key_F2);
  QVERIFY(editor()->isVisible());
  fixture_.Drain();
  // Changed and not saved: nothing goes without a question, and "stay" keeps everything.
  auto* name = editor()->findChild<QLineEdit*>();
  QCOMPARE(name->text(), QStringLiteral("Public A plan 2"));
  QTest::keyClicks(name, QStringLiteral(" west"));
  QVERIFY(editor()->IsDirty());
  stage.answer = 0;
  stage.TakeQuestions();
  QVERIFY(!stage.Panel().MayLeave());
  QTest::mouseClick(stage.Button("add_view_btn"), Qt::LeftButton);
  QCOMPARE(stage.TakeQuestions().size(), 2);
  QVERIFY(editor()->IsDirty() && editor()->isVisible());
  QVERIFY(name->text().endsWith(QLatin1String(" west")));
}

QTEST_MAIN(PanelTest)
#include "test_panel.moc"
