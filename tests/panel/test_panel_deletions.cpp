#include <QSignalSpy>
#include <QtTest>

#include "panel_stage.h"
#include "view_model_data_manager.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using tarn_ui_data_controller::MsgType;
using TarnTest::CPanelStage;
using TarnTest::CPlanFixture;

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
    Open({{QStringLiteral("delete_with_children"), with_children}, {QStringLiteral("show_mode"), 1}});
    {
      CPanelStage stage(fixture_);
      // Not expanded yet: the host is asked whether there is anything below.
      stage.Expand(stage.Tree().model()->index(0, 0));
      stage.Choose(QStringLiteral("Public B"));
      stage.answer = 0;
      Services().ForgetCalls();
      stage.Button("delete_btn")->click();
      QCOMPARE(stage.TakeQuestions(), QStringList(with_children ? "ConfirmToDelete" : "ContainsChildNodesThPmmApRHD"));
      fixture_.Drain();
      QCOMPARE(Services().Count(QStringLiteral("DeletePlanGroup")), 0);  // declined, or not even asked

      stage.Panel().SetCurPlayItemByIndexCode(fixture_.Code(QStringLiteral("A1 plan 2")));
      stage.Choose(QStringLiteral("A1 plan 2"));
      stage.Choose(QStringLiteral("Public A"));
      stage.answer = 1;
      QSignalSpy stop(&stage.Panel(), &CViewExternWidget::SignalStopPlan);
      stage.Button("delete_btn")->click();
      if (with_children) {
        // The playing plan stands two levels below; still no one is told to stop it.
        QCOMPARE(stage.TakeQuestions().size(), 1);
        QTRY_VERIFY(!stage.Row(QStringLiteral("Public A")).isValid());
      } else {
        QCOMPARE(stage.TakeQuestions(), QStringList("ContainsChildNodesThPmmApRHD"));
      }
      QCOMPARE(stop.size(), 0);
      fixture_.Drain();
    }
    Shut();
  }
}

void PanelDeletionsTest::AsksBeforeDeletingAPlan() {
  for (const int show_mode : {0, 1}) {
    Open({{QStringLiteral("show_mode"), show_mode}});
    {
      CPanelStage stage(fixture_);
      stage.Choose(QStringLiteral("Public A plan 2"));
      stage.answer = 0;
      stage.Button("delete_btn")->click();
      QCOMPARE(stage.TakeQuestions(), QStringList("ConfirmToDelete"));
      fixture_.Drain();
      QCOMPARE(Services().Count(QStringLiteral("DeletePlan")), 0);

      stage.Panel().SetCurPlayItemByIndexCode(fixture_.Code(QStringLiteral("Public A plan 2")));
      int calls_at_stop = -1;
      connect(&stage.Panel(), &CViewExternWidget::SignalStopPlan, &stage.Panel(),
              [&] { calls_at_stop = Services().Count(QStringLiteral("DeletePlan")); });
      stage.answer = 1;
      Services().Hold(QStringLiteral("DeletePlan"));
      stage.Button("delete_btn")->click();
      QCOMPARE(stage.TakeQuestions(),
               QStringList(show_mode ? "TheUserCurrentlyHasAWPBwgUrC" : "TheUserCurrentlyHasAwlMLoHj"));
      QCOMPARE(calls_at_stop, 0);
      // A second key press before the first answer asks nothing and sends nothing, whatever fails or goes meanwhile.
      QSignalSpy tips(&stage.Panel(), &CViewExternWidget::SignalMessageTipNeeded);
      stage.Panel().PlayPlanByString(QStringLiteral("4711"), false);
      QTRY_COMPARE(tips.size(), 1);
      stage.Button("delete_btn")->click();
      QCOMPARE(stage.TakeQuestions(), QStringList());
      stage.Choose(QStringLiteral("Public B"));
      stage.Button("delete_btn")->click();
      QTRY_VERIFY(!stage.Row(QStringLiteral("Public B")).isValid());
      QCOMPARE(stage.TakeQuestions(), QStringList("ConfirmToDelete"));
      stage.Choose(QStringLiteral("Public A plan 2"));
      stage.Button("delete_btn")->click();
      QCOMPARE(stage.TakeQuestions(), QStringList());
      Services().ReleaseAll();
      QTRY_VERIFY(!stage.Row(QStringLiteral("Public A plan 2")).isValid());
      QCOMPARE(Services().Count(QStringLiteral("DeletePlan")), 1);

      // A refused deletion can be tried again.
      stage.TakeTips();
      stage.Choose(QStringLiteral("Public A plan 10"));
      Services().Fail(QStringLiteral("DeletePlan"), "locked");
      stage.Button("delete_btn")->click();
      fixture_.Drain();
      QCOMPARE(stage.TakeTips(), QStringList("1:locked"));
      Services().Mend(QStringLiteral("DeletePlan"));
      stage.Button("delete_btn")->click();
      QTRY_VERIFY(!stage.Row(QStringLiteral("Public A plan 10")).isValid());
    }
    Shut();
  }
}

void PanelDeletionsTest::RowGoneUnderTheQuestionIsLeftAlone() {
  Open();
  CPanelStage stage(fixture_);
  stage.Choose(QStringLiteral("Public A plan 2"));
  stage.while_asking = [&] {
    CViewModelDataManager::Instance().OnDeletePlanGroupPlanSucc(stage.Tree().currentIndex());
  };
  stage.Button("delete_btn")->click();
  fixture_.Drain();
  QCOMPARE(Services().Count(QStringLiteral("DeletePlan")), 0);
  QVERIFY(stage.Row(QStringLiteral("Public A plan 10")).isValid());
}

QTEST_MAIN(PanelDeletionsTest)
#include "test_panel_deletions.moc"
