#include <QAction>

#include "panel_stage.h"

using namespace TarnPlanView;
using TarnTest::CPanelStage;

// "Show in tree": the row of a plan is brought into sight, wherever it stands.
class PlanRevealingTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void LoadsTheGroupsOnTheWay();
  void EndsTheSearchOfAHit();
  void LeavesOtherFamiliesToOtherTrees();
  void SaysWhyNot();
  void AwaitsWhatComesLate();
  void OthersDoNotStopIt();
  void GivesWayToTheUser();

 private:
  static TarnHost::PlanSite DeepSite();
  /// Makes a group below the root current and leaves all that is not loaded as it is.
  void Stand(CPanelStage& stage, const QString& group) {
    const QString code = fixture_.Code(group);
    QTRY_VERIFY(stage.Tree().RowOf(code, true).isValid());
    stage.Tree().setCurrentIndex(stage.Tree().RowOf(code, true));
  }
  static QAction* Entry(CPanelStage& stage) { return stage.List()->findChild<QAction*>(); }
};

// Five groups below each other, and a plan in the lowest.
TarnHost::PlanSite PlanRevealingTest::DeepSite() {
  TarnHost::PlanSite site = TarnTest::SmallSite();
  int parent = 0;  // Public A
  for (const char* name : {"D2", "D3", "D4", "D5"}) {
    site.groups.push_back({name, parent, 0, -1});
    parent = static_cast<int>(site.groups.size()) - 1;
  }
  site.plans.push_back(TarnTest::SitePlan("Deep plan", parent, 0, -1, {TarnTest::CameraPage(1, 1)}));
  return site;
}

void PlanRevealingTest::LoadsTheGroupsOnTheWay() {
  Open({}, true, DeepSite);
  CPanelStage stage(fixture_);
  Services().ForgetCalls();
  stage.Panel().ShowInTree(fixture_.Code("Deep plan"));
  QTRY_COMPARE(stage.Current(), QString("Deep plan"));
  QVERIFY(stage.Tree().visualRect(stage.Tree().currentIndex()).isValid() && stage.Tree().hasFocus());
  QCOMPARE(stage.Tree().currentIndex().parent().data().toString(), QString("D5"));
  // As if the user had expanded the groups: all that is in them is there.
  QCOMPARE(stage.Tree().model()->rowCount(stage.Row("Public A")), 4);
  QCOMPARE(Services().Count("GetPlansInGroup"), 5);

  // Loaded, but out of sight.
  stage.Tree().collapseAll();
  Stand(stage, "Public B");
  stage.Panel().ShowInTree(fixture_.Code("Deep plan"));
  QCOMPARE(stage.Current(), QString("Deep plan"));
  QVERIFY(stage.Tree().isExpanded(stage.Tree().currentIndex().parent()));
}

void PlanRevealingTest::EndsTheSearchOfAHit() {
  Open({}, true, DeepSite);
  CPanelStage stage(fixture_);
  Stand(stage, "Public B");
  stage.Field()->setFocus();
  stage.Search("deep");
  QTRY_COMPARE(stage.Hits(), QStringList("Deep plan"));
  QVERIFY(stage.List()->hasFocus());
  // The hits stay until the row is there, and with a plan that is nowhere.
  stage.Panel().ShowInTree("4711");
  QCOMPARE(stage.AwaitTips(), QStringList("1:This plan is no longer there."));
  QTest::keyClick(stage.List(), Qt::Key_Return, Qt::ControlModifier);
  QCOMPARE(stage.Hits(), QStringList("Deep plan"));
  QTRY_COMPARE(stage.PageName(), QString("tree"));
  QVERIFY(stage.Field()->text().isEmpty());
  QTRY_COMPARE(stage.Current(), QString("Deep plan"));
  QCOMPARE(stage.Enabled(), QString("gped"));

  stage.Search("B plan 2");
  QTRY_COMPARE(stage.Hits(), QStringList("Public B plan 2"));
  QTest::keyClick(stage.List(), Qt::Key_Menu);
  QVERIFY(Entry(stage)->isEnabled());
  Entry(stage)->trigger();
  QTRY_COMPARE(stage.Current(), QString("Public B plan 2"));
}

void PlanRevealingTest::LeavesOtherFamiliesToOtherTrees() {
  CPanelStage stage(Opened());
  stage.Search("C1 plan 2");
  QTRY_COMPARE(stage.Hits(), QStringList("C1 plan 2"));
  // No one who shows that tree: the entry says why, and so does the key.
  QTest::keyClick(stage.List(), Qt::Key_Menu);
  QVERIFY(!Entry(stage)->isEnabled() && Entry(stage)->toolTip().contains("No tree here"));
  stage.TakeTips();
  QTest::keyClick(stage.List(), Qt::Key_Return, Qt::ControlModifier);
  QCOMPARE(stage.TakeTips(), QStringList("3:No tree here shows this plan."));
  QCOMPARE(stage.PageName(), QString("search_list_view"));

  CPanelStage own(fixture_, true);
  connect(&stage.Panel(), &CViewExternWidget::SignalShowInOtherTree, &own.Panel(),
          [&own](const QString& code, int family) {
            QCOMPARE(family, int(OwnTheme));
            own.Panel().ShowInTree(code);
          });
  QTest::keyClick(stage.List(), Qt::Key_Return, Qt::ControlModifier);
  QCOMPARE(stage.PageName(), QString("tree"));
  QTRY_COMPARE(own.Current(), QString("C1 plan 2"));
  // The family need not be known beforehand.
  own.Choose("Own C");
  stage.Panel().ShowInTree(fixture_.Code("C1 plan 10"));
  QTRY_COMPARE(own.Current(), QString("C1 plan 10"));
}

void PlanRevealingTest::SaysWhyNot() {
  CPanelStage stage(Opened());
  Stand(stage, "Public B");
  stage.Panel().ShowInTree("4711");
  QCOMPARE(stage.AwaitTips(), QStringList("1:This plan is no longer there."));
  // A group on the way that cannot be loaded: the controller says so, once, and a second try goes on from there.
  Services().Fail("GetPlansInGroup", "no connection");
  stage.Panel().ShowInTree(fixture_.Code("A1 plan 2"));
  QCOMPARE(stage.AwaitTips(), QStringList("1:no connection"));
  fixture_.Drain();
  QCOMPARE(stage.TakeTips(), QStringList());
  QCOMPARE(stage.Current(), QString("Public B"));
  Services().Mend("GetPlansInGroup");
  stage.Panel().ShowInTree(fixture_.Code("A1 plan 2"));
  QTRY_COMPARE(stage.Current(), QString("A1 plan 2"));

  // Its own tree has no rows: said once, and not left to itself again.
  connect(&stage.Panel(), &CViewExternWidget::SignalShowInOtherTree, &stage.Panel(), &CViewExternWidget::ShowInTree);
  QSignalSpy others(&stage.Panel(), &CViewExternWidget::SignalShowInOtherTree);
  fixture_.Public()->UninitModelRootItem();
  stage.TakeTips();
  stage.Panel().ShowInTree(fixture_.Code("A1 plan 2"));
  QCOMPARE(stage.AwaitTips(), QStringList("1:The plans could not be loaded."));
  QCOMPARE(others.size(), 0);
}

void PlanRevealingTest::AwaitsWhatComesLate() {
  CPanelStage stage(Opened());
  stage.Choose("A1 plan 2");
  Stand(stage, "Public B");
  const QString code = fixture_.Code("A1 plan 10");
  QStandardItem* group = fixture_.Public()->FindTargetItemByIndexCode(fixture_.Code("A1"), true);
  const int row = fixture_.Public()->FindIndexByIndexCode(code, false).row();
  const QList<QStandardItem*> taken = group->takeRow(row);
  stage.Panel().ShowInTree(code);
  fixture_.Drain();
  QVERIFY(stage.TakeTips().isEmpty());
  group->insertRow(row, taken);
  QTRY_COMPARE(stage.Current(), QString("A1 plan 10"));
  // It does not come: said after a while.
  Stand(stage, "Public B");
  group->removeRow(row);
  stage.Panel().ShowInTree(code);
  QCOMPARE(stage.AwaitTips(), QStringList("1:No tree here shows this plan."));
}

void PlanRevealingTest::OthersDoNotStopIt() {
  Open({}, true, DeepSite);
  CPanelStage stage(fixture_);
  Stand(stage, "Public B");
  stage.Expand(stage.Tree().currentIndex());
  stage.Tree().setCurrentIndex(stage.Tree().RowOf(fixture_.Code("Public B plan 2"), false));
  QCOMPARE(stage.Current(), QString("Public B plan 2"));
  Services().Hold("GetPlansInGroup");
  stage.Panel().ShowInTree(fixture_.Code("Deep plan"));
  QVERIFY(Services().WaitUntilHeld("GetPlansInGroup"));
  stage.Controller().DeletePlanByIndex(stage.Tree().currentIndex());
  QTRY_VERIFY(stage.Current() != "Public B plan 2");
  Services().ReleaseAll();
  QTRY_COMPARE(stage.Current(), QString("Deep plan"));
}

void PlanRevealingTest::GivesWayToTheUser() {
  Open({}, true, DeepSite);
  CPanelStage stage(fixture_);
  Stand(stage, "Public B");
  Services().Hold("GetPlansInGroup");
  stage.Panel().ShowInTree(fixture_.Code("Deep plan"));
  QVERIFY(Services().WaitUntilHeld("GetPlansInGroup"));
  Stand(stage, "Public A");
  Services().ReleaseAll();
  fixture_.Drain();
  QCOMPARE(stage.Current(), QString("Public A"));
  // Nor does it survive a change of the user.
  Services().Hold("GetPlansInGroup");
  stage.Panel().ShowInTree(fixture_.Code("Deep plan"));
  QVERIFY(Services().WaitUntilHeld("GetPlansInGroup"));
  stage.Panel().SwitchUserUpdate();
  Services().ReleaseAll();
  fixture_.Drain();
  QVERIFY(stage.Current() != "Deep plan");
}

QTEST_MAIN(PlanRevealingTest)
#include "test_plan_revealing.moc"
