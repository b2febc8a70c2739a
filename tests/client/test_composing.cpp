#include <QDir>
#include <QMenu>
#include <QMimeData>
#include <QPointer>
#include <QTemporaryDir>
#include <QThreadPool>
#include <QToolButton>
#include <QtTest>
#include <array>

#include "MarUIControl/nomal_message.h"
#include "MarUIControl/split_type_data.h"
#include "TarnUIDataController/skin_loader.h"
#include "composing/composer.h"
#include "composing/snapshot.h"
#include "hand_pictures.h"
#include "plan_records.h"
#include "wall/drag_payload.h"
#include "wall/live_wall.h"
#include "wall/wall_bar.h"
#include "wall/wall_window.h"
#include "wall/window_grid.h"

using namespace TarnClient;
using TarnTest::CHandSupply;
using view_plugin_protocol::GetPlanDetailResponse;
using view_plugin_protocol::PlanPage;

Q_DECLARE_METATYPE(TarnClient::WallCommand)
Q_DECLARE_METATYPE(TarnClient::WallSituation)

namespace {

GetPlanDetailResponse PlanOf(const std::list<PlanPage>& pages) {
  GetPlanDetailResponse plan;
  plan.index_code = plan.name = "Gate";
  plan.pages = pages;
  return plan;
}

PlanPage PageOf(int number, int split, const QStringList& cameras) {
  PlanPage page = TarnTest::Page(number, split, {}, {}, 60);
  for (int i = 0; i < cameras.size(); ++i) {
    if (!cameras[i].isEmpty()) {
      page.windows.push_back(TarnTest::Window(i + 1, cameras[i].toStdString()));
    }
  }
  return page;
}

}  // namespace

class ComposingTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init();
  void SaysWhyNot_data();
  void SaysWhyNot();
  void PutsCamerasWhereTheUserLooks();
  void FillsAnEmptyWall();
  void SaysWhenThePageIsFull();
  void AChangeHoldsThePageAndShows();
  void ThePageStaysWhileItsWindowIsWorkedAt();
  void ADragIsForThePageThatItWasBegunOn();
  void KeysWorkOnTheCurrentWindow();
  void ArrowsGoFromWindowToWindow();
  void EnlargesAndComesBack();
  void ZoomsByWheelAndDrag();
  void KeepsSnapshots();
  void SaysOnceThatAFolderTakesNone_data();
  void SaysOnceThatAFolderTakesNone();
  void NamesOfSnapshots();
  void SnapshotsOfOneSecondAreAllKept();

 private:
  CWindowGrid* Grid() { return wall_->Grid(); }
  QString Cameras() {
    QStringList cameras;
    for (const CWallWindow* window : Grid()->Windows()) {
      if (window->Number() <= Grid()->Count()) {
        cameras << QString::fromStdString(window->Content().resource_code);
      }
    }
    return cameras.join(',');
  }
  void Key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
  }
  QString LastMessage() { return messages_->isEmpty() ? QString() : messages_->last().first().toString(); }

  std::shared_ptr<CHandSupply> supply_;
  std::unique_ptr<CLiveWall> wall_;
  std::unique_ptr<CComposer> composer_;
  std::unique_ptr<QSignalSpy> messages_;
  QString folder_;
};

void ComposingTest::init() {
  tarn_ui_data_controller::CSkinLoader::Instance().LoadSkin("redblack");
  composer_.reset();
  supply_ = std::make_shared<CHandSupply>();
  wall_ = std::make_unique<CLiveWall>(supply_);
  CComposer::Setup setup{[] { return false; }, [this] { return folder_; }};
  composer_ = std::make_unique<CComposer>(wall_.get(), setup, nullptr);
  wall_->Bar()->SetSplitActions(composer_->Commands().Splits());
  messages_ = std::make_unique<QSignalSpy>(composer_.get(), &CComposer::SignalMessage);
  wall_->resize(800, 640);
  wall_->show();
  QVERIFY(QTest::qWaitForWindowActive(wall_.get()));
}

void ComposingTest::SaysWhyNot_data() {
  QTest::addColumn<WallCommand>("command");
  QTest::addColumn<WallSituation>("situation");
  QTest::addColumn<QString>("why_not");
  WallSituation nothing, window, content, camera, zoomed, editing;
  window.has_window = true;
  content = window;
  content.has_content = true;
  camera = content;
  camera.has_camera = true;
  zoomed = camera;
  zoomed.is_zoomed = true;
  editing = zoomed;
  editing.is_editing = true;
  const auto row = [](const char* name, WallCommand command, const WallSituation& situation, const char* why_not) {
    QTest::newRow(name) << command << situation << QString(why_not);
  };
  row("split of nothing", WallCommand::Split9, nothing, "");
  row("split below the editor", WallCommand::Split9, editing, "the plan editor is open");
  row("no window", WallCommand::Snapshot, nothing, "no window is chosen");
  row("an empty window is enlarged", WallCommand::Enlarge, window, "");
  row("an empty window gets a camera", WallCommand::Replace, window, "");
  row("nothing to empty", WallCommand::Empty, window, "the window is empty");
  row("other content is emptied", WallCommand::Empty, content, "");
  row("other content has no picture", WallCommand::Snapshot, content, "the window has no camera");
  row("a snapshot", WallCommand::Snapshot, camera, "");
  row("closer", WallCommand::ZoomIn, camera, "");
  row("away from a whole picture", WallCommand::ZoomOut, camera, "the picture is whole");
  row("away", WallCommand::ZoomOut, zoomed, "");
  row("presets", WallCommand::Preset, camera, "");
  row("stream", WallCommand::SmallStream, window, "the window has no camera");
}

void ComposingTest::SaysWhyNot() {
  QFETCH(WallCommand, command);
  QFETCH(WallSituation, situation);
  QTEST(WhyNot(command, situation), "why_not");
}

void ComposingTest::PutsCamerasWhereTheUserLooks() {
  wall_->Play(PlanOf({PageOf(1, 2, {"a", "", "c", ""})}));
  composer_->Put({"x", "X"});
  QCOMPARE(Cameras(), QString("a,x,c,"));
  composer_->Put({"y", "Y"});
  QCOMPARE(Cameras(), QString("a,x,c,y"));
  composer_->Put({"z", "Z"});  // the last one was not chosen
  QVERIFY(Cameras() == "a,x,c,y" && LastMessage().contains("give way"));
  Grid()->Choose(3);
  composer_->Put({"z", "Z"});
  QCOMPARE(Cameras(), QString("a,x,z,y"));
  supply_->Started().clear();
  Q_EMIT wall_->SignalSwapWanted(1, 3);
  QCOMPARE(Cameras(), QString("z,x,a,y"));
  QCOMPARE(supply_->Started(), QStringList({"z", "a"}));
  Q_EMIT wall_->SignalCamerasDropped(2, {{"q", "Q"}, {"r", "R"}});
  QVERIFY(Cameras() == "z,q,a,y" && LastMessage().contains("give way"));
}

void ComposingTest::FillsAnEmptyWall() {
  const QSignalSpy left(wall_.get(), &CLiveWall::SignalLeft);
  composer_->Put({"a", "A"});
  QVERIFY(!wall_->IsPlaying() && wall_->IsShowing());
  QCOMPARE(Cameras(), QString("a,,,"));
  for (const char* code : {"b", "c", "d", "e"}) {
    composer_->Put({code, code});
  }
  QCOMPARE(Cameras(), QString("a,b,c,d,e,,,,"));
  QVERIFY(wall_->Arrangement().IsChanged());
  wall_->Stop();
  QCOMPARE(left.size(), 1);
  QVector<WallCamera> many;
  for (int i = 0; i < 20; ++i) {
    many.append({std::to_string(i), "camera"});
  }
  composer_->Fill(many);
  QCOMPARE(Grid()->Count(), 16);
  QVERIFY(Cameras().endsWith(",15") && LastMessage().startsWith("4 cameras"));
}

void ComposingTest::SaysWhenThePageIsFull() {
  wall_->Play(PlanOf({PageOf(1, 1, {"a"})}));
  composer_->Put({"x", "X"});
  QVERIFY(Cameras() == "a" && LastMessage().contains("give way") && !wall_->Arrangement().IsChanged());
  composer_->Run(WallCommand::Split4);
  composer_->Fill({{"x", "X"}, {"y", "Y"}});
  QCOMPARE(Cameras(), QString("a,x,y,"));
}

void ComposingTest::AChangeHoldsThePageAndShows() {
  const auto* mark = wall_->findChild<QWidget*>("wall_changed");
  wall_->Play(PlanOf({PageOf(1, 2, {"a"}), PageOf(2, 2, {"b"})}));
  QVERIFY(!mark->isVisible() && !wall_->IsHeld());
  composer_->Run(WallCommand::Split9);
  QVERIFY(mark->isVisible() && wall_->IsHeld() && Grid()->Count() == 9);
  QVERIFY(wall_->findChild<QToolButton*>("wall_split_9_btn")->isChecked());
  wall_->Turn(1);
  QVERIFY(wall_->findChild<QToolButton*>("wall_split_4_btn")->isChecked());
  QVERIFY(mark->isVisible());  // of the plan, whatever page is in sight
  wall_->Turn(1);
  QCOMPARE(Grid()->Count(), 9);
  composer_->Run(WallCommand::Split4);
  QVERIFY(!mark->isVisible());
  QSignalSpy left(wall_.get(), &CLiveWall::SignalLeft);
  composer_->Put({"x", "X"});
  wall_->Play(PlanOf({PageOf(1, 1, {"q"})}));
  QCOMPARE(left.size(), 1);
  const auto back = left.first().first().value<CArrangement>();
  wall_->Show(back, left.first().last().value<WallPlace>());
  QCOMPARE(Cameras(), QString("a,x,,"));
  QVERIFY(wall_->IsHeld());  // as it was left
}

void ComposingTest::ThePageStaysWhileItsWindowIsWorkedAt() {
  wall_->Play(PlanOf({PageOf(1, 2, {"a", "b"}), PageOf(2, 2, {"c", "d"})}));
  const auto menu = [this] {
    Q_EMIT Grid()->SignalMenuWanted(1, Grid()->mapToGlobal(QPoint()));
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
  };
  Grid()->Choose(1);
  QPointer<QMenu> open = menu();
  QVERIFY(open && wall_->IsHeld() && !wall_->Place().is_held);
  open->close();
  QTRY_VERIFY(!wall_->IsHeld());
  open = menu();
  wall_->Turn(1);  // it was opened for another window
  QVERIFY(!open || !open->isVisible());
  QTRY_VERIFY(!wall_->IsHeld());

  wall_->activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(wall_.get()));
  composer_->Run(WallCommand::Replace);
  QVERIFY(wall_->IsHeld());
  Grid()->Choose(2);
  QVERIFY(!wall_->IsHeld());
  composer_->Run(WallCommand::Replace);
  composer_->Put({"x", "X"});
  QVERIFY(Cameras() == "c,x,," && wall_->Place().is_held);  // by what was changed
}

void ComposingTest::ADragIsForThePageThatItWasBegunOn() {
  wall_->AcceptDropsOf("here");
  wall_->Play(PlanOf({PageOf(1, 2, {"a", "b"}), PageOf(2, 2, {"c", "d"})}));
  const QSignalSpy held(wall_.get(), &CLiveWall::SignalHeld);
  Q_EMIT Grid()->SignalDragged(1);
  QVERIFY(held.size() == 1 && !wall_->IsHeld());

  const std::unique_ptr<QMimeData> load(MakeWindowDrag({Grid(), 1}, {"a", "A"}, "here"));
  const QPoint to = Grid()->WindowAt(2)->mapTo(wall_.get(), QPoint(9, 9));
  const auto drag_over = [&](bool turns) {
    QDragEnterEvent enter(to, Qt::CopyAction, load.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(wall_.get(), &enter);
    QVERIFY(enter.isAccepted() && wall_->IsHeld());
    wall_->Turn(turns ? 1 : 0);
    QDropEvent drop(to, Qt::CopyAction, load.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(wall_.get(), &drop);
  };
  drag_over(true);
  QVERIFY(Cameras() == "c,d,," && !wall_->IsHeld() && !wall_->Arrangement().IsChanged());
  wall_->Turn(1);
  drag_over(false);
  QCOMPARE(Cameras(), QString("b,a,,"));
}

void ComposingTest::KeysWorkOnTheCurrentWindow() {
  wall_->Play(PlanOf({PageOf(1, 2, {"a", "b", "", ""})}));
  wall_->setFocus();
  Key(Qt::Key_3, Qt::ControlModifier);
  QCOMPARE(Grid()->Count(), 9);
  Grid()->Choose(2);
  Key(Qt::Key_T);
  QCOMPARE(wall_->Arrangement().At(0, 2)->stream_type, 1);
  const QSignalSpy wanted(composer_.get(), &CComposer::SignalCameraWanted);
  Key(Qt::Key_R);
  QCOMPARE(wanted.size(), 1);
  Key(Qt::Key_Right, Qt::ControlModifier);
  QCOMPARE(Cameras(), QString("a,,b,,,,,,"));
  QCOMPARE(Grid()->CurrentWindow(), 3);
  Key(Qt::Key_Delete);
  QCOMPARE(Cameras(), QString("a,,,,,,,,"));
  Key(Qt::Key_S);
  QVERIFY(LastMessage().contains("no camera"));
}

// Left and Right turn pages as ever, until a window is chosen; the page keys always do.
void ComposingTest::ArrowsGoFromWindowToWindow() {
  wall_->Play(PlanOf({PageOf(1, 2, {"a", "b", "c", "d"}), PageOf(2, 1, {"e"})}));
  wall_->setFocus();
  Key(Qt::Key_Right);
  QCOMPARE(wall_->PageNumber(), 2);
  Key(Qt::Key_Right);
  Key(Qt::Key_Tab);
  while (!Grid()->isAncestorOf(QApplication::focusWidget())) {
    Key(Qt::Key_Tab);
  }
  QCOMPARE(Grid()->CurrentWindow(), 1);
  Key(Qt::Key_Down);
  Key(Qt::Key_Right);
  Key(Qt::Key_Right);
  QCOMPARE(Grid()->CurrentWindow(), 4);
  QVERIFY(Grid()->WindowAt(4)->hasFocus() && wall_->PageNumber() == 1);
  Key(Qt::Key_PageDown);
  QCOMPARE(wall_->PageNumber(), 2);
  QVERIFY(Grid()->isAncestorOf(QApplication::focusWidget()));
  Key(Qt::Key_Left);  // there is but one window
  QCOMPARE(wall_->PageNumber(), 1);
}

void ComposingTest::EnlargesAndComesBack() {
  wall_->Play(PlanOf({PageOf(1, 2, {"a", "b", "c", "d"}), PageOf(2, 1, {"e"})}));
  supply_->Started().clear();
  QTest::mouseDClick(Grid()->WindowAt(2), Qt::LeftButton);
  QCOMPARE(Grid()->EnlargedWindow(), 2);
  QVERIFY(Grid()->WindowAt(2)->isVisible() && !Grid()->WindowAt(1)->isVisible());
  QVERIFY(wall_->IsHeld());
  Grid()->Choose(2);
  Key(Qt::Key_Down);
  QCOMPARE(Grid()->EnlargedWindow(), 4);
  const QSignalSpy stops(wall_.get(), &CLiveWall::SignalStopWanted);
  Key(Qt::Key_Escape);
  QVERIFY(Grid()->EnlargedWindow() == 0 && stops.isEmpty() && !wall_->IsHeld());
  Key(Qt::Key_Return);
  Key(Qt::Key_Space);
  QVERIFY(!wall_->IsHeld());
  Key(Qt::Key_Space);  // now it is the user's own word
  Key(Qt::Key_Return);
  QVERIFY(wall_->IsHeld());
  Key(Qt::Key_Space);
  supply_->SetLive("a", Qt::red);
  supply_->SetLive("b", Qt::red);
  for (const int window_no : {1, 2}) {
    Grid()->WindowAt(window_no)->grab();
    Grid()->WindowAt(window_no)->Zoom(2);
  }
  Grid()->WindowAt(2)->ResetZoom();
  QVERIFY(wall_->IsHeld() && Grid()->WindowAt(1)->IsZoomed());
  Grid()->WindowAt(1)->ResetZoom();
  QVERIFY(!wall_->IsHeld());
  Key(Qt::Key_Return);
  QCOMPARE(Grid()->EnlargedWindow(), 4);
  Key(Qt::Key_Return);
  QCOMPARE(Grid()->EnlargedWindow(), 0);
  QVERIFY(Grid()->WindowAt(4)->hasFocus());
  Key(Qt::Key_Escape);
  QCOMPARE(stops.size(), 1);
  QVERIFY(supply_->Started().isEmpty());
}

void ComposingTest::ZoomsByWheelAndDrag() {
  supply_->SetLive("a", Qt::red);
  wall_->Play(PlanOf({PageOf(1, 1, {"a"})}));
  CWallWindow* window = Grid()->WindowAt(1);
  window->grab();
  const QPoint middle = window->rect().center();
  QWheelEvent wheel(middle, window->mapToGlobal(middle), QPoint(), QPoint(0, 240), Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(window, &wheel);
  QVERIFY(window->IsZoomed());
  QSignalSpy dragged(window, &CWallWindow::SignalDragged);
  QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, middle);
  QTest::mouseMove(window, middle + QPoint(90, 40));
  QTest::mouseRelease(window, Qt::LeftButton);
  QVERIFY(dragged.isEmpty());
  window->setFocus();
  Key(Qt::Key_Escape);
  QVERIFY(!window->IsZoomed());
  Key(Qt::Key_Plus);
  QVERIFY(window->IsZoomed());
  QTest::mouseDClick(window, Qt::LeftButton);
  QVERIFY(!window->IsZoomed() && Grid()->EnlargedWindow() == 0);
}

void ComposingTest::KeepsSnapshots() {
  const QTemporaryDir folder;
  folder_ = folder.filePath("made/when/needed");
  supply_->SetLive("a", QColor(10, 200, 30));
  supply_->Camera("a").status.taken = QDateTime(QDate(2026, 3, 2), QTime(14, 3, 7));
  supply_->Camera("a").status.size = QSize(32, 24);
  wall_->Play(PlanOf({PageOf(1, 1, {"a"})}));
  Grid()->Choose(1);
  for (int count = 1; count <= 2; ++count) {
    Key(Qt::Key_S);
    QTRY_COMPARE(messages_->size(), count);
    QCOMPARE(messages_->last().last().toInt(), static_cast<int>(MarUIControl::CNomalMessage::Success));
  }
  const QStringList files = QDir(folder_).entryList(QDir::Files);
  QCOMPARE(files, QStringList({"name of a 2026-03-02 14-03-07 (2).png", "name of a 2026-03-02 14-03-07.png"}));
  QVERIFY(LastMessage().contains(QDir::toNativeSeparators(folder_)));
  const QImage kept(QDir(folder_).filePath(files.last()));
  QVERIFY(kept.size() == QSize(32, 24) && kept.pixelColor(5, 5) == QColor(10, 200, 30));
}

void ComposingTest::SaysOnceThatAFolderTakesNone_data() {
  QTest::addColumn<QString>("folder");
  QTest::newRow("full") << "/dev/full/snapshots";
  QTest::newRow("read-only") << "/proc";
  QTest::newRow("a file") << QDir::temp().filePath(QCoreApplication::applicationName() + ".file");
}

void ComposingTest::SaysOnceThatAFolderTakesNone() {
  QFETCH(QString, folder);
  if (QTest::currentDataTag() == QByteArray("a file")) {
    QFile file(folder);
    QVERIFY(file.open(QIODevice::WriteOnly));
  }
  folder_ = folder;
  supply_->SetLive("a", Qt::red);
  wall_->Play(PlanOf({PageOf(1, 1, {"a"})}));
  Grid()->Choose(1);
  Key(Qt::Key_S);
  QTRY_COMPARE(messages_->size(), 1);
  QVERIFY2(LastMessage().contains(QDir::toNativeSeparators(folder)), qPrintable(LastMessage()));
  QCOMPARE(messages_->last().last().toInt(), static_cast<int>(MarUIControl::CNomalMessage::Failure));
  QFile::remove(folder);
}

void ComposingTest::NamesOfSnapshots() {
  const QDateTime taken(QDate(2026, 3, 2), QTime(4, 3, 7));
  QCOMPARE(SnapshotName("CAM 1 A/B: \"x\"\n", taken), QString("CAM 1 A_B_ _x__ 2026-03-02 04-03-07.png"));
  QVERIFY(SnapshotName("../../etc", taken).startsWith("_.."));
  for (const QString& letter : {QString("W"), QString::fromUtf8("\u9580"), QString::fromUtf8("\U0001F4F7")}) {
    const QString name = SnapshotName(letter.repeated(300), taken);
    QVERIFY(name.toUtf8().size() < 240 && name.startsWith(letter.repeated(40)) && name.endsWith("04-03-07.png"));
    QCOMPARE(QString::fromUtf8(name.toUtf8()), name);
  }
}

void ComposingTest::SnapshotsOfOneSecondAreAllKept() {
  const QTemporaryDir folder;
  QImage picture(32, 24, QImage::Format_RGB32);
  picture.fill(Qt::red);
  std::array<SnapshotResult, 8> kept;
  QThreadPool pool;
  pool.setMaxThreadCount(4);
  for (SnapshotResult& result : kept) {
    pool.start([&] { result = WriteSnapshot(picture, folder.path(), "CAM 1.png"); });
  }
  pool.waitForDone();
  QSet<QString> paths;
  for (const SnapshotResult& result : kept) {
    QVERIFY2(result.error.isEmpty(), qPrintable(result.error));
    paths << result.path;
  }
  QCOMPARE(paths.size(), 8);
  QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 8);
}

QTEST_MAIN(ComposingTest)
#include "test_composing.moc"
