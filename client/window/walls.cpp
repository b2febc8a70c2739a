#include "window/walls.h"

#include <QSplitter>
#include <algorithm>
#include <utility>

#include "MarUIControl/string_conversion.h"
#include "plans/plan_player.h"
#include "window/extra_wall.h"
#include "window/wall_desk.h"

namespace TarnClient {

namespace {

void PlayOnDesk(const CWallDesk& desk, const QString& code, bool is_group) {
  QWidget* window = desk.Parts()->window();
  window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
  if (is_group) {
    desk.Player().PlayGroup(code);
  } else {
    desk.Player().Play(MarUIControl::QStringToString(code));
  }
}

}  // namespace

CWalls::CWalls(QObject* parent) : QObject(parent) {}

CWalls::~CWalls() = default;

void CWalls::Begin(CWallDesk* main, Maker make) {
  main_ = main;
  make_ = std::move(make);
}

CExtraWall* CWalls::At(int number) const {
  for (const auto& wall : extra_) {
    if (wall->Desk().Number() == number) {
      return wall.get();
    }
  }
  return nullptr;
}

CExtraWall* CWalls::Open(int number) {
  if (CExtraWall* open = At(number)) {
    return open;
  }
  std::unique_ptr<CExtraWall> made = make_(number);
  CExtraWall* wall = made.get();
  for (CWallDesk* other : Desks()) {
    other->StandBeside(wall->Desk());
    wall->Desk().StandBeside(*other);
  }
  const auto place =
      std::find_if(extra_.begin(), extra_.end(), [number](const auto& one) { return one->Desk().Number() > number; });
  extra_.insert(place, std::move(made));
  connect(wall, &CExtraWall::SignalClosed, this, [this, wall] { OnClosed(wall); });
  Q_EMIT SignalOpened(wall);
  Q_EMIT SignalChanged();
  return wall;
}

CExtraWall* CWalls::OpenNew() {
  for (int number = 1; number < kMost; ++number) {
    if (!At(number)) {
      return Open(number);
    }
  }
  return nullptr;
}

// Later, for it is in the middle of closing.
void CWalls::OnClosed(CExtraWall* wall) {
  Q_EMIT SignalClosing(wall);
  const auto place = std::find_if(extra_.begin(), extra_.end(), [wall](const auto& one) { return one.get() == wall; });
  if (place != extra_.end()) {
    place->release()->deleteLater();
    extra_.erase(place);
    closed_.removeAll({});
    closed_.append(wall);
  }
  Q_EMIT SignalChanged();
}

void CWalls::CloseAll() {
  extra_.clear();
  for (const QPointer<CExtraWall>& wall : std::exchange(closed_, {})) {
    delete wall;
  }
}

QVector<CExtraWall*> CWalls::Extra() const {
  QVector<CExtraWall*> walls;
  for (const auto& wall : extra_) {
    walls << wall.get();
  }
  return walls;
}

QVector<CWallDesk*> CWalls::Desks() const {
  QVector<CWallDesk*> desks{main_};
  for (const auto& wall : extra_) {
    desks << &wall->Desk();
  }
  return desks;
}

QVector<IWallChoice::Wall> CWalls::OpenWalls() const {
  QVector<Wall> walls;
  for (const CWallDesk* desk : Desks()) {
    walls << desk->State();
  }
  return walls;
}

QString CWalls::WhyNoNewWall() const {
  if (static_cast<int>(extra_.size()) + 1 < kMost) {
    return QString();
  }
  return tr("All four walls are open.");
}

void CWalls::PlayOn(int number, const QString& code, bool is_group) {
  for (const CWallDesk* desk : Desks()) {
    if (desk->Number() == number) {
      PlayOnDesk(*desk, code, is_group);
    }
  }
}

void CWalls::PlayOnNew(const QString& code, bool is_group) {
  if (const CExtraWall* wall = OpenNew()) {
    PlayOnDesk(wall->Desk(), code, is_group);
  }
}

}  // namespace TarnClient
