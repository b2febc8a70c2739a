#include "TarnUIDataController/nomal_message_manager.h"
#include "editor_stage.h"

using namespace TarnPlanView;
using tarn_ui_data_controller::CNomalMessageManager;
using TarnTest::CEditorStage;

/// Every call that the editor makes fails once while it holds changes: the user reads of it once, and nothing is lost.
class EditorFailuresTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void OneMessageAndNothingLost_data();
  void OneMessageAndNothingLost();
};

void EditorFailuresTest::OneMessageAndNothingLost_data() {
  QTest::addColumn<QStringList>("calls");
  QTest::addColumn<QString>("way");
  const auto row = [](const char* way, const QStringList& calls) {
    QTest::newRow(qPrintable(way + (" " + calls.join(", ")))) << calls << QString(way);
  };
  row("add", {"AddPlan"});
  row("save", {"UpdatePlan"});
  row("save", {"UpdatePlan", "GetPlanDetail"});
  row("reload", {"GetCameraTree"});
  row("reload", {"GetFavoriteCameras"});
  row("look", {"GetStreamAbility"});
  row("look", {"GetStreamAbility", "GetPresets"});
}

void EditorFailuresTest::OneMessageAndNothingLost() {
  QFETCH(QStringList, calls);
  QFETCH(QString, way);
  CEditorStage stage(Opened({{"load_all", 1}}));
  if (way == "add") {
    stage.OpenNew(fixture_.Code("Public A"));
  } else {
    stage.Open(fixture_.Code("Public A plan 2"));
  }
  stage.Name().setText("Changed");
  stage.Grid().SetCurrentWindow(1);
  const auto& tree = stage.Cameras();
  const auto camera = tree.CamerasBelow(tree.model()->index(0, 0)).value(0);
  stage.Click("split_4_btn");
  stage.Grid().SetCurrentWindow(4);
  const QStringList windows = stage.Windows();

  QSignalSpy by_controller(stage.controller.get(), &CStandardViewController::signalShowMessage);
  QSignalSpy by_host(&CNomalMessageManager::Instance(), &CNomalMessageManager::SignalMessageShown);
  const auto messages_shown = [&] { return stage.tips.size() + by_controller.size() + by_host.size(); };
  for (const QString& call : calls) {
    Services().Fail(call, "not now");
  }
  Services().ForgetCalls();
  if (way == "add" || way == "save") {
    stage.Save();
  } else if (way == "reload") {
    QTest::keyClick(&stage.Cameras(), Qt::Key_F5);
  } else {
    stage.Grid().PutCameras(4, {{QString::fromStdString(camera.index_code), "Gate camera"}});
  }
  for (const QString& call : calls) {
    QTRY_VERIFY2(Services().Count(call) > 0, qPrintable(call));
  }
  const int messages = calls.contains("GetFavoriteCameras") ? 0 : 1;  // without them there are no stars
  QTRY_COMPARE(messages_shown(), messages);
  TarnTest::CPlanFixture::Drain();
  QCOMPARE(messages_shown(), messages);
  QCOMPARE(stage.closed, 0);
  QVERIFY(stage.editor->IsDirty());
  QTRY_VERIFY(stage.Name().isEnabled() && stage.Grid().isEnabled());
  QCOMPARE(stage.Name().text(), QString("Changed"));
  QCOMPARE(stage.Windows().mid(0, 3), windows.mid(0, 3));
  QCOMPARE(tree.FindCamera(camera.index_code).name, camera.name);

  for (const QString& call : calls) {
    Services().Mend(call);
  }
  QVERIFY(!stage.IsConflictShown());  // it is neither changed nor deleted
  stage.Save();
  QTRY_COMPARE(stage.closed, 1);
  QVERIFY(!fixture_.Code("Changed").isEmpty());
}

QTEST_MAIN(EditorFailuresTest)
#include "test_editor_failures.moc"
