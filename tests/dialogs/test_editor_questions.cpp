#include "LyraPluginManager/error_kind.h"
#include "camera_abilities.h"
#include "conflict_words.h"
#include "plan_document.h"
#include "plan_standing.h"
#include "plan_test.h"
#include "save_conflict.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;

/// What the editor asks the host beside its plan: about a refused save, and about cameras.
class EditorQuestionsTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void WhatIsSaidAfterALook_data();
  void WhatIsSaidAfterALook();
  void WhatTheBarSays();
  void WhatTheySavedInWords();
  void AbilitiesAreFetchedOnce();
};

void EditorQuestionsTest::WhatIsSaidAfterALook_data() {
  using Said = SaveConflict;
  QTest::addColumn<int>("said");  // of a plan in revision 5, before the look
  QTest::addColumn<int>("said_revision");
  QTest::addColumn<int>("kind");  // -1: the plan came
  QTest::addColumn<int>("revision");
  QTest::addColumn<int>("step");
  const auto row = [](const char* name, Said said, int said_revision, int kind, int revision, NewsStep step) {
    QTest::newRow(name) << int(said) << said_revision << kind << revision << int(step);
  };
  constexpr int kCame = -1;
  row("as opened", Said::None, 0, kCame, 5, NewsStep::Nothing);
  row("an own save overtook the look", Said::None, 0, kCame, 4, NewsStep::Nothing);
  row("changed", Said::None, 0, kCame, 6, NewsStep::SayChanged);
  row("changed, as said", Said::ChangedElsewhere, 6, kCame, 6, NewsStep::Nothing);
  row("changed once more", Said::ChangedElsewhere, 6, kCame, 7, NewsStep::SayChanged);
  row("deleted", Said::None, 0, Gone, 0, NewsStep::SayDeleted);
  row("changed, then deleted", Said::ChangedElsewhere, 6, Gone, 0, NewsStep::SayDeleted);
  row("deleted, as said", Said::Deleted, 0, Gone, 0, NewsStep::Nothing);
  row("deletion taken back", Said::Deleted, 0, kCame, 5, NewsStep::TakeBack);
  row("deletion taken back, and changed", Said::Deleted, 0, kCame, 6, NewsStep::SayChanged);
  row("no answer", Said::None, 0, Unavailable, 0, NewsStep::Nothing);
  row("no answer after a change", Said::ChangedElsewhere, 6, Unavailable, 0, NewsStep::Nothing);
  row("failed, nothing known", Said::Deleted, 0, UnknownFailure, 0, NewsStep::Nothing);
}

void EditorQuestionsTest::WhatIsSaidAfterALook() {
  QFETCH(int, said);
  QFETCH(int, said_revision);
  QFETCH(int, kind);
  QFETCH(int, revision);
  HostCalls::Result<GetPlanDetailResponse> now{kind < 0, {}};
  now.response.revision = revision;
  now.response.error_kind = qMax(kind, 0);
  QTEST(int(StepAfterLook({5, SaveConflict(said), said_revision}, now)), "step");
}

void EditorQuestionsTest::WhatTheBarSays() {
  using Kind = PlanStanding::Kind;
  struct Row {
    Kind kind;
    ConflictNews news, with_edits_replaced;
  };
  const Row rows[] = {
      {Kind::Same, ConflictNews::None, ConflictNews::Theirs},
      {Kind::Loading, ConflictNews::None, ConflictNews::None},
      {Kind::NotLoaded, ConflictNews::NotLoaded, ConflictNews::NotLoaded},
      {Kind::Changed, ConflictNews::Changed, ConflictNews::Newer},  // what can be kept would be their earlier version
      {Kind::Refused, ConflictNews::Refused, ConflictNews::Refused},
      {Kind::Deleted, ConflictNews::Deleted, ConflictNews::Deleted},
  };
  for (const Row& row : rows) {
    QCOMPARE(int(NewsOf(row.kind, false)), int(row.news));
    QCOMPARE(int(NewsOf(row.kind, true)), int(row.with_edits_replaced));
  }
}

void EditorQuestionsTest::WhatTheySavedInWords() {
  const QDateTime now(QDate(2026, 3, 5), QTime(4, 0));
  const auto said = [&now](const char* who, const char* when) {
    GetPlanDetailResponse theirs;
    theirs.changed_by = who;
    theirs.changed_at = when;
    return CConflictWords::SavedBy(theirs, now);
  };
  QCOMPARE(said("guard", "2026-03-05 03:12:40"), QString("Saved by guard at 03:12 while you were editing."));
  QVERIFY(said("guard", "2026-03-04 23:50:00").contains(" at 2026-03-04 23:50 "));
  QCOMPARE(said("%2 & Co", "just now"), QString("Saved by %2 & Co while you were editing."));
  QVERIFY(said("", "2026-03-05 03:12:40").startsWith("Another user saved the plan"));

  GetPlanDetailResponse plan = TarnTest::Detail({TarnTest::FullPage(1), TarnTest::FullPage(2)});
  const PlanDraft opened = CPlanDocument::DraftOf(plan);
  QCOMPARE(CConflictWords::Changes(opened, opened), QString());
  plan.pages.back().windows.pop_back();
  plan.start_time = "21:05:00";
  QCOMPARE(CConflictWords::Changes(opened, CPlanDocument::DraftOf(plan)),
           QString("Changed: the automatic run; page(s) 2."));
  plan.pages.pop_back();
  plan.name = "Gate by %1";
  plan.group_index_code = "13";
  plan.group_name = "Roof";
  plan.start_time.clear();
  QCOMPARE(CConflictWords::Changes(opened, CPlanDocument::DraftOf(plan)),
           QString("Changed: the name, now Gate by %1; the group, now Roof; the number of pages, now 1."));
  const PlanDraft bare = CPlanDocument::DraftOf(TarnTest::Detail({}));
  CPlanDocument document;
  document.Load(TarnTest::Detail({}));
  QCOMPARE(CConflictWords::Changes(document.Saved(), bare), QString());
}

void EditorQuestionsTest::AbilitiesAreFetchedOnce() {
  Open({}, false);
  const GetPlanDetailResponse plan = fixture_.InStore().Detail(fixture_.Code("Own C plan 2"));
  const QString camera = QString::fromStdString(plan.pages.front().windows.front().resource_code);
  CCameraAbilities abilities;
  QSignalSpy streams(&abilities, &CCameraAbilities::SignalStreamsKnown);
  QSignalSpy presets(&abilities, &CCameraAbilities::SignalPresetsKnown);
  abilities.Ask(camera);
  abilities.Ask(camera);
  QVERIFY(!abilities.Streams(camera) && !abilities.Presets(camera));
  QTRY_VERIFY(streams.size() == 1 && presets.size() == 1);
  abilities.Ask(camera);
  QCOMPARE(streams.size() + presets.size(), 4);
  QCOMPARE(*abilities.Streams(camera), (QVector<int>{0, 1}));
  QCOMPARE(abilities.Presets(camera)->at(0).name, QString("Door"));
  QCOMPARE(Services().Count("GetStreamAbility") + Services().Count("GetPresets"), 2);
  Services().Hold("GetPresets");
  abilities.Doubt();
  abilities.Ask(camera);
  QVERIFY(Services().WaitUntilHeld("GetPresets"));
  abilities.Doubt();  // the question under way was put too early
  abilities.Ask(camera);
  Services().ReleaseAll();
  QTRY_COMPARE(presets.size(), 3);
  QCOMPARE(Services().Count("GetPresets"), 3);
  for (const auto& call : Services().Calls()) {
    QVERIFY2(!call.on_gui_thread || (call.name != "GetStreamAbility" && call.name != "GetPresets"), "the GUI was held");
  }
}

QTEST_MAIN(EditorQuestionsTest)
#include "test_editor_questions.moc"
