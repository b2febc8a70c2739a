#include <QLabel>
#include <QtTest>
#include <tuple>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "plan_document.h"
#include "plan_test.h"
#include "random_plans.h"
#include "wall/live_wall.h"
#include "wall/page_clock.h"
#include "wall/test_picture_source.h"
#include "wall/wall_window.h"

using namespace TarnTest;
using namespace view_plugin_protocol;
using LyraPluginManager::CViewBusinessInterfaceMgr;
using TarnClient::CLiveWall;
using TarnClient::CWallWindow;
using TarnPlanView::kMaxDwellSeconds;

namespace {

/// A source that knows what the wall asked it to show.
class AskedSource : public TarnClient::CTestPictureSource {
 public:
  explicit AskedSource(const PlanWindow& window, std::string* asked) : CTestPictureSource(window) {
    *asked += InWords(window);
  }
  static std::string InWords(const PlanWindow& window) {
    return " " + std::to_string(window.window_no) + ":" + window.resource_code + "," + window.resource_name + "," +
           std::to_string(window.stream_type) + "," + std::to_string(window.preset_no);
  }
};

/// A page as the editor shows it.
std::string InEditor(const CPlanDocument& document, int page) {
  const auto& shown = document.Draft().pages.at(page);
  std::string words = std::to_string(TarnPlanView::WindowsOfSplit(shown.split_type)) + " windows";
  for (int no = 1; no <= TarnPlanView::WindowsOfSplit(shown.split_type); ++no) {
    const PlanWindow* window = document.Draft().Window(page, no);
    if (window && window->content_kind == 1 && !window->resource_code.empty()) {
      words += AskedSource::InWords(*window);
    }
  }
  return words;
}

/// How long the wall shows it, in the bar's words: a plan of one page has no time.
QString TimeOf(const CPlanDocument& document, int page) {
  const auto& pages = document.Draft().pages;
  return pages.size() < 2 ? QString() : QString("%1 s").arg(qBound(1, pages.at(page).dwell_seconds, kMaxDwellSeconds));
}

/// Plays plans and tells page by page what is to be seen.
class Wall {
 public:
  Wall() : wall_([this](const PlanWindow& window) { return std::make_unique<AskedSource>(window, &asked_); }) {
    wall_.resize(800, 600);
    wall_.show();
  }
  void Play(const GetPlanDetailResponse& plan) {
    asked_.clear();
    wall_.Play(plan);
  }
  void Turn() {
    asked_.clear();
    wall_.Turn(1);
  }
  std::string Page() const {
    int windows = 0, cameras = 0;
    for (const auto* window : wall_.findChildren<CWallWindow*>()) {
      windows += window->isVisible() ? 1 : 0;
      cameras += window->IsEmpty() ? 0 : 1;
    }
    return std::to_string(windows) + " windows" + (cameras == wall_.Windows().size() ? "" : " of the last page") +
           asked_;
  }
  int Number() const { return wall_.PageNumber(); }
  QString Time() const { return wall_.findChild<QLabel*>(QStringLiteral("page_time"))->text(); }

 private:
  std::string asked_;
  CLiveWall wall_;
};

}  // namespace

class EditorToWallTest : public CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void RandomPlans();
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
    GetPlanDetailResponse random = RandomDetail();
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

QTEST_MAIN(EditorToWallTest)
#include "test_editor_to_wall.moc"
