#include <QSpinBox>

#include "editor_stage.h"
#include "mouse_drag.h"

using namespace TarnPlanView;
using TarnTest::CEditorStage;
using TarnTest::DragWithMouse;

// What differs in real windows: drags as an operator makes them, and keys that fields have on such a desktop.
class PlanEditorDragTest : public TarnTest::CEditorTest {
  Q_OBJECT
 private Q_SLOTS:
  void CamerasWindowsAndPages();
  void NoFieldIsCleared();
};

void PlanEditorDragTest::CamerasWindowsAndPages() {
  CEditorStage stage(Begun());
  QVERIFY(QTest::qWaitForWindowExposed(&stage.window));
  stage.Open(patrol_);
  const QStringList at_first = stage.Windows();
  auto& grid = stage.Grid();
  const auto window_at = [&grid](int window_no) { return grid.mapToGlobal(grid.WindowRect(window_no).center()); };

  auto& tree = stage.Cameras();
  QModelIndex camera = tree.model()->index(0, 0);
  while (tree.CameraAt(camera).index_code.empty()) {
    tree.expand(camera);
    camera = tree.model()->index(0, 0, camera);
  }
  tree.scrollTo(camera);
  const QString name = QString::fromStdString(tree.CameraAt(camera).name);
  QVERIFY(DragWithMouse(tree.viewport(), tree.visualRect(camera).center(), window_at(3)));
  QTRY_COMPARE(stage.Windows()[2], name);

  QVERIFY(DragWithMouse(&grid, grid.WindowRect(3).center(), window_at(1)));
  QTRY_COMPARE(stage.Windows()[0], name);
  QCOMPARE(stage.Windows()[2], at_first[0]);

  auto& pages = stage.Pages();
  const auto page = [&pages](int row) { return pages.visualRect(pages.model()->index(row, 0)); };
  const QPoint behind_last(page(2).right() - 4, page(2).center().y());
  QVERIFY(DragWithMouse(pages.viewport(), page(0).center(), pages.viewport()->mapToGlobal(behind_last)));
  QTRY_COMPARE(pages.currentIndex().row(), 2);
  QCOMPARE(pages.model()->rowCount(), 3);
  QCOMPARE(stage.Windows()[0], name);
  while (stage.Find<QWidget>("undo_btn")->isEnabled()) {
    stage.Click("undo_btn");
  }
  QVERIFY(!stage.editor->IsDirty());
}

void PlanEditorDragTest::NoFieldIsCleared() {
  CEditorStage stage(Begun());
  stage.Open(patrol_);
  auto* dwell = stage.Find<QSpinBox>("dwell_spin");
  const QString before = dwell->text();
  dwell->setFocus();
  QTest::keyClick(dwell, Qt::Key_U, Qt::ControlModifier);
  QCOMPARE(dwell->text(), before);
}

QTEST_MAIN(PlanEditorDragTest)
#include "test_plan_editor_drag.moc"
