#include <QContextMenuEvent>
#include <QMenu>
#include <QPointer>

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

/// What the editor makes and asks for while it is open: one page at a time, a menu, the site's cameras.
class EditorBuildingTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void PagesAreNotBuiltBeforeTheyAreNeeded();
  void MenuOfAWindow();
  void LooksAnewForCamerasThatFail();
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

void EditorBuildingTest::MenuOfAWindow() {
  Open({{"load_all", 1}});
  CEditorStage stage(fixture_);
  stage.editor->OpenPlan("77");
  stage.editor->OnPlanInfo(FullPlan(1));
  const auto open_menu = [&stage] {
    QContextMenuEvent asked(QContextMenuEvent::Keyboard, QPoint());
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

void EditorBuildingTest::LooksAnewForCamerasThatFail() {
  Open({{"load_all", 1}});
  CEditorStage stage(fixture_);
  stage.editor->OpenPlan("77");
  stage.WaitForCameras();
  Services().Fail("GetStreamAbility", "The camera does not exist.");
  Services().ForgetCalls();
  const auto& cameras = stage.Cameras();
  GetPlanDetailResponse plan = FullPlan(1);
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

QTEST_MAIN(EditorBuildingTest)
#include "test_editor_building.moc"
