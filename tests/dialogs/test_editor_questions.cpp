#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include "camera_abilities.h"
#include "plan_conflict.h"
#include "plan_test.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using TarnTest::CPlanFixture;

/// What the editor asks the host beside its plan: about a refused save, and about cameras.
class EditorQuestionsTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void ChangedElsewhere();
  void Deleted_data();
  void Deleted();
  void DeletedByAnotherClient();
  void OtherFailures_data();
  void OtherFailures();
  void MovedIsNotDeleted();
  void OnlyTheLastQuestionIsAnswered();
  void AbilitiesAreFetchedOnce();
  void FailuresAreAskedAgain();

 private:
  static constexpr auto kPlan = "Own C plan 2";

  GetPlanDetailResponse Stored(const QString& name) {
    GetPlanDetailRequest request;
    request.plan_index_code = fixture_.Code(name).toStdString();
    GetPlanDetailResponse detail;
    [&] { QVERIFY(fixture_.Store().GetPlanDetail(request, detail)); }();
    return detail;
  }
  CPlanConflict::Question QuestionOf(const QString& name) {
    const GetPlanDetailResponse detail = Stored(name);
    return {detail.index_code, detail.group_index_code, detail.revision, "refused with this"};
  }

  struct Answer {
    CPlanConflict::Kind kind = CPlanConflict::OtherFailure;
    QString reason;
    GetPlanDetailResponse theirs;
  };
  Answer Ask(const CPlanConflict::Question& question) {
    CPlanConflict conflict;
    Answer answer;
    QSignalSpy found(&conflict, &CPlanConflict::SignalFound);
    connect(&conflict, &CPlanConflict::SignalFound, &conflict,
            [&answer](CPlanConflict::Kind kind, const QString& reason, const GetPlanDetailResponse& theirs) {
              answer = {kind, reason, theirs};
            });
    conflict.FindOut(question);
    [&] { QTRY_COMPARE(found.size(), 1); }();
    return answer;
  }
};

void EditorQuestionsTest::ChangedElsewhere() {
  Open({}, false);
  const auto question = QuestionOf(kPlan);
  UpdatePlanRequest change;
  change.plan_index_code = question.plan_code;
  change.plan_name = "Theirs";
  UpdatePlanResponse response;
  QVERIFY(fixture_.Store().UpdatePlan(change, response));
  const Answer answer = Ask(question);
  QCOMPARE(answer.kind, CPlanConflict::ChangedElsewhere);
  QCOMPARE(answer.reason, question.reason);
  QCOMPARE(answer.theirs.name, std::string("Theirs"));
  QCOMPARE(answer.theirs.revision, question.revision + 1);
  for (const auto& call : Services().Calls()) {
    QVERIFY2(!call.on_gui_thread || call.name != "GetPlanDetail", "the GUI was held");
  }
}

void EditorQuestionsTest::Deleted_data() {
  QTest::addColumn<bool>("with_group");
  QTest::newRow("plan") << false;
  QTest::newRow("group") << true;
}

void EditorQuestionsTest::Deleted() {
  QFETCH(bool, with_group);
  Open({}, false);
  const auto question = QuestionOf(kPlan);
  DeletePlanResquest plan;
  plan.plan_index_code = question.plan_code;
  DeletePlanGroupRequest group;
  group.index_code = question.group_code;
  DeletePlanResponse plan_gone;
  DeletePlanGroupResponse group_gone;
  QVERIFY(with_group ? fixture_.Store().DeletePlanGroup(group, group_gone)
                     : fixture_.Store().DeletePlan(plan, plan_gone));
  const Answer answer = Ask(question);
  QCOMPARE(answer.kind, CPlanConflict::Deleted);
  QVERIFY(answer.theirs.index_code.empty());
}

void EditorQuestionsTest::DeletedByAnotherClient() {
  QTemporaryDir folder;
  TarnTest::PlanFixtureOptions options;
  options.url = "sqlite:" + folder.filePath("plans.db");
  QString error;
  QVERIFY2(fixture_.Open(options, &error), qPrintable(error));
  TarnHost::PlanStoreOptions other_options;
  other_options.url = options.url;
  const auto other = TarnHost::CPlanStore::Open(other_options, &error);
  QVERIFY2(other && other->LogIn(options.user, &error), qPrintable(error));
  QTRY_VERIFY(other->IsViewResourceDownFinish());
  const auto question = QuestionOf(kPlan);
  DeletePlanResquest plan;
  plan.plan_index_code = question.plan_code;
  DeletePlanResponse response;
  QVERIFY(other->DeletePlan(plan, response));
  QCOMPARE(Ask(question).kind, CPlanConflict::Deleted);  // although our own list may still have it
  other->Close();
}

void EditorQuestionsTest::OtherFailures_data() {
  QTest::addColumn<QStringList>("failing");
  QTest::addColumn<bool>("fetched");
  QTest::newRow("the save alone") << QStringList{} << true;
  QTest::newRow("the plan as well") << QStringList{"GetPlanDetail"} << false;
  QTest::newRow("all but the groups") << QStringList{"GetPlanDetail", "GetPlansInGroup"} << false;
  QTest::newRow("everything") << QStringList{"GetPlanDetail", "GetPlansInGroup", "GetPlanGroups"} << false;
}

void EditorQuestionsTest::OtherFailures() {
  QFETCH(QStringList, failing);
  QFETCH(bool, fetched);
  Open({}, false);
  const auto question = QuestionOf(kPlan);
  for (const QString& call : failing) {
    Services().Fail(call);
  }
  const Answer answer = Ask(question);
  QCOMPARE(answer.kind, CPlanConflict::OtherFailure);
  QCOMPARE(answer.theirs.index_code.empty(), !fetched);
}

void EditorQuestionsTest::MovedIsNotDeleted() {
  Open({}, false);
  const auto question = QuestionOf(kPlan);
  UpdatePlanRequest move;
  move.plan_index_code = question.plan_code;
  move.plan_name = kPlan;
  move.index_type = 1;
  move.parent_index_code = fixture_.Code("C1").toStdString();
  UpdatePlanResponse response;
  QVERIFY2(fixture_.Store().UpdatePlan(move, response), response.error_info.c_str());
  Services().Fail("GetPlanDetail");
  QCOMPARE(Ask(question).kind, CPlanConflict::OtherFailure);
}

void EditorQuestionsTest::OnlyTheLastQuestionIsAnswered() {
  Open({}, false);
  auto conflict = std::make_unique<CPlanConflict>();
  QSignalSpy found(conflict.get(), &CPlanConflict::SignalFound);
  const auto question = QuestionOf(kPlan);
  Services().Hold("GetPlanDetail", TarnTest::CRecordingServices::AfterCall);
  conflict->FindOut(question);
  auto second = question;
  second.reason = "second";
  conflict->FindOut(second);
  QVERIFY(Services().WaitUntilHeld("GetPlanDetail", 2));
  Services().ReleaseAll();
  CPlanFixture::Drain();
  QCOMPARE(found.size(), 1);
  QCOMPARE(found[0][1].toString(), QString("second"));

  Services().Hold("GetPlanDetail");
  conflict->FindOut(question);
  QVERIFY(Services().WaitUntilHeld("GetPlanDetail"));
  conflict.reset();
  Services().ReleaseAll();
  CPlanFixture::Drain();
  QCOMPARE(found.size(), 1);
}

void EditorQuestionsTest::AbilitiesAreFetchedOnce() {
  Open({}, false);
  const GetPlanDetailResponse detail = Stored(kPlan);
  const QString camera = QString::fromStdString(detail.pages.front().windows.front().resource_code);
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

void EditorQuestionsTest::FailuresAreAskedAgain() {
  Open({}, false);
  CCameraAbilities abilities;
  QSignalSpy streams_failed(&abilities, &CCameraAbilities::SignalStreamsFailed);
  QSignalSpy presets_failed(&abilities, &CCameraAbilities::SignalPresetsFailed);
  abilities.Ask("no such camera");
  QTRY_VERIFY(streams_failed.size() == 1 && presets_failed.size() == 1);
  QVERIFY(!streams_failed[0][1].toString().isEmpty());
  QVERIFY(!abilities.Streams("no such camera") && !abilities.Presets("no such camera"));
  Services().Fail("GetPresets", "not now");
  abilities.Ask("no such camera");
  QTRY_VERIFY(streams_failed.size() == 2 && presets_failed.size() == 2);
  QCOMPARE(presets_failed[1][1].toString(), QString("not now"));
}

QTEST_MAIN(EditorQuestionsTest)
#include "test_editor_questions.moc"
