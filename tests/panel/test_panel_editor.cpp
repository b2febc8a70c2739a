#include <QLineEdit>
#include <QSignalSpy>
#include <QtTest>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "WidgetKit/dock_widget.h"
#include "group_chooser.h"
#include "panel_stage.h"
#include "tarn_add_plan_widget.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using TarnTest::CPanelStage;

namespace {

enum Answer { KeepEditing = 0, SaveFirst = 1, ThrowAway = 2 };  // as the question's buttons stand

}  // namespace

// The panel and the plan editor that it opens: what is current afterwards, what opens next, and who may leave.
class PanelEditorTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void WhatWasSavedIsCurrent();
  void CurrentPlanStaysCurrentWhoeverSavesIt();
  void KeysBeforeThePlanIsThereDoNothing();
  void NextPlanOpensOnceTheFirstIsSafe();
  void LeavingIsTiedToItsSave();
  void PlanInTheEditorIsNotMoved();
  void PanelsOfOneWallShareTheEditorsPlace();
  void WallMayStandInAnotherWindow();

 private:
  CTarnAddPlanWidget* Editor(CPanelStage& stage) { return stage.Panel().window()->findChild<CTarnAddPlanWidget*>(); }
  bool IsOpen(CPanelStage& stage) { return WidgetKit::IsDockWidgetShown(Editor(stage)); }
  QLineEdit* Name(CPanelStage& stage) { return Editor(stage)->findChild<QLineEdit*>("plan_name_edit"); }
  void Edit(CPanelStage& stage, const QString& plan) {
    stage.Choose(plan);
    stage.Panel().EditPlanByIndex(stage.Tree().currentIndex());
    QTRY_COMPARE(Name(stage)->text(), plan);
  }
  void Save(CPanelStage& stage) {
    Editor(stage)->Save();
    QTRY_VERIFY(!IsOpen(stage));
  }
  static QString Current(CPanelStage& stage) { return stage.Tree().currentIndex().data().toString(); }
  void ChooseGroup(CPanelStage& stage, const QString& name) {
    const QModelIndex row = fixture_.Public()->FindIndexByIndexCode(fixture_.Code(name), true);
    Q_EMIT Editor(stage)->findChild<CGroupChooser*>()->SignalGroupChosen(fixture_.Code(name), name,
                                                                         CGroupChooser::FamilyOf(row));
  }
};

void PanelEditorTest::WhatWasSavedIsCurrent() {
  Open();
  CPanelStage stage(fixture_);
  stage.Panel().activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(&stage.Panel()));
  Edit(stage, "Public A plan 2");
  Name(stage)->setText("Public A plan 20");  // stands behind its neighbour now
  Save(stage);
  QCOMPARE(Current(stage), QString("Public A plan 20"));
  QVERIFY(stage.Tree().hasFocus());

  stage.Choose("Public A plan 10");
  stage.Button("add_view_btn")->click();
  Name(stage)->setText("Public A plan 1");
  Save(stage);
  QCOMPARE(Current(stage), QString("Public A plan 1"));

  // Moved to a group that no one has looked into yet; a key must not hit what has stood below it.
  Edit(stage, "Public A plan 1");
  ChooseGroup(stage, "Public B");
  Save(stage);
  QVERIFY(QStringList({"Public B", "Public A plan 1"}).contains(Current(stage)));
  QTRY_COMPARE(Current(stage), QString("Public A plan 1"));
  QCOMPARE(stage.Tree().currentIndex().parent().data().toString(), QString("Public B"));

  // The user who has gone on in the tree meanwhile is left where he is.
  Edit(stage, "Public A plan 20");
  Name(stage)->setText("Public A plan 3");
  Services().Hold("UpdatePlan");
  Editor(stage)->Save();
  QVERIFY(Services().WaitUntilHeld("UpdatePlan"));
  stage.Tree().setFocus();
  stage.Choose("Public A plan 10");
  Services().ReleaseAll();
  QTRY_VERIFY(!IsOpen(stage));
  QCOMPARE(Current(stage), QString("Public A plan 10"));
}

void PanelEditorTest::CurrentPlanStaysCurrentWhoeverSavesIt() {
  Open();
  CPanelStage stage(fixture_);
  UpdatePlanRequest request;
  request.plan_index_code = fixture_.Code("Public A plan 2").toStdString();
  request.plan_name = "Public A plan 20";
  QSignalSpy saved(&stage.Controller(), &CStandardViewController::SignalUpdatePlanSucc);
  stage.Choose("Public A plan 2");
  stage.Controller().UpdatePlanParam(request, "Public A plan 2");
  QTRY_COMPARE(saved.size(), 1);
  QCOMPARE(Current(stage), QString("Public A plan 20"));
  stage.Choose("Public A plan 10");
  request.plan_name = "Public A plan 2";
  stage.Controller().UpdatePlanParam(request, "Public A plan 20");
  QTRY_COMPARE(saved.size(), 2);
  QCOMPARE(Current(stage), QString("Public A plan 10"));
  stage.Choose("Public A plan 2");
  request.parent_index_code = fixture_.Code("Public B").toStdString();  // nobody has looked into it yet
  stage.Controller().UpdatePlanParam(request, "Public A plan 2");
  QTRY_COMPARE(saved.size(), 3);
  QCOMPARE(Current(stage), QString("Public A"));
}

void PanelEditorTest::KeysBeforeThePlanIsThereDoNothing() {
  Open();
  CPanelStage stage(fixture_);
  stage.Panel().activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(&stage.Panel()));
  stage.Choose("Public A plan 2");
  Services().Hold("GetPlanDetail");
  stage.Panel().EditPlanByIndex(stage.Tree().currentIndex());
  QVERIFY(Services().WaitUntilHeld("GetPlanDetail"));
  for (const auto key : {Qt::Key_Return, Qt::Key_Space}) {
    QVERIFY(Editor(stage)->isAncestorOf(QApplication::focusWidget()) || Editor(stage)->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), key);
    QVERIFY(IsOpen(stage));
  }
  Services().ReleaseAll();
  QTRY_VERIFY(Name(stage)->hasFocus());
}

void PanelEditorTest::NextPlanOpensOnceTheFirstIsSafe() {
  Open();
  CPanelStage stage(fixture_);
  Edit(stage, "Public A plan 2");
  Name(stage)->setText("First");
  stage.Choose("Public A plan 10");
  stage.answer = SaveFirst;
  stage.Panel().EditPlanByIndex(stage.Tree().currentIndex());
  QTRY_COMPARE(Name(stage)->text(), QString("Public A plan 10"));
  QVERIFY(IsOpen(stage) && !fixture_.Code("First").isEmpty());
  QCOMPARE(Current(stage), QString("Public A plan 10"));

  // Not saved, not gone on; and what is saved later for its own sake opens nothing.
  Name(stage)->setText("Second");
  Services().Fail("UpdatePlan", "full");
  stage.TakeTips();
  stage.Button("add_view_btn")->click();
  QStringList tips;
  QTRY_VERIFY(!(tips += stage.TakeTips()).isEmpty());
  QCOMPARE(tips, QStringList("1:full"));
  QTRY_VERIFY(!Editor(stage)->IsSaving());
  QCOMPARE(Name(stage)->text(), QString("Second"));
  Services().Mend("UpdatePlan");
  Save(stage);
  QCOMPARE(Current(stage), QString("Second"));

  // A save that cannot even begin says why, and nothing over it.
  Edit(stage, "Second");
  Name(stage)->clear();
  stage.TakeTips();
  stage.Button("add_view_btn")->click();
  QCOMPARE(stage.TakeTips(), QStringList("1:The plan needs a name."));
}

void PanelEditorTest::LeavingIsTiedToItsSave() {
  Open();
  CPanelStage stage(fixture_);
  QSignalSpy may_leave(&stage.Panel(), &CViewExternWidget::SignalMayLeave);
  stage.answer = SaveFirst;
  const auto begin = [&](const QString& plan, const QString& name) {
    Edit(stage, plan);
    Name(stage)->setText(name);
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
  QVERIFY(!Editor(stage)->IsSaving());
  Services().ReleaseAll();
  fixture_.Drain();
  stage.answer = ThrowAway;
  Editor(stage)->Cancel();
  QTRY_VERIFY(!IsOpen(stage));
  QCOMPARE(may_leave.size(), 1);
  stage.Panel().SetStandardViewControl(nullptr);
}

void PanelEditorTest::PlanInTheEditorIsNotMoved() {
  Open();
  CPanelStage stage(fixture_), other(fixture_);
  stage.Row("nothing");  // everything is expanded now
  stage.Tree().expandAll();
  const auto drop = [&] {
    stage.TakeTips();
    const QRect from = stage.Tree().visualRect(stage.Row("Public A plan 2"));
    const QRect onto = stage.Tree().visualRect(stage.Row("Public B plan 2"));
    Q_EMIT stage.Tree().SignalMoveRow(from.center(), onto.center(), onto);
    fixture_.Drain();
  };
  for (CPanelStage* editing : {&stage, &other}) {
    Edit(*editing, "Public A plan 2");
    drop();
    QCOMPARE(stage.TakeTips().size(), 1);
    QCOMPARE(Services().Count("UpdatePlan"), 0);
    Editor(*editing)->Cancel();
  }
  drop();
  QTRY_COMPARE(Services().Count("UpdatePlan"), 1);
  QTRY_COMPARE(stage.Row("Public A plan 2").parent().data().toString(), QString("Public B"));
}

void PanelEditorTest::PanelsOfOneWallShareTheEditorsPlace() {
  Open();
  CPanelStage shared(fixture_), own(fixture_, true);
  QWidget wall;
  wall.resize(1000, 700);
  wall.show();
  shared.Panel().SetMonitorPointer(&wall);
  own.Panel().SetMonitorPointer(&wall);
  const auto names = [&wall] {  // fields of the editors that stand over the wall
    QList<QLineEdit*> fields;
    const auto editors = wall.findChildren<CTarnAddPlanWidget*>();
    for (const auto* editor : editors) {
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
  const auto edit = [](CPanelStage& stage, const QString& plan) {
    stage.Choose(plan);
    stage.Panel().EditPlanByIndex(stage.Tree().currentIndex());
  };
  edit(shared, "Public A plan 2");
  QTRY_COMPARE(open(), QString("Public A plan 2"));
  edit(own, "Own C plan 2");
  QTRY_COMPARE(open(), QString("Own C plan 2"));
  QCOMPARE(own.TakeQuestions(), QStringList());  // there was nothing to lose

  names().first()->setText("Mine");
  own.answer = KeepEditing;
  edit(shared, "Public A plan 2");
  QCOMPARE(own.TakeQuestions().size(), 1);
  QCOMPARE(open(), QString("Mine"));
  own.answer = SaveFirst;
  Services().Fail("UpdatePlan", "full");
  edit(shared, "Public A plan 2");
  QStringList tips;
  QTRY_VERIFY(!(tips += own.TakeTips()).isEmpty());
  QCOMPARE(tips, QStringList("1:full"));
  QTRY_VERIFY(names().first()->isEnabled());
  QCOMPARE(open(), QString("Mine"));
  Services().Mend("UpdatePlan");
  edit(shared, "Public A plan 2");
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
  QWidget wall_window;
  auto* wall = new QWidget(&wall_window);
  wall_window.resize(1000, 700);
  wall->resize(1000, 700);
  wall_window.show();
  QVERIFY(QTest::qWaitForWindowExposed(&wall_window));
  const QList<std::function<void(std::unique_ptr<CPanelStage>&)>> ends = {
      [](auto& stage) { stage->Panel().SwitchUserUpdate(); },
      [](auto& stage) { stage->Panel().StopWorking(); },
      [](auto& stage) { stage.reset(); },
  };
  for (const auto& end : ends) {
    for (const bool in_motion : {false, true}) {
      auto stage = std::make_unique<CPanelStage>(fixture_);
      stage->Panel().SetMonitorPointer(wall);
      stage->Choose("Public A plan 2");
      stage->Panel().EditPlanByIndex(stage->Tree().currentIndex());
      const QPointer<CTarnAddPlanWidget> editor = wall_window.findChild<CTarnAddPlanWidget*>();
      QVERIFY(editor);
      auto* name = editor->findChild<QLineEdit*>("plan_name_edit");
      QTRY_COMPARE(name->text(), QString("Public A plan 2"));
      name->setText("Never");
      if (!in_motion) {
        QTRY_COMPARE(editor->visibleRegion().boundingRect().width(), editor->width());  // it has slid out
      }
      end(stage);
      QTRY_VERIFY(!editor);
      QTRY_VERIFY(!wall_window.findChild<QWidget*>("dock_frame"));
    }
  }
  QVERIFY(fixture_.Code("Never").isEmpty());
}

QTEST_MAIN(PanelEditorTest)
#include "test_panel_editor.moc"
