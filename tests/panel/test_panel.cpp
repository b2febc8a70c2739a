#include <QStandardItemModel>

#include "item_type.h"
#include "panel_stage.h"
#include "share_view_wgt.h"
#include "view_model_data_manager.h"
#include "view_name_edit.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using TarnTest::CPanelStage;

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
  void PlayingPlanIsMarkedAndCurrent();
  void FillsTheUpdateOfThePlayingPlan();
  void SignalsStandInTheirOrder();
  void PreviewsThePlanUnderTheMouse();
  void SwitchTakesThePreviewAway();

 private:
  CViewNameEdit* askForName(CPanelStage& stage, const char* button, const QString& name) {
    fixture_.Messages().Expect("Argument missing");  // without a catalogue the texts are bare keys
    const QToolButton* shown_by = stage.Button(button);
    QTest::mouseClick(stage.Button(button), Qt::LeftButton);
    auto* editor = stage.Panel().findChild<CViewNameEdit*>();
    const bool below =
        editor && editor->isVisible() && editor->pos() == shown_by->mapToGlobal(QPoint(0, shown_by->height() + 1));
    if (!below) {
      QTest::qFail("the name editor is not open below its button", __FILE__, __LINE__);
    }
    editor->findChild<QLineEdit*>("ptr_name_edit")->setText(name);
    return editor;
  }
  void remove(CPanelStage& stage, const QString& row) {
    CViewModelDataManager::Instance().OnDeletePlanGroupPlanSucc(stage.Row(row));
  }
  // A name for a row that goes while it is typed: one message, and no call of the host.
  void nameVanishedRow(CPanelStage& stage, const char* button, const char* call) {
    stage.Choose("A1");
    auto* editor = askForName(stage, button, "Gate");
    remove(stage, "A1");
    stage.TakeTips();
    editor->OnClickedBtn();
    fixture_.Drain();
    QCOMPARE(Services().Count(call), 0);
    QCOMPARE(stage.TakeTips().size(), 1);
  }
};

void PanelTest::StartsWaitingAndThenShowsTheTree() {
  Open({}, false);
  Services().Hold("GetPlansInGroup");
  auto& manager = CViewModelDataManager::Instance();
  manager.InitManager();
  CPanelStage stage(fixture_);
  QCOMPARE(stage.PageName(), QString("wait_widget"));
  QCOMPARE(stage.Enabled(), QString("----"));
  QVERIFY(stage.Button("search_btn")->isEnabled());
  manager.LoadAllViewManagerModelData();
  QCOMPARE(stage.PageName(), QString("tree"));
  Services().ReleaseAll();
  // The root opens by itself and becomes current, so that keys work at once.
  QTRY_COMPARE(stage.Tree().model()->rowCount(stage.Tree().model()->index(0, 0)), 2);
  QTRY_COMPARE(stage.Tree().currentIndex(), stage.Tree().model()->index(0, 0));
  QCOMPARE(stage.Enabled(), QString("g---"));
}

void PanelTest::BarShowsWhatTheRowGrants() {
  CPanelStage stage(Opened());
  QStandardItemModel rows;
  rows.appendRow(new QStandardItem);
  stage.Button("delete_btn")->hide();
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
               {PublicGroupItem, false, "gp-d"}};
  for (const auto& one : cases) {
    Services().SetRight(6, one.may_edit);
    Services().ForgetCalls();
    rows.item(0)->setData(one.type, ItemTypeRole);
    select(rows.index(0, 0));
    QCOMPARE(stage.Enabled(), QString(one.buttons));
    QCOMPARE(Services().Requests<int>(), std::vector<int>({5, 6, 7}));  // each right once
  }
  select(QModelIndex());
  QCOMPARE(stage.Enabled(), QString("gp-d"));
  QVERIFY(!stage.Button("delete_btn")->isVisible());  // as the host has left it
}

void PanelTest::NamesTheMissingRight() {
  CPanelStage stage(Opened());
  Services().SetRight(7, false);
  stage.Choose("Public A plan 2");
  QVERIFY(!stage.Button("delete_btn")->isEnabled());
  QVERIFY(stage.Button("delete_btn")->toolTip().contains("right to delete"));
  QVERIFY(!stage.Button("edit_btn")->toolTip().contains("right to"));
  // The key is refused with the reason, not silently.
  QTest::keyClick(&stage.Tree(), Qt::Key_Delete);
  QCOMPARE(stage.TakeQuestions(), QStringList());
  QCOMPARE(stage.TakeTips().size(), 1);
  // Sharing has no button: the entry of the menu says it.
  auto* menu = stage.Tree().GetViewMoreMenu();
  const auto* share = menu->MenuItem(tarn_ui_data_controller::Share);
  menu->SetMenuItemEnabled(tarn_ui_data_controller::PlayVideo, false);  // by the host
  for (const bool may_add : {false, true}) {
    Services().SetRight(5, may_add);
    QTest::keyClick(&stage.Tree(), Qt::Key_Menu);
    QCOMPARE(share->isEnabled(), may_add);
    QCOMPARE(share->toolTip().contains("right to share"), !may_add);
    QCOMPARE(menu->MenuItem(tarn_ui_data_controller::Delete)->toolTip(), stage.Button("delete_btn")->toolTip());
    QVERIFY(!menu->MenuItem(tarn_ui_data_controller::PlayVideo)->isEnabled());
    menu->close();
    stage.Command(tarn_ui_data_controller::Share, QString());
    QCOMPARE(stage.TakeTips().size(), may_add ? 0 : 1);
    QCOMPARE(stage.Panel().findChild<CShareViewWgt*>() != nullptr, may_add);
  }
}

void PanelTest::AddsGroupsDownToTheSixthLevel() {
  CPanelStage stage(Opened());
  stage.Choose("A1 plan 2");  // a plan: its group is meant; root, Public A and A1 are three levels
  for (const QString name : {"Level 4", "Level 5", "Level 6", "Level 7"}) {
    QTest::keyClick(askForName(stage, "add_group_btn", name)->findChild<QLineEdit*>(), Qt::Key_Return);
    fixture_.Drain();
    if (stage.Row(name).isValid()) {
      stage.Choose(name);
    }
  }
  QCOMPARE(stage.Current(), QString("Level 6"));
  QCOMPARE(Services().Count("AddPlanGroup"), 3);
  QVERIFY(
      fixture_.Log().Lines().join('\n').contains("CNomalMessageManager::Instance().ShowMessage ViewGroup Tips Show"));
}

void PanelTest::NewGroupGoesWhereItWasBegun() {
  CPanelStage stage(Opened());
  const auto group_of = [&stage](const QString& name) { return stage.Row(name).parent().data().toString(); };
  stage.Row("A1 plan 2");
  stage.Choose("Public A plan 2");
  auto* editor = askForName(stage, "add_group_btn", "Yard");
  stage.Choose("Public B");  // while the name was typed
  editor->OnClickedBtn();
  QTRY_COMPARE(group_of("Yard"), QString("Public A"));

  Services().ForgetCalls();
  nameVanishedRow(stage, "add_group_btn", "AddPlanGroup");
  stage.Choose("Public B");
  QTest::mouseClick(stage.Button("add_group_btn"), Qt::LeftButton);  // what was typed is not lost
  QTest::keyClick(editor->findChild<QLineEdit*>(), Qt::Key_Return);
  QTRY_COMPARE(group_of("Gate"), QString("Public B"));

  // Closed without a name: a name that comes without the pop-up goes into the current group.
  stage.Choose("Public A");
  QTest::mouseClick(stage.Button("add_group_btn"), Qt::LeftButton);
  QTest::keyClick(editor, Qt::Key_Escape);
  stage.Choose("Public B");
  Q_EMIT editor->SignalAddPlanViewGroup("Lane");
  QTRY_COMPARE(group_of("Lane"), QString("Public B"));
}

void PanelTest::RenamesTheRowThatTheEditorWasOpenedFor() {
  CPanelStage stage(Opened());
  stage.Choose("Public A");
  auto* editor = askForName(stage, "edit_btn", "Yard");
  stage.Choose("Public B");  // another row becomes current while the editor is open
  editor->OnClickedBtn();
  fixture_.Drain();
  QVERIFY(stage.Row("Yard").isValid() && stage.Row("Public B").isValid());

  Services().ForgetCalls();
  nameVanishedRow(stage, "edit_btn", "UpdatePlanGroup");
}

void PanelTest::MenuCommands() {
  CPanelStage stage(Opened({{"creation_info", 1}}));
  stage.Choose("Public A plan 2");
  const QString plan = fixture_.Code("Public A plan 2"), group = fixture_.Code("Public A");
  QSignalSpy played(&stage.Controller(), &CStandardViewController::SignalPlayPlanView);
  QSignalSpy to_monitor(&stage.Panel(), &CViewExternWidget::SignalPlayPlanToMonitor);
  QSignalSpy cycle(&stage.Panel(), &CViewExternWidget::SignalPlanGroupCycle);
  stage.Panel().SetMonitorId("0");
  for (const int nothing : {28, 29, 30, 99}) {
    stage.Command(nothing, plan);
  }
  stage.Command(31, "4711");  // unknown
  stage.Command(34, plan);    // no group
  fixture_.Drain();
  QCOMPARE(played.size() + cycle.size() + to_monitor.size(), 0);

  Services().ForgetCalls();
  stage.Command(31, plan);
  QTRY_COMPARE(played.size(), 1);
  QCOMPARE(to_monitor.value(0).value(0).toMap().value("plan_code").toString(), plan);
  stage.Command(34, group);
  QCOMPARE(cycle.value(0), (QVariantList{group, 20}));
  QCOMPARE(Services().Requests<int>(), std::vector<int>());  // no rights are asked for

  stage.Command(27, plan);
  const auto box = [&]() -> QWidget* { return stage.Panel().findChild<QWidget*>("CreationInfoDlgUi"); };
  QTRY_VERIFY(box() && box()->isVisible());
  QCOMPARE(box()->geometry().center(), QRect(stage.Panel().mapToGlobal(QPoint()), stage.Panel().size()).center());
  Services().Fail("GetPlanDetail", "gone");
  stage.TakeTips();
  stage.Command(27, plan);
  QCOMPARE(stage.AwaitTips(), QStringList("1:gone"));
  stage.Panel().StopWorking();
  Services().ForgetCalls();
  stage.Command(27, plan);
  fixture_.Drain();
  QCOMPARE(Services().Count("GetPlanDetail"), 0);
}

void PanelTest::MenuOfAVanishedRowTouchesNoOther() {
  CPanelStage stage(Opened());
  stage.Choose("Public A plan 2");
  const QString code = fixture_.Code("Public A plan 2");
  remove(stage, "Public A plan 2");
  QVERIFY(stage.Tree().currentIndex().isValid());  // the tree has gone on to another row
  for (const int command : {32, 33, 35, 31}) {
    stage.Command(command, code);
  }
  fixture_.Drain();
  QCOMPARE(stage.TakeQuestions() + stage.TakeTips(), QStringList());
  QCOMPARE(Services().Count("DeletePlan"), 0);
  QVERIFY(!stage.Panel().IsEditorOpen() && !stage.Panel().findChild<CShareViewWgt*>());
}

void PanelTest::PlayingPlanIsMarkedAndCurrent() {
  CPanelStage stage(Opened());
  const auto plays = [&stage](const QString& plan) { return stage.Row(plan).data(PlayingRole).toBool(); };
  stage.Row("A1 plan 2");
  const QString first = fixture_.Code("A1 plan 2");
  stage.Tree().collapseAll();
  stage.Panel().SetCurPlanByIndexCode(first);
  QCOMPARE(stage.Panel().GetCurrentSelectedViewID(), first);
  QVERIFY(stage.Tree().isExpanded(stage.Tree().currentIndex().parent()));

  stage.Panel().SetCurPlayItemByIndexCode(first);
  TarnPlanViewInfo info;
  stage.Panel().GetCurrentSelectedViewInfo(info);
  QVERIFY(plays("A1 plan 2") && info.playing && !info.is_group);
  QCOMPARE(info.group_name, std::string("A1"));
  stage.Panel().SetCurPlayItemByIndexCode(fixture_.Code("Public A plan 2"));
  QVERIFY(!plays("A1 plan 2"));
  stage.Panel().SetCurPlayItemByIndexCode(QString());
  QVERIFY(!plays("Public A plan 2"));
  QCOMPARE(stage.Current(), QString("Public A plan 2"));
}

void PanelTest::FillsTheUpdateOfThePlayingPlan() {
  CPanelStage stage(Opened({{"create_under_root", 1}}), true);
  const QMap<QString, QString> groups = {{"C1 plan 2", fixture_.Code("C1")}, {"Own root plan", "-2"}};
  for (auto plan = groups.begin(); plan != groups.end(); ++plan) {
    stage.Choose(plan.key());
    UpdatePlanRequest request;
    request.plan_index_code = fixture_.Code(plan.key()).toStdString();
    request.begin_time = "05:00:00";
    stage.Panel().GetSaveAsPlanInfo(request);
    QCOMPARE(QString::fromStdString(request.plan_name), plan.key());
    QCOMPARE(QString::fromStdString(request.parent_index_code), plan.value());
    QCOMPARE(request.index_type, 1);
    QCOMPARE(request.begin_time, std::string("05:00:00"));
  }
}

// Hosts that connect by number go by this order; signals of a later day stand behind.
void PanelTest::SignalsStandInTheirOrder() {
  const QMetaObject& panel = CViewExternWidget::staticMetaObject;
  QByteArrayList names;
  for (int method = panel.methodOffset(); method < panel.methodOffset() + 8; ++method) {
    names << panel.method(method).name();
  }
  QCOMPARE(names, QByteArrayList({"SignalPlayPlanToMonitor", "SignalStopPlan", "SignalPlanStateChanged",
                                  "SignalSavePlanAs", "SignalMessageTipNeeded", "SignalPlanGroupCycle",
                                  "signalSucceedToGetCreationInfo", "signalGetSearchedResult"}));
}

void PanelTest::PreviewsThePlanUnderTheMouse() {
  CPanelStage stage(Opened({{"thumbnail", 1}}));
  const auto preview = [&] { return stage.Panel().findChild<QFrame*>("plan_preview"); };
  const auto shown = [&] { return preview() && preview()->isVisible(); };
  const auto rest_on = [&](const QString& row) {
    Q_EMIT stage.Tree().SignalPlanViewMouseMove(stage.Row(row), MarUIControl::CItemDataRole::TextPart);
  };
  rest_on("Public A");
  rest_on("Public A plan 2");
  QTRY_VERIFY(shown());
  QVERIFY(stage.Panel().rect().contains(preview()->geometry()));
  Q_EMIT stage.Tree().SignalHideThumbnail(QPoint());
  QVERIFY(!shown());
  // An answer that comes when the mouse has long gone on shows nothing.
  Services().Hold("GetPlanDetail");
  rest_on("Public A plan 10");
  QVERIFY(Services().WaitUntilHeld("GetPlanDetail"));
  Q_EMIT stage.Tree().SignalHideThumbnail(QPoint());
  Services().ReleaseAll();
  fixture_.Drain();
  QVERIFY(!shown());
}

void PanelTest::SwitchTakesThePreviewAway() {
  CPanelStage stage(Opened({{"thumbnail", 0}}));
  Q_EMIT stage.Tree().SignalPlanViewMouseMove(stage.Row("Public A plan 2"), MarUIControl::CItemDataRole::TextPart);
  QVERIFY(!stage.Panel().findChild<QFrame*>("plan_preview"));
}

QTEST_MAIN(PanelTest)
#include "test_panel.moc"
