#include "plans/plan_player.h"

#include <TarnPlanView/auto_plan_helper.h>
#include <TarnPlanView/call_answer.h>
#include <TarnPlanView/plan_clock.h>
#include <TarnPlanView/view_config_manager.h>

#include <utility>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "ResourceData/resource_type.h"
#include "host_calls/ask.h"
#include "plan_rules/default_view.h"
#include "plans/plan_family.h"
#include "plans/playing_mark.h"
#include "plans/programme_texts.h"
#include "plans/retry_pause.h"
#include "wall/live_wall.h"

namespace TarnClient {

using LyraPluginManager::CViewBusinessInterfaceMgr;
using MarUIControl::QStringToString;
using MarUIControl::StringToQString;
using TarnPlanView::CallAnswer;
using TarnPlanView::CAutoPlanHelper;
using TarnPlanView::CStandardViewController;
using TarnPlanView::CViewExternWidget;
using view_plugin_protocol::GetClientDefaultViewConfigRequest;
using view_plugin_protocol::GetClientDefaultViewConfigResponse;
using view_plugin_protocol::GetPlanDetailRequest;
using view_plugin_protocol::GetPlanDetailResponse;

namespace {

constexpr int kClockMs = 1000;
constexpr int kNextPlanMs = 1500;  // by then the helper has looked whether another timed plan is due

Events::Failure FailureOf(const view_plugin_protocol::ResponseHeader& answer) {
  return {StringToQString(answer.error_info), answer.error_kind};
}

}  // namespace

CPlanPlayer::CPlanPlayer(CLiveWall* wall, QObject* parent)
    : QObject(parent), wall_(wall), mark_(new CPlayingMark(this)) {
  qRegisterMetaType<PlayOrigin>("TarnClient::PlayOrigin");
  clock_.setInterval(kClockMs);
  connect(&clock_, &QTimer::timeout, this, [this] { Handle(Events::ClockTicked()); });
  next_plan_.setSingleShot(true);
  connect(&next_plan_, &QTimer::timeout, this, [this] { Handle(Events::NextPlanDue()); });
  FollowWall();
}

CPlanPlayer::~CPlanPlayer() = default;

void CPlanPlayer::FollowWall() {
  connect(wall_, &CLiveWall::SignalPlanRenewed, this, [this] { Handle(Events::PlanRenewed{wall_->Plan()}); });
  const auto look = [this] { Handle(Events::WallArranged{wall_->Arrangement().IsChanged()}); };
  connect(wall_, &CLiveWall::SignalPlanChanged, this, look);
  connect(wall_, &CLiveWall::SignalPlanRenewed, this, look);
  connect(wall_, &CLiveWall::SignalArrangementChanged, this, look);
  connect(wall_, &CLiveWall::SignalStopWanted, this, &CPlanPlayer::Stop);
  connect(wall_, &CLiveWall::SignalTryAgain, this, &CPlanPlayer::TryAgain);
  connect(wall_, &CLiveWall::SignalTurnEnds, this, &CPlanPlayer::LookAhead);
  connect(wall_, &CLiveWall::SignalTurnOver, this, [this] { Handle(Events::TurnOver()); });
  connect(wall_, &CLiveWall::SignalStepWanted, this, [this](int step) { Handle(Events::StepWanted{step}); });
  connect(wall_, &CLiveWall::SignalHeld, this, [this] { Handle(Events::Held()); });
}

void CPlanPlayer::FollowTimedPlans() {
  auto& helper = CAutoPlanHelper::Instance();
  connect(&helper, &CAutoPlanHelper::signalStartPlanAutoRun, this,
          [this](const GetPlanDetailResponse& plan) { Handle(Events::TimedPlanBegins{plan}); });
  connect(&helper, &CAutoPlanHelper::signalStopPlanAutoRun, this, [this] { Handle(Events::TimedPlanEnds()); });
}

void CPlanPlayer::Attach(CPlanFamily* family) {
  families_.append(family);
  mark_->Watch(family);
  CViewExternWidget* panel = family->Panel();
  // The panel asks its controller itself; what it asks for is heard here beforehand.
  connect(panel, &CViewExternWidget::SignalPlayPlanToMonitor, this, [this](const QVariant& plan) {
    Handle(Events::PanelFetches{QStringToString(plan.toMap().value(QStringLiteral("plan_code")).toString())});
  });
  connect(panel, &CViewExternWidget::SignalStopPlan, this, [this] {
    Handle(Events::StopWanted{wall_->Place(), false});
  });
  connect(panel, &CViewExternWidget::SignalPlanRestored, this,
          [this](const QString& code) { Handle(Events::PlanIsBack{QStringToString(code)}); });
  // The time that the panel names is that of a host which lets its users choose none.
  connect(panel, &CViewExternWidget::SignalPlanGroupCycle, this, [this](const QString& code) { PlayGroup(code); });
  CStandardViewController* controller = family->Controller();
  if (!controller) {
    return;
  }
  if (!controller_) {
    controller_ = controller;
  }
  connect(controller, &CStandardViewController::SignalPlayPlanView, this,
          [this](const GetPlanDetailResponse& plan) { Handle(Events::PlanCame{plan}); });
  controller->SetPlayListener(this, [this](const CallAnswer& answer, const std::string& code) {
    Events::FetchOver over{code};
    if (!answer.ok) {
      over.failure = Events::Failure{answer.text, answer.kind, true};
    }
    Handle(over);
  });
}

void CPlanPlayer::Play(const std::string& code, PlayOrigin origin, const WallPlace& place) {
  if (!code.empty()) {
    Handle(Events::PlanWanted{code, origin, place});
  }
}

void CPlanPlayer::PlayGroup(const QString& code) {
  if (!code.isEmpty()) {
    Handle(Events::GroupWanted{GroupOf(code)});
  }
}

void CPlanPlayer::SetSecondsPerPlan(int seconds) {
  seconds_per_plan_ = seconds;
  Handle(Events::SecondsPerPlanChosen{seconds});
}

void CPlanPlayer::OpenDefaultView() {
  Handle(Events::DefaultViewWanted());
}

void CPlanPlayer::OpenInItsPlace(const QString& code, bool is_group) {
  in_its_place_ = InItsPlace{code, is_group};
  OpenDefaultView();
}

void CPlanPlayer::BringBack(const CArrangement& arrangement, const WallPlace& place) {
  Handle(Events::ArrangementWanted{arrangement, place});
}

void CPlanPlayer::Stop() {
  Handle(Events::StopWanted{wall_->Place()});
  ClearOwnCameras();
}

// Of cameras without a plan the programme knows nothing.
void CPlanPlayer::ClearOwnCameras() {
  if (!wall_->IsPlaying()) {
    wall_->Stop();
  }
}

void CPlanPlayer::PlayAgain() {
  Handle(Events::PlayAgainWanted());
}

void CPlanPlayer::ForgetStopped() {
  Handle(Events::OfferOver());
}

void CPlanPlayer::TryAgain() {
  Handle(Events::TryAgainWanted());
}

void CPlanPlayer::ForgetUser() {
  in_its_place_.reset();
  Handle(Events::UserSwitched());
  ClearOwnCameras();
}

void CPlanPlayer::OnDefaultView(const QString& code, bool is_group) {
  if (is_group) {
    Handle(Events::DefaultGroupKnown{GroupOf(code)});
  } else {
    Handle(Events::DefaultPlanKnown{QStringToString(code)});
  }
}

void CPlanPlayer::OnDefaultViewAnswer(const HostCalls::Result<GetClientDefaultViewConfigResponse>& answer) {
  const std::string& code = answer.response.index_code;
  if (!answer.ok) {
    Handle(Events::DefaultViewUnknown{FailureOf(answer.response)});
  } else if (code == view_plugin_protocol::kNoDefaultViewCode || code.empty()) {
    Handle(Events::DefaultViewNone());
  } else {
    OnDefaultView(StringToQString(code), answer.response.type == ResourceData::RT_VIEW_GROUP);
  }
}

Events::Group CPlanPlayer::GroupOf(const QString& code) const {
  Events::Group group{QStringToString(code), QString(), seconds_per_plan_};
  group.may_cycle = TarnPlanView::CViewConfigManager::Instance().IsSupportPlanGroupCycle();
  for (const auto& family : families_) {
    if (family && group.name.isEmpty()) {
      group.name = family->GroupName(code);
    }
  }
  return group;
}

// One event after the other: what a command causes has to wait.
void CPlanPlayer::Handle(const ProgrammeEvent& event) {
  events_.push_back(event);
  if (events_.size() > 1) {
    return;
  }
  const QPointer<CPlanPlayer> alive(this);  // a receiver of its signals may delete it
  for (; !events_.empty(); events_.pop_front()) {
    const CProgramme::Step step = CProgramme::Next(state_, events_.front(), TarnPlanView::CPlanClock::Now());
    state_ = step.state;
    for (const ProgrammeCommand& command : step.commands) {
      std::visit([this](const auto& what) { Do(what); }, command);
      if (!alive) {
        return;
      }
    }
  }
}

void CPlanPlayer::Do(const Commands::FetchPlan& fetch) {
  if (fetch.by == PlayOrigin::History) {
    return FetchByPanel(fetch.code);
  }
  GetPlanDetailRequest request;
  request.plan_index_code = fetch.code;
  request.play = true;
  HostCalls::Ask(&CViewBusinessInterfaceMgr::GetPlanDetail, request).Then(this, [this, fetch](const auto& answer) {
    Events::FetchOver over{fetch.code};
    if (answer.ok) {
      Handle(Events::PlanCame{answer.response});
    } else {
      over.failure = FailureOf(answer.response);
    }
    Handle(over);
  });
}

// The panel says that it fetches the plan; if it does not, nothing is on its way any more.
void CPlanPlayer::FetchByPanel(const std::string& code) {
  if (const CPlanFamily* family = families_.value(0)) {
    family->Panel()->PlayPlanFromHistory(code);
  }
  Handle(Events::FetchOver{code});
}

void CPlanPlayer::Do(const Commands::ShowPlan& show) {
  wall_->Play(show.plan, show.place);
  mark_->Set(wall_->PlanCode(), IsPicked(show.by));
  if (controller_) {
    controller_->AddOperationPlayPlan(wall_->PlanName(), !IsPicked(show.by), show.by == PlayOrigin::History);
  }
  Q_EMIT SignalPlayed(show.plan, show.by);
}

void CPlanPlayer::Do(const Commands::ShowArrangement& show) {
  wall_->Show(show.arrangement, show.place);
  mark_->Set(wall_->PlanCode(), wall_->IsPlaying());
}

void CPlanPlayer::Do(const Commands::EmptyWall&) {
  wall_->Stop();
  mark_->Set(QString(), false);
}

void CPlanPlayer::Do(const Commands::FetchTurn& fetch) {
  HostCalls::Ask([fetch] { return CycleTurn::Next(fetch.group_code, fetch.last, fetch.step); })
      .Replacing(turn_)
      .Then(this, [this](const CycleTurn& turn) {
        Handle(Events::TurnCame{turn, wall_->IsInTurn() && wall_->IsHeld()});
      });
}

// So that its cameras are connected by then. The turn itself asks once more: the group may have changed.
void CPlanPlayer::LookAhead() {
  if (!state_.cycle || !state_.cycle->HasBegun()) {
    return;
  }
  HostCalls::Ask([code = state_.cycle->code, last = state_.cycle->last] { return CycleTurn::Next(code, last); })
      .Replacing(look_ahead_)
      .Then(this, [this](const CycleTurn& turn) {
        if (turn.outcome == CycleTurn::Outcome::Fetched) {
          wall_->Prepare(turn.plan);
        }
      });
}

void CPlanPlayer::Do(const Commands::DropTurn&) {
  turn_.Drop();
}

void CPlanPlayer::Do(const Commands::BeginTurn& begin) {
  wall_->BeginTurn(begin.seconds);
  wall_->GoTo(begin.page);
  if (begin.is_held && !wall_->IsHeld()) {
    wall_->ToggleHold();
  }
}

void CPlanPlayer::Do(const Commands::Stay& stay) {
  wall_->Stay(stay.seconds);
}

void CPlanPlayer::Do(const Commands::EndTurns&) {
  wall_->EndTurns();
}

void CPlanPlayer::Do(const Commands::AskDefaultView&) {
  if (in_its_place_) {
    return OnDefaultView(in_its_place_->code, in_its_place_->is_group);
  }
  HostCalls::Ask(&CViewBusinessInterfaceMgr::GetClientViewConfig, GetClientDefaultViewConfigRequest())
      .Replacing(default_view_)
      .Then(this, [this](const auto& answer) { OnDefaultViewAnswer(answer); });
}

void CPlanPlayer::Do(const Commands::AskIfSeen& ask) {
  GetPlanDetailRequest request;
  request.plan_index_code = ask.code;
  HostCalls::Ask(&CViewBusinessInterfaceMgr::GetPlanDetail, request)
      .Replacing(question_)
      .Then(this, [this](const auto& detail) { Handle(Events::SeenAnswered{detail}); });
}

void CPlanPlayer::Do(const Commands::DropQuestion&) {
  question_.Drop();
}

void CPlanPlayer::Do(const Commands::LookForTimedPlan&) {
  CAutoPlanHelper::Instance().CheckAutoRunPlan();
}

void CPlanPlayer::Do(const Commands::ForgetTimedPlan&) {
  CAutoPlanHelper::Instance().SetPlanDisplayState(false);
}

void CPlanPlayer::Do(const Commands::WatchClock& watch) {
  if (watch.on) {
    clock_.start();
  } else {
    clock_.stop();
  }
}

void CPlanPlayer::Do(const Commands::AwaitNextPlan& await) {
  if (!await.on) {
    next_plan_.stop();
  } else if (await.failures > 0) {
    next_plan_.start(RetryPauseSeconds(await.failures) * 1000);
  } else {
    next_plan_.start(kNextPlanMs);
  }
}

void CPlanPlayer::Do(const Commands::ShowState&) {
  mark_->SetCycling(StringToQString(state_.cycle.value_or(CProgramme::Cycle()).code));
  Q_EMIT SignalStateChanged();
}

void CPlanPlayer::Do(const Commands::SayFailure& say) {
  Q_EMIT SignalMessage(CProgrammeTexts::Of(say), MarUIControl::CNomalMessage::Failure);
}

}  // namespace TarnClient
