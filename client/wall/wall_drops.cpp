#include "wall/wall_drops.h"

#include <QDrag>
#include <QDropEvent>

#include "MarUIControl/string_conversion.h"
#include "WidgetKit/drag.h"
#include "qt/event_places.h"
#include "wall/drop_hint.h"
#include "wall/wall_window.h"
#include "wall/window_grid.h"

namespace TarnClient {

namespace {

// Nothing that is dropped here leaves where it came from.
void Take(QDropEvent* event) {
  if (event->possibleActions() & Qt::CopyAction) {
    event->setDropAction(Qt::CopyAction);
  }
  event->accept();
}

}  // namespace

CWallDrops::CWallDrops(CDropHint* hint, CWindowGrid* grid, QObject* parent)
    : QObject(parent), hint_(hint), grid_(grid) {}

int CWallDrops::WindowUnder(const QDropEvent* event) const {
  if (!grid_->isVisible()) {
    return 0;
  }
  return grid_->NumberAt(grid_->mapFrom(hint_->parentWidget(), TarnQt::PlaceOf(*event)));
}

void CWallDrops::ShowPlanHint(const PlanDrop& drop, const QRect& room) {
  QString hint = tr("Play \"%1\"");
  if (drop.kind == PlanDrop::Kind::Group) {
    hint = tr("Play the plans of \"%1\" in turn");
  }
  hint_->ShowOver(room, hint.arg(drop.name));
}

void CWallDrops::Enter(QDropEvent* event, const QRect& room) {
  const QJsonArray sources = SourcesOfDrag(event->mimeData());
  load_ = {PlanDrop::Read(sources, station_id_), CamerasOf(sources, station_id_), WindowOfDrag(event->mimeData())};
  Move(event, room);
}

void CWallDrops::Move(QDropEvent* event, const QRect& room) {
  if (load_.plan) {
    ShowPlanHint(*load_.plan, room);
  } else if (load_.cameras.isEmpty()) {
    return event->ignore();
  } else if (!grid_->isVisible()) {
    hint_->ShowOver(room, tr("Show here"));
  } else {
    grid_->SetTarget(WindowUnder(event));
  }
  Take(event);
}

void CWallDrops::Leave() {
  load_ = {};
  hint_->hide();
  grid_->SetTarget(0);
}

void CWallDrops::Drop(QDropEvent* event) {
  const int window_no = WindowUnder(event);
  const Load load = load_;
  Leave();
  if (!load.plan && load.cameras.isEmpty()) {
    return event->ignore();
  }
  Take(event);
  if (load.plan) {
    Q_EMIT SignalPlanDropped(*load.plan);
  } else if (load.window && load.window->wall == grid_) {
    Swap(*load.window, load.cameras.first(), window_no);
  } else {
    Q_EMIT SignalCamerasDropped(window_no, load.cameras);
  }
}

// Another plan may have come meanwhile; its windows are not those that the user has seen.
void CWallDrops::Swap(const DraggedWindow& window, const WallCamera& camera, int other_window_no) {
  const CWallWindow* from = grid_->WindowAt(window.window_no);
  if (from && from->Content().resource_code == camera.code) {
    Q_EMIT SignalSwapWanted(window.window_no, other_window_no);
  }
}

void CWallDrops::DragAway(int window_no, const WallCamera& camera) {
  auto* drag = new QDrag(grid_);
  drag->setMimeData(MakeWindowDrag({grid_, window_no}, camera, station_id_));
  const QString caption = MarUIControl::StringToQString(camera.name);
  drag->setPixmap(WidgetKit::CDrag::Caption(caption, grid_));
  drag->exec(Qt::CopyAction);
}

}  // namespace TarnClient
