#include <QComboBox>
#include <QHelpEvent>
#include <QLineEdit>
#include <QSpinBox>
#include <QTextDocument>
#include <QTimeEdit>
#include <QTimer>
#include <QToolTip>
#include <atomic>

#include "MarUIControl/range_time_edit.h"
#include "MarUIControl/switch_control.h"
#include "editor_stage.h"
#include "group_chooser.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using ResourceTreeKit::CCameraItemInfo;
using TarnTest::CEditorStage;

namespace {

/// A site whose last camera may go, and whose first may fall silent, while somebody looks at it.
class CShrinkingSite : public TarnTest::CRecordingServices {
 public:
  using CRecordingServices::CRecordingServices;
  bool GetCameraTree(std::vector<ResourceTreeKit::CRegionItemInfo>& regions, std::vector<CCameraItemInfo>& cameras,
                     std::string*) override {
    regions = {{"1", "Yard", ""}};
    cameras = {{"101", "Gate A & B", "1", true}, {"102", "<b>x", "1", true}, {"103", "Door", "1", true}};
    cameras.front().online = !silent;
    cameras.resize(shrunk ? 2 : 3);
    return true;
  }
  std::atomic<bool> shrunk{false}, silent{false};
};

PlanWindow Camera(int window_no, const std::string& code) {
  return {window_no, 1, code, code, 0, 0};
}

QString TipOver(CWindowGrid& grid, int window_no) {
  const QPoint at = grid.WindowRect(window_no).center();
  QHelpEvent help(QEvent::ToolTip, at, grid.mapToGlobal(at));
  QApplication::sendEvent(&grid, &help);
  QTextDocument shown;
  const QString tip = QToolTip::text();
  Qt::mightBeRichText(tip) ? shown.setHtml(tip) : shown.setPlainText(tip);
  return shown.toPlainText();
}

}  // namespace

/// Windows, pages and cameras of the editor under the operator's hands, and what the site does meanwhile.
class EditorWindowsTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void ANumberBeingTypedBelongsToItsPage();
  void GoesOnToTheNextEmptyWindow();
  void SwapsAnyTwoWindowsByKeys();
  void PagesByKeys();
  void ClearingKeepsFixedContent();
  void NamesInToolTipsAreNoMarkup();
  void SaysWhatItShows();
  void AGroupThatHasGoneStaysGone();
  void NoticesThatACameraHasGone();
  void ShowsWhichCamerasAreOffline();
  void AsksAnewAtEachShow();
  void AsksOnlyOfCamerasThatStay();

 private:
  // Opens a plan of one page with these windows.
  void Show(CEditorStage& stage, const std::list<PlanWindow>& windows) {
    AddPlanRequest request;
    request.plan_name = "Shown";
    request.parent_index_code = fixture_.Code("Public A").toStdString();
    request.pages.emplace_back();
    request.pages.front().page_no = 1;
    request.pages.front().split_type = 2;
    request.pages.front().dwell_seconds = 10;
    request.pages.front().windows = windows;
    AddPlanResponse response;
    QVERIFY(fixture_.Store().AddPlan(request, response));
    stage.Open(QString::fromStdString(response.index_code));
  }
  std::shared_ptr<CShrinkingSite> Shrinking() {
    auto site = std::make_shared<CShrinkingSite>(TarnHost::InstalledHostServices());
    TarnHost::InstallHostServices(site);
    return site;
  }
};

void EditorWindowsTest::ANumberBeingTypedBelongsToItsPage() {
  Open({{"load_all", 1}});
  CEditorStage stage(fixture_);
  stage.OpenNew(fixture_.Code("Public A"));
  auto* dwell = stage.Find<QSpinBox>("dwell_spin");
  const auto type = [dwell](const char* digits) {
    dwell->setFocus();
    dwell->selectAll();
    QTest::keyClicks(dwell, digits);
  };
  const int at_first = dwell->value();
  type("77");
  QTest::keyClick(dwell, Qt::Key_Z, Qt::ControlModifier);
  QCOMPARE(dwell->value(), at_first);
  QVERIFY(!stage.editor->IsDirty());
  QTest::keyClick(dwell, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  QCOMPARE(dwell->value(), 77);

  type("55");
  QTest::keyClick(dwell, Qt::Key_3, Qt::ControlModifier);
  QCOMPARE(stage.Windows().size(), 9);
  QTest::keyClick(dwell, Qt::Key_Z, Qt::ControlModifier);
  QCOMPARE(stage.Windows().size(), 4);
  QCOMPARE(dwell->value(), 55);

  stage.Find<QPushButton>("add_page_btn")->click();  // as a reader for the blind does, without the focus
  QCOMPARE(dwell->value(), 55);
  type("66");
  stage.Pages().setCurrentIndex(stage.Pages().model()->index(0, 0));
  QCOMPARE(dwell->value(), 55);
  QCOMPARE(stage.Pages().currentIndex().row(), 0);
  type("44");
  stage.Find<QPushButton>("duplicate_page_btn")->click();
  QCOMPARE(dwell->value(), 44);
  stage.Pages().setCurrentIndex(stage.Pages().model()->index(2, 0));
  QCOMPARE(dwell->value(), 66);
}

void EditorWindowsTest::GoesOnToTheNextEmptyWindow() {
  Open({{"load_all", 1}});
  Shrinking();
  CEditorStage stage(fixture_);
  Show(stage, {Camera(2, "101"), Camera(4, "101")});
  auto& tree = stage.Cameras();
  const auto put = [&tree](int row) {
    tree.setCurrentIndex(tree.model()->index(row, 0, tree.model()->index(0, 0)));
    QTest::keyClick(&tree, Qt::Key_Return);
  };
  put(0);
  QCOMPARE(stage.Grid().CurrentWindow(), 3);
  stage.Grid().SetCurrentWindow(4);  // chosen by hand: replaced
  put(1);
  QCOMPARE(stage.Grid().CurrentWindow(), 3);
  put(1);
  QCOMPARE(stage.Grid().CurrentWindow(), 3);  // all are filled
  put(2);
  QCOMPARE(stage.Grid().CurrentWindow(), 3);
  const QStringList full = stage.Windows();
  QCOMPARE(full.filter("empty"), QStringList());
  QCOMPARE(full[3], tree.model()->index(1, 0, tree.model()->index(0, 0)).data().toString());
  QCOMPARE(full[1], QString("Gate A & B"));

  stage.Grid().SetCurrentWindow(2);
  QTest::keyClick(&stage.Grid(), Qt::Key_Delete);
  stage.Grid().SetCurrentWindow(3);
  tree.setCurrentIndex(tree.model()->index(0, 0));
  QTest::keyClick(&tree, Qt::Key_Return, Qt::ControlModifier);  // windows 3 and 4 are filled and stay
  QCOMPARE(stage.Windows(), QStringList({full[0], "empty", full[2], full[3]}));
  QCOMPARE(stage.Grid().CurrentWindow(), 2);
  QCOMPARE(stage.TakeTips(), QStringList({"Cameras placed: 3 of 3. Pages used: 1, new: 1."}));
  QTest::keyClick(&tree, Qt::Key_Return, Qt::ControlModifier);
  QCOMPARE(stage.TakeTips(), QStringList({"Cameras placed: 3 of 3. Pages used: 3, new: 1."}));
  QVERIFY(stage.Grid().accessibleName().contains(full[0]));  // still on the first page
}

void EditorWindowsTest::SwapsAnyTwoWindowsByKeys() {
  Open({{"load_all", 1}});
  Shrinking();
  CEditorStage stage(fixture_);
  Show(stage, {Camera(1, "101"), Camera(4, "103")});
  auto& grid = stage.Grid();
  grid.setFocus();
  QTest::keyClick(&grid, Qt::Key_V, Qt::ControlModifier);
  QVERIFY(!stage.editor->IsDirty());
  QTest::keyClick(&grid, Qt::Key_X, Qt::ControlModifier);
  QTest::keyClick(&grid, Qt::Key_End);
  QVERIFY(grid.accessibleDescription().contains("Window 1 is marked"));
  QTest::keyClick(&grid, Qt::Key_V, Qt::ControlModifier);
  QCOMPARE(stage.Windows(), QStringList({"Door", "empty", "empty", "Gate A & B"}));
  QCOMPARE(grid.CurrentWindow(), 4);
  QVERIFY(!grid.accessibleDescription().contains("marked"));
  QTest::keyClick(&grid, Qt::Key_Z, Qt::ControlModifier);
  QVERIFY(!stage.editor->IsDirty());

  QTest::keyClick(&grid, Qt::Key_X, Qt::ControlModifier);
  QTest::keyClick(&grid, Qt::Key_Escape);  // takes the mark back, not the editor
  QCOMPARE(stage.closed, 0);
  QTest::keyClick(&grid, Qt::Key_Home);
  QTest::keyClick(&grid, Qt::Key_V, Qt::ControlModifier);
  QVERIFY(!stage.editor->IsDirty());

  QTest::keyClick(&grid, Qt::Key_X, Qt::ControlModifier);
  stage.Click("duplicate_page_btn");  // a mark is one of its page
  QTest::keyClick(&grid, Qt::Key_X, Qt::ControlModifier);
  QTest::keyClick(&grid, Qt::Key_PageUp);
  QTest::keyClick(&grid, Qt::Key_End);
  QTest::keyClick(&grid, Qt::Key_V, Qt::ControlModifier);
  QCOMPARE(stage.Windows(), QStringList({"Gate A & B", "empty", "empty", "Door"}));
}

void EditorWindowsTest::PagesByKeys() {
  Open({{"load_all", 1}});
  CEditorStage stage(fixture_);
  stage.OpenNew(fixture_.Code("Public A"));
  auto& pages = stage.Pages();
  QTest::keyClick(&pages, Qt::Key_Insert);
  QCOMPARE(pages.model()->rowCount(), 2);
  QCOMPARE(pages.currentIndex().row(), 1);
  QTest::keyClick(&pages, Qt::Key_Home);
  QTest::keyClick(&pages, Qt::Key_Insert);
  QCOMPARE(pages.currentIndex().row(), 1);
  QCOMPARE(pages.model()->rowCount(), 3);
  QTest::keyClick(&pages, Qt::Key_D, Qt::ControlModifier);
  QCOMPARE(pages.model()->rowCount(), 4);
  QTest::keyClick(&pages, Qt::Key_Delete);
  QCOMPARE(pages.model()->rowCount(), 3);
  QCOMPARE(pages.currentIndex().row(), 2);  // the page that came after it
}

void EditorWindowsTest::ClearingKeepsFixedContent() {
  Open({{"load_all", 1}, {"only_camera", 1}});
  CEditorStage stage(fixture_);
  PlanWindow map = Camera(2, "map 3");
  map.content_kind = 7;
  Show(stage, {Camera(1, "101"), map, Camera(4, "103")});
  stage.Click("clear_page_btn");
  QCOMPARE(stage.Windows(), QStringList({"empty", "Other content", "empty", "empty"}));
  QCOMPARE(stage.TakeTips().size(), 1);
  stage.Click("clear_page_btn");
  QCOMPARE(stage.TakeTips().size(), 1);
  QTest::keyClick(&stage.Grid(), Qt::Key_Z, Qt::ControlModifier);
  QVERIFY(!stage.editor->IsDirty());
  QCOMPARE(stage.Windows().filter("empty"), QStringList({"empty"}));
}

void EditorWindowsTest::NamesInToolTipsAreNoMarkup() {
  Open({{"load_all", 1}});
  Shrinking();
  CEditorStage stage(fixture_);
  Show(stage, {Camera(1, "101"), Camera(2, "102")});
  auto& grid = stage.Grid();
  QCOMPARE(TipOver(grid, 1).section('\n', 0, 0), QString("Gate A & B"));
  QCOMPARE(TipOver(grid, 2).section('\n', 0, 0), QString("<b>x"));
}

void EditorWindowsTest::SaysWhatItShows() {
  Open({{"load_all", 1}, {"timed_play", 1}});
  CEditorStage stage(fixture_);
  stage.OpenNew(fixture_.Code("Public A"));
  QCOMPARE(stage.Find<QWidget>("clear_page_btn")->accessibleName(), QString("Clear page"));
  auto* times = stage.Find<MarUIControl::CRangeTimeEdit>("auto_run_times");
  stage.Find<MarUIControl::CSwitchControl>("auto_run_switch")->click();
  times->SetBeginTime(QTime(22, 0));
  const QString note = stage.Text("over_midnight_note_");
  const auto edits = times->findChildren<QTimeEdit*>();
  for (const QTimeEdit* edit : edits) {
    QCOMPARE(edit->accessibleDescription(), note);
  }
  times->SetEndTime(QTime(23, 0));
  QCOMPARE(edits.first()->accessibleDescription(), QString());
}

void EditorWindowsTest::AGroupThatHasGoneStaysGone() {
  Open({{"load_all", 1}});
  CEditorStage stage(fixture_);
  stage.OpenNew(fixture_.Code("Public B"));
  auto* groups = stage.editor->findChild<CGroupChooser*>();
  stage.controller->DeletePlanGroupByIndex(fixture_.Public()->FindIndexByIndexCode(fixture_.Code("Public B"), true));
  QTRY_COMPARE(groups->CurrentText(), QString());
  stage.Find<QLineEdit>("plan_name_edit")->setText("Renamed since");
  QCOMPARE(groups->CurrentText(), QString());
  stage.Click("save_plan_btn");
  QCOMPARE(stage.TakeTips().size(), 1);
  QCOMPARE(Services().Count("AddPlan"), 0);
}

void EditorWindowsTest::NoticesThatACameraHasGone() {
  Open({{"load_all", 1}});
  const auto site = Shrinking();
  CEditorStage stage(fixture_);
  Show(stage, {Camera(1, "101"), Camera(2, "103")});
  QCOMPARE(stage.Windows()[1], QString("Door"));
  stage.Grid().SetCurrentWindow(2);
  site->shrunk = true;
  auto* watch = stage.Find<QTimer>("camera_watch");
  QVERIFY(watch->isActive());
  watch->setInterval(10);
  QTRY_COMPARE(stage.Windows()[1], QString("103 (not found)"));
  QVERIFY(stage.Text("window_title").endsWith("(not found)"));
  QCOMPARE(stage.Windows()[0], QString("Gate A & B"));
  stage.editor->hide();
  QVERIFY(!watch->isActive());
}

void EditorWindowsTest::ShowsWhichCamerasAreOffline() {
  Open({{"load_all", 1}});
  const auto site = Shrinking();
  CEditorStage stage(fixture_);
  PlanWindow on_substream = Camera(1, "101");
  on_substream.stream_type = 1;
  Show(stage, {on_substream, Camera(2, "103")});
  auto& grid = stage.Grid();
  const auto picture = [&grid] { return grid.grab(grid.WindowRect(1)).toImage(); };
  const QImage online = picture();
  const QString title = stage.Text("window_title");
  stage.Find<QTimer>("camera_watch")->setInterval(10);
  site->silent = true;
  QTRY_COMPARE(stage.Windows().mid(0, 2), QStringList({"Gate A & B, offline, Sub-stream", "Door"}));
  QVERIFY(TipOver(grid, 1).startsWith("Gate A & B, offline\n"));
  QCOMPARE(stage.Text("window_title"), title + ", offline");
  QVERIFY(picture() != online);
  site->silent = false;
  QTRY_COMPARE(stage.Windows()[0], QString("Gate A & B, Sub-stream"));
  QVERIFY(picture() == online);
}

void EditorWindowsTest::AsksAnewAtEachShow() {
  Open({{"load_all", 1}});
  CEditorStage stage(fixture_);
  const QString code = fixture_.Code("Public A plan 2");
  auto* presets = stage.Find<QComboBox>("preset_box");
  stage.Open(code);
  QTRY_COMPARE(presets->count(), 2);
  const int asked = Services().Count("GetPresets");
  stage.editor->hide();
  stage.editor->show();
  QCOMPARE(presets->count(), 2);  // what is known stays until there is an answer
  QTRY_COMPARE(Services().Count("GetPresets"), asked + 1);
  QTRY_COMPARE(Services().Count("GetStreamAbility"), asked + 1);
}

// A host that hangs on such questions holds up nothing else.
void EditorWindowsTest::AsksOnlyOfCamerasThatStay() {
  Open({{"load_all", 1}});
  Shrinking();
  CEditorStage stage(fixture_);
  Services().Hold("GetStreamAbility");
  Services().Hold("GetPresets");
  Show(stage, {Camera(2, "101"), Camera(3, "102"), Camera(4, "103")});
  QElapsedTimer rest;
  for (int window_no = 2; window_no <= 4; ++window_no) {  // passes over two of them, too fast for any timer
    rest.start();
    stage.Grid().SetCurrentWindow(window_no);
    QCoreApplication::sendPostedEvents();
  }
  QVERIFY(Services().WaitUntilHeld("GetStreamAbility"));
  QVERIFY(rest.elapsed() >= 150);
  QVERIFY(Services().WaitUntilHeld("GetPresets"));
  const int threads = QThreadPool::globalInstance()->maxThreadCount();
  QThreadPool::globalInstance()->setMaxThreadCount(1);
  stage.Find<QLineEdit>("plan_name_edit")->setText("Saved meanwhile");
  stage.Click("save_plan_btn");
  QTRY_COMPARE(stage.closed, 1);
  QThreadPool::globalInstance()->setMaxThreadCount(threads);
  const auto asked = Services().Requests<play_plugin_protocol::GetStreamAbiRequest>();
  QCOMPARE(asked.size(), size_t(1));
  QCOMPARE(asked.front().camera_index_code, std::string("103"));
}

QTEST_MAIN(EditorWindowsTest)
#include "test_editor_windows.moc"
