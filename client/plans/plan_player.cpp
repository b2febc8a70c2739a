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
#include "plans/plan_family.h"
#include "plans/playing_mark.h"
#include "plans/programme_texts.h"
#include "wall/live_wall.h"

namespace TarnClient {

using MarUIControl::QStringToString;
using MarUIControl::StringToQString;
using TarnPlanView::CallAnswer;
using TarnPlanView::CAutoPlanHelper;
using TarnPlanView::CStandardViewController;
using TarnPlanView::CViewExternWidget;
using view_plugin_protocol::GetPlanDetailRequest;
using view_plugin_protocol::GetPlanDetailResponse;

namespace {

constexpr int kClockMs = 1000;
constexpr int kNextPlanMs = 1500;  // by then the helper has looked whether another timed plan is due
constexpr int kLongPauseMs = 60000;

}  // namespace

CPlanPlayer::CPlanPlayer(CLiveWall* wall, QObject* parent)
    : QObject(parent), wall_(wall), mark_(new CPlayingMark(this)) {
  qRegisterMetaType<PlayOrigin>("TarnClient::PlayOrigin");
  clock_.setInterval(kClockMs);
  connect(&clock_, &QTimer::timeout, this, [this] { Handle(Events::ClockTicked()); });
  next_plan_.setSingleShot(true);
  connect(&next_plan_, &QTimer::timeout, this, [this] { Handle(Events::NextPlanDue()); });
  FollowWall();
  FollowTimedPlans();
}

CPlanPlayer::~CPlanPlayer() = default;

void CPlanPlayer::FollowWall() {
  connect(wall_, &CLiveWall::SignalPlanChanged, this, [this] {
    if (!wall_->IsPlaying()) {
      Handle(Events::WallEmptied());
    }
  });
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
  connect(panel, &CViewExternWidget::SignalStopPlan, this, &CPlanPlayer::Stop);
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
  connect(controller, &CStandardViewController::SignalConfigPlayView, this,
          [this](const QString& code, int type) { OnDefaultView(code, type == ResourceData::RT_VIEW_GROUP); });
  controller->SetPlayListener(this, [this](const std::string& code) { Handle(Events::FetchOver{code}); });
}

void CPlanPlayer::Play(const std::string& code, PlayOrigin origin) {
  if (controller_ && !code.empty()) {
    Handle(Events::PlanWanted{code, origin});
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

void CPlanPlayer::Stop() {
  Handle(Events::StopWanted());
}

void CPlanPlayer::ForgetUser() {
  in_its_place_.reset();
  Handle(Events::UserSwitched());
}

void CPlanPlayer::OnDefaultView(const QString& code, bool is_group) {
  if (is_group) {
    Handle(Events::DefaultGroupKnown{GroupOf(code)});
  } else {
    Handle(Events::DefaultPlanKnown{QStringToString(code)});
  }
}

// What there is has come by the controller's signal.
void CPlanPlayer::OnDefaultViewAnswer(const CallAnswer& answer) {
  if (!answer.ok) {
    Handle(Events::DefaultViewUnknown());
  } else if (answer.text.isEmpty()) {
    Handle(Events::DefaultViewNone());
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
    FetchByPanel(fetch.code);
  } else if (controller_) {
    controller_->PlayPlanViewByIndexCode(fetch.code);
  }
}

// The panel says that it fetches the plan; if it does not, nothing is on its way any more.
void CPlanPlayer::FetchByPanel(const std::string& code) {
  if (const CPlanFamily* family = families_.value(0)) {
    family->Panel()->PlayPlanFromHistory(code);
  }
  Handle(Events::FetchOver{code});
}

void CPlanPlayer::Do(const Commands::ShowPlan& show) {
  wall_->Play(show.plan);
  mark_->Set(wall_->PlanCode(), IsPicked(show.by));
  if (controller_) {
    controller_->AddOperationPlayPlan(wall_->PlanName(), !IsPicked(show.by), show.by == PlayOrigin::History);
  }
  Q_EMIT SignalPlayed(show.plan, show.by);
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

void CPlanPlayer::Do(const Commands::DropTurn&) {
  turn_.Drop();
}

void CPlanPlayer::Do(const Commands::BeginTurn& begin) {
  wall_->BeginTurn(begin.seconds);
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
    OnDefaultView(in_its_place_->code, in_its_place_->is_group);
  } else if (controller_) {
    controller_->InitGetViewDefaultConfig({}, [player = QPointer<CPlanPlayer>(this)](const CallAnswer& answer) {
      if (player) {
        player->OnDefaultViewAnswer(answer);
      }
    });
  }
}

void CPlanPlayer::Do(const Commands::AskIfSeen& ask) {
  GetPlanDetailRequest request;
  request.plan_index_code = ask.code;
  HostCalls::Ask(&LyraPluginManager::CViewBusinessInterfaceMgr::GetPlanDetail, request)
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
  } else if (await.is_long) {
    next_plan_.start(kLongPauseMs);
  } else {
    next_plan_.start(kNextPlanMs);
  }
}

void CPlanPlayer::Do(const Commands::SayAwaited&) {
  Q_EMIT SignalAwaitedChanged();
}

void CPlanPlayer::Do(const Commands::SayProgress&) {
  Q_EMIT SignalProgress(CProgrammeTexts::ProgressOf(state_));
}

void CPlanPlayer::Do(const Commands::SayFailure& say) {
  Q_EMIT SignalMessage(CProgrammeTexts::Of(say), MarUIControl::CNomalMessage::Failure);
}

}  // namespace TarnClient
