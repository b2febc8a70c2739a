#include <QTimer>
#include <QWindow>
#include <QtTest>

#include "client_desk.h"

// Drags with the mouse, in real windows: what the tree packs is what the wall unpacks.
class DragToWallTest : public TarnTest::CClientDesk {
  Q_OBJECT

 private Q_SLOTS:
  void PlanPlaysAndGroupCycles();

 private:
  void Drag(const QModelIndex& row);
};

// The drag runs an event loop of its own; a timer goes on with the mouse from inside it.
void DragToWallTest::Drag(const QModelIndex& row) {
  QWidget* port = Tree()->viewport();
  Tree()->scrollTo(row);
  const QPoint start = Tree()->visualRect(row).center();
  const QPoint end = Wall().mapTo(window_.get(), Wall().rect().center());
  QWindow* window = window_->windowHandle();
  int step = 0;
  QTimer hand;
  connect(&hand, &QTimer::timeout, window, [&, window, end] {
    if (++step < 6) {
      QTest::mouseMove(window, end - QPoint(6 - step, 0));
    } else {
      hand.stop();
      QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, end);
    }
  });
  QTest::mousePress(port, Qt::LeftButton, Qt::NoModifier, start);
  hand.start(20);
  for (int moved = 5; moved <= 40 && step == 0; moved += 5) {
    const QPoint at = start + QPoint(moved, 0);
    QMouseEvent move(QEvent::MouseMove, at, port->mapToGlobal(at), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(port, &move);
  }
  QTRY_VERIFY(step >= 6);
}

void DragToWallTest::PlanPlaysAndGroupCycles() {
  Open({{"load_all", 1}, {"group_cycle", 1}});
  fixture_.Messages().Expect("occurs outside of target window");
  Drag(Row("Public A plan 10"));
  QTRY_COMPARE(Wall().PlanName(), QString("Public A plan 10"));
  Drag(Row("Public B"));
  QTRY_COMPARE(Wall().PlanName(), QString("Public B plan 2"));
  QCOMPARE(clock_->Seconds(), 20);
}

QTEST_MAIN(DragToWallTest)
#include "test_drag_to_wall.moc"
