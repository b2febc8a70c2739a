#include "panel_stage.h"
#include "view_model_data_manager.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using TarnTest::CPanelStage;

// What becomes of a panel whose user, model, controller or host goes.
class PanelUsersTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void SwitchOfUserEndsWhatIsUnderWay();
  void SearchWhileWaitingEndsInTheWait();
  void ModelAndControllerMayDieFirst();
  void ReceiversMayEndThePanel();

 private:
  // A panel without a stage, which a receiver of its signals may delete.
  CViewExternWidget* makePanel(CStandardViewController& controller) {
    auto* panel = new CViewExternWidget(nullptr);
    controller.setParent(nullptr);
    panel->SetModel(fixture_.Public());
    panel->SetStandardViewControl(&controller);
    panel->SetMonitorId("0");
    return panel;
  }
  static void openEditor(CViewExternWidget* panel) {
    const QSignalBlocker quiet(panel);
    QMetaObject::invokeMethod(panel, "onAddPlanBtnClicked");
    QVERIFY(panel->IsEditorOpen());
  }
};

void PanelUsersTest::SwitchOfUserEndsWhatIsUnderWay() {
  CPanelStage stage(Opened());
  stage.Choose("Public A plan 2");
  stage.while_asking = [&] { stage.Panel().SwitchUserUpdate(); };
  stage.Button("delete_btn")->click();
  QCOMPARE(stage.TakeQuestions().size(), 1);
  Services().Hold("GetPlanDetail");
  stage.Command(tarn_ui_data_controller::CreationInfo, fixture_.Code("Public A plan 2"));
  stage.Drop("Public A plan 2", "Public B");
  QVERIFY(Services().WaitUntilHeld("GetPlanDetail", 2));
  // The bar goes by the new user's rights at once, before there are rows of his.
  Services().SetRight(5, false);
  Services().ForgetCalls();
  stage.Panel().SwitchUserUpdate();
  QCOMPARE(stage.PageName(), QString("wait_widget"));
  QCOMPARE(Services().Requests<int>(), std::vector<int>({5, 6, 7}));
  QVERIFY(!stage.Button("add_view_btn")->isEnabled());
  QVERIFY(stage.Button("add_view_btn")->toolTip().contains("still being loaded"));
  Services().SetRight(5, true);
  Services().ReleaseAll();
  fixture_.Drain();
  QCOMPARE(Services().Count("DeletePlan") + Services().Count("UpdatePlan"), 0);
  QVERIFY(!stage.Panel().findChild<QWidget*>("CreationInfoDlgUi"));
  // The next load finds the row again where the tree stood before it.
  Q_EMIT CViewModelDataManager::Instance().SignalDataDownloadFinished();
  stage.Choose("Public A plan 2");
  CViewModelDataManager::Instance().OnUpdateViewModelData();
  QTRY_COMPARE(stage.PageName(), QString("tree"));
  QTRY_COMPARE(stage.Current(), QString("Public A plan 2"));
}

void PanelUsersTest::SearchWhileWaitingEndsInTheWait() {
  CPanelStage stage(Opened());
  const auto search = [&stage] {
    stage.Search("plan");
    QTRY_COMPARE(stage.PageName(), QString("search_list_view"));
  };
  stage.Choose("Public A plan 2");
  stage.Panel().SwitchUserUpdate();
  QCOMPARE(stage.Enabled(), QString("--ed"));
  // The rows are still the last user's; that one of them becomes current, as when a plan starts by itself, is not his.
  stage.Panel().SetCurPlayItemByIndexCode(fixture_.Code("Public A plan 10"));
  QCOMPARE(stage.Enabled(), QString("--ed"));
  search();
  QCOMPARE(stage.Enabled(), QString("--e-"));
  QTest::keyClick(stage.List(), Qt::Key_Escape);
  QCOMPARE(stage.PageName(), QString("wait_widget"));
  QCOMPARE(stage.Enabled(), QString("--ed"));
  search();
  CViewModelDataManager::Instance().OnUpdateViewModelData();
  QTRY_COMPARE(stage.PageName(), QString("tree"));
  QTRY_COMPARE(stage.Current(), QString("Plans"));
  QCOMPARE(stage.Enabled(), QString("g---"));

  // The user who is asked about his changes may have been switched by the time the question is answered.
  stage.Choose("Public A");
  stage.Button("add_view_btn")->click();
  stage.EditorName()->setText("Never");
  stage.while_asking = [&] { stage.Panel().SwitchUserUpdate(); };
  stage.Button("add_view_btn")->click();
  QCOMPARE(stage.TakeQuestions().size(), 1);
  QCOMPARE(stage.Enabled().left(2), QString("--"));
}

void PanelUsersTest::ModelAndControllerMayDieFirst() {
  CPanelStage stage(Opened());
  // A controller that dies leaves no row waiting for ever.
  const QPersistentModelIndex group(stage.Row("Public A"));
  Services().Hold("GetPlanGroups");
  stage.Tree().ExpandAsync(group);
  QVERIFY(stage.Tree().IsWaiting(group));
  auto* other = new CStandardViewController(fixture_.Public());
  stage.Panel().SetStandardViewControl(other);
  QVERIFY(!stage.Tree().IsWaiting(group));
  Services().ReleaseAll();
  delete other;
  fixture_.Drain();
  stage.Panel().SetStandardViewControl(&stage.Controller());

  auto* model = new CStandardPlanModel(ViewManagerParam(PublicTheme, "wall"), nullptr);
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

void PanelUsersTest::ReceiversMayEndThePanel() {
  Open();
  CStandardViewController controller(fixture_.Public());
  const auto end_at = [&](auto signal, const std::function<void(CViewExternWidget*)>& act) {
    auto* panel = makePanel(controller);
    const QPointer<CViewExternWidget> alive(panel);
    connect(panel, signal, &controller, [panel] { delete panel; });
    act(panel);
    fixture_.Drain();
    QVERIFY(!alive);
  };
  using Panel = CViewExternWidget;
  end_at(&Panel::SignalPlayPlanToMonitor, [](Panel* panel) { panel->PlayPlanByString("12", false); });
  Services().Fail("SearchPlan", "no answer");
  end_at(&Panel::SignalMessageTipNeeded, [](Panel* panel) {
    qobject_cast<QLineEdit*>(panel->GetLocateViewWidget())->setText("plan");
    panel->OnFuzzySearchPlan();
  });
  for (const auto end : {&Panel::SwitchUserUpdate, &Panel::StopWorking}) {
    end_at(&Panel::SignalEditorChanged, [end](Panel* panel) {
      openEditor(panel);
      (panel->*end)();
    });
  }
  // A panel that ends with its editor says nothing any more.
  Panel* panel = makePanel(controller);
  openEditor(panel);
  QSignalSpy changed(panel, &Panel::SignalEditorChanged);
  delete panel;
  QCOMPARE(changed.count(), 0);
}

QTEST_MAIN(PanelUsersTest)
#include "test_panel_users.moc"
