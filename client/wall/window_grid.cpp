#include "wall/window_grid.h"

#include <QContextMenuEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <functional>
#include <utility>

#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/skin_color.h"
#include "plan_rules/splits.h"
#include "plan_rules/window_content.h"
#include "wall/wall_window.h"

namespace TarnClient {

using MarUIControl::StringToQString;
using view_plugin_protocol::ContentOf;
using view_plugin_protocol::kMostWindowsOfPage;
using view_plugin_protocol::PlanPage;
using view_plugin_protocol::PlanWindow;
using view_plugin_protocol::SideOfSplit;
using view_plugin_protocol::WindowsOfSplit;

namespace {

constexpr int kGap = 2, kMostSide = 4;
constexpr qint64 kLeastLeadMs = 1000;
constexpr qint64 kUsualLeadMs = 3000;  // of a camera whose key frames were never seen

// In sight, in their order.
QVector<PlanWindow> CamerasOf(const PlanPage& page) {
  QVector<PlanWindow> cameras;
  for (int window_no = 1; window_no <= WindowsOfSplit(page.split_type); ++window_no) {
    const PlanWindow* content = ContentOf(page.windows, window_no);
    if (IsCamera(content)) {
      cameras.append(*content);
    }
  }
  return cameras;
}

QPoint StepOf(int key) {
  switch (key) {
    case Qt::Key_Left:
      return {-1, 0};
    case Qt::Key_Right:
      return {1, 0};
    case Qt::Key_Up:
      return {0, -1};
    case Qt::Key_Down:
      return {0, 1};
    default:
      return {0, 0};
  }
}

}  // namespace

CWindowGrid::CWindowGrid(std::shared_ptr<IPictureSupply> pictures, QWidget* parent)
    : QWidget(parent), pictures_(std::move(pictures)), grid_(new QGridLayout(this)) {
  grid_->setContentsMargins(0, 0, 0, 0);
  grid_->setSpacing(kGap);
  for (int window_no = 1; window_no <= kMostWindowsOfPage; ++window_no) {
    MakeWindow(window_no);
  }
}

// What hears of it only then finds no windows: the one with the focus loses it at its end.
CWindowGrid::~CWindowGrid() {
  for (CWallWindow* window : qAsConst(windows_)) {
    window->disconnect(this);
  }
  PrepareNothing();
}

void CWindowGrid::MakeWindow(int window_no) {
  auto* window = new CWallWindow(window_no, this);
  window->hide();
  windows_.append(window);
  connect(window, &CWallWindow::SignalFocus, this, [this, window_no](bool on) {
    if (on) {
      SetCurrent(window_no);
      Q_EMIT SignalChosen(window_no);
    }
    RenewWindows();
  });
  connect(window, &CWallWindow::SignalEnlarge, this, [this, window_no] { ToggleEnlarged(window_no); });
  connect(window, &CWallWindow::SignalZoomed, this, [this] {
    Q_EMIT SignalCloserLook(IsCloserLook());
    RenewWindows();
  });
  connect(window, &CWallWindow::SignalDragged, this, [this, window_no] { Q_EMIT SignalDragged(window_no); });
}

void CWindowGrid::ShowPage(const PlanPage& page) {
  const int count = WindowsOfSplit(page.split_type);
  const auto before = Views();
  Arrange(SideOfSplit(page.split_type));
  for (CWallWindow* window : qAsConst(windows_)) {
    const bool in_sight = window->Number() <= count;
    Fill(window, in_sight ? ContentOf(page.windows, window->Number()) : nullptr);
  }
  for (const PlanWindow& camera : CamerasOf(page)) {
    if (before.count({camera.resource_code, camera.preset_no}) == 0) {
      Q_EMIT SignalCameraCame(camera);
    }
  }
}

// Cameras and the presets that they were called to. Where someone has moved one since, it stays.
std::set<std::pair<std::string, int>> CWindowGrid::Views() const {
  std::set<std::pair<std::string, int>> views;
  for (const CWallWindow* window : windows_) {
    views.insert({window->Content().resource_code, window->Content().preset_no});
  }
  return views;
}

int CWindowGrid::LeadSeconds(const PlanPage& page) const {
  qint64 lead = kLeastLeadMs;
  for (const PlanWindow& camera : CamerasOf(page)) {
    lead = std::max(lead, pictures_->KeyFrameMs(camera).value_or(kUsualLeadMs));
  }
  return static_cast<int>((lead + 999) / 1000);
}

void CWindowGrid::Prepare(const PlanPage& page) {
  pictures_->Prepare(this, CamerasOf(page));
}

void CWindowGrid::PrepareNothing() {
  pictures_->Prepare(this, {});
}

void CWindowGrid::Clear() {
  SetCurrent(0);
  Enlarge(0);
  for (CWallWindow* window : qAsConst(windows_)) {
    window->Clear();
  }
  memory_.Clear();
  PrepareNothing();
}

void CWindowGrid::Tick() {
  for (CWallWindow* window : qAsConst(windows_)) {
    window->Tick();
  }
}

QImage CWindowGrid::Picture() const {
  if (size().isEmpty()) {
    return QImage();
  }
  QImage picture(size(), QImage::Format_RGB32);
  QPainter painter(&picture);
  painter.setFont(font());
  painter.fillRect(picture.rect(), tarn_ui_data_controller::SkinColor("wall"));
  const int side = std::max(1, side_);
  const QSize one((width() - (side - 1) * kGap) / side, (height() - (side - 1) * kGap) / side);
  for (int window_no = 1; window_no <= Count(); ++window_no) {
    const int column = (window_no - 1) % side, row = (window_no - 1) / side;
    const QPoint place(column * (one.width() + kGap), row * (one.height() + kGap));
    PaintFace(&painter, QRect(place, one), WindowAt(window_no)->Face());
  }
  return picture;
}

CWallWindow* CWindowGrid::WindowAt(int window_no) const {
  if (window_no < 1 || window_no > Count()) {
    return nullptr;
  }
  return windows_[window_no - 1];
}

int CWindowGrid::NumberAt(const QPoint& at) const {
  const auto* window = qobject_cast<CWallWindow*>(childAt(at));
  return window ? window->Number() : 0;
}

void CWindowGrid::Arrange(int side) {
  if (side == std::exchange(side_, side)) {
    return;
  }
  if (!WindowAt(current_)) {
    current_ = 0;
  }
  if (!WindowAt(enlarged_)) {
    enlarged_ = 0;
  }
  const bool had_focus = isAncestorOf(focusWidget());
  Place();
  if (had_focus) {
    Choose(std::max(1, current_));  // else it would go anywhere with the window that has gone
  }
}

// An enlarged window has the first place, and all of it; the others go on out of sight.
void CWindowGrid::Place() {
  const int side = enlarged_ > 0 ? 1 : side_;
  for (CWallWindow* window : qAsConst(windows_)) {
    grid_->removeWidget(window);
    const int place = window->Number() - 1;
    if (enlarged_ > 0 && window->Number() == enlarged_) {
      grid_->addWidget(window, 0, 0);
    } else if (enlarged_ == 0 && WindowAt(window->Number())) {
      grid_->addWidget(window, place / side_, place % side_);
    }
  }
  for (CWallWindow* window : qAsConst(windows_)) {
    window->setVisible(grid_->indexOf(window) >= 0);
  }
  for (int line = 0; line < kMostSide; ++line) {
    const int stretch = static_cast<int>(line < side);
    grid_->setRowStretch(line, stretch);
    grid_->setColumnStretch(line, stretch);
  }
  RenewWindows();
}

// A window without a camera shows nothing of the one before.
void CWindowGrid::Fill(CWallWindow* window, const PlanWindow* content) {
  if (!IsCamera(content)) {
    return Empty(window);
  }
  if (window->Plays(*content)) {
    window->GoOnWith(*content);
  } else {
    Empty(window);
    window->Show(*content, pictures_->Open(*content), memory_.Of(StringToQString(content->resource_code)));
  }
}

void CWindowGrid::Empty(CWallWindow* window) {
  memory_.Keep(StringToQString(window->Content().resource_code), window->LastPicture());
  window->Clear();
}

void CWindowGrid::SetCurrent(int window_no) {
  current_ = WindowAt(window_no) ? window_no : 0;
  RenewWindows();
}

void CWindowGrid::Choose(int window_no) {
  if (CWallWindow* window = WindowAt(window_no)) {
    if (enlarged_ > 0 && enlarged_ != window_no) {
      Enlarge(window_no);
    }
    window->setFocus(Qt::OtherFocusReason);
  }
}

void CWindowGrid::Enlarge(int window_no) {
  const int before = std::exchange(enlarged_, WindowAt(window_no) ? window_no : 0);
  if (before == enlarged_) {
    return;
  }
  const bool had_focus = isAncestorOf(focusWidget());
  if (CWallWindow* window = WindowAt(before)) {
    window->ResetZoom();
  }
  Place();
  const int looked_at = enlarged_ > 0 ? enlarged_ : before;
  if (had_focus) {
    Choose(looked_at);
  }
  SetCurrent(looked_at);
  Q_EMIT SignalCloserLook(IsCloserLook());
}

void CWindowGrid::ToggleEnlarged(int window_no) {
  Enlarge(enlarged_ == window_no ? 0 : window_no);
}

void CWindowGrid::SetTarget(int window_no) {
  if (window_no != std::exchange(target_, window_no)) {
    RenewWindows();
  }
}

bool CWindowGrid::IsCloserLook() const {
  return enlarged_ > 0 || std::any_of(windows_.begin(), windows_.end(), std::mem_fn(&CWallWindow::IsZoomed));
}

// One window is reached by Tab, the others from there by arrow keys. What the user looks at is the last to lose
// pictures.
void CWindowGrid::RenewWindows() {
  const int reached = std::max(1, current_);
  for (CWallWindow* window : qAsConst(windows_)) {
    const int number = window->Number();
    window->setFocusPolicy(number == reached ? Qt::StrongFocus : Qt::ClickFocus);
    window->SetMarks(number == current_, number == target_);
    window->SetInFocus(number == enlarged_ || window->hasFocus() || window->IsZoomed());
  }
}

// 0 where there is none.
int CWindowGrid::Neighbour(int key) const {
  const QPoint place((current_ - 1) % std::max(1, side_), (current_ - 1) / std::max(1, side_));
  const QPoint next = place + StepOf(key);
  const bool is_there = QRect(0, 0, side_, side_).contains(next);
  return is_there && next != place ? next.y() * side_ + next.x() + 1 : 0;
}

bool CWindowGrid::MoveBy(QKeyEvent* event) {
  CWallWindow* window = WindowAt(current_);
  const bool swaps = event->modifiers() == Qt::ControlModifier;
  if (!window || !window->hasFocus() || StepOf(event->key()).isNull() || side_ < 2) {
    return false;
  }
  if (window->IsZoomed() && !swaps) {
    window->MoveZoom(StepOf(event->key()));
    return true;
  }
  const int neighbour = Neighbour(event->key());
  if (neighbour > 0 && swaps && enlarged_ == 0) {
    Q_EMIT SignalSwapWanted(current_, neighbour);
  }
  if (neighbour > 0) {
    Choose(neighbour);
  }
  return true;  // at the edge too: a page must not turn because the way was too long
}

bool CWindowGrid::TakeBack() {
  for (CWallWindow* window : qAsConst(windows_)) {
    if (window->IsZoomed() && window->isVisible()) {
      window->ResetZoom();
      return true;
    }
  }
  if (enlarged_ == 0) {
    return false;
  }
  Enlarge(0);
  return true;
}

void CWindowGrid::keyPressEvent(QKeyEvent* event) {
  const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
  const bool is_arrow = !StepOf(event->key()).isNull();
  if (is_arrow && (modifiers == Qt::NoModifier || modifiers == Qt::ControlModifier) && MoveBy(event)) {
    return;
  }
  if (modifiers == Qt::NoModifier && event->key() == Qt::Key_Escape && TakeBack()) {
    return;
  }
  event->ignore();  // the wall's
}

void CWindowGrid::contextMenuEvent(QContextMenuEvent* event) {
  const bool by_key = event->reason() == QContextMenuEvent::Keyboard;
  const int window_no = by_key ? current_ : NumberAt(event->pos());
  if (CWallWindow* window = WindowAt(window_no)) {
    Choose(window_no);
    const QPoint place = by_key ? window->mapToGlobal(window->rect().center()) : event->globalPos();
    Q_EMIT SignalMenuWanted(window_no, place);
  }
}

}  // namespace TarnClient
