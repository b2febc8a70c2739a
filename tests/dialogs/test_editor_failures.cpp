#include <QLineEdit>

#include "TarnUIDataController/nomal_message_manager.h"
#include "editor_stage.h"

using namespace TarnPlanView;
using tarn_ui_data_controller::CNomalMessageManager;
using TarnTest::CEditorStage;

/// Every call that the editor makes fails once while it holds changes: the user is told once, and nothing is lost.
class EditorFailuresTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void OneMessageAndNothingLost_data();
  void OneMessageAndNothingLost();
};

void EditorFailuresTest::OneMessageAndNothingLost_data() {
  QTest::addColumn<bool>("new_plan");
  QTest::addColumn<QStringList>("calls");
  QTest::addColumn<QString>("way");
  const auto row = [](const char* name, bool new_plan, const QStringList& calls, const char* way) {
    QTest::newRow(name) << new_plan << calls << QString(way);
  };
  row("add", true, {"AddPlan"}, "save");
  row("update", false, {"UpdatePlan"}, "save");
  row("update, and the plan", false, {"UpdatePlan", "GetPlanDetail"}, "save");
  row("update, and the group", false, {"UpdatePlan", "GetPlanDetail", "GetPlansInGroup"}, "save");
  row("everything about plans", false, {"UpdatePlan", "GetPlanDetail", "GetPlansInGroup", "GetPlanGroups"}, "save");
  row("cameras", false, {"GetCameraTree"}, "reload");
  row("favorites", false, {"GetFavoriteCameras"}, "reload");
  row("streams", false, {"GetStreamAbility"}, "look");
  row("presets", false, {"GetPresets"}, "look");
  row("streams and presets", false, {"GetStreamAbility", "GetPresets"}, "look");
}

void EditorFailuresTest::OneMessageAndNothingLost() {
  QFETCH(bool, new_plan);
  QFETCH(QStringList, calls);
  QFETCH(QString, way);
  Open({{"load_all", 1}});
  CEditorStage stage(fixture_);
  if (new_plan) {
    stage.OpenNew(fixture_.Code("Public A"));
  } else {
    stage.Open(fixture_.Code("Public A plan 2"));
  }
  auto* name = stage.Find<QLineEdit>("plan_name_edit");
  name->setText("Changed");
  stage.Grid().SetCurrentWindow(1);
  const auto& tree = stage.Cameras();
  const auto camera = tree.CamerasBelow(tree.model()->index(0, 0)).value(0);
  stage.Click("split_4_btn");
  stage.Grid().SetCurrentWindow(4);
  const QStringList windows = stage.Windows();

  QSignalSpy by_controller(stage.controller.get(), &CStandardViewController::signalShowMessage);
  QSignalSpy by_host(&CNomalMessageManager::Instance(), &CNomalMessageManager::SignalMessageShown);
  const auto told = [&] { return stage.tips.size() + by_controller.size() + by_host.size(); };
  for (const QString& call : calls) {
    Services().Fail(call, "not now");
  }
  Services().ForgetCalls();
  if (way == "save") {
    stage.Click("save_plan_btn");
  } else if (way == "reload") {
    QTest::keyClick(&stage.Cameras(), Qt::Key_F5);
  } else {
    stage.Grid().PutCameras(4, {{QString::fromStdString(camera.index_code), "Gate camera"}});
  }
  for (const QString& call : calls) {
    const bool comes_to_it = call != "GetPlanGroups";  // asked for only after a list of plans
    QTRY_VERIFY2(!comes_to_it || Services().Count(call) > 0, qPrintable(call));
  }
  const int messages = calls.contains("GetFavoriteCameras") ? 0 : 1;  // without them there are no stars
  QTRY_COMPARE(told(), messages);
  TarnTest::CPlanFixture::Drain();
  QCOMPARE(told(), messages);
  QCOMPARE(stage.closed, 0);
  QVERIFY(stage.editor->IsDirty());
  QTRY_VERIFY(name->isEnabled() && stage.Grid().isEnabled());
  QCOMPARE(name->text(), QString("Changed"));
  QCOMPARE(stage.Windows().mid(0, 3), windows.mid(0, 3));
  QCOMPARE(tree.FindCamera(camera.index_code).name, camera.name);

  for (const QString& call : calls) {
    Services().Mend(call);
  }
  QVERIFY(!stage.IsConflictShown());  // nobody has changed or deleted it
  stage.Click("save_plan_btn");
  QTRY_COMPARE(stage.closed, 1);
  QVERIFY(!fixture_.Code("Changed").isEmpty());
}

QTEST_MAIN(EditorFailuresTest)
#include "test_editor_failures.moc"
