#include <QAbstractButton>
#include <QFrame>

#include "panel_stage.h"
#include "plan_calls.h"
#include "plan_records.h"
#include "plan_rules/update_request.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using TarnTest::CPanelStage;

// Plans moved from group to group, and what of it is refused.
class PanelMovesTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void MovesPlansWhole();
  void MovesOnceWhateverElseFails();
  void ReportsRefusedRowMoves();
  void ADropTakesTheRightToEdit();

 private:
  static constexpr char kMoved[] = "Public A plan 2";

  GetPlanDetailResponse Stored() { return fixture_.InStore().Detail(fixture_.Code(kMoved)); }
  QString Group() { return QString::fromStdString(Stored().group_name); }
};

void PanelMovesTest::MovesPlansWhole() {
  CPanelStage stage(Opened());
  stage.ExpandAll();
  UpdatePlanRequest timed = UpdateRequestFrom(Stored());
  timed.pages = {TarnTest::Page(1, 2, {TarnTest::Window(1, "101", 1, 1, 3), TarnTest::Window(4, "map", 7)}, "Gate", 30),
                 TarnTest::Page(2, 8, {TarnTest::Window(16, "102")})};
  timed.pages.front().extra = timed.pages.front().windows.front().extra = R"({"zoom":2})";
  timed.thumbnail = "picture";
  timed.auto_play = true;
  timed.begin_time = "02:00:00";
  timed.end_time = "03:00:00";
  QCOMPARE(fixture_.InStore().Update(timed), QString());

  const auto drop = [&](const QString& target) {
    stage.TakeTips();
    stage.Choose(kMoved);
    stage.Tree().expandAll();
    stage.Drop(kMoved, target);
    fixture_.Drain();
  };
  for (const char* target : {"Public A plan 10", "Public A"}) {
    drop(target);
    QCOMPARE(stage.TakeTips(), QStringList("1:ViewSortFailedadOMakQWZCpToC"));
  }
  QCOMPARE(Services().Count("UpdatePlan"), 0);

  drop("Public B plan 10");
  QTRY_COMPARE(Group(), QString("Public B"));
  QTRY_COMPARE(stage.Current(), QString(kMoved));
  const GetPlanDetailResponse after = Stored();
  QCOMPARE(TarnTest::Words(after.pages), TarnTest::Words(timed.pages));
  QCOMPARE(after.pages.front().extra, timed.pages.front().extra);
  QCOMPARE(after.pages.front().windows.front().extra, timed.pages.front().windows.front().extra);
  QCOMPARE(after.start_time + " " + after.end_time, std::string("02:00:00 03:00:00"));
  QVERIFY(after.auto_run && after.thumbnail == "picture");
  drop("A1");
  QTRY_COMPARE(Group(), QString("A1"));

  Services().Fail("UpdatePlan", "full");
  drop("Public B");
  QCOMPARE(stage.AwaitTips(), QStringList("1:full"));
  QCOMPARE(Group(), QString("A1"));
}

// A failure of something else does not end the move: the plan would be sent to two groups with one revision.
void PanelMovesTest::MovesOnceWhateverElseFails() {
  CPanelStage stage(Opened());
  stage.ExpandAll();
  Services().Hold("UpdatePlan");
  stage.Drop(kMoved, "Public B");
  QVERIFY(Services().WaitUntilHeld("UpdatePlan"));
  Services().Fail("UpdatePlanGroup", "no");
  stage.TakeTips();
  stage.Controller().UpdatePlanGroupName(stage.Row("A1"), "Other");
  QCOMPARE(stage.AwaitTips(), QStringList("1:no"));
  const char saving[] = "1:The last change is still being saved. Try again in a moment.";
  stage.Drop(kMoved, "A1");
  QCOMPARE(stage.TakeTips(), QStringList(saving));
  // A name that cannot be given yet is not typed for nothing.
  TarnPlanViewInfo row;
  row.index_code = fixture_.Code(kMoved).toStdString();
  row.name = kMoved;
  fixture_.Messages().Expect("Argument missing");  // without a catalogue the texts are bare keys
  stage.Panel().RenameRow(row);
  auto* name = stage.Panel().findChild<QFrame*>("CViewNameEdit")->findChild<QLineEdit*>();
  name->setText("Morning");
  stage.Panel().findChild<QAbstractButton*>("ptr_save_btn")->click();
  QCOMPARE(stage.TakeTips(), QStringList(saving));
  stage.Panel().RenameRow(row);
  QCOMPARE(name->text(), QString("Morning"));
  Services().ReleaseAll();
  fixture_.Drain();
  QCOMPARE(Services().Count("UpdatePlan"), 1);
  QCOMPARE(Group(), QString("Public B"));
  stage.Panel().findChild<QAbstractButton*>("ptr_save_btn")->click();  // it is the new name still
  QTRY_VERIFY(stage.Row("Morning").isValid());
  row.name = "Morning";
  stage.Panel().RenameRow(row);
  name->setText(kMoved);
  stage.Panel().findChild<QAbstractButton*>("ptr_save_btn")->click();
  fixture_.Drain();
  QTRY_VERIFY(stage.Row(kMoved).isValid());
  Services().ForgetCalls();

  Services().Fail("UpdatePlan", "full");
  stage.Drop(kMoved, "A1");
  QTRY_COMPARE(Services().Count("UpdatePlan"), 1);
  fixture_.Drain();
  Services().Mend("UpdatePlan");
  stage.Drop(kMoved, "A1");  // a refused move is no longer under way either
  QTRY_COMPARE(Group(), QString("A1"));
}

void PanelMovesTest::ReportsRefusedRowMoves() {
  CPanelStage stage(Opened());
  stage.ExpandAll();
  enum Where { Upper, Middle, Lower };
  const char same[] = "0:ViewSortFailedadOMakQWZCpToC", other[] = "0:TheMoveViewOperationrvQbjaeS";
  const struct {
    const char *source, *target;
    Where where;
    const char* tip;
  } moves[] = {
      // "plan 2" stands before "plan 10": on the middle the drop goes before the target, below it after.
      {"Public A plan 10", kMoved, Middle, same}, {kMoved, kMoved, Middle, ""},
      {"Public A plan 10", kMoved, Lower, ""},  // it stands there already
      {kMoved, "Public B plan 2", Upper, other},  {kMoved, "Public B", Upper, other},
      {"Public A", "Public B", Upper, ""},        {"A1", "Public B", Lower, other},
  };
  for (const auto& move : moves) {
    const QRect from = stage.Tree().visualRect(stage.Row(move.source));
    const QRect onto = stage.Tree().visualRect(stage.Row(move.target));
    const int middle = (onto.top() + onto.bottom()) / 2;
    const int heights[] = {onto.top() + 1, middle, middle + 1};
    QMetaObject::invokeMethod(&stage.Panel(), "OnMoveRow", Q_ARG(QPoint, from.center()),
                              Q_ARG(QPoint, QPoint(onto.center().x(), heights[move.where])), Q_ARG(QRect, onto));
    QCOMPARE(stage.TakeTips().join('|'), QString(move.tip));
  }
  QCOMPARE(Services().Count("UpdatePlan"), 0);
}

void PanelMovesTest::ADropTakesTheRightToEdit() {
  for (const bool may_edit : {true, false}) {
    CPanelStage stage(Opened());
    Services().SetRight(6, may_edit);
    stage.ExpandAll();
    const QPoint from = stage.Tree().visualRect(stage.Row(kMoved)).center();
    const QPoint onto = stage.Tree().visualRect(stage.Row("Public B")).center();
    QTest::mousePress(stage.Tree().viewport(), Qt::LeftButton, Qt::NoModifier, from);
    QMimeData data;
    data.setProperty("_tree_drop_", true);
    QDragEnterEvent enter(onto, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(stage.Tree().viewport(), &enter);
    QDropEvent drop(onto, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(stage.Tree().viewport(), &drop);
    fixture_.Drain();
    QCOMPARE(Services().Count("UpdatePlan"), int(may_edit));
    QCOMPARE(stage.TakeTips().contains("0:TheUserHasNoPermission"), !may_edit);
    QTest::mouseRelease(stage.Tree().viewport(), Qt::LeftButton, Qt::NoModifier, from);
    if (may_edit) {
      Shut();
    }
  }
}

QTEST_MAIN(PanelMovesTest)
#include "test_panel_moves.moc"
