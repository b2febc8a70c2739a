#include "LyraPluginManager/error_kind.h"
#include "camera_abilities.h"
#include "plan_test.h"
#include "save_conflict.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;

/// What the editor asks the host beside its plan: about a refused save, and about cameras.
class EditorQuestionsTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void WhatARefusedSaveMeans();
  void AbilitiesAreFetchedOnce();
  void FailuresAreAskedAgain();
};

void EditorQuestionsTest::WhatARefusedSaveMeans() {
  for (const ErrorKind kind : {UnknownFailure, Gone, Changed}) {
    QVERIFY2(MayBeConflict(kind), qPrintable(QString::number(kind)));
  }
  for (const ErrorKind kind : {NotPermitted, Refused, TooLarge, Unavailable}) {
    QVERIFY2(!MayBeConflict(kind), qPrintable(QString::number(kind)));
  }
  const auto conflict = [](bool ok, int64_t revision, int32_t kind) {
    HostCalls::Result<GetPlanDetailResponse> now{ok, {}};
    now.response.revision = revision;
    now.response.error_kind = kind;
    return ConflictOf(now, 5);
  };
  QCOMPARE(conflict(true, 6, 0), SaveConflict::ChangedElsewhere);
  QCOMPARE(conflict(true, 5, 0), SaveConflict::None);
  QCOMPARE(conflict(false, 0, Gone), SaveConflict::Deleted);
  for (const ErrorKind kind : {UnknownFailure, Changed, NotPermitted, Refused, TooLarge, Unavailable}) {
    QCOMPARE(conflict(false, 0, kind), SaveConflict::None);
  }
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
