#include <QAction>
#include <QTranslator>

#include "MarUIControl/offer_strip.h"
#include "deletion_texts.h"
#include "panel_stage.h"
#include "plan_calls.h"
#include "view_model_data_manager.h"

using namespace TarnPlanView;
using MarUIControl::COfferStrip;
using TarnTest::CPanelStage;

namespace {

/// A host's catalogue whose question has places for what is to be deleted.
class CPlacesInTheQuestion : public QTranslator {
 public:
  CPlacesInTheQuestion() { QCoreApplication::installTranslator(this); }
  ~CPlacesInTheQuestion() override { QCoreApplication::removeTranslator(this); }
  bool isEmpty() const override { return false; }
  QString translate(const char*, const char* text, const char*, int) const override {
    return QByteArray(text) == "ConfirmToDelete" ? QStringLiteral("Delete the %2 %1%3?") : QString();
  }
};

}  // namespace

// What can be undone in the panel, and how.
class PanelUndoTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void QuestionNamesWhatIsDeleted();
  void PlacesAreFilledOnce();
  void DeletedPlanComesBack();
  void DeletedGroupComesBack_data();
  void DeletedGroupComesBack();
  void OfferSaysWhatTheHostDeleted();
  void RowComesBackToAGroupThatIsNotLoaded_data();
  void RowComesBackToAGroupThatIsNotLoaded();
  void SearchGoesOnOverAnUndo();
  void NewGroupIsRevealed();
  void RefusalIsShown();
  void NoOfferWithoutTimeToUndo();
  void NextUserIsOfferedNothing();
  void DeletionIsOfferedOnceMoreWhenNotAnswered();
  void OneOfferAtATime();
  void KeyUndoesWhileTheOfferStands();
  void KeyIsTheEditorsWhileOneIsOpen();
  void MoveIsUndone();
  void MoveIsNotUndoneOnceChanged();
  void MoveIsNotUndoneIntoAGroupThatIsGone();
  void MoveIsOfferedOnceMoreWhenNotUndone();
  void MovedPlanIsRevealedToWhoHasStayed_data();
  void MovedPlanIsRevealedToWhoHasStayed();
  void GroupDroppedOnAGroupIsAnswered();

 private:
  static constexpr char kPlan[] = "Public A plan 2";

  static COfferStrip* Strip(CPanelStage& stage) { return stage.Panel().findChild<COfferStrip*>(); }
  static QAction* Key(CPanelStage& stage) { return stage.Panel().findChild<QAction*>("undo_action"); }
  /// What is offered about this row in the end.
  static QString Offered(CPanelStage& stage, const QString& name) {
    const bool offered = QTest::qWaitFor([&] { return Strip(stage)->Text().contains(name); });
    return offered ? Strip(stage)->Text() : QString();
  }
  static QString Deleted(CPanelStage& stage, const QString& name) {
    stage.Choose(name);
    stage.Button("delete_btn")->click();
    return Offered(stage, name);
  }
  QString GroupOf(const QString& plan) {
    return QString::fromStdString(fixture_.InStore().Detail(fixture_.Code(plan)).group_name);
  }
};

void PanelUndoTest::QuestionNamesWhatIsDeleted() {
  CPlacesInTheQuestion places;
  CPanelStage stage(Opened({{"show_mode", 1}}));
  stage.answer = 0;
  const auto asked = [&stage](const QString& name) {
    stage.Choose(name);
    stage.Button("delete_btn")->click();
    return stage.TakeQuestions().join('|');
  };
  stage.Expand(stage.Tree().model()->index(0, 0));
  QCOMPARE(asked("Public A"), QString("Delete the group Public A with 1 group(s) and 4 plan(s)?"));
  Services().Fail("CountBelowGroup");  // as of a host that does not count
  QCOMPARE(asked("Public A"), QString("Delete the group Public A with all that is in it?"));
  stage.ExpandAll();
  QCOMPARE(asked("Public A"), QString("Delete the group Public A with 1 group(s) and 4 plan(s)?"));
  QCOMPARE(asked("Public B"), QString("Delete the group Public B with 2 plan(s)?"));
  QCOMPARE(asked(kPlan), QString("Delete the plan Public A plan 2?"));
  fixture_.Drain();
}

void PanelUndoTest::PlacesAreFilledOnce() {
  const struct {
    const char *text, *filled;
  } rows[] = {{"Delete?", "Delete?"},           {"%1", "50%2"},         {"%2 %1", "group 50%2"},
              {"100% of %1%", "100% of 50%2%"}, {"%3 %0 %", "%3 %0 %"}, {"%1%1", "50%250%2"}};
  for (const auto& row : rows) {
    QCOMPARE(FillPlaces(row.text, {"50%2", "group"}), QString(row.filled));
  }
}

void PanelUndoTest::DeletedPlanComesBack() {
  CPanelStage stage(Opened());
  CStandardPlanModel* other = fixture_.Model("1", PublicTheme);
  QVERIFY(other && other != fixture_.Public());
  stage.ExpandAll();
  const QString code = fixture_.Code(kPlan);
  QCOMPARE(Deleted(stage, kPlan), QString("Deleted Public A plan 2."));
  QVERIFY(!stage.Row(kPlan).isValid());
  stage.TakeTips();
  stage.Choose("Public B");
  Strip(stage)->Take();
  QTRY_COMPARE(stage.Current(), QString(kPlan));
  QCOMPARE(stage.TakeTips(), QStringList("0:\"Public A plan 2\" is back."));
  QCOMPARE(stage.Tree().currentIndex().parent().data().toString(), QString("Public A"));
  QVERIFY(other->FindIndexByIndexCode(code, false).isValid());
  QVERIFY(!Strip(stage)->IsOffering());
  fixture_.Drain();
  QTRY_COMPARE(stage.Row("Public A").model()->rowCount(stage.Row("Public A")), 3);  // the notice brought no second row
  // The row that came back follows changes made elsewhere.
  stage.Controller().DeletePlanByIndex(stage.Tree().currentIndex());
  QTRY_VERIFY(!stage.Row(kPlan).isValid());
}

void PanelUndoTest::DeletedGroupComesBack_data() {
  QTest::addColumn<bool>("load_all");
  QTest::newRow("loaded as expanded") << false;
  QTest::newRow("all loaded") << true;
}

void PanelUndoTest::DeletedGroupComesBack() {
  QFETCH(bool, load_all);
  CPanelStage stage(Opened({{"load_all", load_all}, {"show_mode", 1}}));
  stage.ExpandAll();
  const QString playing = "A1 plan 2";
  stage.Panel().SetCurPlayItemByIndexCode(fixture_.Code(playing));
  QCOMPARE(Deleted(stage, "Public A"), QString("Deleted Public A, 1 group(s) and 4 plan(s)."));
  QVERIFY(!stage.Row(playing).isValid());
  Strip(stage)->Take();
  QTRY_COMPARE(stage.Current(), QString("Public A"));
  QTRY_VERIFY(stage.Row(playing).isValid());
  if (!load_all) {  // there the rows come later, and who plays renews the mark
    QTRY_VERIFY(stage.Row(playing).data(PlayingRole).toBool());
  }
  QCOMPARE(stage.Row(playing).parent().parent().data().toString(), QString("Public A"));
  fixture_.Drain();
}

// More than the tree has loaded, and than it had heard of when it asked.
void PanelUndoTest::OfferSaysWhatTheHostDeleted() {
  CPanelStage stage(Opened({{"show_mode", 1}}));
  stage.while_asking = [this] { QCOMPARE(fixture_.InStore().AddPlan(fixture_.Code("Public A"), "Late"), QString()); };
  QCOMPARE(Deleted(stage, "Public A"), QString("Deleted Public A, 1 group(s) and 5 plan(s)."));
  fixture_.Drain();
}

void PanelUndoTest::RowComesBackToAGroupThatIsNotLoaded_data() {
  QTest::addColumn<QString>("row");
  QTest::newRow("plan") << QString(kPlan);
  QTest::newRow("deeper") << QString("A1 plan 2");
  QTest::newRow("group") << QString("A1");
}

void PanelUndoTest::RowComesBackToAGroupThatIsNotLoaded() {
  QFETCH(QString, row);
  CPanelStage stage(Opened());
  QVERIFY(!Deleted(stage, row).isEmpty());
  stage.Choose("Plans");
  CViewModelDataManager::Instance().OnUpdateViewModelData();
  QTRY_COMPARE(stage.PageName(), QString("tree"));
  fixture_.Drain();
  Strip(stage)->Take();
  QTRY_COMPARE(stage.Current(), row);
  QVERIFY(stage.Tree().viewport()->rect().contains(stage.Tree().visualRect(stage.Tree().currentIndex())));
  fixture_.Drain();
}

void PanelUndoTest::SearchGoesOnOverAnUndo() {
  CPanelStage stage(Opened());
  QVERIFY(!Deleted(stage, kPlan).isEmpty());
  stage.Search("Public A plan");
  QTRY_COMPARE(stage.Hits(), QStringList("Public A plan 10"));
  Strip(stage)->Take();
  QTRY_COMPARE(stage.Hits(), QStringList({kPlan, "Public A plan 10"}));
  QVERIFY(stage.Current() == kPlan && stage.Field()->text() == "Public A plan");
}

void PanelUndoTest::NewGroupIsRevealed() {
  CPanelStage stage(Opened());
  for (const char* parent : {"Public A", "Public B"}) {
    stage.Choose(parent);
    const bool goes_on = QByteArray(parent) == "Public B";
    QVERIFY(!stage.Tree().isExpanded(stage.Tree().currentIndex()));
    QMetaObject::invokeMethod(&stage.Panel(), "onAddPlanViewGroupName", Q_ARG(QString, "New here"));
    if (goes_on) {
      stage.Choose("Public A");
    }
    fixture_.Drain();
    QTRY_COMPARE(stage.Current(), QString(goes_on ? "Public A" : "New here"));
    QVERIFY(goes_on || stage.Tree().isExpanded(stage.Tree().currentIndex().parent()));
  }
}

void PanelUndoTest::RefusalIsShown() {
  CPanelStage stage(Opened());
  QVERIFY(!Deleted(stage, kPlan).isEmpty());
  stage.TakeTips();
  Services().Fail("RestoreDeleted", "too late");
  Strip(stage)->Take();
  QCOMPARE(stage.AwaitTips(), QStringList("1:too late"));
  QVERIFY(!stage.Row(kPlan).isValid() && !Strip(stage)->IsOffering());
}

void PanelUndoTest::NoOfferWithoutTimeToUndo() {
  CPanelStage stage(Opened());
  Services().SetKeepsDeleted(false);
  stage.Choose(kPlan);
  stage.Button("delete_btn")->click();
  QTRY_VERIFY(!stage.Row(kPlan).isValid());
  fixture_.Drain();
  QVERIFY(!Strip(stage)->IsOffering());
}

void PanelUndoTest::NextUserIsOfferedNothing() {
  CPanelStage stage(Opened());
  Services().Hold("DeletePlan", TarnTest::CRecordingServices::AfterCall);
  stage.Choose(kPlan);
  stage.Button("delete_btn")->click();
  QVERIFY(Services().WaitUntilHeld("DeletePlan"));
  stage.Panel().SwitchUserUpdate();
  Services().ReleaseAll();
  fixture_.Drain();
  QVERIFY(!Strip(stage)->IsOffering());
}

void PanelUndoTest::DeletionIsOfferedOnceMoreWhenNotAnswered() {
  CPanelStage stage(Opened());
  const QString offer = Deleted(stage, kPlan);
  Services().Fail("RestoreDeleted", "busy", view_plugin_protocol::Unavailable);
  stage.TakeTips();
  Strip(stage)->Take();
  QCOMPARE(stage.AwaitTips(), QStringList("1:busy"));
  QTRY_COMPARE(Strip(stage)->Text(), offer);
  Services().Mend("RestoreDeleted");
  Strip(stage)->Take();
  QTRY_COMPARE(stage.Current(), QString(kPlan));
  // What was deleted meanwhile keeps its offer.
  QVERIFY(!Deleted(stage, kPlan).isEmpty());
  Services().Fail("RestoreDeleted", "busy", view_plugin_protocol::Unavailable);
  Services().Hold("RestoreDeleted");
  Strip(stage)->Take();
  QVERIFY(Services().WaitUntilHeld("RestoreDeleted"));
  const QString later = Deleted(stage, "Public A plan 10");
  stage.TakeTips();
  Services().ReleaseAll();
  QCOMPARE(stage.AwaitTips(), QStringList("1:busy"));
  QCOMPARE(Strip(stage)->Text(), later);
}

void PanelUndoTest::OneOfferAtATime() {
  CPanelStage stage(Opened()), own(fixture_, true);
  QVERIFY(!Deleted(stage, kPlan).isEmpty());
  QCOMPARE(Deleted(stage, "Public A plan 10"), QString("Deleted Public A plan 10."));
  QCOMPARE(Deleted(own, "Own C plan 2"), QString("Deleted Own C plan 2."));
  QVERIFY(!Strip(stage)->IsOffering());
  own.Panel().SwitchUserUpdate();
  QVERIFY(!Strip(own)->IsOffering());
  QVERIFY(!Deleted(stage, "Public B").isEmpty());
  stage.Panel().StopWorking();
  QVERIFY(!Strip(stage)->IsOffering());
}

void PanelUndoTest::KeyUndoesWhileTheOfferStands() {
  CPanelStage stage(Opened());
  stage.Panel().activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(&stage.Panel()));
  stage.Tree().setFocus();
  QTest::keySequence(&stage.Tree(), QKeySequence::Undo);
  QCOMPARE(stage.TakeTips(), QStringList("3:There is nothing to undo here."));
  QVERIFY(!Deleted(stage, kPlan).isEmpty());
  stage.Field()->setFocus();
  QTest::keyClicks(stage.Field(), "gate");
  QTest::keySequence(stage.Field(), QKeySequence::Undo);
  QVERIFY(stage.Field()->text().isEmpty() && Strip(stage)->IsOffering());
  stage.Tree().setFocus();
  QTest::keySequence(&stage.Tree(), QKeySequence::Undo);
  QTRY_COMPARE(stage.Current(), QString(kPlan));
}

void PanelUndoTest::KeyIsTheEditorsWhileOneIsOpen() {
  CPanelStage stage(Opened());
  QVERIFY(!Deleted(stage, kPlan).isEmpty());
  stage.Edit("Public A plan 10");
  stage.Tree().setFocus();
  QVERIFY(Strip(stage)->IsOffering() && !Key(stage)->isEnabled());
  QVERIFY(stage.Panel().MayLeave() && !stage.Panel().IsEditorOpen());
  QVERIFY(Key(stage)->isEnabled());
}

void PanelUndoTest::MoveIsUndone() {
  CPanelStage stage(Opened());
  stage.ExpandAll();
  stage.Drop(kPlan, "Public B");
  QCOMPARE(Offered(stage, kPlan), QString("Moved Public A plan 2 to Public B."));
  QTRY_COMPARE(stage.Current(), QString(kPlan));
  QCOMPARE(stage.Tree().currentIndex().parent().data().toString(), QString("Public B"));
  Strip(stage)->Take();
  QTRY_COMPARE(GroupOf(kPlan), QString("Public A"));
  QTRY_COMPARE(stage.Tree().currentIndex().parent().data().toString(), QString("Public A"));
  QCOMPARE(stage.Current(), QString(kPlan));
  fixture_.Drain();
  QVERIFY(!Strip(stage)->IsOffering());  // undoing is not offered to be undone
}

void PanelUndoTest::MoveIsNotUndoneOnceChanged() {
  CPanelStage stage(Opened());
  stage.ExpandAll();
  const std::string plan = fixture_.Code(kPlan).toStdString();
  const auto move = [&] {
    stage.Drop(kPlan, "Public B");
    QVERIFY(!Offered(stage, kPlan).isEmpty());
    fixture_.Drain();
    stage.TakeTips();
  };
  move();
  view_plugin_protocol::UpdatePlanRequest on = TarnTest::Unchanged(fixture_.InStore().Detail(plan));
  on.parent_index_code = fixture_.Code("A1").toStdString();
  QCOMPARE(fixture_.InStore().Update(on), QString());
  Strip(stage)->Take();
  QCOMPARE(stage.AwaitTips(), QStringList("1:\"Public A plan 2\" was moved on in the meantime."));
  QCOMPARE(GroupOf(kPlan), QString("A1"));
  fixture_.Drain();
}

void PanelUndoTest::MoveIsNotUndoneIntoAGroupThatIsGone() {
  CPanelStage stage(Opened({{"show_mode", 1}}));
  stage.ExpandAll();
  stage.Drop(kPlan, "Public B");
  QVERIFY(!Offered(stage, kPlan).isEmpty());
  fixture_.Drain();
  QCOMPARE(fixture_.InStore().DeleteGroup(fixture_.Code("Public A")), QString());
  stage.TakeTips();
  Strip(stage)->Take();
  QCOMPARE(stage.AwaitTips(), QStringList("1:The group does not exist or was deleted in the meantime."));
  fixture_.Drain();
  QCOMPARE(stage.TakeTips(), QStringList());
  QCOMPARE(GroupOf(kPlan), QString("Public B"));
}

void PanelUndoTest::MoveIsOfferedOnceMoreWhenNotUndone() {
  CPanelStage stage(Opened());
  stage.ExpandAll();
  stage.Drop(kPlan, "Public B");
  const QString offer = Offered(stage, kPlan);
  fixture_.Drain();
  stage.TakeTips();
  for (const char* call : {"GetPlanDetail", "UpdatePlan"}) {
    Services().Fail(call, "busy", view_plugin_protocol::Unavailable);
    Strip(stage)->Take();
    QCOMPARE(stage.AwaitTips(), QStringList("1:busy"));
    QTRY_COMPARE(Strip(stage)->Text(), offer);
    Services().Mend(call);
  }
  stage.Edit(kPlan);
  Strip(stage)->Take();
  QCOMPARE(stage.AwaitTips().size(), 1);
  QCOMPARE(Strip(stage)->Text(), offer);
  QVERIFY(stage.Panel().MayLeave());
  Strip(stage)->Take();
  QTRY_COMPARE(GroupOf(kPlan), QString("Public A"));
  fixture_.Drain();
}

void PanelUndoTest::MovedPlanIsRevealedToWhoHasStayed_data() {
  QTest::addColumn<QString>("goes_to");
  QTest::addColumn<QString>("current");
  QTest::newRow("stays") << QString() << QString(kPlan);
  QTest::newRow("goes on") << QString("Public A plan 10") << QString("Public A plan 10");
  QTest::newRow("searches") << QString("search") << QString(kPlan);
}

void PanelUndoTest::MovedPlanIsRevealedToWhoHasStayed() {
  QFETCH(QString, goes_to);
  CPanelStage stage(Opened());
  stage.ExpandAll();
  stage.Choose(kPlan);
  const QString page = stage.PageName();
  Services().Hold("UpdatePlan");
  stage.Drop(kPlan, "Public B");
  QVERIFY(Services().WaitUntilHeld("UpdatePlan"));
  if (goes_to == "search") {
    stage.Search("plan");
    QTRY_VERIFY(stage.PageName() != page);
  } else if (!goes_to.isEmpty()) {
    stage.Choose(goes_to);
  }
  const QString shown = stage.PageName();
  Services().ReleaseAll();
  QVERIFY(!Offered(stage, kPlan).isEmpty());
  fixture_.Drain();
  QTEST(stage.Current(), "current");
  QCOMPARE(stage.PageName(), shown);
}

void PanelUndoTest::GroupDroppedOnAGroupIsAnswered() {
  CPanelStage stage(Opened());
  stage.ExpandAll();
  stage.TakeTips();
  for (const char* target : {"Public B", "A1", "Public B plan 2"}) {
    stage.Drop("Public A", target);
    QCOMPARE(stage.TakeTips(), QStringList("1:Groups stay where they are. Only plans can be moved."));
  }
  stage.Drop("Public A", "Public A");
  QCOMPARE(stage.TakeTips(), QStringList());
}

QTEST_MAIN(PanelUndoTest)
#include "test_panel_undo.moc"
