#include <QDragEnterEvent>
#include <QDropEvent>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

#include "plan_item_role.h"
#include "tree_stage.h"

using namespace TarnPlanView;
using TarnTest::CTreeStage;

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

// Moves and releases the mouse at points of the screen from inside the drag's own event loop.
class CHand : public QObject {
 public:
  CHand(QWidget* from, const QList<QPoint>& way) : from_(from), way_(way) {
    connect(&timer_, &QTimer::timeout, this, &CHand::Step);
    timer_.start(20);
  }
  bool IsDone() const { return way_.isEmpty(); }

 private:
  void Step() {
    QWindow* window = from_->window()->windowHandle();
    const QPoint at = window->mapFromGlobal(way_.takeFirst());
    if (way_.isEmpty()) {
      timer_.stop();
      QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, at);
    } else {
      QTest::mouseMove(window, at);
    }
  }

  QWidget* const from_;
  QList<QPoint> way_;
  QTimer timer_;
};

}  // namespace

// Drags as an operator makes them, in real windows.
class PlanTreeDragTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void PlanIsMovedInsideTheTree();
  void PlanAndGroupReachTheWall();

 private:
  // Presses on the row and drags it to a point of the screen; returns when the drag has ended.
  void Drag(CTreeStage& stage, const QModelIndex& row, const QPoint& to);
};

void PlanTreeDragTest::Drag(CTreeStage& stage, const QModelIndex& row, const QPoint& to) {
  const QPoint start = stage.Middle(row);
  const QPoint near = stage.tree.viewport()->mapToGlobal(start + QPoint(4, 3));
  QWidget* port = stage.tree.viewport();
  QTest::mousePress(port, Qt::LeftButton, Qt::NoModifier, start);
  CHand hand(&stage.tree, {near, to - QPoint(3, 0), to, to + QPoint(1, 0), to, to});
  for (int step = 5; step <= 40 && !hand.IsDone(); step += 5) {  // the drag starts, and runs, within one of these
    QMouseEvent move(QEvent::MouseMove, start + QPoint(step, 0), port->mapToGlobal(start + QPoint(step, 0)),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(port, &move);
  }
  QTRY_VERIFY(hand.IsDone());
}

void PlanTreeDragTest::PlanIsMovedInsideTheTree() {
  Open({{"load_all", 1}});
  CTreeStage stage(fixture_.Public());
  QTRY_VERIFY(stage.tree.isExpanded(stage.Root()));
  stage.tree.SetMovePermission(true);
  QSignalSpy moved(&stage.tree, &CPlanViewTree::SignalMoveRow);
  QSignalSpy hidden(&stage.tree, &CPlanViewTree::SignalHideThumbnail);
  const QModelIndex plan = stage.Row("Public root plan"), group = stage.Row("Public B");
  const QPoint target = stage.Middle(group);
  Drag(stage, plan, stage.tree.viewport()->mapToGlobal(target));
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
    Drag(stage, stage.Row(name), wall.mapToGlobal(wall.rect().center()));
    QTRY_VERIFY(!wall.payload.isEmpty());
    const QJsonObject row = QJsonDocument::fromJson(wall.payload).array().at(0).toObject();
    QCOMPARE(row.value("_source_id_").toString(), fixture_.Code(name));
    QCOMPARE(row.value("_normal_resource").toObject().value("name").toString(), QString(name));
  }
}

QTEST_MAIN(PlanTreeDragTest)
#include "test_plan_tree_drag.moc"
