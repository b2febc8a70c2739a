#include <QTimer>

#include "TarnHost/plan_site.h"
#include "editor_stage.h"

using namespace TarnPlanView;
using TarnTest::CEditorStage;

namespace {

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
class PlanEditorDragTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void CamerasWindowsAndPages();

 private:
  // From a point of one widget to a point of another; returns when the drag has ended.
  void Drag(QWidget* from, const QPoint& start, const QWidget* onto, const QPoint& end) {
    const QPoint to = onto->mapToGlobal(end);
    QTest::mousePress(from, Qt::LeftButton, Qt::NoModifier, start);
    CHand hand(from, {from->mapToGlobal(start + QPoint(4, 3)), to - QPoint(3, 0), to, to + QPoint(1, 0), to, to});
    for (int step = 5; step <= 40 && !hand.IsDone(); step += 5) {  // the drag starts, and runs, within one of these
      QMouseEvent move(QEvent::MouseMove, start + QPoint(step, 0), from->mapToGlobal(start + QPoint(step, 0)),
                       Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
      QApplication::sendEvent(from, &move);
    }
    QTRY_VERIFY(hand.IsDone());
  }
};

void PlanEditorDragTest::CamerasWindowsAndPages() {
  TarnTest::PlanFixtureOptions options;
  options.switches = {{"load_all", 1}};
  options.site = TarnHost::MakeDemoSite;
  QString error;
  QVERIFY2(fixture_.Open(options, &error), qPrintable(error));
  fixture_.Start();
  CEditorStage stage(fixture_);
  QVERIFY(QTest::qWaitForWindowExposed(&stage.window));
  stage.Open(fixture_.Code("Night patrol"));
  const QStringList at_first = stage.Windows();
  auto& grid = stage.Grid();

  auto& tree = stage.Cameras();
  QModelIndex camera = tree.model()->index(0, 0);
  while (tree.CameraAt(camera).index_code.empty()) {
    tree.expand(camera);
    camera = tree.model()->index(0, 0, camera);
  }
  tree.scrollTo(camera);
  const QString name = QString::fromStdString(tree.CameraAt(camera).name);
  Drag(tree.viewport(), tree.visualRect(camera).center(), &grid, grid.WindowRect(3).center());
  QTRY_COMPARE(stage.Windows()[2], name);

  Drag(&grid, grid.WindowRect(3).center(), &grid, grid.WindowRect(1).center());
  QTRY_COMPARE(stage.Windows()[0], name);
  QCOMPARE(stage.Windows()[2], at_first[0]);

  auto& pages = stage.Pages();
  const auto page = [&pages](int row) { return pages.visualRect(pages.model()->index(row, 0)); };
  Drag(pages.viewport(), page(0).center(), pages.viewport(), QPoint(page(2).right() - 4, page(2).center().y()));
  QTRY_COMPARE(pages.currentIndex().row(), 2);
  QCOMPARE(pages.model()->rowCount(), 3);
  QCOMPARE(stage.Windows()[0], name);
  while (stage.Find<QWidget>("undo_btn")->isEnabled()) {
    stage.Click("undo_btn");
  }
  QVERIFY(!stage.editor->IsDirty());
}

QTEST_MAIN(PlanEditorDragTest)
#include "test_plan_editor_drag.moc"
