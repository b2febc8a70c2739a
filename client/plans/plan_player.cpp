#include "plans/plan_player.h"

#include <TarnPlanView/auto_plan_helper.h>
#include <TarnPlanView/plan_clock.h>
#include <TarnPlanView/theme_node_type.h>

#include <QTime>
#include <utility>

#include "MarUIControl/string_conversion.h"
#include "plans/plan_family.h"
#include "plans/plan_inquiry.h"
#include "plans/playing_mark.h"
#include "wall/live_wall.h"

namespace TarnClient {

using MarUIControl::QStringToString;
using MarUIControl::StringToQString;
using TarnPlanView::CAutoPlanHelper;
using TarnPlanView::CPlanClock;
using TarnPlanView::CStandardViewController;
using TarnPlanView::CViewExternWidget;
using view_plugin_protocol::GetPlanDetailResponse;

namespace {

constexpr int kEndCheckMs = 1000;
constexpr int kNextPlanMs = 1500;  // by then the helper has looked whether another timed plan is due

// What starts by itself, as a turn of a cycle does, is none.
bool IsUsersOwn(PlayOrigin origin) {
  return origin == PlayOrigin::User || origin == PlayOrigin::History;
}

}  // namespace

CPlanPlayer::CPlanPlayer(CLiveWall* wall, QObject* parent)
    : QObject(parent),
      wall_(wall),
      mark_(new CPlayingMark(this)),
      inquiry_(new CPlanInquiry(this, [this](const GetPlanDetailResponse& plan) { OnSeen(plan); })) {
  qRegisterMetaType<PlayOrigin>("TarnClient::PlayOrigin");
  end_check_.setInterval(kEndCheckMs);
  connect(&end_check_, &QTimer::timeout, this, &CPlanPlayer::CheckAutomaticEnd);
  next_plan_.setInterval(kNextPlanMs);
  next_plan_.setSingleShot(true);
  connect(&next_plan_, &QTimer::timeout, this, &CPlanPlayer::OnNoNextPlan);
  connect(wall_, &CLiveWall::SignalPlanChanged, this, &CPlanPlayer::OnWallChanged);
  auto& helper = CAutoPlanHelper::Instance();
  connect(&helper, &CAutoPlanHelper::signalStartPlanAutoRun, this, &CPlanPlayer::OnAutomaticStart);
  connect(&helper, &CAutoPlanHelper::signalStopPlanAutoRun, this, &CPlanPlayer::OnAutomaticStop);
}

CPlanPlayer::~CPlanPlayer() = default;

void CPlanPlayer::Attach(CPlanFamily* family) {
  CViewExternWidget* panel = family->Panel();
  connect(panel, &CViewExternWidget::SignalPlayPlanToMonitor, this, &CPlanPlayer::OnWanted);
  connect(panel, &CViewExternWidget::SignalStopPlan, this, &CPlanPlayer::Stop);
  if (CStandardViewController* controller = family->Controller()) {
    if (!controller_) {
      controller_ = controller;
    }
    connect(controller, &CStandardViewController::SignalPlayPlanView, this, &CPlanPlayer::OnDetail);
    controller->SetPlayListener(this, [this](const std::string& code) { OnFetched(code); });
  }
  mark_->Watch(family);
}

// The panel asks its controller itself; what it asked for is heard here beforehand.
void CPlanPlayer::OnWanted(const QVariant& plan) {
  const std::string code = QStringToString(plan.toMap().value(QStringLiteral("plan_code")).toString());
  if (code != wanted_ || wanted_by_ == PlayOrigin::DefaultView) {
    Want(code, PlayOrigin::User);
  }
  ++on_way_[code];
}

// Whether it has come or failed; but the plan may have been asked for once more since.
void CPlanPlayer::OnFetched(const std::string& code) {
  const auto fetches = on_way_.find(code);
  if (fetches == on_way_.end() || --fetches->second > 0) {
    return;
  }
  on_way_.erase(fetches);
  if (code == wanted_) {
    SetWanted({});
  }
}

void CPlanPlayer::Want(const std::string& code, PlayOrigin origin) {
  wanted_by_ = origin;
  SetWanted(code);
  Q_EMIT SignalWanted();
}

void CPlanPlayer::SetWanted(const std::string& code) {
  if (code != wanted_) {
    wanted_ = code;
    Q_EMIT SignalWantedChanged();
  }
}

void CPlanPlayer::Play(const std::string& code, PlayOrigin origin) {
  if (controller_) {
    Want(code, origin);
    ++on_way_[code];
    controller_->PlayPlanViewByIndexCode(code);
  }
}

void CPlanPlayer::PlayFromHistory(CPlanFamily* family, const std::string& code) {
  Want(code, PlayOrigin::History);
  family->Panel()->PlayPlanFromHistory(code);
}

void CPlanPlayer::PlayOfCycle(const GetPlanDetailResponse& plan, PlayOrigin origin) {
  Show(plan, origin);
}

bool CPlanPlayer::IsBusy() const {
  return wall_->IsPlaying() || !wanted_.empty();
}

bool CPlanPlayer::ShowsAutomatic() const {
  return wall_->IsPlaying() && shown_by_ == PlayOrigin::Automatic;
}

// No one has asked for what the client opened by itself, so a plan may begin on time in its place.
bool CPlanPlayer::GivesWay() const {
  return shown_by_ == PlayOrigin::Automatic || shown_by_ == PlayOrigin::DefaultView;
}

// Answers may come in any order; what the user asked for last wins.
void CPlanPlayer::OnDetail(const GetPlanDetailResponse& plan) {
  if (plan.index_code == wanted_) {
    Show(plan, wanted_by_);
  }
}

void CPlanPlayer::OnAutomaticStart(const GetPlanDetailResponse& plan) {
  inquiry_->Drop();
  if (wall_->IsPlaying() && !GivesWay()) {
    return;
  }
  // The helper keeps the plan that it knows while it gets no answer: after a switch of user that may be one which only
  // the last user can see.
  if (user_switched_ && plan.type != TarnPlanView::PublicTheme) {
    inquiry_->Begin(plan);
    return;
  }
  Show(plan, PlayOrigin::Automatic);
  WatchAutomaticEnd(plan.end_time);
}

void CPlanPlayer::OnSeen(const GetPlanDetailResponse& plan) {
  user_switched_ = false;
  OnAutomaticStart(plan);
}

// No stop is announced when the plan vanishes in mid-run or was stopped, so its end is kept here, also for the plan
// that may come next. The clock is looked at again and again, since it may be set, or the computer sleep, in between.
void CPlanPlayer::WatchAutomaticEnd(const std::string& end) {
  const QTime time = QTime::fromString(StringToQString(end));
  if (time.isValid()) {
    automatic_end_ = QDateTime(CPlanClock::Now().date(), time);
    is_past_end_ = false;
    end_check_.start();
  }
}

// The helper, which looks as often, goes first: it forgets its plan by announcing the stop.
void CPlanPlayer::CheckAutomaticEnd() {
  const bool was_past_end = std::exchange(is_past_end_, CPlanClock::Now() >= automatic_end_);
  if (was_past_end && is_past_end_) {
    EndAutomatic();
  }
}

void CPlanPlayer::OnAutomaticStop() {
  inquiry_->Drop();
  EndAutomatic();
}

void CPlanPlayer::EndAutomatic() {
  end_check_.stop();
  CAutoPlanHelper::Instance().CheckAutoRunPlan();  // the next one may be due now, long before the helper asks by itself
  if (ShowsAutomatic()) {
    ends_by_time_ = true;
    wall_->Stop();
    ends_by_time_ = false;
    next_plan_.start();
  }
}

// A wish that is on its way may fail yet, so it is waited for.
void CPlanPlayer::OnNoNextPlan() {
  if (wall_->IsPlaying()) {
    return;
  }
  if (IsBusy()) {
    AwaitNextPlan();
  } else {
    Q_EMIT SignalAutomaticOver();
  }
}

void CPlanPlayer::Stop() {
  SetWanted({});
  inquiry_->Drop();
  next_plan_.stop();
  if (wall_->IsPlaying()) {
    wall_->Stop();
  } else {
    Q_EMIT SignalStopped();
  }
}

void CPlanPlayer::ForgetUser() {
  user_switched_ = true;
  const auto unanswered = inquiry_->Take();
  Stop();
  if (unanswered) {
    inquiry_->Begin(*unanswered);  // the helper announces it no more today, and it may be this user's
  }
}

void CPlanPlayer::Show(const GetPlanDetailResponse& plan, PlayOrigin origin) {
  shown_by_ = origin;
  if (!GivesWay()) {
    inquiry_->Drop();
  }
  if (origin != PlayOrigin::Automatic || wanted_by_ == PlayOrigin::DefaultView) {
    SetWanted({});  // what the user wanted and is still on its way takes the place of an automatic plan
  }
  wall_->Play(plan);
  Record(plan.name, origin);
  Q_EMIT SignalPlayed(plan, origin);
}

void CPlanPlayer::Record(const std::string& name, PlayOrigin origin) {
  if (controller_) {
    controller_->AddOperationPlayPlan(StringToQString(name), !IsUsersOwn(origin), origin == PlayOrigin::History);
  }
}

void CPlanPlayer::OnWallChanged() {
  mark_->Set(wall_->PlanCode(), IsUsersOwn(shown_by_));
  if (wall_->IsPlaying()) {
    return;
  }
  if (shown_by_ == PlayOrigin::Automatic) {
    CAutoPlanHelper::Instance().SetPlanDisplayState(false);
  }
  shown_by_ = PlayOrigin::User;
  if (!ends_by_time_) {
    SetWanted({});
    inquiry_->Drop();
    next_plan_.stop();
    Q_EMIT SignalStopped();
  }
}

}  // namespace TarnClient
