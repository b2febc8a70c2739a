#include "editor_stage.h"

using namespace TarnPlanView;
using TarnTest::CEditorStage;
using view_plugin_protocol::GetPlanDetailResponse;

namespace {

GetPlanDetailResponse FullPlan(int pages) {
  GetPlanDetailResponse plan;
  plan.index_code = "77";
  for (int number = 1; number <= pages; ++number) {
    view_plugin_protocol::PlanPage page;
    page.page_no = number;
    page.split_type = 8;
    for (int window_no = 1; window_no <= 16; ++window_no) {
      page.windows.push_back({window_no, 1, std::to_string(number * 100 + window_no), "camera", 0, 0});
    }
    plan.pages.push_back(page);
  }
  return plan;
}

}  // namespace

/// What the editor builds for a plan: one page, whatever their number.
class EditorBuildingTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void PagesAreNotBuiltBeforeTheyAreNeeded();
};

void EditorBuildingTest::PagesAreNotBuiltBeforeTheyAreNeeded() {
  Open({{"load_all", 1}});
  TarnTest::CPlanFixture::Drain();
  CEditorStage stage(fixture_);
  const auto open = [&stage](int pages) {
    stage.editor->OpenPlan("77");
    stage.editor->OnPlanInfo(FullPlan(pages));
    stage.WaitForCameras();
    TarnTest::CPlanFixture::Drain();
    return stage.editor->findChildren<QObject*>().size();
  };
  open(1);
  const int objects = open(1);
  QCOMPARE(open(8), objects);

  stage.Pages().setCurrentIndex(stage.Pages().model()->index(7, 0));
  TarnTest::CPlanFixture::Drain();
  QVERIFY(stage.Grid().accessibleDescription().contains('8'));
  QCOMPARE(stage.editor->findChildren<QObject*>().size(), objects);
}

QTEST_MAIN(EditorBuildingTest)
#include "test_editor_building.moc"
