#include <QImage>
#include <QLabel>
#include <QtTest>
#include <set>
#include <tuple>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "page_picture.h"
#include "pictures/test_picture_source.h"
#include "plan_document.h"
#include "plan_rules/window_content.h"
#include "plan_test.h"
#include "random_plans.h"
#include "standard_view_controller.h"
#include "wall/live_wall.h"
#include "wall/page_clock.h"
#include "wall/same_pages.h"
#include "wall/wall_window.h"
#include "window_text.h"

using namespace TarnTest;
using namespace view_plugin_protocol;
using LyraPluginManager::CViewBusinessInterfaceMgr;
using TarnClient::CLiveWall;
using TarnClient::CWallWindow;
using TarnPlanView::CWindowText;

namespace {

std::string InWords(const PlanWindow& window) {
  return " " + std::to_string(window.window_no) + ":" + window.resource_code + "," + window.resource_name + "," +
         std::to_string(window.stream_type) + "," + std::to_string(window.preset_no);
}

/// What a source of pictures depends on.
std::string StreamOf(const PlanWindow& window) {
  return window.resource_code + "," + std::to_string(window.stream_type);
}

/// A page as the editor shows it.
std::string InEditor(const CPlanDocument& document, int page) {
  const auto& shown = document.Draft().pages.at(page);
  std::string words = std::to_string(WindowsOfSplit(shown.split_type)) + " windows";
  for (int no = 1; no <= WindowsOfSplit(shown.split_type); ++no) {
    const PlanWindow* window = document.Draft().Window(page, no);
    if (IsCamera(window)) {
      words += InWords(*window);
    }
  }
  return words;
}

/// How long the wall shows it, in the bar's words: a plan of one page has no time.
QString TimeOf(const CPlanDocument& document, int page) {
  const auto& pages = document.Draft().pages;
  return pages.size() < 2 ? QString() : QString("%1 s").arg(qBound(1, pages.at(page).dwell_seconds, kMaxDwellSeconds));
}

/// How the preview draws a page with these windows.
QImage PictureOf(const std::list<PlanWindow>& windows) {
  return TarnPlanView::PagePicture(TarnTest::Page(1, 2, windows), QSize(240, 135), 1);
}

/// The windows of a page with a camera of this name; none for an empty name.
std::list<PlanWindow> Named(const QString& name) {
  PlanWindow window = Window(2, "1");
  window.resource_name = name.toStdString();
  return name.isEmpty() ? std::list<PlanWindow>() : std::list<PlanWindow>{window};
}

/// Plays plans and says page by page what is to be seen.
class Wall {
 public:
  Wall()
      : wall_(std::make_shared<TarnClient::CReadyPictureSupply>([this](const PlanWindow& window) {
          opened_.insert(StreamOf(window));
          return TarnClient::CTestPictureSource::Make(window);
        })) {
    wall_.resize(800, 600);
    wall_.show();
  }
  void Play(const GetPlanDetailResponse& plan) {
    wall_.Stop();
    opened_.clear();
    wall_.Play(plan);
  }
  void Turn() { wall_.Turn(1); }
  std::string Page() const {
    int windows = 0;
    std::string shown;
    for (const auto* window : wall_.findChildren<CWallWindow*>()) {
      windows += window->isVisible() ? 1 : 0;
      if (!window->IsEmpty()) {
        shown += InWords(window->Content()) + (opened_.count(StreamOf(window->Content())) ? "" : " without a source");
      }
    }
    return std::to_string(windows) + " windows" + shown;
  }
  int Number() const { return wall_.PageNumber(); }
  QString Time() const {
    const auto* time = wall_.findChild<QLabel*>(QStringLiteral("page_time"));
    return time->isHidden() ? QString() : time->text();
  }

 private:
  std::set<std::string> opened_;
  CLiveWall wall_;
};

}  // namespace

class EditorToWallTest : public CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void RandomPlans();
  void EveryKindOfContent_data();
  void EveryKindOfContent();
};

void EditorToWallTest::RandomPlans() {
  Open({}, false);
  auto& service = CViewBusinessInterfaceMgr::Instance();
  GetPlanDetailRequest question;
  question.plan_index_code = fixture_.Code("Own root plan").toStdString();
  GetPlanDetailResponse stored;
  QVERIFY(service.GetPlanDetail(question, stored));
  fixture_.Messages().Expect("has no window");  // records beyond the split, which the editor keeps
  Wall wall;
  QVERIFY(rc::check("what was edited and saved is what is read and what plays", [&] {
    GetPlanDetailResponse random = RandomDetail(TarnTest::RandomPlans::Storable);
    std::tie(random.index_code, random.group_index_code, random.group_name, random.revision) =
        std::tie(stored.index_code, stored.group_index_code, stored.group_name, stored.revision);
    CPlanDocument document;
    document.Load(random);
    for (int edits = *rc::gen::inRange(0, 20); edits > 0; --edits) {
      RandomEdit(&document);
    }
    document.SetGroup(QString::fromStdString(stored.group_index_code), QString::fromStdString(stored.group_name), 1);
    UpdatePlanResponse response;
    RC_ASSERT(service.UpdatePlan(document.MakeUpdateRequest(), response));
    RC_ASSERT(service.GetPlanDetail(question, stored));
    document.MarkSaved(stored.revision);
    CPlanDocument read;
    read.Load(stored);
    RC_ASSERT(read.Draft() == document.Draft());
    RC_ASSERT(Saved(read) == Saved(document));

    wall.Play(stored);
    if (stored.pages.empty()) {  // the editor begins a page, and saves it once there is something in it
      RC_ASSERT(wall.Page() == "1 windows" && document.Draft().FilledWindows() == 0);
      return;
    }
    for (int page = 0; page < document.Draft().pages.size(); ++page) {
      RC_ASSERT(wall.Number() == page + 1);
      RC_ASSERT(wall.Page() == InEditor(document, page));
      RC_ASSERT(wall.Time() == TimeOf(document, page));
      wall.Turn();
    }
    RC_ASSERT(wall.Number() == 1);
  }));
}

void EditorToWallTest::EveryKindOfContent_data() {
  QTest::addColumn<int>("kind");
  QTest::addColumn<QString>("code");
  QTest::addColumn<bool>("filled");
  QTest::addColumn<QString>("name");  // in the editor
  QTest::addColumn<bool>("plays");
  QTest::newRow("nothing") << 0 << "" << false << "" << false;
  QTest::newRow("camera without a kind") << 0 << "7" << true << "camera 7" << true;
  QTest::newRow("camera") << 1 << "7" << true << "camera 7" << true;
  QTest::newRow("camera without a code") << 1 << "" << true << "Other content" << false;
  QTest::newRow("kind of a newer version") << 9 << "7" << true << "Other content" << false;
  QTest::newRow("such a kind without a code") << 9 << "" << true << "Other content" << false;
  QTest::newRow("kind below all") << -1 << "7" << true << "Other content" << false;
}

// Editor, preview, wall, save-as and limit have one answer.
void EditorToWallTest::EveryKindOfContent() {
  QFETCH(int, kind);
  QFETCH(QString, code);
  QFETCH(bool, filled);
  QFETCH(QString, name);
  QFETCH(bool, plays);
  Open();
  PlanWindow window = Window(2, code.toStdString(), kind, 1, 3);
  window.resource_name = code.isEmpty() ? "" : "camera " + code.toStdString();
  const PlanPage page = TarnTest::Page(1, 2, {window}, "", 10);
  const GetPlanDetailResponse plan = Detail({page});
  CPlanDocument document;
  document.Load(plan);
  const auto shown = [&document] { return document.Draft().Window(0, 2); };
  QCOMPARE(CWindowText().Name(shown()), name);
  QCOMPARE(document.Draft().FilledWindows(), filled ? 1 : 0);
  Wall wall;
  wall.Play(plan);
  QCOMPARE(wall.Page(), std::string("4 windows") + (plays ? InWords(window) : ""));
  QCOMPARE(TarnClient::HoldsSomething(page), filled);
  TarnPlanView::CStandardViewController controller(fixture_.Public());
  QCOMPARE(controller.IsExceedAddLimit(std::list<PlanPage>(kMaxFilledWindows, page)), false);
  QCOMPARE(controller.IsExceedAddLimit(std::list<PlanPage>(kMaxFilledWindows + 1, page)), filled);
  QCOMPARE(PictureOf({window}), PictureOf(Named(name)));
  window.resource_name.clear();
  const QString unnamed = plays ? QString("7") : name;
  QCOMPARE(PictureOf({window}), PictureOf(Named(unnamed)));
  // Of two records of one window a camera is shown.
  QCOMPARE(PictureOf({window, Window(2, "8", 9)}), PictureOf(Named(plays ? "7" : "Other content")));
  // The camera that is there keeps its stream and preset, anything else is replaced.
  document.PutCamera(0, 2, {"7", "camera 7"});
  QCOMPARE(shown()->stream_type, plays ? 1 : 0);
  controller.setParent(nullptr);
}

QTEST_MAIN(EditorToWallTest)
#include "test_editor_to_wall.moc"
