#include "mouse_drag.h"
#include "tree_stage.h"

using namespace TarnPlanView;
using TarnTest::CTreeStage;
using TarnTest::DragWithMouse;

// Drags as an operator makes them, in real windows; those to the wall are tested with the client.
class PlanTreeDragTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void PlanIsMovedInsideTheTree();
};

void PlanTreeDragTest::PlanIsMovedInsideTheTree() {
  CTreeStage stage(Opened({{"load_all", 1}}));
  stage.tree.SetMovePermission(true);
  QSignalSpy moved(&stage.tree, &CPlanViewTree::SignalMoveRow);
  QSignalSpy hidden(&stage.tree, &CPlanViewTree::SignalHideThumbnail);
  const QModelIndex plan = stage.Row("Public root plan"), group = stage.Row("Public B");
  const QPoint target = stage.Middle(group);
  QVERIFY(DragWithMouse(stage.tree.viewport(), stage.Middle(plan), stage.tree.viewport()->mapToGlobal(target)));
  QTRY_COMPARE(moved.size(), 1);
  QCOMPARE(moved[0].at(0).toPoint(), stage.Middle(plan));
  QCOMPARE(moved[0].at(1).toPoint(), target);
  QCOMPARE(moved[0].at(2).toRect(), stage.tree.visualRect(group));
  QVERIFY(!hidden.isEmpty());
  QVERIFY(!stage.tree.viewport()->findChild<QWidget*>("item_rect")->isVisible());
  QCOMPARE(stage.Row("Public root plan").parent(), stage.Root());  // the tree only asks
}

QTEST_MAIN(PlanTreeDragTest)
#include "test_plan_tree_drag.moc"
