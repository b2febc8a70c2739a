#include <QAbstractButton>
#include <QLineEdit>
#include <QTimeEdit>

#include "editor_stage.h"

using namespace TarnPlanView;
using TarnTest::CEditorStage;

/// Where the keyboard is while the editor loads, saves, and takes buttons away.
class PlanEditorFocusTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void AnswersLeaveTheFocusWhereTheUserIs();
  void ButtonsThatGoHandTheFocusToTheWindows();
  void ConflictBarHandsTheFocusOn();

 private:
  void Begin() {
    QString error;
    TarnTest::PlanFixtureOptions options;
    options.switches = {{"load_all", 1}, {"timed_play", 1}};
    options.site = TarnHost::MakeDemoSite;
    QVERIFY2(fixture_.Open(options, &error), qPrintable(error));
    fixture_.Start();
  }
  static bool IsIdle(const CEditorStage& stage) { return stage.Text("editor_work").isEmpty(); }
  /// Presses the key where the focus is.
  static void Press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
};

void PlanEditorFocusTest::AnswersLeaveTheFocusWhereTheUserIs() {
  Begin();
  CEditorStage stage(fixture_);
  QVERIFY(QTest::qWaitForWindowActive(&stage.window));
  QLineEdit search(&stage.window);
  search.show();
  auto* name = stage.Find<QLineEdit>("plan_name_edit");
  // Left where the editor has put it, in another part of the window, or on the button that stays enabled.
  for (QWidget* user : {static_cast<QWidget*>(stage.editor.get()), static_cast<QWidget*>(&search),
                        stage.Find<QWidget>("cancel_plan_btn")}) {
    const bool elsewhere = user != stage.editor.get();
    Services().Hold("GetPlanDetail");
    stage.editor->OpenPlan(fixture_.Code("Night patrol"));
    QVERIFY(Services().WaitUntilHeld("GetPlanDetail"));
    user->setFocus();
    Services().ReleaseAll();
    QTRY_COMPARE(name->text(), QString("Night patrol"));
    QCOMPARE(QApplication::focusWidget(), elsewhere ? user : name);

    name->setText("Mine");
    stage.Grid().setFocus();
    Services().Fail("UpdatePlan", "not now");
    Services().Hold("UpdatePlan");
    stage.editor->Save();
    QVERIFY(Services().WaitUntilHeld("UpdatePlan"));
    if (elsewhere) {
      user->setFocus();
    }
    Services().ReleaseAll();
    QTRY_VERIFY(IsIdle(stage));
    QCOMPARE(QApplication::focusWidget(), elsewhere ? user : &stage.Grid());
    Services().Mend("UpdatePlan");
  }
}

void PlanEditorFocusTest::ButtonsThatGoHandTheFocusToTheWindows() {
  Begin();
  CEditorStage stage(fixture_);
  QVERIFY(QTest::qWaitForWindowActive(&stage.window));
  stage.OpenNew(fixture_.Code("Gates"));
  stage.Click("add_page_btn");
  stage.Find<QWidget>("undo_btn")->setFocus();
  Press(Qt::Key_Space);
  QCOMPARE(stage.Pages().model()->rowCount(), 1);
  QCOMPARE(QApplication::focusWidget(), &stage.Grid());
  Press(Qt::Key_Space);  // one too many
  QCOMPARE(stage.Pages().model()->rowCount(), 1);

  stage.Click("add_page_btn");
  stage.Find<QWidget>("remove_page_btn")->setFocus();
  Press(Qt::Key_Space);
  QCOMPARE(stage.Pages().model()->rowCount(), 1);
  QCOMPARE(QApplication::focusWidget(), &stage.Grid());
  auto* run = stage.Find<QAbstractButton>("auto_run_switch");
  run->click();
  auto* time = stage.Find<QWidget>("auto_run_times")->findChild<QTimeEdit*>();
  time->setFocus();
  QTest::keyClick(time, Qt::Key_Z, Qt::ControlModifier);
  QVERIFY(!time->isEnabled());
  QCOMPARE(QApplication::focusWidget(), run);

  // The focus goes on as ever where nothing is taken away.
  stage.Grid().setFocus();
  Press(Qt::Key_Tab);
  QVERIFY(QApplication::focusWidget() != &stage.Grid());
}

void PlanEditorFocusTest::ConflictBarHandsTheFocusOn() {
  Begin();
  CEditorStage stage(fixture_);
  QVERIFY(QTest::qWaitForWindowActive(&stage.window));
  const QString code = fixture_.Code("Night patrol");
  stage.Open(code);
  stage.Find<QLineEdit>("plan_name_edit")->setText("Mine");
  view_plugin_protocol::UpdatePlanRequest request;
  request.plan_index_code = code.toStdString();
  request.plan_name = "Theirs";
  view_plugin_protocol::UpdatePlanResponse response;
  QVERIFY(fixture_.Store().UpdatePlan(request, response));
  stage.editor->Save();
  QTRY_VERIFY(stage.IsConflictShown());
  Services().Fail("UpdatePlan", "not now");
  stage.Find<QWidget>("overwrite_btn")->setFocus();
  Press(Qt::Key_Space);
  QCOMPARE(QApplication::focusWidget(), stage.editor.get());
  Press(Qt::Key_Space);
  QTRY_VERIFY(IsIdle(stage));
  QCOMPARE(QApplication::focusWidget(), &stage.Grid());
  QCOMPARE(stage.closed, 0);

  // Where trying again is all there is, the keys find it.
  Services().Fail("GetPlanDetail", "not now");
  stage.editor->OpenPlan(code);
  QTRY_VERIFY(IsIdle(stage));
  QCOMPARE(QApplication::focusWidget(), stage.Find<QWidget>("retry_btn"));
  Services().Mend("GetPlanDetail");
  Press(Qt::Key_Space);
  QTRY_VERIFY(stage.Find<QWidget>("plan_name_edit")->hasFocus());
}

QTEST_MAIN(PlanEditorFocusTest)
#include "test_plan_editor_focus.moc"
