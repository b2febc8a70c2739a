#pragma once

#include <QObject>
#include <QVector>
#include <optional>

#include "wall/arrangement.h"
#include "wall/drag_payload.h"
#include "wall/plan_drop.h"

class QDropEvent;
class QRect;

namespace TarnClient {

class CDropHint;
class CWindowGrid;

/// What is dragged over the wall and dropped on it: plans and groups, which play; cameras, for a window; windows, which
/// change places. What it cannot take it refuses at once, so that the cursor says so before the button is released.
/// Thread: GUI.
class CWallDrops : public QObject {
  Q_OBJECT
 public:
  /// Neither is owned; both outlive this.
  CWallDrops(CDropHint* hint, CWindowGrid* grid, QObject* parent);

  /// Takes what is of this site.
  void SetStation(const QString& station_id) { station_id_ = station_id; }
  /// `room`: of the windows, in the coordinates of the hint's parent.
  void Enter(QDropEvent* event, const QRect& room);
  void Move(QDropEvent* event, const QRect& room);
  void Leave();
  void Drop(QDropEvent* event);
  /// Lets a window be dragged by the mouse.
  void DragAway(int window_no, const WallCamera& camera);

 Q_SIGNALS:
  void SignalPlanDropped(const TarnClient::PlanDrop& drop);
  /// `window_no` is 0 where there is no window.
  void SignalCamerasDropped(int window_no, const QVector<TarnClient::WallCamera>& cameras);
  void SignalSwapWanted(int window_no, int other_window_no);

 private:
  void Swap(const DraggedWindow& window, const WallCamera& camera, int other_window_no);
  int WindowUnder(const QDropEvent* event) const;
  void ShowPlanHint(const PlanDrop& drop, const QRect& room);

  CDropHint* const hint_;
  CWindowGrid* const grid_;
  QString station_id_;
  /// What the drag over the wall carries, which may take a while to read.
  struct Load {
    std::optional<PlanDrop> plan;
    QVector<WallCamera> cameras;
    std::optional<DraggedWindow> window;
  };
  Load load_;
};

}  // namespace TarnClient
