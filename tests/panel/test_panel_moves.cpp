#include <QSignalSpy>
#include <QtTest>

#include "panel_stage.h"
#include "plan_records.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using tarn_ui_data_controller::MsgType;
using TarnTest::CPanelStage;
using TarnTest::CPlanFixture;

// Plans moved from group to group, and what of it is refused.
class PanelMovesTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void MovesPlansWhole();
  void MovesOnceWhateverElseFails();
  void ReportsRefusedRowMoves();

 private:
  QString groupOf(const QString& plan);
};

QString PanelMovesTest::groupOf(const QString& plan) {
  GetPlanDetailRequest request;
  request.plan_index_code = fixture_.Code(plan).toStdString();
  GetPlanDetailResponse detail;
  return fixture_.Store().GetPlanDetail(request, detail) ? QString::fromStdString(detail.group_name) : QString();
}

void PanelMovesTest::MovesPlansWhole() {
  Open();
  CPanelStage stage(fixture_);
  GetPlanDetailRequest request;
  request.plan_index_code = fixture_.Code(QStringLiteral("Public A plan 2")).toStdString();
  UpdatePlanRequest timed;
  GetPlanDetailResponse before;
  QVERIFY(fixture_.Store().GetPlanDetail(request, before));
  timed.plan_index_code = request.plan_index_code;
  timed.plan_name = before.name;
  timed.parent_index_code = before.group_index_code;
  timed.pages = {TarnTest::Page(1, 2, {TarnTest::Window(1, "101", 1, 1, 3), TarnTest::Window(4, "map", 7)}, "Gate", 30),
                 TarnTest::Page(2, 8, {TarnTest::Window(16, "102")})};
  timed.pages.front().extra = timed.pages.front().windows.front().extra = R"({"zoom":2})";
  timed.thumbnail = "picture";
  timed.auto_play = true;
  timed.begin_time = "02:00:00";
  timed.end_time = "03:00:00";
  UpdatePlanResponse updated;
  QVERIFY(fixture_.Store().UpdatePlan(timed, updated));

  const auto drop = [&](const QString& source, const QString& target) {
    // Rows are opened first: what opens between two looks moves the rows below it.
    const QPersistentModelIndex from(stage.Row(source)), onto(stage.Row(target));
    stage.Tree().setCurrentIndex(from);
    stage.Tree().expandAll();
    const QRect rect = stage.Tree().visualRect(onto);
    Q_EMIT stage.Tree().SignalMoveRow(stage.Tree().visualRect(from).center(), rect.center(), rect);
    fixture_.Drain();
  };
  stage.Row(QStringLiteral("Public B plan 2"));
  stage.Row(QStringLiteral("nothing"));  // everything is expanded now
  stage.TakeTips();
  drop(QStringLiteral("Public A plan 2"), QStringLiteral("Public A plan 10"));
  QCOMPARE(stage.TakeTips(), QStringList("0:ViewSortFailedadOMakQWZCpToC"));
  drop(QStringLiteral("Public A plan 2"), QStringLiteral("Public A"));
  QCOMPARE(stage.TakeTips(), QStringList("0:ViewSortFailedadOMakQWZCpToC"));
  QCOMPARE(Services().Count(QStringLiteral("UpdatePlan")), 0);

  drop(QStringLiteral("Public A plan 2"), QStringLiteral("Public B plan 10"));
  QTRY_COMPARE(groupOf(QStringLiteral("Public A plan 2")), QStringLiteral("Public B"));
  QTRY_COMPARE(stage.Tree().currentIndex().data().toString(), QStringLiteral("Public A plan 2"));
  GetPlanDetailResponse after;
  QVERIFY(fixture_.Store().GetPlanDetail(request, after));
  QCOMPARE(TarnTest::Words(after.pages), TarnTest::Words(timed.pages));
  QCOMPARE(after.pages.front().extra, timed.pages.front().extra);
  QCOMPARE(after.pages.front().windows.front().extra, timed.pages.front().windows.front().extra);
  QCOMPARE(after.start_time + " " + after.end_time, std::string("02:00:00 03:00:00"));
  QVERIFY(after.auto_run && after.thumbnail == "picture");
  drop(QStringLiteral("Public A plan 2"), QStringLiteral("A1"));
  QTRY_COMPARE(groupOf(QStringLiteral("Public A plan 2")), QStringLiteral("A1"));

  stage.TakeTips();
  Services().Fail(QStringLiteral("UpdatePlan"), "full");
  drop(QStringLiteral("Public A plan 2"), QStringLiteral("Public B"));
  QStringList tips;
  QTRY_VERIFY(!(tips += stage.TakeTips()).isEmpty());
  QCOMPARE(tips, QStringList("1:full"));
  QCOMPARE(groupOf(QStringLiteral("Public A plan 2")), QStringLiteral("A1"));
}

// A failure of something else does not end the move: the plan would be sent to two groups with one revision.
void PanelMovesTest::MovesOnceWhateverElseFails() {
  Open();
  CPanelStage stage(fixture_);
  stage.Row(QStringLiteral("nothing"));
  stage.Tree().expandAll();
  const auto drop = [&stage](const char* target) {
    const QRect from = stage.Tree().visualRect(stage.Row(QStringLiteral("Public A plan 2")));
    const QRect onto = stage.Tree().visualRect(stage.Row(QString::fromLatin1(target)));
    Q_EMIT stage.Tree().SignalMoveRow(from.center(), onto.center(), onto);
  };
  Services().Hold(QStringLiteral("UpdatePlan"));
  drop("Public B");
  QVERIFY(Services().WaitUntilHeld(QStringLiteral("UpdatePlan")));
  Services().Fail(QStringLiteral("UpdatePlanGroup"), "no");
  stage.TakeTips();
  stage.Controller().UpdatePlanGroupName(stage.Row(QStringLiteral("A1")), QStringLiteral("Other"));
  QStringList tips;
  QTRY_VERIFY(!(tips += stage.TakeTips()).isEmpty());
  QCOMPARE(tips, QStringList("1:no"));
  drop("A1");
  Services().ReleaseAll();
  fixture_.Drain();
  QCOMPARE(Services().Count(QStringLiteral("UpdatePlan")), 1);
  QCOMPARE(groupOf(QStringLiteral("Public A plan 2")), QStringLiteral("Public B"));

  Services().Fail(QStringLiteral("UpdatePlan"), "full");
  drop("A1");
  QTRY_COMPARE(Services().Count(QStringLiteral("UpdatePlan")), 2);
  fixture_.Drain();
  Services().Mend(QStringLiteral("UpdatePlan"));
  drop("A1");  // a refused move is no longer under way either
  QTRY_COMPARE(groupOf(QStringLiteral("Public A plan 2")), QStringLiteral("A1"));
}

void PanelMovesTest::ReportsRefusedRowMoves() {
  Open();
  CPanelStage stage(fixture_);
  stage.Row(QStringLiteral("nothing"));
  stage.Tree().expandAll();
  enum Where { Upper, Middle, Lower };
  const auto move = [&](const char* source, const char* target, Where where) {
    const QRect from = stage.Tree().visualRect(stage.Row(QString::fromLatin1(source)));
    const QRect onto = stage.Tree().visualRect(stage.Row(QString::fromLatin1(target)));
    const int middle = (onto.top() + onto.bottom()) / 2;
    const int y = where == Upper ? onto.top() + 1 : where == Middle ? middle : middle + 1;
    stage.TakeTips();
    QMetaObject::invokeMethod(&stage.Panel(), "OnMoveRow", Q_ARG(QPoint, from.center()),
                              Q_ARG(QPoint, QPoint(onto.center().x(), y)), Q_ARG(QRect, onto));
    return stage.TakeTips().join('|');
  };
  const QString same = QStringLiteral("0:ViewSortFailedadOMakQWZCpToC");
  const QString other = QStringLiteral("0:TheMoveViewOperationrvQbjaeS");
  // "plan 2" stands before "plan 10": on the middle the drop goes before the target, below it after.
  QCOMPARE(move("Public A plan 10", "Public A plan 2", Middle), same);
  QCOMPARE(move("Public A plan 2", "Public A plan 2", Middle), QString());
  QCOMPARE(move("Public A plan 10", "Public A plan 2", Lower), QString());  // it stands there already
  QCOMPARE(move("Public A plan 2", "Public B plan 2", Upper), other);
  QCOMPARE(move("Public A plan 2", "Public B", Upper), other);
  QCOMPARE(move("Public A", "Public B", Upper), QString());
  QCOMPARE(move("A1", "Public B", Lower), other);
  QCOMPARE(Services().Count(QStringLiteral("UpdatePlan")), 0);
}

QTEST_MAIN(PanelMovesTest)
#include "test_panel_moves.moc"
