#include <QAbstractButton>
#include <QAccessible>
#include <QTimeEdit>

#include "editor_stage.h"

using namespace TarnPlanView;
using TarnTest::CEditorStage;

/// Where the keyboard is while the editor loads, saves, and takes buttons away.
class PlanEditorFocusTest : public TarnTest::CEditorTest {
  Q_OBJECT
 private Q_SLOTS:
  void AnswersLeaveTheFocusWhereTheUserIs();
  void ButtonsThatGoHandTheFocusToTheWindows();
  void ConflictBarHandsTheFocusOn();
  void SplitsAreRadioButtons();

 private:
  static void Press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
};

// One of the group is reached by Tab, the arrow keys choose; a split of a newer version leaves none chosen.
void PlanEditorFocusTest::SplitsAreRadioButtons() {
  CEditorStage stage(Begun());
  stage.Open(patrol_);
  const auto checked = [&stage] {
    QStringList names;
    for (const int windows : {1, 4, 9, 16}) {
      auto* button = stage.Find<QAbstractButton>(qPrintable(QString("split_%1_btn").arg(windows)));
      const QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(button);
      if (heard->role() == QAccessible::RadioButton && heard->state().checked && button->focusPolicy() & Qt::TabFocus) {
        names << heard->text(QAccessible::Name).section(' ', 0, 0);
      }
    }
    return names.join(',');
  };
  QCOMPARE(checked(), QString("4"));
  stage.Find<QWidget>("split_4_btn")->setFocus();
  Press(Qt::Key_Right);
  QCOMPARE(checked(), QString("9"));
  QCOMPARE(stage.Windows().size(), 9);
  Press(Qt::Key_Left);
  Press(Qt::Key_Left);
  QCOMPARE(checked(), QString("1"));
  QVERIFY(stage.Find<QWidget>("split_1_btn")->hasFocus());
  Press(Qt::Key_Space);  // the chosen one stays chosen
  QCOMPARE(checked(), QString("1"));
}

void PlanEditorFocusTest::AnswersLeaveTheFocusWhereTheUserIs() {
  CEditorStage stage(Begun());
  QVERIFY(QTest::qWaitForWindowActive(&stage.window));
  QLineEdit search(&stage.window);
  search.show();
  // Left where the editor has put it, in another part of the window, or on the button that stays enabled.
  for (QWidget* user : {static_cast<QWidget*>(stage.editor.get()), static_cast<QWidget*>(&search),
                        stage.Find<QWidget>("cancel_plan_btn")}) {
    const bool elsewhere = user != stage.editor.get();
    Services().Hold("GetPlanDetail");
    stage.editor->OpenPlan(patrol_);
    QVERIFY(Services().WaitUntilHeld("GetPlanDetail"));
    user->setFocus();
    Services().ReleaseAll();
    QTRY_COMPARE(stage.Name().text(), QString("Night patrol"));
    QCOMPARE(QApplication::focusWidget(), elsewhere ? user : &stage.Name());

    stage.Name().setText("Mine");
    stage.Grid().setFocus();
    Services().Fail("UpdatePlan", "not now");
    Services().Hold("UpdatePlan");
    stage.editor->Save();
    QVERIFY(Services().WaitUntilHeld("UpdatePlan"));
    if (elsewhere) {
      user->setFocus();
    }
    Services().ReleaseAll();
    QTRY_VERIFY(stage.IsIdle());
    QCOMPARE(QApplication::focusWidget(), elsewhere ? user : &stage.Grid());
    Services().Mend("UpdatePlan");
  }
}

void PlanEditorFocusTest::ButtonsThatGoHandTheFocusToTheWindows() {
  CEditorStage stage(Begun());
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
  CEditorStage stage(Begun());
  QVERIFY(QTest::qWaitForWindowActive(&stage.window));
  OpenIntoConflict(stage);
  Services().Fail("UpdatePlan", "not now");
  stage.Find<QWidget>("overwrite_btn")->setFocus();
  Press(Qt::Key_Space);
  QCOMPARE(QApplication::focusWidget(), stage.editor.get());
  Press(Qt::Key_Space);
  QTRY_VERIFY(stage.IsIdle());
  QCOMPARE(QApplication::focusWidget(), &stage.Grid());
  QCOMPARE(stage.closed, 0);

  // Where trying again is all there is, the keys find it.
  Services().Fail("GetPlanDetail", "not now");
  stage.editor->OpenPlan(patrol_);
  QTRY_VERIFY(stage.IsIdle());
  QCOMPARE(QApplication::focusWidget(), stage.Find<QWidget>("retry_btn"));
  Services().Mend("GetPlanDetail");
  Press(Qt::Key_Space);
  QTRY_VERIFY(stage.Name().hasFocus());
}

QTEST_MAIN(PlanEditorFocusTest)
#include "test_plan_editor_focus.moc"
