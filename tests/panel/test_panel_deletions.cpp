#include "panel_stage.h"
#include "view_model_data_manager.h"

using namespace TarnPlanView;
using TarnTest::CPanelStage;

// What the panel asks before it deletes, and what becomes of the answer.
class PanelDeletionsTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void AsksBeforeDeletingAGroup();
  void AsksBeforeDeletingAPlan();
  void RowGoneUnderTheQuestionIsLeftAlone();
};

void PanelDeletionsTest::AsksBeforeDeletingAGroup() {
  for (const bool with_children : {false, true}) {
    Open({{"delete_with_children", with_children}, {"show_mode", 1}});
    {
      CPanelStage stage(fixture_);
      // Not expanded yet: the host is asked whether there is anything below.
      stage.Expand(stage.Tree().model()->index(0, 0));
      stage.Choose("Public B");
      stage.answer = 0;
      Services().ForgetCalls();
      stage.Button("delete_btn")->click();
      QCOMPARE(stage.TakeQuestions(), QStringList(with_children ? "ConfirmToDelete" : "ContainsChildNodesThPmmApRHD"));
      fixture_.Drain();
      QCOMPARE(Services().Count("DeletePlanGroup"), 0);  // declined, or not even asked

      stage.Panel().SetCurPlayItemByIndexCode(fixture_.Code("A1 plan 2"));
      stage.Choose("A1 plan 2");
      stage.Choose("Public A");
      stage.answer = 1;
      QSignalSpy stop(&stage.Panel(), &CViewExternWidget::SignalStopPlan);
      stage.Button("delete_btn")->click();
      // The playing plan stands two levels below; still no signal asks for its end.
      QCOMPARE(stage.TakeQuestions(),
               QStringList(with_children ? "TheUserCurrentlyHasAWPBwgUrC" : "ContainsChildNodesThPmmApRHD"));
      QTRY_COMPARE(!stage.Row("Public A").isValid(), with_children);
      QCOMPARE(stop.size(), 0);
      fixture_.Drain();
    }
    Shut();
  }
}

void PanelDeletionsTest::AsksBeforeDeletingAPlan() {
  CPanelStage stage(Opened({{"show_mode", 0}}));
  const auto remove = [&stage](const QString& name) {
    stage.Choose(name);
    stage.Button("delete_btn")->click();
    return stage.TakeQuestions().join(',');
  };
  const auto is_there = [&stage](const QString& name) { return stage.Row(name).isValid(); };
  const QString plan = "Public A plan 2";
  stage.answer = 0;
  QCOMPARE(remove(plan), QString("ConfirmToDelete"));
  fixture_.Drain();
  QCOMPARE(Services().Count("DeletePlan"), 0);

  stage.Panel().SetCurPlayItemByIndexCode(fixture_.Code(plan));
  int calls_at_stop = -1;
  connect(&stage.Panel(), &CViewExternWidget::SignalStopPlan, &stage.Panel(),
          [&] { calls_at_stop = Services().Count("DeletePlan"); });
  // The wall has gone on while the question was open: what plays there now is left alone.
  stage.answer = 1;
  stage.while_asking = [&] {
    stage.Panel().SetCurPlayItemByIndexCode(QString());
    Services().Fail("DeletePlan", "locked");
  };
  QCOMPARE(remove(plan), QString("TheUserCurrentlyHasAwlMLoHj"));
  QCOMPARE(calls_at_stop, -1);
  fixture_.Drain();
  QCOMPARE(stage.AwaitTips(), QStringList("1:locked"));
  stage.while_asking = {};
  Services().Mend("DeletePlan");
  Services().ForgetCalls();
  stage.Panel().SetCurPlayItemByIndexCode(fixture_.Code(plan));
  Services().Hold("DeletePlan");
  QCOMPARE(remove(plan), QString("TheUserCurrentlyHasAwlMLoHj"));
  QCOMPARE(calls_at_stop, 0);
  // A second key press before the first answer asks nothing and sends nothing, whatever fails or goes meanwhile.
  stage.TakeTips();
  stage.Panel().PlayPlanByString("4711", false);
  QCOMPARE(stage.AwaitTips().size(), 1);
  QCOMPARE(remove(plan), QString());
  QCOMPARE(remove("Public B"), QString("ConfirmToDelete"));
  QTRY_VERIFY(!is_there("Public B"));
  QCOMPARE(remove(plan), QString());
  Services().ReleaseAll();
  QTRY_VERIFY(!is_there(plan));
  QCOMPARE(Services().Count("DeletePlan"), 1);

  // A refused deletion can be tried again.
  stage.TakeTips();
  Services().Fail("DeletePlan", "locked");
  remove("Public A plan 10");
  QCOMPARE(stage.AwaitTips(), QStringList("1:locked"));
  Services().Mend("DeletePlan");
  remove("Public A plan 10");
  QTRY_VERIFY(!is_there("Public A plan 10"));
}

void PanelDeletionsTest::RowGoneUnderTheQuestionIsLeftAlone() {
  CPanelStage stage(Opened());
  stage.Choose("Public A plan 2");
  stage.while_asking = [&] {
    CViewModelDataManager::Instance().OnDeletePlanGroupPlanSucc(stage.Tree().currentIndex());
  };
  stage.Button("delete_btn")->click();
  fixture_.Drain();
  QCOMPARE(Services().Count("DeletePlan"), 0);
  QVERIFY(stage.Row("Public A plan 10").isValid());
}

QTEST_MAIN(PanelDeletionsTest)
#include "test_panel_deletions.moc"
