#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QSignalSpy>
#include <QtTest>

#include "MarUIControl/offer_strip.h"
#include "client_desk.h"
#include "history/play_history.h"

using TarnTest::CPlanFixture;
using TarnTest::Page;
using view_plugin_protocol::PlanPage;

class GroupCycleTest : public TarnTest::CClientDesk {
  Q_OBJECT

 private Q_SLOTS:
  void PlaysAllPlansInTurnAndAround();
  void FollowsTheRowsOfTheTree();
  void StepsAndHoldsByHand();
  void GoesOnAfterAStop();
  void LeavesTheCurrentRowToTheUser();
  void FollowsChangesOfTheGroup();
  void SkipsPlansThatFail();
  void TriesAgainWhatFailsForAWhile();
  void NamesGroupsThatAreNotLoaded();
  void EmptyAndVanishedGroupsEndWithOneMessage();

 private:
  void Start(const QString& group);
  /// The wall bar's text about the cycle.
  QString Progress() const { return window_->findChild<QLabel*>("wall_cycle")->accessibleName(); }
  void Turn(const QString& expected);
  void Delete(const QString& plan) { QCOMPARE(fixture_.InStore().DeletePlan(Code(plan)), QString()); }
  void Save(const QString& plan, std::list<PlanPage> pages) {
    QCOMPARE(fixture_.InStore().Update(TarnTest::ChangedPlan(Code(plan), plan, "", std::move(pages))), QString());
  }
};

void GroupCycleTest::Start(const QString& group) {
  Q_EMIT window_->Family(0).Panel()->SignalPlanGroupCycle(fixture_.Code(group), 20);
}

void GroupCycleTest::Turn(const QString& expected) {
  clock_->EndTurn();
  QTRY_COMPARE(Wall().PlanName(), expected);
}

void GroupCycleTest::PlaysAllPlansInTurnAndAround() {
  Open({});  // nothing of the group is loaded in the tree
  Start("Public A");
  QTRY_COMPARE(Wall().PlanName(), QString("A1 plan 2"));
  QCOMPARE(clock_->Seconds(), 20);
  QVERIFY2(Progress().contains("Public A") && Progress().contains("1 of 4"), qPrintable(Progress()));
  for (const char* next : {"A1 plan 10", "Public A plan 2", "Public A plan 10", "A1 plan 2"}) {
    Turn(next);
  }
  QVERIFY(Progress().contains("1 of 4"));
  QCOMPARE(window_->History().rowCount(), 0);
}

// Whatever the names, a cycle and the panel order them alike.
void GroupCycleTest::FollowsTheRowsOfTheTree() {
  Open();
  for (const char* name : {"Zebra 10", "zebra 9", "Anteater", "\u00c4rger", "Public A plan 02"}) {
    window_->Family(0).Controller()->AddPlanParam(TarnTest::NewPlan(name, Code("Public A")));
    QTRY_VERIFY(Row(name).isValid());
  }
  Tree()->expandAll();
  QStringList rows;
  for (QModelIndex row = Tree()->indexBelow(Row("Public A")); row != Row("Public B"); row = Tree()->indexBelow(row)) {
    if (!row.data(TarnPlanView::IsGroupRole).toBool()) {
      rows << row.data().toString();
    }
  }
  QCOMPARE(rows.size(), 9);
  Start("Public A");
  for (const QString& row : qAsConst(rows)) {
    QTRY_COMPARE(Wall().PlanName(), row);
    clock_->EndTurn();
  }
}

void GroupCycleTest::StepsAndHoldsByHand() {
  Open();
  Save("A1 plan 10", {Page(1, 1, {}, {}, 15), Page(2, 1, {}, {}, 15)});
  Start("Public A");
  QTRY_COMPARE(Wall().PlanName(), QString("A1 plan 2"));
  QTest::keyClick(&Wall(), Qt::Key_Right);
  QTRY_COMPARE(Wall().PlanName(), QString("A1 plan 10"));
  QCOMPARE(clock_->Seconds(), 30);  // both pages are shown
  QTest::keyClick(&Wall(), Qt::Key_Right);
  QVERIFY(Wall().PageNumber() == 2 && clock_->Seconds() == 15);
  QTest::keyClick(&Wall(), Qt::Key_Space);
  QVERIFY(clock_->IsPaused());
  QTest::keyClick(&Wall(), Qt::Key_Right);
  QTRY_COMPARE(Wall().PlanName(), QString("Public A plan 2"));
  QVERIFY(clock_->IsPaused() && Wall().IsHeld() && clock_->Seconds() == 20);
  // Back over a plan that has gone, and around the beginning.
  Delete("A1 plan 10");
  QTest::keyClick(&Wall(), Qt::Key_Left);
  QTRY_COMPARE(Wall().PlanName(), QString("A1 plan 2"));
  QTest::keyClick(&Wall(), Qt::Key_Left);
  QTRY_COMPARE(Wall().PlanName(), QString("Public A plan 10"));
  QVERIFY2(Progress().contains("3 of 3"), qPrintable(Progress()));
  Delete("Public A plan 10");
  QTest::keyClick(&Wall(), Qt::Key_Left);
  QTRY_COMPARE(Wall().PlanName(), QString("Public A plan 2"));
}

void GroupCycleTest::GoesOnAfterAStop() {
  Open();
  Save("Public B plan 10", {Page(1, 1, {}, {}, 15), Page(2, 1, {}, {}, 15)});
  Start("Public B");
  QTRY_COMPARE(Wall().PlanName(), QString("Public B plan 2"));
  Turn("Public B plan 10");
  QTest::keyClick(&Wall(), Qt::Key_Right);
  QTest::keyClick(&Wall(), Qt::Key_Space);
  QCOMPARE(window_->windowTitle(), QString("Public B plan 10 (Public B) - Plans"));
  QTest::keyClick(Tree(), Qt::Key_Escape);
  QVERIFY(!Wall().IsPlaying() && Progress().isEmpty());
  QCOMPARE(window_->windowTitle(), QString("Plans"));
  QVERIFY2(Wall().Strip()->Text().contains("Public B"), qPrintable(Wall().Strip()->Text()));
  Wall().Strip()->Take();
  QTRY_COMPARE(Wall().PlanName(), QString("Public B plan 10"));
  QVERIFY(Wall().PageNumber() == 2 && Wall().IsHeld() && Progress().contains("2 of 2"));
  QCOMPARE(clock_->Seconds(), 15);  // of the page that was on, and not of those before it
  QTest::keyClick(&Wall(), Qt::Key_Escape);
  QVERIFY(Wall().Strip()->IsOffering());
  Play("Public A plan 2");
  QVERIFY(!Wall().Strip()->IsOffering());
}

// Or F2 and Delete would hit another row than the one in front of him.
void GroupCycleTest::LeavesTheCurrentRowToTheUser() {
  Open({});
  Tree()->ExpandAsync(Row("Public B"));
  QTRY_VERIFY(Row("Public B plan 2").isValid());
  Tree()->setCurrentIndex(Row("Public A"));
  Start("Public B");
  QTRY_COMPARE(MarkedRows(), QString("Public B plan 2"));
  Turn("Public B plan 10");
  QCOMPARE(MarkedRows(), QString("Public B plan 10"));
  QCOMPARE(Tree()->currentIndex(), Row("Public A"));
  // The mark comes back to a row that is made again, and is there for rows that are loaded later.
  const auto rename = TarnTest::ChangedPlan(Code("Public B plan 10"), "Public B renamed", "", Wall().Plan().pages);
  window_->Family(0).Controller()->UpdatePlanParam(rename, "Public B plan 10");
  QTRY_COMPARE(MarkedRows(), QString("Public B renamed"));
  QCOMPARE(Tree()->currentIndex(), Row("Public A"));

  // Hits of a search show it as well.
  auto* field = window_->Family(0).Panel()->findChild<QLineEdit*>("view_location_line_edit");
  auto* hits = window_->Family(0).Panel()->findChild<QListView*>("search_list_view");
  field->setText("Public B plan 2");
  QTest::keyClick(field, Qt::Key_Return);
  QTRY_COMPARE(hits->model()->rowCount(), 1);
  const auto icon = [hits] {
    return hits->model()->index(0, 0).data(Qt::DecorationRole).value<QIcon>().pixmap(20).toImage();
  };
  const QImage before = icon();
  Turn("Public B plan 2");
  QVERIFY(icon() != before);
  field->clear();
  QCOMPARE(Tree()->currentIndex(), Row("Public A"));

  Start("Own C");
  QTRY_COMPARE(Wall().PlanName(), QString("C1 plan 2"));
  Turn("C1 plan 10");
  Turn("Own C plan 2");
  QCOMPARE(MarkedRows(), QString());
  window_->ShowFamily(1);
  Tree(1)->ExpandAsync(Row("Own C", 1));
  QTRY_COMPARE(MarkedRows(), QString("Own C plan 2"));
}

void GroupCycleTest::FollowsChangesOfTheGroup() {
  Open();
  Start("Public A");
  QTRY_COMPARE(Wall().PlanName(), QString("A1 plan 2"));
  Delete("A1 plan 2");
  Turn("A1 plan 10");
  QTRY_VERIFY(Progress().contains("1 of 3"));
  QCOMPARE(fixture_.InStore().AddPlan(Code("A1"), "A1 plan 99"), QString());
  Turn("A1 plan 99");
  QTRY_VERIFY(Progress().contains("2 of 4"));
  Delete("A1 plan 99");  // from the middle: it goes on after it
  Delete("Public A plan 2");
  Turn("Public A plan 10");
  QTRY_VERIFY(Progress().contains("2 of 2"));
}

void GroupCycleTest::SkipsPlansThatFail() {
  Open();
  Start("Public B");
  QTRY_COMPARE(Wall().PlanName(), QString("Public B plan 2"));
  // It goes between the listing and the fetch.
  fixture_.Services().Hold("GetPlanDetail");
  clock_->EndTurn();
  QVERIFY(fixture_.Services().WaitUntilHeld("GetPlanDetail"));
  Delete("Public B plan 10");
  fixture_.Services().ReleaseAll();
  QTRY_VERIFY(Tip().contains("Public B plan 10"));
  QCOMPARE(Wall().PlanName(), QString("Public B plan 2"));
  QCOMPARE(clock_->Seconds(), 20);
}

// No one may be there to start it again.
void GroupCycleTest::TriesAgainWhatFailsForAWhile() {
  Open();
  Save("Public B plan 2", {Page(1, 1, {}, {}, 300), Page(2, 1, {}, {}, 300)});
  Start("Public B");
  QTRY_VERIFY(Progress().contains("1 of 2"));
  QCOMPARE(clock_->Seconds(), 600);
  fixture_.Services().Fail("GetPlansInGroup", "The disk is tired");
  clock_->EndTurn();
  QTRY_COMPARE(clock_->Seconds(), 20);  // though the plan has shown its pages for long
  QVERIFY2(Tip().contains("The disk is tired"), qPrintable(Tip()));
  QVERIFY(Wall().PlanName() == "Public B plan 2" && Progress().contains("1 of 2"));
  fixture_.Services().Mend("GetPlansInGroup");
  Turn("Public B plan 10");

  // What is gone for good ends it, also in the middle.
  QCOMPARE(fixture_.InStore().DeleteGroup(Code("Public B")), QString());
  ForgetTips();
  clock_->EndTurn();
  QTRY_VERIFY2(Tip().contains("group does not exist"), qPrintable(Tip()));
  QVERIFY(clock_->Seconds() == 0 && Progress().isEmpty());
}

void GroupCycleTest::NamesGroupsThatAreNotLoaded() {
  Open({});
  QVERIFY(!Row("A1").isValid());
  Start("A1");
  QTRY_VERIFY2(Progress().contains("Group A1") && Progress().contains("1 of 2"), qPrintable(Progress()));
}

void GroupCycleTest::EmptyAndVanishedGroupsEndWithOneMessage() {
  Open();
  Play("Public A plan 2");
  Delete("Public B plan 2");
  Delete("Public B plan 10");
  Start("Public B");
  QTRY_VERIFY(Tip().contains("no plans"));
  QCOMPARE(Wall().PlanName(), QString("Public A plan 2"));
  ForgetTips();
  Q_EMIT window_->Family(0).Panel()->SignalPlanGroupCycle("987654", 20);
  QTRY_VERIFY(Tip().contains("group does not exist"));
  QVERIFY(Progress().isEmpty());
}

QTEST_MAIN(GroupCycleTest)
#include "test_group_cycle.moc"
