#include "mouse_drag.h"

#include <QApplication>
#include <QMouseEvent>
#include <QTimer>
#include <QWindow>
#include <QtTest>

namespace TarnTest {

namespace {

constexpr int kBetweenMoves = 20;  // ms
constexpr int kFarthest = 40;      // by then a drag must have started

// Goes on with the mouse while the drag holds the caller.
class CHand {
 public:
  CHand(const QWidget* from, const QList<QPoint>& way) : from_(from), way_(way) {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Step(); });
    timer_.start(kBetweenMoves);
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

  const QWidget* const from_;
  QList<QPoint> way_;
  QTimer timer_;
};

}  // namespace

bool DragWithMouse(QWidget* from, const QPoint& start, const QPoint& end_on_screen) {
  const QPoint to = end_on_screen;
  QTest::mousePress(from, Qt::LeftButton, Qt::NoModifier, start);
  CHand hand(from, {from->mapToGlobal(start + QPoint(4, 3)), to - QPoint(3, 0), to, to + QPoint(1, 0), to, to});
  for (int step = 5; step <= kFarthest && !hand.IsDone();
       step += 5) {  // the drag starts, and runs, within one of these
    const QPoint at = start + QPoint(step, 0);
    QMouseEvent move(QEvent::MouseMove, at, from->mapToGlobal(at), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(from, &move);
  }
  return QTest::qWaitFor([&hand] { return hand.IsDone(); });
}

}  // namespace TarnTest
