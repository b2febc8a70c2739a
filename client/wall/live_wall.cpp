#include "wall/live_wall.h"

#include <QDragEnterEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "MarUIControl/accessible_role.h"
#include "MarUIControl/offer_strip.h"
#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/skin_color.h"
#include "marlog/marlog.h"
#include "plan_rules/splits.h"
#include "plan_rules/window_content.h"
#include "wall/drop_hint.h"
#include "wall/fetch_sign.h"
#include "wall/same_pages.h"
#include "wall/wall_bar.h"
#include "wall/wall_hint.h"
#include "wall/wall_window.h"

namespace TarnClient {

using MarUIControl::StringToQString;
using tarn_ui_data_controller::SkinColor;
using view_plugin_protocol::Content;
using view_plugin_protocol::kMostWindowsOfPage;
using view_plugin_protocol::PlanPage;
using view_plugin_protocol::PlanWindow;
using view_plugin_protocol::SideOfSplit;

namespace {

constexpr int kTickMs = 100;
constexpr int kGap = 2;

// A page that no one named is called after its number, which the bar shows anyway.
QString NameWorthShowing(const PlanPage& page) {
  const QString name = StringToQString(page.name);
  if (name == QStringLiteral("Page %1").arg(page.page_no)) {
    return QString();
  }
  return name;
}

QVector<int> DwellTimes(const QVector<PlanPage>& pages) {
  QVector<int> seconds;
  for (const PlanPage& page : pages) {
    seconds.append(page.dwell_seconds);
  }
  return seconds;
}

// A plan that plays stays where it is, so nothing is to be moved away.
void Take(QDropEvent* event) {
  if (event->possibleActions() & Qt::CopyAction) {
    event->setDropAction(Qt::CopyAction);
  }
  event->accept();
}

}  // namespace

CLiveWall::CLiveWall(PictureSourceFactory factory, QWidget* parent, std::unique_ptr<CPageClock> turn_clock)
    : QWidget(parent),
      factory_(std::move(factory)),
      clock_(std::make_unique<CPageClock>(), std::move(turn_clock)),
      bar_(new CWallBar(this)),
      stack_(new QStackedWidget(this)),
      hint_(new CWallHint(this)),
      strip_(new MarUIControl::COfferStrip(this)),
      drop_hint_(new CDropHint(this)),
      fetch_sign_(new CFetchSign(this)),
      grid_page_(new QWidget(this)),
      grid_(new QGridLayout(grid_page_)) {
  setObjectName(QStringLiteral("live_wall"));
  setFocusPolicy(Qt::StrongFocus);
  MarUIControl::SetAccessibleRole(this, QAccessible::Pane);
  setAccessibleName(tr("Live view"));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(kGap, kGap, kGap, kGap);
  layout->setSpacing(0);
  layout->addWidget(bar_);
  layout->addWidget(stack_, 1);
  layout->addWidget(strip_);
  hint_->setFocusProxy(this);
  stack_->addWidget(hint_);
  stack_->addWidget(grid_page_);
  BuildGrid();
  ticker_.setInterval(kTickMs);
  connect(&ticker_, &QTimer::timeout, this, &CLiveWall::Tick);
  ConnectParts();
}

CLiveWall::~CLiveWall() = default;

void CLiveWall::BuildGrid() {
  grid_->setContentsMargins(0, 0, 0, 0);
  grid_->setSpacing(kGap);
  for (int i = 0; i < kMostWindowsOfPage; ++i) {
    windows_.append(new CWallWindow(i + 1, grid_page_));
    windows_.last()->hide();
  }
}

void CLiveWall::ConnectParts() {
  connect(&clock_, &CWallClock::SignalPageOver, this, [this] { ShowPage((page_ + 1) % pages_.size()); });
  connect(&clock_, &CWallClock::SignalTurnOver, this, &CLiveWall::SignalTurnOver);
  connect(bar_, &CWallBar::SignalPrevious, this, [this] { Turn(-1); });
  connect(bar_, &CWallBar::SignalNext, this, [this] { Turn(1); });
  connect(bar_, &CWallBar::SignalPause, this, &CLiveWall::ToggleHold);
  connect(bar_, &CWallBar::SignalStop, this, &CLiveWall::SignalStopWanted);
  connect(hint_, &CWallHint::SignalTryAgain, this, &CLiveWall::SignalTryAgain);
}

void CLiveWall::Play(const view_plugin_protocol::GetPlanDetailResponse& plan) {
  plan_ = plan;
  TakePages();
  playing_ = true;
  clock_.BeginPlan(DwellTimes(pages_));
  ShowPage(0);
  marlog::Write("LyraClientInfo", marlog::Info, "Playing plan %s, %d pages", plan.index_code.c_str(), pages_.size());
  Q_EMIT SignalPlanChanged();
}

void CLiveWall::TakePages() {
  pages_ = QVector<PlanPage>(plan_.pages.begin(), plan_.pages.end());
  std::stable_sort(pages_.begin(), pages_.end(),
                   [](const PlanPage& a, const PlanPage& b) { return a.page_no < b.page_no; });
  if (pages_.isEmpty()) {
    pages_.append(PlanPage());
  }
}

void CLiveWall::Renew(const view_plugin_protocol::GetPlanDetailResponse& plan) {
  if (!playing_ || plan.index_code != plan_.index_code) {
    return;
  }
  const QVector<PlanPage> before = pages_;
  const int page_before = page_;
  plan_ = plan;
  TakePages();
  page_ = PageAfterChange(before, page_before, pages_);
  if (!SameWindows(before.at(page_before), pages_.at(page_))) {
    ShowWindows();
  }
  clock_.ChangePlan(DwellTimes(pages_), page_before, page_);
  RenewBar();
  Tick();
  Q_EMIT SignalPlanRenewed();
}

void CLiveWall::Stop() {
  if (!playing_) {
    return;
  }
  playing_ = false;
  clock_.Stop();
  for (CWallWindow* window : qAsConst(windows_)) {
    window->Show(QString(), nullptr);
  }
  pages_.clear();
  plan_ = {};
  RenewBar();
  stack_->setCurrentWidget(hint_);
  RunTicker();
  Q_EMIT SignalPlanChanged();
}

void CLiveWall::Turn(int pages) {
  if (!playing_ || !HasTimes()) {
    return;
  }
  const int count = pages_.size();
  const int page = page_ + pages;
  if (clock_.IsInTurn() && page < 0) {
    return Q_EMIT SignalStepWanted(-1);
  }
  if (clock_.IsInTurn() && page >= count) {
    return Q_EMIT SignalStepWanted(1);
  }
  ShowPage((page % count + count) % count);
  clock_.GoToPage(page_);
  RenewBar();
}

void CLiveWall::GoTo(int page) {
  if (page < 1 || page > pages_.size()) {
    return;
  }
  if (page_ != page - 1) {
    ShowPage(page - 1);
  }
  clock_.GoToPage(page_);
  RenewBar();
}

void CLiveWall::ToggleHold() {
  if (!playing_ || !HasTimes()) {
    return;
  }
  clock_.SetHeld(!clock_.IsHeld());
  RenewBar();
  if (clock_.IsHeld()) {
    Q_EMIT SignalHeld();
  }
}

void CLiveWall::BeginTurn(int least_seconds) {
  if (playing_) {
    clock_.BeginTurn(least_seconds);
    RenewBar();
  }
}

void CLiveWall::Stay(int seconds) {
  if (clock_.IsInTurn()) {
    clock_.Stay(seconds);
    RenewBar();
  }
}

void CLiveWall::Await(const QString& text) {
  fetch_sign_->Await(text);
}

void CLiveWall::ShowNote(const QString& text) {
  bar_->ShowNote(text);
  hint_->ShowNote(text);
}

void CLiveWall::ShowFailure(const QString& text, const QString& reason, bool may_try_again) {
  hint_->ShowFailure(text, reason, may_try_again);
}

void CLiveWall::EndTurns() {
  clock_.EndTurns();
  RenewBar();
}

QString CLiveWall::PlanName() const {
  return StringToQString(plan_.name);
}

QString CLiveWall::PlanCode() const {
  return StringToQString(plan_.index_code);
}

QVector<CLiveWall::WindowState> CLiveWall::Windows() const {
  QVector<WindowState> states;
  for (const CWallWindow* window : windows_) {
    if (!window->IsEmpty()) {
      states.append({window->Camera(), window->StateName(), window->Frames()});
    }
  }
  return states;
}

void CLiveWall::ShowPage(int number) {
  page_ = number;
  ShowWindows();
  stack_->setCurrentWidget(grid_page_);
  clock_.BeginPage(page_);
  RenewBar();
  RunTicker();
}

void CLiveWall::ShowWindows() {
  const PlanPage& page = pages_.at(page_);
  const int side = SideOfSplit(page.split_type);
  ArrangeGrid(side);
  FillWindows(page, side * side);
}

void CLiveWall::RenewBar() {
  if (!playing_) {
    return bar_->ShowNothing();
  }
  bar_->ShowPlan(PlanName(), NameWorthShowing(pages_.at(page_)), page_ + 1, pages_.size(), clock_.IsInTurn());
  ShowTimes();
}

void CLiveWall::ShowTimes() {
  bar_->ShowTimes(clock_.PageSecondsLeft(), clock_.TurnSecondsLeft(), clock_.IsHeld());
}

void CLiveWall::ArrangeGrid(int side) {
  for (int i = 0; i < kMostWindowsOfPage; ++i) {
    grid_->removeWidget(windows_[i]);
    const bool used = i < side * side;
    windows_[i]->setVisible(used);
    if (used) {
      grid_->addWidget(windows_[i], i / side, i % side);
    }
  }
  for (int line = 0; line < 4; ++line) {
    const int stretch = static_cast<int>(line < side);
    grid_->setRowStretch(line, stretch);
    grid_->setColumnStretch(line, stretch);
  }
}

void CLiveWall::FillWindows(const PlanPage& page, int count) {
  for (const PlanWindow& window : page.windows) {
    if (IsCamera(window) && (window.window_no < 1 || window.window_no > count)) {
      marlog::Write("LyraClientError", marlog::Warning, "Plan %s, page %d has no window %d", plan_.index_code.c_str(),
                    page.page_no, window.window_no);
    }
  }
  for (int i = 0; i < count; ++i) {
    FillWindow(windows_[i], ContentOf(page.windows, i + 1));
  }
  for (int i = count; i < windows_.size(); ++i) {
    FillWindow(windows_[i], nullptr);
  }
}

// Also one without content: nothing of the last page may stay in it.
void CLiveWall::FillWindow(CWallWindow* window, const PlanWindow* content) {
  switch (ContentIn(content)) {
    case Content::Camera:
      return window->Show(StringToQString(content->resource_name), factory_(*content));
    case Content::Nothing:
    case Content::OtherContent:
      return window->Show(QString(), nullptr);
  }
}

void CLiveWall::Tick() {
  for (CWallWindow* window : qAsConst(windows_)) {
    window->Tick();
  }
  if (HasTimes()) {
    ShowTimes();
  }
}

// No one looks at a hidden wall: its pictures rest, while its pages go on turning.
void CLiveWall::RunTicker() {
  if (playing_ && isVisible()) {
    ticker_.start();
  } else {
    ticker_.stop();
  }
}

void CLiveWall::keyPressEvent(QKeyEvent* event) {
  if (event->modifiers() & ~Qt::KeypadModifier) {
    QWidget::keyPressEvent(event);
    return;
  }
  switch (event->key()) {
    case Qt::Key_Left:
      return Turn(-1);
    case Qt::Key_Right:
      return Turn(1);
    case Qt::Key_Space:
      return ToggleHold();
    case Qt::Key_Escape:
      if (playing_) {
        return Q_EMIT SignalStopWanted();
      }
      break;  // the window may have something to take back that is not on the wall yet
    default:
      break;
  }
  QWidget::keyPressEvent(event);
}

QImage CLiveWall::Picture() const {
  QImage windows = grid_page_->grab().toImage();
  windows.setDevicePixelRatio(1);
  return windows;
}

void CLiveWall::AcceptDropsOf(const QString& station_id) {
  station_id_ = station_id;
  setAcceptDrops(true);
}

// What it cannot play it does not take, so that the cursor says so before the button is released.
void CLiveWall::dragEnterEvent(QDragEnterEvent* event) {
  const auto drop = PlanDrop::Read(event->mimeData(), station_id_);
  if (!drop) {
    event->ignore();
    return;
  }
  Take(event);
  QString hint = tr("Play \"%1\"");
  if (drop->kind == PlanDrop::Kind::Group) {
    hint = tr("Play the plans of \"%1\" in turn");
  }
  drop_hint_->ShowOver(stack_->geometry(), hint.arg(drop->name));
}

void CLiveWall::dragLeaveEvent(QDragLeaveEvent*) {
  drop_hint_->hide();
}

void CLiveWall::dropEvent(QDropEvent* event) {
  drop_hint_->hide();
  const auto drop = PlanDrop::Read(event->mimeData(), station_id_);
  if (!drop) {
    event->ignore();
    return;
  }
  Take(event);
  Q_EMIT SignalDropped(*drop);
}

void CLiveWall::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), SkinColor("background"));
  painter.fillRect(stack_->geometry(), SkinColor("wall"));
  if (hasFocus()) {
    painter.setPen(QPen(SkinColor("focus"), kGap));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
  }
}

void CLiveWall::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  RunTicker();
}

void CLiveWall::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  fetch_sign_->Place(rect().adjusted(0, bar_->height(), 0, 0));
}

void CLiveWall::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  RunTicker();
}

}  // namespace TarnClient
