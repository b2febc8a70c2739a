#include "WidgetKit/dock_widget.h"
#include "editor_place.h"
#include "group_chooser.h"
#include "panel_stage.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using TarnTest::CPanelStage;

// The panel and the plan editor that it opens: what is current afterwards, what opens next, and who may leave.
class PanelEditorTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void OpensBesideThePanel();
  void WhatWasSavedIsCurrent();
  void KeysBeforeThePlanIsThereDoNothing();
  void NextPlanOpensOnceTheFirstIsSafe();
  void LeavingIsTiedToItsSave();
  void TipAboutASaveMayEndThePanelsWork();
  void PlanInTheEditorIsNotMoved();
  void PanelsOfOneWallShareTheEditorsPlace();
  void WallMayStandInAnotherWindow();

 private:
  enum Answer { KeepEditing = 0, SaveFirst = 1, ThrowAway = 2 };  // as the question's buttons stand

  void Save(CPanelStage& stage) {
    stage.Editor()->Save();
    QTRY_VERIFY(!stage.Panel().IsEditorOpen());
  }
  static CEditorPlace::State State(CPanelStage& stage) {
    return stage.Panel().findChild<CEditorPlace*>()->CurrentState();
  }
};

void PanelEditorTest::OpensBesideThePanel() {
  CPanelStage stage(Opened());
  stage.Choose("Public A");
  QTest::mouseClick(stage.Button("add_view_btn"), Qt::LeftButton);
  QVERIFY(stage.Panel().IsEditorOpen() && stage.Editor()->isVisible());
  QCOMPARE(stage.Editor()->objectName(), QString("add_edit_plan_widget"));
  QCOMPARE(stage.Enabled(), QString("-p--"));
  const QString log = fixture_.Log().Lines().join('\n');
  QVERIFY(log.indexOf("Add plan button clicked") < log.indexOf("Add plan dock widget show."));
  stage.Editor()->Cancel();
  QVERIFY(!stage.Panel().IsEditorOpen());
  QCOMPARE(stage.Enabled(), QString("gped"));

  // Leaving closes an editor that holds nothing new.
  stage.Choose("Public A plan 2");
  QTest::keyClick(&stage.Tree(), Qt::Key_F2);
  QTRY_COMPARE(stage.Edited(), QString("Public A plan 2"));
  QVERIFY(stage.Panel().MayLeave() && !stage.Panel().IsEditorOpen());
  // Changed and not saved: nothing goes without a question, and "stay" keeps everything.
  stage.Edit("Public A plan 2");
  QTest::keyClicks(stage.EditorName(), " west");
  stage.answer = KeepEditing;
  stage.while_asking = [&] { QCOMPARE(State(stage), CEditorPlace::State::Asking); };
  QVERIFY(!stage.Panel().MayLeave());
  QTest::mouseClick(stage.Button("add_view_btn"), Qt::LeftButton);
  QCOMPARE(stage.TakeQuestions().size(), 2);
  QCOMPARE(State(stage), CEditorPlace::State::Open);
  QCOMPARE(stage.Edited(), QString(" west"));  // typed over the name, which is marked at first
}

void PanelEditorTest::WhatWasSavedIsCurrent() {
  CPanelStage stage(Opened());
  stage.Panel().activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(&stage.Panel()));
  stage.Edit("Public A plan 2");
  stage.EditorName()->setText("Public A plan 20");  // stands behind its neighbour now
  Save(stage);
  QCOMPARE(stage.Current(), QString("Public A plan 20"));
  QVERIFY(stage.Tree().hasFocus());

  stage.Choose("Public A plan 10");
  stage.Button("add_view_btn")->click();
  stage.EditorName()->setText("Public A plan 1");
  Save(stage);
  QCOMPARE(stage.Current(), QString("Public A plan 1"));

  // Moved to a group whose rows have not been fetched yet; a key must not hit what has stood below it.
  stage.Edit("Public A plan 1");
  const QString group = fixture_.Code("Public B");
  Q_EMIT stage.Editor()->findChild<CGroupChooser*>()->SignalGroupChosen(group, "Public B",
                                                                        CGroupChooser::FamilyOf(GroupRow("Public B")));
  Save(stage);
  QVERIFY(QStringList({"Public B", "Public A plan 1"}).contains(stage.Current()));
  QTRY_COMPARE(stage.Current(), QString("Public A plan 1"));
  QCOMPARE(stage.Tree().currentIndex().parent().data().toString(), QString("Public B"));

  // The user who has gone on in the tree meanwhile is left where he is.
  stage.Edit("Public A plan 20");
  stage.EditorName()->setText("Public A plan 3");
  Services().Hold("UpdatePlan");
  stage.Editor()->Save();
  QVERIFY(Services().WaitUntilHeld("UpdatePlan"));
  QCOMPARE(State(stage), CEditorPlace::State::Saving);
  stage.Panel().activateWindow();  // a window that tips came up over need not be the active one
  QVERIFY(QTest::qWaitForWindowActive(&stage.Panel()));
  stage.Tree().setFocus();
  QVERIFY(stage.Tree().hasFocus());
  stage.Choose("Public A plan 10");
  Services().ReleaseAll();
  QTRY_COMPARE(State(stage), CEditorPlace::State::Closed);
  QCOMPARE(stage.Current(), QString("Public A plan 10"));
}

void PanelEditorTest::KeysBeforeThePlanIsThereDoNothing() {
  CPanelStage stage(Opened());
  stage.Panel().activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(&stage.Panel()));
  Services().Hold("GetPlanDetail");
  stage.BeginEdit("Public A plan 2");
  QVERIFY(Services().WaitUntilHeld("GetPlanDetail"));
  for (const auto key : {Qt::Key_Return, Qt::Key_Space}) {
    QVERIFY(stage.Editor()->isAncestorOf(QApplication::focusWidget()) || stage.Editor()->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), key);
    QVERIFY(stage.Panel().IsEditorOpen());
  }
  Services().ReleaseAll();
  QTRY_VERIFY(stage.EditorName()->hasFocus());
}

void PanelEditorTest::NextPlanOpensOnceTheFirstIsSafe() {
  CPanelStage stage(Opened());
  stage.Edit("Public A plan 2");
  stage.EditorName()->setText("First");
  stage.answer = SaveFirst;
  stage.while_asking = [&stage, again = false]() mutable {  // the host asks too, and changes its mind
    if (!std::exchange(again, true)) {
      stage.answer = KeepEditing;
      QVERIFY(!stage.Panel().MayLeave());
      stage.answer = SaveFirst;
    }
  };
  Services().Hold("UpdatePlan");
  stage.BeginEdit("Public A plan 10");
  QCOMPARE(State(stage), CEditorPlace::State::Queued);
  Services().ReleaseAll();
  QTRY_COMPARE(stage.Edited(), QString("Public A plan 10"));
  QVERIFY(!fixture_.Code("First").isEmpty());
  QCOMPARE(stage.Current(), QString("Public A plan 10"));

  // Not saved, not gone on; and what is saved later for its own sake opens nothing.
  stage.EditorName()->setText("Second");
  Services().Fail("UpdatePlan", "full");
  stage.TakeTips();
  stage.Button("add_view_btn")->click();
  QCOMPARE(stage.AwaitTips(), QStringList("1:full"));
  QTRY_COMPARE(State(stage), CEditorPlace::State::Open);
  QCOMPARE(stage.Edited(), QString("Second"));
  Services().Mend("UpdatePlan");
  Save(stage);
  QCOMPARE(stage.Current(), QString("Second"));

  // A save that cannot even begin says why, and nothing over it.
  stage.Edit("Second");
  stage.EditorName()->clear();
  stage.TakeTips();
  stage.Button("add_view_btn")->click();
  QCOMPARE(stage.TakeTips(), QStringList("1:The plan needs a name."));
}

void PanelEditorTest::LeavingIsTiedToItsSave() {
  CPanelStage stage(Opened());
  QSignalSpy may_leave(&stage.Panel(), &CViewExternWidget::SignalMayLeave);
  stage.answer = SaveFirst;
  const auto begin = [&](const QString& plan, const QString& name) {
    stage.Edit(plan);
    stage.EditorName()->setText(name);
    Services().Hold("UpdatePlan");
    QVERIFY(!stage.Panel().MayLeave());
    QVERIFY(Services().WaitUntilHeld("UpdatePlan"));
  };
  begin("Public A plan 2", "First");
  QSignalSpy messages(&stage.Controller(), &CStandardViewController::signalShowMessage);
  stage.Controller().PlayPlanViewByIndexCode("no such plan");
  QTRY_COMPARE(messages.size(), 1);
  Services().ReleaseAll();
  QTRY_COMPARE(may_leave.size(), 1);  // the play's failure was not the save's

  begin("First", "Second");
  CStandardViewController other(fixture_.Public());
  other.setParent(nullptr);
  stage.Panel().SetStandardViewControl(&other);
  QCOMPARE(State(stage), CEditorPlace::State::Open);
  Services().ReleaseAll();
  fixture_.Drain();
  stage.answer = ThrowAway;
  stage.Editor()->Cancel();
  QTRY_VERIFY(!stage.Panel().IsEditorOpen());
  QCOMPARE(may_leave.size(), 1);
  stage.Panel().SetStandardViewControl(nullptr);
  stage.TakeTips();
  for (const char* button : {"onAddPlanBtnClicked", "onEditBtnClicked"}) {
    QVERIFY(QMetaObject::invokeMethod(&stage.Panel(), button));
    QCOMPARE(stage.TakeTips(), QStringList());
    QVERIFY(!stage.Panel().IsEditorOpen());
  }
}

void PanelEditorTest::TipAboutASaveMayEndThePanelsWork() {
  Open();
  for (const auto end : {&CViewExternWidget::SwitchUserUpdate, &CViewExternWidget::StopWorking}) {
    CPanelStage stage(fixture_);
    stage.Edit("Public A plan 2");
    stage.EditorName()->setText("Public A plan 3");
    const QPointer<CTarnAddPlanWidget> editor = stage.Editor();
    connect(&stage.Panel(), &CViewExternWidget::SignalMessageTipNeeded, &stage.Panel(), end);
    editor->Save();
    QTRY_VERIFY(!editor);
    Shut();
    Open();
  }
}

void PanelEditorTest::PlanInTheEditorIsNotMoved() {
  CPanelStage stage(Opened()), other(fixture_);
  stage.ExpandAll();
  const auto drop = [&stage] {
    stage.TakeTips();
    stage.Drop("Public A plan 2", "Public B plan 2");
  };
  for (CPanelStage* editing : {&stage, &other}) {
    editing->Edit("Public A plan 2");
    drop();
    fixture_.Drain();
    QCOMPARE(stage.TakeTips().size(), 1);
    QCOMPARE(Services().Count("UpdatePlan"), 0);
    editing->Editor()->Cancel();
  }
  drop();
  QTRY_COMPARE(Services().Count("UpdatePlan"), 1);
  QTRY_COMPARE(stage.Row("Public A plan 2").parent().data().toString(), QString("Public B"));
}

void PanelEditorTest::PanelsOfOneWallShareTheEditorsPlace() {
  CPanelStage shared(Opened()), own(fixture_, true);
  QWidget wall;
  wall.resize(1000, 700);
  wall.show();
  shared.Panel().SetMonitorPointer(&wall);
  own.Panel().SetMonitorPointer(&wall);
  const auto names = [&wall] {  // fields of the editors that stand over the wall
    QList<QLineEdit*> fields;
    for (const auto* editor : wall.findChildren<CTarnAddPlanWidget*>()) {
      if (WidgetKit::IsDockWidgetShown(editor)) {
        fields << editor->findChild<QLineEdit*>("plan_name_edit");
      }
    }
    return fields;
  };
  const auto open = [&names] {
    QStringList texts;
    for (const QLineEdit* name : names()) {
      texts << name->text();
    }
    return texts.join(',');
  };
  shared.BeginEdit("Public A plan 2");
  QTRY_COMPARE(open(), QString("Public A plan 2"));
  own.BeginEdit("Own C plan 2");
  QTRY_COMPARE(open(), QString("Own C plan 2"));
  QCOMPARE(own.TakeQuestions(), QStringList());  // there was nothing to lose

  names().first()->setText("Mine");
  own.answer = KeepEditing;
  shared.BeginEdit("Public A plan 2");
  QCOMPARE(own.TakeQuestions().size(), 1);
  QCOMPARE(open(), QString("Mine"));
  own.answer = SaveFirst;
  Services().Fail("UpdatePlan", "full");
  shared.BeginEdit("Public A plan 2");
  QCOMPARE(own.AwaitTips(), QStringList("1:full"));
  QTRY_VERIFY(names().first()->isEnabled());
  QCOMPARE(open(), QString("Mine"));
  Services().Mend("UpdatePlan");
  shared.BeginEdit("Public A plan 2");
  QTRY_COMPARE(open(), QString("Public A plan 2"));
  QVERIFY(!fixture_.Code("Mine").isEmpty());

  names().first()->setText("Never");
  own.answer = ThrowAway;
  own.Button("add_view_btn")->click();
  QTRY_VERIFY(open().startsWith("View20"));
  QVERIFY(fixture_.Code("Never").isEmpty());
  QVERIFY(shared.Button("edit_btn")->isEnabled());  // nothing is open here any more
}

// As with a panel that floats, or has a window of its own on another screen.
void PanelEditorTest::WallMayStandInAnotherWindow() {
  Open();
  QWidget window;
  auto* wall = new QWidget(&window);
  window.resize(1000, 700);
  wall->resize(1000, 700);
  window.show();
  QVERIFY(QTest::qWaitForWindowExposed(&window));
  const QList<std::function<void(std::unique_ptr<CPanelStage>&)>> ends = {
      [](auto& stage) { stage->Panel().SwitchUserUpdate(); },
      [](auto& stage) { stage->Panel().StopWorking(); },
      [](auto& stage) { stage.reset(); },
  };
  for (const auto& end : ends) {
    for (const bool in_motion : {false, true}) {
      auto stage = std::make_unique<CPanelStage>(fixture_);
      stage->Panel().SetMonitorPointer(wall);
      stage->BeginEdit("Public A plan 2");
      const QPointer<CTarnAddPlanWidget> editor = window.findChild<CTarnAddPlanWidget*>();
      QVERIFY(editor);
      auto* name = editor->findChild<QLineEdit*>("plan_name_edit");
      QTRY_COMPARE(name->text(), QString("Public A plan 2"));
      name->setText("Never");
      if (!in_motion) {
        QTRY_COMPARE(editor->visibleRegion().boundingRect().width(), editor->width());  // it has slid out
      }
      end(stage);
      QTRY_VERIFY(!editor && !window.findChild<QWidget*>("dock_frame"));
    }
  }
  QVERIFY(fixture_.Code("Never").isEmpty());
}

QTEST_MAIN(PanelEditorTest)
#include "test_panel_editor.moc"
