#include <QtTest>

#include "client_desk.h"
#include "mouse_drag.h"

// Drags with the mouse, in real windows: what the tree packs is what the wall unpacks.
class DragToWallTest : public TarnTest::CClientDesk {
  Q_OBJECT

 private Q_SLOTS:
  void PlanPlaysAndGroupCycles();

 private:
  void Drag(const QModelIndex& row);
};

void DragToWallTest::Drag(const QModelIndex& row) {
  Tree()->scrollTo(row);
  const QPoint to = Wall().mapToGlobal(Wall().rect().center());
  QVERIFY(TarnTest::DragWithMouse(Tree()->viewport(), Tree()->visualRect(row).center(), to));
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
