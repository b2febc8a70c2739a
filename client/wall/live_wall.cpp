#include "wall/live_wall.h"

#include <QPointer>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <utility>

#include "MarUIControl/accessible_role.h"
#include "MarUIControl/offer_strip.h"
#include "MarUIControl/string_conversion.h"
#include "marlog/marlog.h"
#include "plan_rules/splits.h"
#include "plan_rules/window_content.h"
#include "wall/drop_hint.h"
#include "wall/fetch_sign.h"
#include "wall/same_pages.h"
#include "wall/wall_bar.h"
#include "wall/wall_drops.h"
#include "wall/wall_hint.h"
#include "wall/wall_window.h"
#include "wall/window_grid.h"

namespace TarnClient {

using MarUIControl::StringToQString;
using view_plugin_protocol::PlanPage;
using view_plugin_protocol::PlanWindow;
using view_plugin_protocol::WindowsOfSplit;

namespace {

constexpr int kTickMs = 30;  // a camera sends up to 30 pictures a second
constexpr int kGap = 2;
constexpr int kTurnLeadSeconds = 3;  // the plan that comes is still to be fetched

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

}  // namespace

CLiveWall::CLiveWall(std::shared_ptr<IPictureSupply> pictures, QWidget* parent, std::unique_ptr<CPageClock> turn_clock)
    : QWidget(parent),
      clock_(std::make_unique<CPageClock>(), std::move(turn_clock)),
      bar_(new CWallBar(this)),
      stack_(new QStackedWidget(this)),
      hint_(new CWallHint(this)),
      strip_(new MarUIControl::COfferStrip(this)),
      drop_hint_(new CDropHint(this)),
      fetch_sign_(new CFetchSign(this)),
      grid_(new CWindowGrid(std::move(pictures), this)) {
  drops_ = new CWallDrops(drop_hint_, grid_, this);
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
  stack_->addWidget(grid_);
  ticker_.setInterval(kTickMs);
  connect(&ticker_, &QTimer::timeout, this, &CLiveWall::Tick);
  ConnectParts();
  ConnectGrid();
}

CLiveWall::~CLiveWall() = default;

void CLiveWall::ConnectParts() {
  connect(&clock_, &CWallClock::SignalPageOver, this, [this] { ShowPage((page_ + 1) % Pages().size()); });
  connect(&clock_, &CWallClock::SignalTurnOver, this, &CLiveWall::SignalTurnOver);
  connect(bar_, &CWallBar::SignalPrevious, this, [this] { Turn(-1); });
  connect(bar_, &CWallBar::SignalNext, this, [this] { Turn(1); });
  connect(bar_, &CWallBar::SignalPause, this, &CLiveWall::ToggleHold);
  connect(bar_, &CWallBar::SignalStop, this, &CLiveWall::SignalStopWanted);
  connect(hint_, &CWallHint::SignalTryAgain, this, &CLiveWall::SignalTryAgain);
  connect(drops_, &CWallDrops::SignalPlanDropped, this, &CLiveWall::SignalDropped);
  connect(drops_, &CWallDrops::SignalCamerasDropped, this, &CLiveWall::SignalCamerasDropped);
  connect(drops_, &CWallDrops::SignalSwapWanted, this, &CLiveWall::SignalSwapWanted);
}

void CLiveWall::ConnectGrid() {
  connect(grid_, &CWindowGrid::SignalCameraCame, this, [this](const PlanWindow& window) {
    if (window.preset_no > 0) {
      Q_EMIT SignalPresetWanted(StringToQString(window.resource_code), window.preset_no);
    }
  });
  connect(grid_, &CWindowGrid::SignalCloserLook, this, [this](bool closer) { StayFor(grid_, closer); });
  connect(grid_, &CWindowGrid::SignalSwapWanted, this, &CLiveWall::SignalSwapWanted);
  connect(grid_, &CWindowGrid::SignalDragged, this, [this](int window_no) {
    if (const PlanWindow* window = arrangement_.At(page_, window_no)) {
      const QPointer<CLiveWall> alive(this);  // events go on meanwhile
      StayFor(drops_, true);
      drops_->DragAway(window_no, {window->resource_code, window->resource_name});
      if (alive) {
        StayFor(drops_, false);
      }
    }
  });
}

void CLiveWall::Play(const view_plugin_protocol::GetPlanDetailResponse& plan, const WallPlace& place) {
  marlog::Write("LyraClientInfo", marlog::Info, "Playing plan %s, %d pages", plan.index_code.c_str(),
                static_cast<int>(plan.pages.size()));
  Show(CArrangement(plan), place);
}

// What is said of it comes when all is as it says.
void CLiveWall::Show(const CArrangement& arrangement, const WallPlace& place) {
  const WallPlace place_before = Place();
  const CArrangement before = std::exchange(arrangement_, arrangement);
  works_.clear();
  clock_.BeginPlan(DwellTimes(Pages()));
  if (!grid_->isAncestorOf(focusWidget())) {
    grid_->SetCurrent(0);
  }
  const bool has_page = place.page >= 1 && place.page <= Pages().size();
  ShowPage(has_page ? place.page - 1 : 0);
  SetHeld(place.is_held && HasTimes());
  Q_EMIT SignalPlanChanged();
  if (before.IsChanged() && !SamePages(before.PagesToSave(), arrangement_.PagesToSave())) {
    Q_EMIT SignalLeft(before, place_before);
  }
}

void CLiveWall::Renew(const view_plugin_protocol::GetPlanDetailResponse& plan) {
  if (!IsPlaying() || plan.index_code != Plan().index_code) {
    return;
  }
  const QVector<PlanPage> before = Pages();
  const int page_before = page_;
  arrangement_.Renew(plan);
  page_ = PageAfterChange(before, page_before, Pages());
  ShowWindows();
  clock_.ChangePlan(DwellTimes(Pages()), page_before, page_);
  RenewBar();
  Tick();
  Q_EMIT SignalPlanRenewed();
}

bool CLiveWall::Change(const std::function<bool(CArrangement*)>& edit) {
  CArrangement changed = arrangement_;
  if (changed.IsNothing()) {
    changed = CArrangement::WithoutPlan();
  }
  const bool is_new = !IsShowing();
  if (!edit(&changed)) {
    return false;
  }
  if (is_new) {
    Show(changed, {});
  } else {
    arrangement_ = changed;
    ShowWindows();
    RenewBar();
  }
  works_.clear();
  if (HasTimes() && !clock_.IsHeld()) {
    SetHeld(true);
  }
  Q_EMIT SignalArrangementChanged();
  return true;
}

void CLiveWall::Stop() {
  if (!IsShowing()) {
    return;
  }
  const WallPlace place_before = Place();
  const CArrangement before = std::exchange(arrangement_, CArrangement());
  works_.clear();
  clock_.Stop();
  grid_->Clear();
  RenewBar();
  stack_->setCurrentWidget(hint_);
  RunTicker();
  Q_EMIT SignalPlanChanged();
  if (before.IsChanged()) {
    Q_EMIT SignalLeft(before, place_before);
  }
}

void CLiveWall::Saved(const std::list<PlanPage>& pages) {
  arrangement_.Saved(pages);
  RenewBar();
}

void CLiveWall::RenewNames(const CArrangement::NameOf& name_of) {
  if (arrangement_.Rename(name_of)) {
    grid_->ShowPage(Pages().at(page_));
  }
}

void CLiveWall::StayFor(const void* work, bool on) {
  const bool is_held_by_word = clock_.IsHeld() && works_.isEmpty();
  if (on && HasTimes() && !is_held_by_word) {
    works_.insert(work);
    SetHeld(true);
  } else if (!on && works_.remove(work) && works_.isEmpty()) {
    SetHeld(false);
  }
}

void CLiveWall::Turn(int pages) {
  if (!HasTimes()) {
    return;
  }
  const int count = Pages().size();
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
  if (page < 1 || page > Pages().size()) {
    return;
  }
  if (page_ != page - 1) {
    ShowPage(page - 1);
  }
  clock_.GoToPage(page_);
  RenewBar();
}

void CLiveWall::ToggleHold() {
  if (!HasTimes()) {
    return;
  }
  works_.clear();
  SetHeld(!clock_.IsHeld());
}

void CLiveWall::SetHeld(bool held) {
  if (held == clock_.IsHeld()) {
    return;
  }
  clock_.SetHeld(held);
  RenewBar();
  if (held) {
    PrepareNothing();
    Q_EMIT SignalHeld();
  }
}

void CLiveWall::BeginTurn(int least_seconds) {
  if (IsPlaying()) {
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
  return StringToQString(Plan().name);
}

QString CLiveWall::PlanCode() const {
  return StringToQString(Plan().index_code);
}

QVector<CLiveWall::WindowState> CLiveWall::Windows() const {
  QVector<WindowState> states;
  for (const CWallWindow* window : grid_->Windows()) {
    if (!window->IsEmpty()) {
      states.append({window->Camera(), window->StateName(), window->Status(), window->Frames()});
    }
  }
  return states;
}

void CLiveWall::ShowPage(int number) {
  page_ = number;
  grid_->Enlarge(0);
  ShowWindows();
  stack_->setCurrentWidget(grid_);
  clock_.BeginPage(page_);
  RenewBar();
  RunTicker();
  Q_EMIT SignalPageShown();
}

void CLiveWall::ShowWindows() {
  ReportLostWindows(Pages().at(page_));
  grid_->ShowPage(Pages().at(page_));
  PrepareNothing();
}

void CLiveWall::RenewBar() {
  if (!IsShowing()) {
    return bar_->ShowNothing();
  }
  const PlanPage& page = Pages().at(page_);
  bar_->ShowPlan(Title(), NameWorthShowing(page), page_ + 1, Pages().size(), clock_.IsInTurn());
  bar_->ShowChanged(arrangement_.IsChanged());
  ShowTimes();
}

QString CLiveWall::Title() const {
  if (IsPlaying()) {
    return PlanName();
  }
  return tr("Own arrangement");
}

void CLiveWall::ShowTimes() {
  bar_->ShowTimes(clock_.PageSecondsLeft(), clock_.TurnSecondsLeft(), clock_.IsHeld());
}

void CLiveWall::ReportLostWindows(const PlanPage& page) const {
  for (const PlanWindow& window : page.windows) {
    if (IsCamera(window) && (window.window_no < 1 || window.window_no > WindowsOfSplit(page.split_type))) {
      marlog::Write("LyraClientError", marlog::Warning, "Plan %s, page %d has no window %d", Plan().index_code.c_str(),
                    page.page_no, window.window_no);
    }
  }
}

// Cameras need a moment until their first picture: those that come next are connected before their time.
void CLiveWall::PrepareNext() {
  if (!HasTimes() || clock_.IsHeld() || prepared_ == Prepared::Plan) {
    return;
  }
  const PlanPage& next = Pages().at((page_ + 1) % Pages().size());
  if (clock_.IsInTurn() && clock_.TurnSecondsLeft() <= kTurnLeadSeconds) {
    prepared_ = Prepared::Plan;
    Q_EMIT SignalTurnEnds();
  } else if (HasSeveralPages() && prepared_ == Prepared::Nothing &&
             clock_.PageSecondsLeft() <= grid_->LeadSeconds(next)) {
    prepared_ = Prepared::Page;
    grid_->Prepare(next);
  }
}

// What comes next is not known any more, or does not come by itself.
void CLiveWall::PrepareNothing() {
  grid_->PrepareNothing();
  prepared_ = Prepared::Nothing;
}

void CLiveWall::Prepare(const view_plugin_protocol::GetPlanDetailResponse& plan) {
  if (clock_.IsInTurn() && !clock_.IsHeld()) {
    grid_->Prepare(CArrangement(plan).Pages().front());
  }
}

void CLiveWall::Tick() {
  grid_->Tick();
  PrepareNext();
  if (HasTimes()) {
    ShowTimes();
  }
}

// No one looks at a hidden wall: its pictures rest, while its pages go on turning.
void CLiveWall::RunTicker() {
  if (IsShowing() && isVisible()) {
    ticker_.start();
  } else {
    ticker_.stop();
  }
}

QImage CLiveWall::Picture() const {
  return grid_->Picture();
}

}  // namespace TarnClient
