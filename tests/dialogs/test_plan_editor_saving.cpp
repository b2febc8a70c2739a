#include <QLineEdit>
#include <QSpinBox>

#include "TarnHost/plan_site.h"
#include "editor_stage.h"
#include "group_chooser.h"
#include "plan_saving.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using TarnTest::CEditorStage;

/// Saves that meet slow hosts, other calls' failures, and controllers that come and go.
class PlanEditorSavingTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void OtherCallsFailuresAreNotTheSaves_data();
  void OtherCallsFailuresAreNotTheSaves();
  void AFailureInAnotherGroupIsNoDeletion();
  void TakesWhatIsStillBeingTyped();
  void ACopyThatFailsLeavesThePlan();
  void AnotherControllerEndsTheWait();
  void ASlowSaveCanBeLeft();
  void EachPlanStartsAtItsFirstWindow();
  void AnUnchangedPlanIsNotSent();
  void NamesTheMissingRight();
  void OtherCallsFailuresAreNotTheLoads();

 private:
  void Begin() {
    TarnTest::PlanFixtureOptions options;
    options.switches = {{"load_all", 1}, {"timed_play", 1}};
    options.site = TarnHost::MakeDemoSite;
    QString error;
    QVERIFY2(fixture_.Open(options, &error), qPrintable(error));
    fixture_.Start();
  }
  bool IsIdle(const CEditorStage& stage) { return stage.Text("editor_work").isEmpty(); }
};

void PlanEditorSavingTest::OtherCallsFailuresAreNotTheSaves_data() {
  QTest::addColumn<bool>("add");
  QTest::addColumn<QString>("call");
  QTest::newRow("add") << true << "AddPlan";
  QTest::newRow("update") << false << "UpdatePlan";
}

void PlanEditorSavingTest::OtherCallsFailuresAreNotTheSaves() {
  QFETCH(bool, add);
  QFETCH(QString, call);
  Begin();
  CEditorStage stage(fixture_);
  add ? stage.OpenNew(fixture_.Code("Gates")) : stage.Open(fixture_.Code("Night patrol"));
  stage.Find<QLineEdit>("plan_name_edit")->setText("Once");
  Services().Hold(call);
  stage.Click("save_plan_btn");
  QVERIFY(Services().WaitUntilHeld(call));
  QSignalSpy messages(stage.controller.get(), &CStandardViewController::signalShowMessage);
  stage.controller->PlayPlanViewByIndexCode("no such plan");
  QTRY_COMPARE(messages.size(), 1);
  QVERIFY(!IsIdle(stage));
  QCOMPARE(stage.closed, 0);
  Services().ReleaseAll();
  QTRY_COMPARE(stage.closed, 1);
  QCOMPARE(Services().Count(call), 1);
  QVERIFY(!stage.editor->IsDirty());
}

void PlanEditorSavingTest::AFailureInAnotherGroupIsNoDeletion() {
  Begin();
  CEditorStage stage(fixture_);
  stage.Open(fixture_.Code("Night patrol"));
  auto* groups = stage.editor->findChild<CGroupChooser*>();
  const QString other = groups->CurrentText() == "Gates" ? "Roof" : "Gates";
  const QModelIndex row = fixture_.Public()->FindIndexByIndexCode(fixture_.Code(other), true);
  Q_EMIT groups->SignalGroupChosen(fixture_.Code(other), other, CGroupChooser::FamilyOf(row));
  QVERIFY(stage.editor->IsDirty());
  for (const char* call : {"UpdatePlan", "GetPlanDetail"}) {
    Services().Fail(call, "not now");
  }
  stage.Click("save_plan_btn");
  QTRY_VERIFY(IsIdle(stage));
  QVERIFY(!stage.IsConflictShown());
}

void PlanEditorSavingTest::TakesWhatIsStillBeingTyped() {
  Begin();
  const QString code = fixture_.Code("Night patrol");
  CEditorStage stage(fixture_);
  stage.Open(code);
  auto* dwell = stage.Find<QSpinBox>("dwell_spin");
  dwell->setFocus();
  dwell->selectAll();
  QTest::keyClicks(dwell, "47");
  QVERIFY(stage.editor->IsDirty());
  dwell->selectAll();
  QTest::keyClicks(dwell, "48");
  QTest::keyClick(dwell, Qt::Key_S, Qt::ControlModifier);
  QTRY_COMPARE(stage.closed, 1);
  QCOMPARE(CEditorStage::Stored(code).pages.front().dwell_seconds, 48);
}

void PlanEditorSavingTest::ACopyThatFailsLeavesThePlan() {
  Begin();
  const QString code = fixture_.Code("Night patrol");
  CEditorStage stage(fixture_);
  stage.Open(code);
  auto* name = stage.Find<QLineEdit>("plan_name_edit");
  name->setText("Mine");
  const auto plan = CEditorStage::Stored(code);
  QVERIFY(plan.auto_run);
  UpdatePlanRequest request;
  request.plan_index_code = plan.index_code;
  request.plan_name = "Theirs";
  UpdatePlanResponse response;
  QVERIFY(fixture_.Store().UpdatePlan(request, response));
  stage.Click("save_plan_btn");
  QTRY_VERIFY(stage.IsConflictShown());
  Services().Fail("AddPlan", "disk full");
  stage.Click("save_as_new_btn");
  QVERIFY(!IsIdle(stage));
  QTRY_VERIFY(IsIdle(stage));
  QVERIFY(stage.IsConflictShown());
  QCOMPARE(name->text(), QString("Mine"));
  Services().Mend("AddPlan");
  stage.Click("load_theirs_btn");
  QCOMPARE(name->text(), QString("Theirs"));
  QVERIFY(!stage.editor->IsDirty());
  QTest::keyClick(name, Qt::Key_Z, Qt::ControlModifier);  // one press was not the end of it
  QCOMPARE(name->text(), QString("Mine"));
  QVERIFY(fixture_.Store().UpdatePlan(request, response));
  stage.Click("save_plan_btn");
  QTRY_VERIFY(stage.IsConflictShown());
  stage.Click("save_as_new_btn");
  QTRY_COMPARE(stage.closed, 1);
  QCOMPARE(CEditorStage::Stored(code).name, std::string("Theirs"));
  QVERIFY(!CEditorStage::Stored(fixture_.Code("Mine (copy)")).auto_run);  // two at once could not run
  const QString told = stage.tips.isEmpty() ? QString() : stage.tips.last();
  QVERIFY(told.contains("Mine (copy)") && told.contains("automatic run"));
}

void PlanEditorSavingTest::AnotherControllerEndsTheWait() {
  Begin();
  CEditorStage stage(fixture_);
  stage.OpenNew(fixture_.Code("Gates"));
  stage.Find<QLineEdit>("plan_name_edit")->setText("Late");
  Services().Hold("AddPlan");
  stage.Click("save_plan_btn");
  QVERIFY(Services().WaitUntilHeld("AddPlan"));
  auto next = std::make_unique<CStandardViewController>(fixture_.Public());
  next->setParent(nullptr);
  stage.editor->SetController(next.get());
  QCOMPARE(stage.TakeTips().size(), 1);
  QVERIFY(IsIdle(stage) && stage.editor->IsDirty());
  stage.Find<QLineEdit>("plan_name_edit")->setText("Later");
  Services().ReleaseAll();
  QTRY_COMPARE(stage.tips.size(), 1);  // it is there, without the change
  QVERIFY(stage.editor->IsDirty());
  stage.Click("save_plan_btn");
  QTRY_COMPARE(stage.closed, 1);
  QCOMPARE(Services().Count("AddPlan"), 1);
  QVERIFY(!fixture_.Code("Later").isEmpty() && fixture_.Code("Late").isEmpty());

  Services().Hold("GetPlanDetail");
  stage.editor->OpenPlan(fixture_.Code("Night patrol"));
  QVERIFY(Services().WaitUntilHeld("GetPlanDetail"));
  next.reset();
  QVERIFY(IsIdle(stage) && stage.IsConflictShown());
  Services().ReleaseAll();
}

void PlanEditorSavingTest::ASlowSaveCanBeLeft() {
  Begin();
  CEditorStage stage(fixture_);
  stage.editor->findChild<CPlanSaving*>()->SetPatience(50);
  stage.Open(fixture_.Code("Night patrol"));
  stage.Find<QLineEdit>("plan_name_edit")->setText("Slow");
  Services().Hold("UpdatePlan");
  stage.Click("save_plan_btn");
  QVERIFY(Services().WaitUntilHeld("UpdatePlan"));
  QTRY_VERIFY(stage.Text("editor_work").contains("long"));
  stage.answer = 0;
  stage.Click("cancel_plan_btn");
  QCOMPARE(stage.closed, 0);
  stage.answer = 1;
  stage.Click("cancel_plan_btn");
  QCOMPARE(stage.questions.size(), 2);
  QCOMPARE(stage.closed, 1);
  stage.Open(fixture_.Code("Gate overview"));
  Services().ReleaseAll();
  QTRY_VERIFY(!fixture_.Code("Slow").isEmpty());
  TarnTest::CPlanFixture::Drain();
  QCOMPARE(stage.closed, 1);
  QCOMPARE(stage.Find<QLineEdit>("plan_name_edit")->text(), QString("Gate overview"));
  QCOMPARE(stage.editor->PlanCode(), fixture_.Code("Gate overview"));  // and would be saved as itself
  QCOMPARE(stage.TakeTips(), QStringList());
}

void PlanEditorSavingTest::EachPlanStartsAtItsFirstWindow() {
  Begin();
  CEditorStage stage(fixture_);
  stage.Open(fixture_.Code("Night patrol"));
  stage.Grid().SetCurrentWindow(3);
  stage.Open(fixture_.Code("Night patrol"));
  QCOMPARE(stage.Grid().CurrentWindow(), 1);
}

void PlanEditorSavingTest::AnUnchangedPlanIsNotSent() {
  Begin();
  const QString code = fixture_.Code("Night patrol");
  CEditorStage stage(fixture_);
  stage.Open(code);
  stage.Click("save_plan_btn");
  QCOMPARE(stage.closed, 1);
  QCOMPARE(Services().Count("UpdatePlan"), 0);

  // Where the host has something else it is not "unchanged".
  auto* name = stage.Find<QLineEdit>("plan_name_edit");
  stage.Open(code);
  name->setText("Mine");
  UpdatePlanRequest request;
  request.plan_index_code = code.toStdString();
  request.plan_name = "Theirs";
  UpdatePlanResponse response;
  QVERIFY(fixture_.Store().UpdatePlan(request, response));
  stage.Click("save_plan_btn");
  QTRY_VERIFY(stage.IsConflictShown());
  name->setText("Night patrol");
  QVERIFY(!stage.editor->IsDirty());
  stage.Click("overwrite_btn");
  QTRY_COMPARE(stage.closed, 2);
  QCOMPARE(CEditorStage::Stored(code).name, std::string("Night patrol"));

  stage.OpenNew(fixture_.Code("Gates"));  // a new plan is worth saving as it comes
  stage.Click("save_plan_btn");
  QTRY_COMPARE(Services().Count("AddPlan"), 1);
  QTRY_COMPARE(stage.closed, 3);
}

void PlanEditorSavingTest::NamesTheMissingRight() {
  Begin();
  const QString code = fixture_.Code("Night patrol");
  CEditorStage stage(fixture_);
  Services().SetRight(5, false);
  stage.OpenNew(fixture_.Code("Gates"));
  stage.Click("save_plan_btn");
  QCOMPARE(stage.TakeTips(), QStringList("You lack the right to add plans."));
  stage.Open(code);
  stage.Find<QLineEdit>("plan_name_edit")->setText("Mine");
  DeletePlanResquest request;
  request.plan_index_code = code.toStdString();
  DeletePlanResponse response;
  QVERIFY(fixture_.Store().DeletePlan(request, response));
  stage.Click("save_plan_btn");
  QTRY_VERIFY(stage.IsConflictShown());
  QVERIFY(!stage.Find<QWidget>("save_as_new_btn")->isEnabled());
  QVERIFY(stage.Text("conflict_text").contains("You lack the right to add plans."));
  Services().SetRight(5, true);
  stage.Click("save_plan_btn");
  QTRY_VERIFY(stage.IsConflictShown() && stage.Find<QWidget>("save_as_new_btn")->isEnabled());
  QVERIFY(!stage.Text("conflict_text").contains("right"));
  stage.Find<QLineEdit>("plan_name_edit")->setText("Mine too");
  Services().SetRight(6, false);
  stage.TakeTips();
  stage.Click("save_plan_btn");
  QCOMPARE(stage.TakeTips(), QStringList("You lack the right to edit plans."));
}

void PlanEditorSavingTest::OtherCallsFailuresAreNotTheLoads() {
  Begin();
  CEditorStage stage(fixture_);
  const QModelIndex group = fixture_.Public()->FindIndexByIndexCode(fixture_.Code("Gates"), true);
  QSignalSpy messages(stage.controller.get(), &CStandardViewController::signalShowMessage);
  Services().Hold("GetPlanDetail");
  stage.editor->OpenPlan(fixture_.Code("Night patrol"));
  QVERIFY(Services().WaitUntilHeld("GetPlanDetail"));
  Services().Fail("UpdatePlanGroup", "no such name");
  stage.controller->UpdatePlanGroupName(group, "Doors");
  QTRY_COMPARE(messages.size(), 1);
  QVERIFY(!IsIdle(stage) && !stage.IsConflictShown());
  Services().ReleaseAll();
  QTRY_COMPARE(stage.Find<QLineEdit>("plan_name_edit")->text(), QString("Night patrol"));
  QVERIFY(IsIdle(stage));
}

QTEST_MAIN(PlanEditorSavingTest)
#include "test_plan_editor_saving.moc"
