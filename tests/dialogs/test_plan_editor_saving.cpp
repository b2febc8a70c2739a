#include "editor_stage.h"
#include "group_chooser.h"
#include "plan_saving.h"
#include "plan_watch.h"
#include "screen_reader.h"
#include "view_model_data_manager.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using TarnTest::CEditorStage;
using TarnTest::CPlanFixture;

/// Loads and saves: what the host has meanwhile, slow hosts, failures, and controllers that come and go.
class PlanEditorSavingTest : public TarnTest::CEditorTest {
  Q_OBJECT
 private Q_SLOTS:
  void SavesOnceAndKeepsInputOnFailure();
  void HearsOfChangesWhileEditing();
  void LooksAtTheirsAndLosesNothing();
  void LooksOnceAtATime();
  void HearsOfDeletionsWhileEditing();
  void ChangedElsewhere_data();
  void ChangedElsewhere();
  void DeletedElsewhereAndMissingRights();
  void AGroupThatHasGoneIsNoDeletion();
  void ControllersThatGoEndTheWait();
  void ASlowSaveCanBeLeft();
  void AnUnchangedPlanIsNotSent();
  void LoadsWhatItWaitsFor();
  void AsksBeforeChangesAreLost();
};

void PlanEditorSavingTest::SavesOnceAndKeepsInputOnFailure() {
  Begin();
  CEditorStage stage(fixture_);
  stage.OpenNew(fixture_.Code("Gates"));
  stage.Name().setText("Kept");
  Services().Fail("AddPlan", "disk full");
  QTest::keyClick(&stage.Name(), Qt::Key_S, Qt::ControlModifier);
  QTRY_VERIFY(stage.Name().isEnabled());
  QVERIFY(stage.closed == 0 && stage.editor->IsDirty());
  QCOMPARE(stage.Name().text(), QString("Kept"));
  QCOMPARE(QApplication::focusWidget(), &stage.Name());
  Services().Mend("AddPlan");
  Services().Hold("AddPlan");
  Services().ForgetCalls();
  stage.Save();
  QVERIFY(Services().WaitUntilHeld("AddPlan"));
  QCOMPARE(stage.Text("editor_work"), QString("Saving..."));
  QTest::keyClick(stage.editor.get(), Qt::Key_S, Qt::ControlModifier);
  stage.editor->Save();
  QVERIFY(!stage.editor->MayClose());  // without a question: nothing can be lost yet
  QCOMPARE(stage.questions, QStringList());
  QSignalSpy messages(stage.controller.get(), &CStandardViewController::signalShowMessage);
  stage.controller->PlayPlanViewByIndexCode("no such plan");  // its failure is not the save's
  QTRY_COMPARE(messages.size(), 1);
  QVERIFY(!stage.IsIdle() && !stage.Name().isEnabled() && stage.closed == 0);
  Services().Release("AddPlan");
  QTRY_COMPARE(stage.closed, 1);
  QCOMPARE(Services().Count("AddPlan"), 1);
  QVERIFY(!stage.editor->IsDirty() && !fixture_.Code("Kept").isEmpty());
}

void PlanEditorSavingTest::HearsOfChangesWhileEditing() {
  Begin();
  CEditorStage stage(fixture_);
  stage.Open(patrol_);
  auto& manager = CViewModelDataManager::Instance();
  manager.OnViewChanged(patrol_);  // of something that has not come to the plan itself
  stage.Name().setText("Mine");
  RenameElsewhere(patrol_, "Theirs");
  manager.OnViewChanged(patrol_);
  QTRY_VERIFY(stage.IsConflictShown());
  const QString said = stage.Text("conflict_text");
  QVERIFY2(said.contains("Saved by operator at ") && said.contains("the name, now Theirs"), qPrintable(said));
  QCOMPARE(stage.Name().text(), QString("Mine"));
  stage.Click("keep_mine_btn");
  QVERIFY(!stage.IsConflictShown());

  RenameElsewhere(patrol_, "Theirs again");
  manager.OnViewChanged(patrol_);
  QTRY_VERIFY(stage.Text("conflict_text").contains("Theirs again"));
  stage.Click("load_theirs_btn");
  QCOMPARE(stage.Name().text(), QString("Theirs again"));
  QVERIFY(!stage.editor->IsDirty() && stage.Find<QWidget>("back_to_mine_btn")->hasFocus());
  stage.Name().setText("Looked at");
  RenameElsewhere(patrol_, "Newest");
  manager.OnViewChanged(patrol_);
  QTRY_VERIFY(stage.Text("conflict_text").contains("Newest"));
  QVERIFY(stage.Find<QWidget>("keep_mine_btn")->isHidden());  // that would be their earlier version
  stage.Click("load_theirs_btn");
  QCOMPARE(stage.Name().text(), QString("Newest"));
  stage.Click("back_to_mine_btn");
  QCOMPARE(stage.Name().text(), QString("Mine"));
  QVERIFY(!stage.IsConflictShown());
  stage.Save();
  QTRY_COMPARE(stage.closed, 1);
  QCOMPARE(Stored(patrol_).name, std::string("Mine"));
  QCOMPARE(stage.TakeTips(), QStringList());

  QVERIFY(!stage.editor->findChild<CPlanWatch*>()->IsWatching());  // else its own save would be news
}

void PlanEditorSavingTest::LooksAtTheirsAndLosesNothing() {
  Begin();
  CEditorStage stage(fixture_);
  OpenIntoConflict(stage);
  stage.Click("load_theirs_btn");
  QTest::keyClick(&stage.Name(), Qt::Key_Z, Qt::ControlModifier);
  QTest::keyClick(&stage.Name(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  QVERIFY(!stage.editor->IsDirty() && !stage.Find<QWidget>("back_to_mine_btn")->isHidden());
  stage.answer = 0;
  QTest::keyClick(&stage.Name(), Qt::Key_Escape);
  stage.Save();
  QVERIFY(!stage.editor->MayClose());
  QCOMPARE(stage.questions.size(), 3);
  QCOMPARE(stage.closed, 0);
  QCOMPARE(stage.Name().text(), QString("Theirs"));
  stage.answer = 1;
  QVERIFY(!stage.editor->MayClose());
  QTRY_COMPARE(stage.closed, 1);
  QCOMPARE(Stored(patrol_).name, std::string("Mine"));

  stage.Open(patrol_);
  stage.Name().setText("Mine again");
  RenameElsewhere(patrol_, "Theirs again");
  stage.SaveIntoConflict();
  stage.Click("load_theirs_btn");
  stage.answer = 2;
  QVERIFY(stage.editor->MayClose());
  QCOMPARE(stage.Name().text(), QString());
  QCOMPARE(Stored(patrol_).name, std::string("Theirs again"));
}

// Steady notices neither keep a look from being answered nor begin others beside it.
void PlanEditorSavingTest::LooksOnceAtATime() {
  Begin();
  CEditorStage stage(fixture_);
  stage.Open(patrol_);
  auto& manager = CViewModelDataManager::Instance();
  auto* watch = stage.editor->findChild<CPlanWatch*>();
  Services().Hold("GetPlanDetail", TarnTest::CRecordingServices::AfterCall);
  Services().ForgetCalls();
  Q_EMIT manager.SignalNoticed();
  QVERIFY(Services().WaitUntilHeld("GetPlanDetail"));
  RenameElsewhere(patrol_, "Theirs");  // the look under way has not seen it
  Q_EMIT manager.SignalNoticed();
  QTRY_VERIFY(watch->LooksAgain());
  Q_EMIT manager.SignalNoticed();
  QCOMPARE(Services().Count("GetPlanDetail"), 1);
  int looks = 0;
  connect(watch, &CPlanWatch::SignalLooked, &stage.window, [&looks] { ++looks; });
  Services().ReleaseAll();
  QTRY_VERIFY(stage.IsConflictShown());
  QCOMPARE(looks, 2);
}

// Of a plan that no tree has loaded.
void PlanEditorSavingTest::HearsOfDeletionsWhileEditing() {
  Begin({{"load_all", 0}});
  const std::string group = Stored(patrol_).group_index_code;
  QVERIFY(!Services().ObserverOf(ResourceData::RT_VIEW_GROUP, group));
  CEditorStage stage(fixture_);
  stage.Open(patrol_);
  auto& manager = CViewModelDataManager::Instance();
  Services().Fail("GetPlanDetail", "no answer", Unavailable);
  Q_EMIT manager.SignalNoticed();
  QTRY_VERIFY(Services().Count("GetPlanDetail") > 1);
  CPlanFixture::Drain();
  QVERIFY(!stage.IsConflictShown());  // that is no deletion
  Services().Fail("GetPlanDetail", "deleted by guard", Gone);
  Q_EMIT manager.SignalNoticed();
  QTRY_VERIFY(stage.IsConflictShown());
  QVERIFY(stage.Text("conflict_text").startsWith("deleted by guard "));
  Services().Mend("GetPlanDetail");
  Q_EMIT manager.SignalNoticed();
  QTRY_VERIFY(!stage.IsConflictShown());  // the deletion was taken back

  QCOMPARE(fixture_.InStore().DeletePlan(patrol_), QString());
  QVERIFY(Services().ObserverOf(ResourceData::RT_VIEW, patrol_.toStdString()));
  auto* above = Services().ObserverOf(ResourceData::RT_VIEW_GROUP, group);
  QVERIFY(above);
  above->OnResourceUpdate({ResourceData::RE_CHILD_REMOVED, group, patrol_.toStdString(), ResourceData::RT_VIEW});
  QTRY_VERIFY(stage.IsConflictShown());
  QCOMPARE(stage.Name().text(), QString("Night patrol"));
  stage.Save();
  QTRY_COMPARE(stage.closed, 1);
  const QString again = fixture_.Code("Night patrol");
  QVERIFY(!again.isEmpty() && again != patrol_);
  QCOMPARE(Stored(again).pages.size(), size_t(3));
}

void PlanEditorSavingTest::ChangedElsewhere_data() {
  QTest::addColumn<QByteArray>("way");
  for (const char* way : {"load_theirs_btn", "overwrite_btn", "save_as_new_btn"}) {
    QTest::newRow(way) << QByteArray(way);
  }
}

void PlanEditorSavingTest::ChangedElsewhere() {
  QFETCH(QByteArray, way);
  Begin();
  CEditorStage stage(fixture_);
  OpenIntoConflict(stage);
  QVERIFY(stage.Text("conflict_text").contains("Saved by operator at "));
  QVERIFY(stage.Text("conflict_text").contains("the name, now Theirs"));
  QCOMPARE(stage.TakeTips() + stage.Shown(), QStringList());  // no tip over the fields says it again
  QCOMPARE(stage.Name().text(), QString("Mine"));
  QCOMPARE(Stored(patrol_).name, std::string("Theirs"));
  if (way == "overwrite_btn") {
    stage.Name().clear();
    stage.Click(way);
    QCOMPARE(stage.TakeTips().size(), 1);
    stage.Name().setText("Without a word");
    stage.SaveIntoConflict();  // nothing went over theirs
    stage.Name().setText("Night patrol");
    QVERIFY(!stage.editor->IsDirty());  // but it is not what the host has
    stage.Click(way);
    QTRY_COMPARE(stage.closed, 1);
    QCOMPARE(Stored(patrol_).name, std::string("Night patrol"));
    return;
  }
  Services().Fail("AddPlan", "disk full");
  stage.Click("save_as_new_btn");
  QVERIFY(!stage.IsIdle());
  QTRY_VERIFY(stage.IsIdle() && stage.IsConflictShown());
  QCOMPARE(stage.Name().text(), QString("Mine"));
  Services().Mend("AddPlan");
  stage.Click(way);
  if (way == "load_theirs_btn") {
    QCOMPARE(stage.Name().text(), QString("Theirs"));
    QVERIFY(!stage.editor->IsDirty() && !stage.Find<QWidget>("back_to_mine_btn")->isHidden());
    QTest::keyClick(&stage.Name(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(stage.Name().text(), QString("Mine"));
    QVERIFY(!stage.IsConflictShown());
    return;
  }
  const TarnTest::CScreenReader reader;  // that the plan was changed is no news any more
  QTRY_COMPARE(stage.closed, 1);
  QCOMPARE(reader.Heard(QAccessible::Alert), QStringList());
  QCOMPARE(Stored(patrol_).name, std::string("Theirs"));
  QVERIFY(!Stored(fixture_.Code("Mine (copy)")).auto_run);  // two at once could not run
  QVERIFY(stage.tips.last().contains("Mine (copy)") && stage.tips.last().contains("automatic run"));
}

void PlanEditorSavingTest::DeletedElsewhereAndMissingRights() {
  Begin();
  CEditorStage stage(fixture_);
  Services().SetRight(5, false);
  stage.OpenNew(fixture_.Code("Gates"));
  stage.Save();
  QCOMPARE(stage.TakeTips(), QStringList("You lack the right to add plans."));
  stage.Open(patrol_);
  stage.Name().setText("Mine");
  QCOMPARE(fixture_.InStore().DeletePlan(patrol_), QString());
  Services().SetRight(6, false);
  stage.Save();
  QCOMPARE(stage.TakeTips(), QStringList("You lack the right to edit plans."));
  Services().SetRight(6, true);
  stage.SaveIntoConflict();
  auto* as_new = stage.Find<QWidget>("save_as_new_btn");
  QVERIFY(stage.Find<QWidget>("load_theirs_btn")->isHidden() && stage.Find<QWidget>("overwrite_btn")->isHidden());
  QVERIFY(!as_new->isEnabled());
  QVERIFY(stage.Text("conflict_text").contains("You lack the right to add plans."));
  stage.TakeTips();
  stage.Save();
  QCOMPARE(stage.TakeTips(), QStringList("You lack the right to add plans."));
  Services().SetRight(5, true);
  stage.Save();  // what else, now that there is none
  QTRY_COMPARE(stage.closed, 1);
  const auto again = Stored(fixture_.Code("Mine"));  // there is none beside it: nothing is taken away
  QCOMPARE(again.pages.size(), size_t(3));
  QVERIFY(again.auto_run && again.index_code != patrol_.toStdString());
}

void PlanEditorSavingTest::AGroupThatHasGoneIsNoDeletion() {
  Begin();
  CEditorStage stage(fixture_);
  stage.Open(patrol_);
  auto* groups = stage.editor->findChild<CGroupChooser*>();
  const QString other = groups->CurrentText() == "Gates" ? "Roof" : "Gates";
  Q_EMIT groups->SignalGroupChosen(fixture_.Code(other), other, CGroupChooser::FamilyOf(GroupRow(other)));
  QCOMPARE(fixture_.InStore().DeleteGroup(fixture_.Code(other)), QString());
  stage.Save();
  QTRY_VERIFY(stage.IsIdle());
  QCOMPARE(stage.TakeTips().size() + stage.Shown().size(), 1);
  QVERIFY(!stage.IsConflictShown() && stage.editor->IsDirty());
}

void PlanEditorSavingTest::ControllersThatGoEndTheWait() {
  Begin();
  CEditorStage stage(fixture_);
  stage.OpenNew(fixture_.Code("Gates"));
  stage.Name().setText("Late");
  Services().Hold("AddPlan");
  stage.Save();
  QVERIFY(Services().WaitUntilHeld("AddPlan"));
  auto next = std::make_unique<CStandardViewController>(fixture_.Public());
  next->setParent(nullptr);
  stage.editor->SetController(next.get());
  QCOMPARE(stage.TakeTips().size(), 1);
  QVERIFY(stage.IsIdle() && stage.editor->IsDirty());
  stage.Name().setText("Later");
  Services().ReleaseAll();
  QTRY_COMPARE(stage.tips.size(), 1);  // it is there, without the change
  QVERIFY(stage.editor->IsDirty());
  stage.Save();
  QTRY_COMPARE(stage.closed, 1);
  QCOMPARE(Services().Count("AddPlan"), 1);
  QVERIFY(!fixture_.Code("Later").isEmpty() && fixture_.Code("Late").isEmpty());

  stage.editor->SetController(stage.controller.get());
  stage.ConnectLoads();  // the editor let go of that controller
  stage.Open(patrol_);
  stage.Name().setText("Mine");
  Services().Hold("UpdatePlan");
  stage.Save();
  QVERIFY(Services().WaitUntilHeld("UpdatePlan"));
  stage.TakeTips();
  stage.controller.reset();
  QCOMPARE(stage.TakeTips().size(), 1);
  Services().ReleaseAll();
  CPlanFixture::Drain();
  stage.Save();  // there is no way to the host now
  QCOMPARE(stage.TakeTips().size(), 1);
  QVERIFY(stage.Name().isEnabled() && stage.editor->IsDirty());

  stage.editor->SetController(next.get());
  Services().Hold("GetPlanDetail");
  stage.editor->OpenPlan(patrol_);
  QVERIFY(Services().WaitUntilHeld("GetPlanDetail"));
  next.reset();
  QVERIFY(stage.IsIdle() && stage.IsConflictShown());
  Services().ReleaseAll();
}

void PlanEditorSavingTest::ASlowSaveCanBeLeft() {
  Begin();
  CEditorStage stage(fixture_);
  stage.editor->findChild<CPlanSaving*>()->SetPatience(50);
  stage.Open(patrol_);
  stage.Name().setText("Slow");
  Services().Hold("UpdatePlan");
  stage.Save();
  QVERIFY(Services().WaitUntilHeld("UpdatePlan"));
  QTRY_VERIFY(stage.Text("editor_work").contains("long"));
  for (stage.answer = 0; stage.answer < 2; ++stage.answer) {
    QCOMPARE(stage.closed, 0);
    stage.Click("cancel_plan_btn");
  }
  QCOMPARE(stage.questions.size(), 2);
  QCOMPARE(stage.closed, 1);
  stage.Open(fixture_.Code("Gate overview"));
  Services().ReleaseAll();
  QTRY_VERIFY(!fixture_.Code("Slow").isEmpty());
  CPlanFixture::Drain();
  QCOMPARE(stage.closed, 1);
  QCOMPARE(stage.Name().text(), QString("Gate overview"));
  QCOMPARE(stage.editor->PlanCode(), fixture_.Code("Gate overview"));  // and would be saved as itself
  QCOMPARE(stage.TakeTips(), QStringList());
}

void PlanEditorSavingTest::AnUnchangedPlanIsNotSent() {
  Begin();
  CEditorStage stage(fixture_);
  stage.Open(patrol_);
  stage.Grid().SetCurrentWindow(3);
  auto* watch = stage.editor->findChild<CPlanWatch*>();
  QVERIFY(watch->IsWatching() && stage.editor->MayClose());
  QVERIFY(!watch->IsWatching());  // who asked hides it now
  stage.Open(patrol_);
  stage.Save();
  QCOMPARE(stage.closed, 1);
  QCOMPARE(Services().Count("UpdatePlan"), 0);
  stage.OpenNew(fixture_.Code("Gates"));  // a new plan is worth saving as it comes
  QCOMPARE(stage.Grid().CurrentWindow(), 1);
  stage.Save();
  QTRY_COMPARE(stage.closed, 2);
  QCOMPARE(Services().Count("AddPlan"), 1);
}

void PlanEditorSavingTest::LoadsWhatItWaitsFor() {
  Begin();
  CEditorStage stage(fixture_);
  Services().Fail("GetPlanDetail", "gone fishing");
  stage.editor->OpenPlan(patrol_);
  QVERIFY(!stage.Find<QWidget>("save_plan_btn")->isEnabled());
  QTRY_COMPARE(stage.Text("conflict_text"), QString("gone fishing"));
  QVERIFY(!stage.Find<QWidget>("save_plan_btn")->isEnabled());
  Services().Mend("GetPlanDetail");
  stage.Click("retry_btn");
  QTRY_COMPARE(stage.Name().text(), QString("Night patrol"));
  Services().Hold("GetPlanDetail", TarnTest::CRecordingServices::AfterCall);
  stage.editor->OpenPlan(patrol_);
  QVERIFY(Services().WaitUntilHeld("GetPlanDetail"));
  stage.editor->OpenPlan(fixture_.Code("Gate overview"));  // the user has thought better of it
  Services().ReleaseAll();
  QTRY_COMPARE(stage.Name().text(), QString("Gate overview"));
  CPlanFixture::Drain();
  stage.editor->OnPlanInfo(Stored(patrol_));
  QCOMPARE(stage.Name().text(), QString("Gate overview"));
}

void PlanEditorSavingTest::AsksBeforeChangesAreLost() {
  Begin();
  CEditorStage stage(fixture_);
  stage.Open(patrol_);
  QTest::keyClick(&stage.Grid(), Qt::Key_Escape);
  QCOMPARE(stage.closed, 1);
  QCOMPARE(stage.questions, QStringList());
  stage.Open(patrol_);
  stage.Name().setText("Renamed");
  stage.answer = 0;
  QTest::keyClick(&stage.Grid(), Qt::Key_Escape);
  QCOMPARE(stage.questions.size(), 1);
  QVERIFY(stage.closed == 1 && stage.editor->IsDirty());
  stage.answer = 2;  // throw them away
  QTest::keyClick(&stage.Grid(), Qt::Key_Escape);
  QCOMPARE(stage.closed, 2);
  QVERIFY(!stage.editor->IsDirty());
  QCOMPARE(Stored(patrol_).name, std::string("Night patrol"));
}

QTEST_MAIN(PlanEditorSavingTest)
#include "test_plan_editor_saving.moc"
