#include "composing/composer.h"

#include <QAction>
#include <QDir>
#include <QMenu>
#include <string>
#include <tuple>
#include <utility>

#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "composing/preset_menu.h"
#include "composing/snapshot.h"
#include "host_calls/ask.h"
#include "plan_rules/splits.h"
#include "plan_rules/stream_kinds.h"
#include "plan_rules/window_content.h"
#include "wall/live_wall.h"
#include "wall/wall_window.h"
#include "wall/window_grid.h"

namespace TarnClient {

using MarUIControl::CNomalMessage;
using MarUIControl::StringToQString;

using view_plugin_protocol::kMainStream;
using view_plugin_protocol::kSubStream;

namespace {

constexpr double kZoomStep = 1.5;

// Plan, page, window and camera that a command would be for now.
auto TargetOf(const CLiveWall& wall) {
  const int window_no = wall.Grid()->CurrentWindow();
  const CArrangement::Window* window = wall.Arrangement().At(wall.PageNumber() - 1, window_no);
  std::string camera;
  if (window) {
    camera = window->resource_code;
  }
  return std::make_tuple(wall.PlanCode(), wall.PageNumber(), window_no, camera);
}

}  // namespace

CComposer::CComposer(CLiveWall* wall, Setup setup, QObject* parent)
    : QObject(parent), wall_(wall), setup_(std::move(setup)), commands_(new CWallCommands(wall->Grid(), wall, this)) {
  connect(commands_, &CWallCommands::SignalTriggered, this, &CComposer::Run);
  connect(wall_, &CLiveWall::SignalCamerasDropped, this, &CComposer::OnDropped);
  connect(wall_, &CLiveWall::SignalSwapWanted, this, &CComposer::Swap);
  connect(wall_, &CLiveWall::SignalPlanChanged, this, [this] {
    just_filled_ = 0;
    Renew();
  });
  connect(wall_, &CLiveWall::SignalPlanRenewed, this, &CComposer::Renew);
  connect(wall_, &CLiveWall::SignalArrangementChanged, this, &CComposer::Renew);
  connect(wall_, &CLiveWall::SignalPageShown, this, [this] {
    wall_->StayFor(this, false);
    Renew();
  });
  connect(wall_->Grid(), &CWindowGrid::SignalChosen, this, [this] {
    just_filled_ = 0;
    wall_->StayFor(this, false);
    Renew();
  });
  connect(wall_->Grid(), &CWindowGrid::SignalCloserLook, this, &CComposer::Renew);
  connect(wall_->Grid(), &CWindowGrid::SignalMenuWanted, this, [this](int, const QPoint& place) { OpenMenu(place); });
  Renew();
}

int CComposer::Page() const {
  return qMax(0, wall_->PageNumber() - 1);
}

const CArrangement::Window* CComposer::Current() const {
  return wall_->Arrangement().At(Page(), wall_->Grid()->CurrentWindow());
}

WallSituation CComposer::Situation() const {
  WallSituation situation;
  situation.is_locked = is_locked_;
  const CWindowGrid* grid = wall_->Grid();
  situation.is_editing = setup_.is_editing();
  if (!wall_->IsShowing()) {
    return situation;
  }
  situation.split_type = wall_->Arrangement().Pages().at(Page()).split_type;
  situation.has_window = grid->CurrentWindow() > 0;
  situation.is_enlarged = grid->EnlargedWindow() > 0;
  if (const CArrangement::Window* content = Current()) {
    situation.has_content = true;
    situation.has_camera = IsCamera(*content);
    situation.has_small_stream = content->stream_type == kSubStream;
    situation.is_zoomed = grid->WindowAt(grid->CurrentWindow())->IsZoomed();
  }
  return situation;
}

void CComposer::Renew() {
  commands_->Renew(Situation());
}

void CComposer::SetLocked(bool locked) {
  is_locked_ = locked;
  Renew();
}

void CComposer::Run(WallCommand command) {
  const QString why_not = WhyNot(command, Situation());
  if (!why_not.isEmpty()) {
    Renew();
    return Q_EMIT SignalMessage(tr("Not possible: %1.").arg(why_not), CNomalMessage::Hint);
  }
  CWindowGrid* grid = wall_->Grid();
  const int current = grid->CurrentWindow();
  CWallWindow* window = grid->WindowAt(current);
  switch (command) {
    case WallCommand::Enlarge:
      grid->ToggleEnlarged(current);
      break;
    case WallCommand::ZoomIn:
      window->Zoom(kZoomStep);
      break;
    case WallCommand::ZoomOut:
      window->Zoom(1 / kZoomStep);
      break;
    case WallCommand::WholePicture:
      window->ResetZoom();
      break;
    case WallCommand::SmallStream:
      ToggleStream();
      break;
    case WallCommand::Preset:
      OpenPresets();
      break;
    case WallCommand::Snapshot:
      KeepSnapshot();
      break;
    case WallCommand::Replace:
      just_filled_ = 0;
      wall_->StayFor(this, true);  // until the camera comes, or the user goes elsewhere
      Q_EMIT SignalCameraWanted();
      break;
    case WallCommand::Empty:
      wall_->Change([&](CArrangement* all) { return all->Empty(Page(), current); });
      break;
    case WallCommand::Split1:
    case WallCommand::Split4:
    case WallCommand::Split9:
    case WallCommand::Split16:
      Split(SplitOf(command));
      break;
  }
  Renew();
}

// On the empty wall the page that comes begins with this split.
void CComposer::Split(int split_type) {
  const bool is_new = !wall_->IsShowing();
  wall_->Change([&](CArrangement* all) { return all->Split(Page(), split_type) || is_new; });
}

void CComposer::ToggleStream() {
  const int current = wall_->Grid()->CurrentWindow();
  const int other = Current()->stream_type == kSubStream ? kMainStream : kSubStream;
  wall_->Change([&](CArrangement* all) { return all->SetStream(Page(), current, other); });
}

void CComposer::Swap(int window_no, int other_window_no) {
  wall_->Change([&](CArrangement* all) { return all->Swap(Page(), window_no, other_window_no); });
}

// Without a plan the page grows with its cameras. Answers the window for the next one; 0 when all are filled.
int CComposer::RoomFor(int cameras) {
  if (!wall_->IsShowing()) {
    wall_->Change([&](CArrangement* all) {
      all->MakeRoomFor(0, cameras);
      return true;
    });
  }
  const CArrangement& all = wall_->Arrangement();
  const int current = wall_->Grid()->CurrentWindow();
  if (all.NextEmpty(Page(), 0) == 0) {
    const int windows = view_plugin_protocol::WindowsOfSplit(all.Pages().at(Page()).split_type);
    wall_->Change([&](CArrangement* changed) { return changed->MakeRoomFor(Page(), windows + cameras); });
  }
  return wall_->Arrangement().NextEmpty(Page(), qMax(0, current - 1));
}

bool CComposer::PutAt(int window_no, const WallCamera& camera) {
  return wall_->Change([&](CArrangement* all) { return all->Put(Page(), window_no, camera); });
}

void CComposer::GoOnAfter(int window_no) {
  just_filled_ = window_no;
  const int next = wall_->Arrangement().NextEmpty(Page(), window_no);
  wall_->Grid()->SetCurrent(next > 0 ? next : window_no);
}

void CComposer::Put(const WallCamera& camera) {
  int window_no = wall_->Grid()->CurrentWindow();
  if (window_no == 0 || window_no == just_filled_) {
    window_no = RoomFor(1);
  }
  if (window_no == 0) {
    return SayFull(1);
  }
  PutAt(window_no, camera);
  GoOnAfter(window_no);
}

void CComposer::Fill(const QVector<WallCamera>& cameras) {
  int placed = 0;
  for (; placed < cameras.size(); ++placed) {
    const int window_no = RoomFor(cameras.size() - placed);
    if (window_no == 0) {
      break;
    }
    PutAt(window_no, cameras[placed]);
    GoOnAfter(window_no);
  }
  if (placed < cameras.size()) {
    SayFull(cameras.size() - placed);
  }
}

void CComposer::SayFull(int left_out) {
  if (left_out == 1) {
    return Q_EMIT SignalMessage(tr("No window is empty. Choose the one that is to give way."), CNomalMessage::Hint);
  }
  Q_EMIT SignalMessage(tr("%1 cameras found no empty window.").arg(left_out), CNomalMessage::Hint);
}

// The first one gets the window that it was dropped on, whatever is there.
void CComposer::OnDropped(int window_no, const QVector<WallCamera>& cameras) {
  if (window_no == 0) {
    return Fill(cameras);
  }
  PutAt(window_no, cameras.first());
  GoOnAfter(window_no);
  Fill(cameras.mid(1));
}

void CComposer::OpenPresets() {
  const int current = wall_->Grid()->CurrentWindow();
  const CWallWindow* window = wall_->Grid()->WindowAt(current);
  auto* menu = new CPresetMenu(StringToQString(Current()->resource_code), Current()->preset_no, wall_);
  connect(menu, &CPresetMenu::SignalChosen, this, [this, current](int preset_no) { SetPreset(current, preset_no); });
  StayWhileOpen(menu);
  menu->popup(window->mapToGlobal(window->rect().center()));
}

// The camera goes there at once, also where the plan has it there already: someone may have moved it since.
void CComposer::SetPreset(int window_no, int preset_no) {
  const bool is_changed =
      wall_->Change([&](CArrangement* all) { return all->SetPreset(Page(), window_no, preset_no); });
  if (!is_changed && preset_no > 0) {
    Q_EMIT SignalPresetWanted(StringToQString(Current()->resource_code), preset_no);
  }
}

void CComposer::KeepSnapshot() {
  const CWallWindow* window = wall_->Grid()->WindowAt(wall_->Grid()->CurrentWindow());
  const TakenPicture picture = window->FullPicture();
  if (picture.IsNull()) {
    return Q_EMIT SignalMessage(tr("Not possible: there is no picture yet."), CNomalMessage::Hint);
  }
  QString folder = DefaultSnapshotFolder();
  if (setup_.snapshot_folder && !setup_.snapshot_folder().isEmpty()) {
    folder = QDir::home().absoluteFilePath(setup_.snapshot_folder());
  }
  const QString name = SnapshotName(window->Camera(), picture.taken);
  HostCalls::Ask([picture, folder, name] {
    return WriteSnapshot(picture.picture, folder, name);
  }).Then(this, [this](const SnapshotResult& result) {
    if (result.error.isEmpty()) {
      const QString path = QDir::toNativeSeparators(result.path);
      Q_EMIT SignalMessage(tr("Snapshot kept: %1").arg(path), CNomalMessage::Success);
    } else {
      Q_EMIT SignalMessage(result.error, CNomalMessage::Failure);
    }
  });
}

void CComposer::OpenMenu(const QPoint& place) {
  commands_->Renew(Situation(), true);
  auto* menu = new QMenu(wall_);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  if (const CWallWindow* window = wall_->Grid()->WindowAt(wall_->Grid()->CurrentWindow())) {
    menu->setAccessibleName(window->accessibleName());
  }
  for (QAction* action : commands_->All()) {
    if (action == commands_->Of(WallCommand::SmallStream) || action == commands_->Of(WallCommand::Replace) ||
        action == commands_->Of(WallCommand::Split1)) {
      menu->addSeparator();
    }
    menu->addAction(action);
  }
  StayWhileOpen(menu);
  menu->popup(place);
}

// A menu is for the window that it was opened at: the page stays meanwhile, and where something else comes there all
// the same, it closes. What is chosen in it comes after it has begun to hide.
void CComposer::StayWhileOpen(QMenu* menu) {
  const auto close = [wall = wall_, menu, target = TargetOf(*wall_)] {
    if (TargetOf(*wall) != target) {
      menu->close();
    }
  };
  connect(wall_, &CLiveWall::SignalPlanChanged, menu, close);
  connect(wall_, &CLiveWall::SignalPlanRenewed, menu, close);
  connect(wall_, &CLiveWall::SignalPageShown, menu, close);
  wall_->StayFor(menu, true);
  const auto end = [this, menu] {
    wall_->StayFor(menu, false);
    Renew();
  };
  connect(menu, &QMenu::aboutToHide, this, end, Qt::QueuedConnection);
}

}  // namespace TarnClient
