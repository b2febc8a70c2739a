#include <QLabel>

#include "default_view_stage.h"

using TarnTest::CPlanFixture;
using TarnTest::CRecordingServices;

// The chooser's search: what is loaded is found in the tree, further plans are asked for.
class DefaultViewSearchTest : public CDefaultViewStage {
  Q_OBJECT
 private Q_SLOTS:
  void FindsWhatIsNotLoaded();
  void SaysHowItStands();
  void AsksForTheLastTextAlone();
  void FoundPlanThatCannotBeShownCanBeSaved();
  void ALoadedTreeNeedsNoAnswer();

 private:
  /// Types into the open drop-down.
  void LookFor(const QString& text) {
    chooser_->GetLocationComboBox()->ShowPopup();
    Line()->clear();
    QTest::keyClicks(Line(), text);
  }
  QString Counter() { return Line()->findChild<QLabel*>("locate_counter")->text(); }
  QString Found();
};

/// "state: plan, plan" as the rows above the tree show it; empty without them.
QString DefaultViewSearchTest::Found() {
  const QModelIndex top = Tree()->model()->index(0, 0);
  if (top.data(TarnPlanView::GroupIndexCodeRole).isValid()) {
    return QString();
  }
  QStringList plans;
  for (int row = 0; row < Tree()->model()->rowCount(top); ++row) {
    plans << Tree()->model()->index(row, 0, top).data().toString();
  }
  return top.data().toString() + ": " + plans.join(", ");
}

void DefaultViewSearchTest::FindsWhatIsNotLoaded() {
  Begin();
  Services().Hold("SearchPlan");
  LookFor("plan 2");
  QVERIFY(Services().WaitUntilHeld("SearchPlan"));
  QCOMPARE(Found(), QString("Searching for further plans...: "));
  QCOMPARE(Counter(), QString("\u2026"));  // not "No hit": that is not known yet
  Services().ReleaseAll();
  QTRY_COMPARE(Found(), QString("Further plans found: 5: A1 plan 2 (Public A / A1), Public A plan 2 (Public A), "
                                "Public B plan 2 (Public B), C1 plan 2 (Own C / C1), Own C plan 2 (Own C)"));
  QTRY_COMPARE(Counter(), QString("1/5"));
  QCOMPARE(Tree()->currentIndex().data().toString(), QString("A1 plan 2 (Public A / A1)"));
  for (const auto key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}) {
    QTest::keyClick(Line(), key);
  }
  // Its own row is loaded and chosen, and counts once.
  QTRY_COMPARE(Chosen(), QString("C1 plan 2"));
  QCOMPARE(chooser_->GetLocationComboBox()->GetCurrentIndex().parent().data().toString(), QString("C1"));
  QTRY_COMPARE(Found().left(23), QString("Further plans found: 3:"));
  QVERIFY(chooser_->IsChanged() && chooser_->SaveChosenView());
  QCOMPARE(Stored(), Code("C1 plan 2"));
  Manager().OnUpdateViewModelData();
  QTRY_COMPARE(Chosen(), QString("C1 plan 2"));
  QTRY_VERIFY(Found().startsWith("Further plans found:"));
  Line()->clear();
  QCOMPARE(Found(), QString());
  QCOMPARE(Chosen(), QString("C1 plan 2"));
}

void DefaultViewSearchTest::SaysHowItStands() {
  Begin();
  LookFor("no such plan");
  QTRY_COMPARE(Found(), QString("No further plans found: "));
  QTRY_COMPARE(Counter(), QString("No hit"));
  LookFor("further");  // the words of the state are no hit
  QTRY_COMPARE(Counter(), QString("No hit"));
  LookFor("root plan");  // not offered in the tree either
  QTRY_COMPARE(Found(), QString("No further plans found: "));
  LookFor("Own C");  // what is there is found without the host's help
  QTRY_COMPARE(Tree()->currentIndex().data().toString(), QString("Own C"));
  QTRY_COMPARE(Found(), QString("Further plans found: 2: Own C plan 2 (Own C), Own C plan 10 (Own C)"));

  Services().Fail("SearchPlan", "The line is down");
  LookFor("a1 plan");
  QTRY_COMPARE(Found(), QString("The search got no answer: The line is down: "));
  QTRY_VERIFY(!Line()->IsLocating());
  Services().Mend("SearchPlan");
  QTest::keyClick(Line(), Qt::Key_Return);  // once more
  QTRY_COMPARE(Found(), QString("Further plans found: 2: A1 plan 2 (Public A / A1), A1 plan 10 (Public A / A1)"));
  LookFor("   ");
  QCOMPARE(Found(), QString());
}

void DefaultViewSearchTest::AsksForTheLastTextAlone() {
  Begin();
  Services().Hold("SearchPlan", CRecordingServices::AfterCall);
  LookFor("A1 plan");
  QVERIFY(Services().WaitUntilHeld("SearchPlan"));
  LookFor("C1 plan");
  QVERIFY(Services().WaitUntilHeld("SearchPlan", 2));
  Services().ReleaseAll();
  CPlanFixture::Drain();
  QTRY_COMPARE(Found(), QString("Further plans found: 2: C1 plan 2 (Own C / C1), C1 plan 10 (Own C / C1)"));
  Services().Hold("SearchPlan", CRecordingServices::AfterCall);
  LookFor("A1");
  QVERIFY(Services().WaitUntilHeld("SearchPlan"));
  Line()->clear();
  Services().ReleaseAll();
  CPlanFixture::Drain();
  QCOMPARE(Found(), QString());
  LookFor("A1");
  chooser_.reset();  // with a search under way
  CPlanFixture::Drain();
}

void DefaultViewSearchTest::FoundPlanThatCannotBeShownCanBeSaved() {
  Begin();
  LookFor("c1 plan 10");
  QTRY_COMPARE(Found(), QString("Further plans found: 1: C1 plan 10 (Own C / C1)"));
  Services().Fail("GetPlanDetail", "The line is down");
  QTRY_COMPARE(Counter(), QString("1/1"));
  QTest::keyClick(Line(), Qt::Key_Return);
  QTRY_COMPARE(tips_->count(), 1);
  QCOMPARE(tips_->first().first().toString(), QString("The line is down"));
  QCOMPARE(Chosen(), QString("C1 plan 10 (Own C / C1)"));
  QVERIFY(chooser_->IsChanged() && chooser_->SaveChosenView());
  QCOMPARE(Stored(), Code("C1 plan 10"));
  // The row that it stands in goes with the text; by then it is found.
  Services().Mend("GetPlanDetail");
  Line()->clear();
  QTRY_COMPARE(Chosen(), QString("C1 plan 10"));
  QVERIFY(!chooser_->IsChanged());
}

void DefaultViewSearchTest::ALoadedTreeNeedsNoAnswer() {
  Begin({{"load_all", 1}});
  LookFor("c1 plan 10");
  QTRY_COMPARE(Counter(), QString("1/1"));
  QCOMPARE(Services().Count("SearchPlan"), 0);
  QCOMPARE(Found(), QString());
}

QTEST_MAIN(DefaultViewSearchTest)
#include "test_default_view_search.moc"
