#include <QComboBox>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QSpinBox>
#include <QTextDocument>
#include <QThreadPool>
#include <QToolTip>
#include <atomic>

#include "editor_cameras.h"
#include "editor_stage.h"
#include "host_calls/call_pool.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using ResourceTreeKit::CCameraItemInfo;
using TarnTest::CEditorStage;
using TarnTest::Window;

namespace {

/// A site whose last camera may go, and whose first may fall silent, while it is looked at.
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
  void NoticesWhatBecomesOfCameras();
  void AsksOnlyOfCamerasThatStay();
  void MenuOfAWindow();
  void LooksAgainForCamerasThatFail();

 private:
  // Opens a plan of one page with these windows.
  void Show(CEditorStage& stage, const std::list<PlanWindow>& windows) {
    std::string code;
    const auto plan = TarnTest::NewPlan("Shown", fixture_.Code("Public A"), {TarnTest::Page(1, 2, windows)});
    QCOMPARE(fixture_.InStore().AddPlan(plan, &code), QString());
    stage.Open(QString::fromStdString(code));
  }
  // Opens over a site that shrinks.
  std::shared_ptr<CShrinkingSite> Shrinking() {
    Open({{"load_all", 1}});
    auto site = std::make_shared<CShrinkingSite>(TarnHost::InstalledHostServices());
    TarnHost::InstallHostServices(site);
    return site;
  }
};

void EditorWindowsTest::ANumberBeingTypedBelongsToItsPage() {
  CEditorStage stage(Opened({{"load_all", 1}}));
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
  type("88");
  QVERIFY(stage.editor->IsDirty());
  type("99");
  QTest::keyClick(dwell, Qt::Key_S, Qt::ControlModifier);
  QTRY_COMPARE(stage.closed, 1);
  QCOMPARE(Services().Requests<AddPlanRequest>().back().pages.back().dwell_seconds, 99);
}

void EditorWindowsTest::GoesOnToTheNextEmptyWindow() {
  Shrinking();
  CEditorStage stage(fixture_);
  Show(stage, {Window(2, "101"), Window(4, "101")});
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
  QCOMPARE(stage.TakeTips().filter("filled").size(), 1);
  const QStringList full = stage.Windows();
  QCOMPARE(full[2], full[3]);  // none that the user has not chosen is replaced
  QCOMPARE(full.filter("empty"), QStringList());
  QCOMPARE(full[3], tree.model()->index(1, 0, tree.model()->index(0, 0)).data().toString());
  QCOMPARE(full[1], QString("Gate A & B"));

  tree.setCurrentIndex(tree.model()->index(0, 0));
  QTest::keyClick(&tree, Qt::Key_Return, Qt::ControlModifier);  // its region finds room on a new page
  QCOMPARE(stage.TakeTips(), QStringList({"Cameras placed: 3 of 3. Pages used: 1, new: 1."}));
  QCOMPARE(stage.Windows(), full);  // still on the first page
}

void EditorWindowsTest::SwapsAnyTwoWindowsByKeys() {
  Shrinking();
  CEditorStage stage(fixture_);
  Show(stage, {Window(1, "101"), Window(4, "103")});
  auto& grid = stage.Grid();
  grid.setFocus();
  const auto press = [&grid](Qt::Key key) { QTest::keyClick(&grid, key); };
  const auto control = [&grid](Qt::Key key) { QTest::keyClick(&grid, key, Qt::ControlModifier); };
  control(Qt::Key_V);
  QVERIFY(!stage.editor->IsDirty());
  control(Qt::Key_X);
  press(Qt::Key_End);
  QVERIFY(grid.accessibleDescription().contains("Window 1 is marked"));
  control(Qt::Key_V);
  QCOMPARE(stage.Windows(), QStringList({"Door", "empty", "empty", "Gate A & B"}));
  QCOMPARE(grid.CurrentWindow(), 4);
  QVERIFY(!grid.accessibleDescription().contains("marked"));
  control(Qt::Key_Z);
  QVERIFY(!stage.editor->IsDirty());

  control(Qt::Key_X);
  press(Qt::Key_Escape);  // takes the mark back, not the editor
  QCOMPARE(stage.closed, 0);
  press(Qt::Key_Home);
  control(Qt::Key_V);
  QVERIFY(!stage.editor->IsDirty());

  control(Qt::Key_X);
  stage.Click("duplicate_page_btn");  // a mark is one of its page
  control(Qt::Key_X);
  press(Qt::Key_PageUp);
  press(Qt::Key_End);
  control(Qt::Key_V);
  QCOMPARE(stage.Windows(), QStringList({"Gate A & B", "empty", "empty", "Door"}));
}

void EditorWindowsTest::PagesByKeys() {
  CEditorStage stage(Opened({{"load_all", 1}}));
  stage.OpenNew(fixture_.Code("Public A"));
  auto& pages = stage.Pages();
  const auto after = [&pages](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(&pages, key, modifiers);
    return QString("%1 of %2").arg(pages.currentIndex().row() + 1).arg(pages.model()->rowCount());
  };
  QCOMPARE(after(Qt::Key_Insert), QString("2 of 2"));
  QCOMPARE(after(Qt::Key_Home), QString("1 of 2"));
  QCOMPARE(after(Qt::Key_Insert), QString("2 of 3"));
  QCOMPARE(after(Qt::Key_D, Qt::ControlModifier), QString("3 of 4"));
  QCOMPARE(after(Qt::Key_Delete), QString("3 of 3"));  // the page that came after it
}

void EditorWindowsTest::NoticesWhatBecomesOfCameras() {
  const auto site = Shrinking();
  CEditorStage stage(fixture_);
  stage.editor->findChild<CEditorCameras*>()->SetWatchInterval(10);
  Show(stage, {Window(1, "101", 1, 1), Window(2, "103"), Window(3, "102")});
  auto& grid = stage.Grid();
  const auto picture = [&grid] { return grid.grab(grid.WindowRect(1)).toImage(); };
  const QImage online = picture();
  QCOMPARE(stage.Windows().mid(0, 2), QStringList({"Gate A & B, Sub-stream", "Door"}));
  site->silent = true;
  QTRY_COMPARE(stage.Windows().mid(0, 2), QStringList({"Gate A & B, offline, Sub-stream", "Door"}));
  QVERIFY(TipOver(grid, 1).startsWith("Gate A & B, offline\n"));
  QVERIFY(TipOver(grid, 3).startsWith("<b>x\n"));  // no markup
  QVERIFY(stage.Text("window_title").endsWith(", offline"));
  QVERIFY(picture() != online);
  site->silent = false;
  QTRY_COMPARE(stage.Windows()[0], QString("Gate A & B, Sub-stream"));
  QVERIFY(picture() == online);
  grid.SetCurrentWindow(2);
  site->shrunk = true;
  QTRY_COMPARE(stage.Windows()[1], QString("name of 103 (not found)"));
  QVERIFY(stage.Text("window_title").endsWith("(not found)"));
}

// A host that hangs on such questions holds up nothing else.
void EditorWindowsTest::AsksOnlyOfCamerasThatStay() {
  Shrinking();
  CEditorStage stage(fixture_);
  Services().Hold("GetStreamAbility");
  Services().Hold("GetPresets");
  Show(stage, {Window(2, "101"), Window(3, "102"), Window(4, "103")});
  for (int window_no = 2; window_no <= 4; ++window_no) {  // passes over two of them, too fast for any timer
    stage.Grid().SetCurrentWindow(window_no);
    QCoreApplication::sendPostedEvents();
  }
  QVERIFY(Services().WaitUntilHeld("GetStreamAbility"));
  QVERIFY(Services().WaitUntilHeld("GetPresets"));
  const int threads = HostCalls::CallPool().maxThreadCount();
  HostCalls::CallPool().setMaxThreadCount(1);
  stage.Name().setText("Saved meanwhile");
  stage.Save();
  QTRY_COMPARE(stage.closed, 1);
  HostCalls::CallPool().setMaxThreadCount(threads);
  const auto asked = Services().Requests<play_plugin_protocol::GetStreamAbiRequest>();
  QCOMPARE(asked.size(), size_t(1));
  QCOMPARE(asked.front().camera_index_code, std::string("103"));
}

void EditorWindowsTest::MenuOfAWindow() {
  CEditorStage stage(Opened({{"load_all", 1}}));
  stage.editor->OpenPlan("77");
  stage.editor->OnPlanInfo(TarnTest::Detail({TarnTest::FullPage(1)}));
  const auto open_menu = [&stage] {
    QContextMenuEvent asked(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QApplication::sendEvent(&stage.Grid(), &asked);
    return QPointer<QMenu>(stage.Grid().findChild<QMenu*>());
  };
  QPointer<QMenu> menu = open_menu();
  QVERIFY(menu && menu->isVisible());
  QTest::keyClick(menu, Qt::Key_Down);
  QTest::keyClick(menu, Qt::Key_Return);
  QTRY_VERIFY(!menu);
  QCOMPARE(stage.Windows().filter("empty", Qt::CaseInsensitive).size(), 1);
  menu = open_menu();
  QVERIFY(menu);
  stage.editor.reset();  // the editor may go while its menu is open
  QVERIFY(!menu);
}

void EditorWindowsTest::LooksAgainForCamerasThatFail() {
  CEditorStage stage(Opened({{"load_all", 1}}));
  stage.editor->OpenPlan("77");
  stage.WaitForCameras();
  Services().Fail("GetStreamAbility", "The camera does not exist.");
  Services().ForgetCalls();
  const auto& cameras = stage.Cameras();
  GetPlanDetailResponse plan = TarnTest::Detail({TarnTest::FullPage(1)});
  plan.pages.front().windows.front().resource_code =
      cameras.CamerasBelow(cameras.model()->index(0, 0)).value(0).index_code;
  stage.editor->OnPlanInfo(plan);
  QTRY_COMPARE(stage.tips.size(), 1);
  stage.Grid().SetCurrentWindow(2);
  stage.Grid().SetCurrentWindow(1);
  QTRY_COMPARE(stage.tips.size(), 2);
  TarnTest::CPlanFixture::Drain();
  QCOMPARE(Services().Count("GetCameraTree"), 1);  // it was still there: no reason to look once more
}

QTEST_MAIN(EditorWindowsTest)
#include "test_editor_windows.moc"
