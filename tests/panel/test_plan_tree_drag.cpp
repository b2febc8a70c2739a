#include <QDragEnterEvent>
#include <QDropEvent>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QtTest>

#include "mouse_drag.h"
#include "plan_item_role.h"
#include "tree_stage.h"

using namespace TarnPlanView;
using TarnTest::CTreeStage;
using TarnTest::DragWithMouse;

namespace {

// Takes every drag, as the live wall does.
class CWall : public QWidget {
 public:
  CWall() { setAcceptDrops(true); }
  QByteArray payload;

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override { event->acceptProposedAction(); }
  void dropEvent(QDropEvent* event) override {
    payload = event->mimeData()->data(QStringLiteral("_drag_json_data_"));
    event->acceptProposedAction();
  }
};

}  // namespace

// Drags as an operator makes them, in real windows.
class PlanTreeDragTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void PlanIsMovedInsideTheTree();
  void PlanAndGroupReachTheWall();
};

void PlanTreeDragTest::PlanIsMovedInsideTheTree() {
  Open({{"load_all", 1}});
  CTreeStage stage(fixture_.Public());
  QTRY_VERIFY(stage.tree.isExpanded(stage.Root()));
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

void PlanTreeDragTest::PlanAndGroupReachTheWall() {
  Open({{"load_all", 1}, {"group_cycle", 1}});
  CTreeStage stage(fixture_.Public());
  QTRY_VERIFY(stage.tree.isExpanded(stage.Root()));
  CWall wall;
  wall.setGeometry(600, 100, 300, 300);
  wall.show();
  QVERIFY(QTest::qWaitForWindowExposed(&wall));
  fixture_.Messages().Expect("occurs outside of target window");  // that is what such a drag is
  for (const char* name : {"Public root plan", "Public A"}) {
    wall.payload.clear();
    QVERIFY(
        DragWithMouse(stage.tree.viewport(), stage.Middle(stage.Row(name)), wall.mapToGlobal(wall.rect().center())));
    QTRY_VERIFY(!wall.payload.isEmpty());
    const QJsonObject row = QJsonDocument::fromJson(wall.payload).array().at(0).toObject();
    QCOMPARE(row.value("_source_id_").toString(), fixture_.Code(name));
    QCOMPARE(row.value("_normal_resource").toObject().value("name").toString(), QString(name));
  }
}

QTEST_MAIN(PlanTreeDragTest)
#include "test_plan_tree_drag.moc"
