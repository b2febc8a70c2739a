#include "settings/desk_memory.h"

#include <algorithm>

#include "settings/user_settings.h"

namespace TarnClient {

namespace {

constexpr int kLaterMs = 500;  // for what comes in a run, as when a window is dragged

RememberedWall RememberedOf(const RememberedDesk& desk, int number) {
  if (number == 0) {
    return desk;
  }
  return desk.Wall(number);
}

}  // namespace

CDeskMemory::CDeskMemory(CUserSettings* settings, CPlayHistory* history, QObject* parent)
    : QObject(parent), settings_(settings), history_(history) {
  later_.setSingleShot(true);
  later_.setInterval(kLaterMs);
  connect(&later_, &QTimer::timeout, this, &CDeskMemory::Keep);
  connect(history_, &QAbstractItemModel::rowsInserted, this, &CDeskMemory::KeepLater);
  connect(history_, &QAbstractItemModel::dataChanged, this, &CDeskMemory::KeepLater);
  history_->SetPlans(settings_->Remembered().history);
}

CWallMemory* CDeskMemory::Add(const CWallMemory::Parts& parts) {
  auto* wall = new CWallMemory(parts, this);
  const RememberedWall remembered = Known(parts.number);
  wall->PlaceWindow(remembered);
  wall->Restore(remembered);
  walls_.append(wall);
  connect(wall, &CWallMemory::SignalChanged, this, &CDeskMemory::KeepLater);
  return wall;
}

// Its place is kept for when it is opened again.
void CDeskMemory::Remove(int number) {
  Keep();
  const auto wall =
      std::find_if(walls_.begin(), walls_.end(), [number](const CWallMemory* one) { return one->Number() == number; });
  if (wall != walls_.end()) {
    delete *wall;
    walls_.erase(wall);
    KeepLater();
  }
}

RememberedWall CDeskMemory::Known(int number) const {
  return RememberedOf(settings_->Remembered(), number);
}

QVector<int> CDeskMemory::LeftOpen() const {
  QVector<int> numbers;
  for (const RememberedWall& wall : settings_->Remembered().walls) {
    if (wall.is_open) {
      numbers << wall.number;
    }
  }
  std::sort(numbers.begin(), numbers.end());
  return numbers;
}

void CDeskMemory::RestoreForNewUser() {
  history_->SetPlans(settings_->Remembered().history);
  for (CWallMemory* wall : walls_) {
    wall->AwaitRows();
    wall->Restore(Known(wall->Number()));
  }
  later_.stop();
}

void CDeskMemory::Keep() {
  later_.stop();
  settings_->Remember(Now());
}

RememberedDesk CDeskMemory::Now() const {
  const RememberedDesk& last = settings_->Remembered();
  RememberedDesk desk;
  desk.history = history_->Plans();
  desk.walls = last.walls;
  for (RememberedWall& wall : desk.walls) {
    wall.is_open = false;
  }
  for (const CWallMemory* memory : walls_) {
    const RememberedWall wall = memory->Now(Known(memory->Number()));
    if (wall.number == 0) {
      static_cast<RememberedWall&>(desk) = wall;
      continue;
    }
    const auto is_same = [&wall](const RememberedWall& one) { return one.number == wall.number; };
    desk.walls.erase(std::remove_if(desk.walls.begin(), desk.walls.end(), is_same), desk.walls.end());
    desk.walls.append(wall);
  }
  return desk;
}

}  // namespace TarnClient
