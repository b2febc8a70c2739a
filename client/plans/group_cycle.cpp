#include "plans/group_cycle.h"

#include <utility>

#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "host_calls/ask.h"
#include "plans/plan_player.h"
#include "wall/live_wall.h"

namespace TarnClient {

using MarUIControl::CNomalMessage;

CGroupCycle::CGroupCycle(CPlanPlayer* player, CLiveWall* wall, QObject* parent)
    : QObject(parent), player_(player), wall_(wall) {
  connect(wall_, &CLiveWall::SignalTurnOver, this, &CGroupCycle::OnTurnOver);
  connect(wall_, &CLiveWall::SignalStepWanted, this, &CGroupCycle::OnStepWanted);
  connect(wall_, &CLiveWall::SignalHeld, this, &CGroupCycle::OnHeld);
  connect(player_, &CPlanPlayer::SignalWanted, this, &CGroupCycle::Stop);
  connect(player_, &CPlanPlayer::SignalStopped, this, &CGroupCycle::Stop);
  connect(player_, &CPlanPlayer::SignalPlayed, this, &CGroupCycle::OnPlayed);
}

CGroupCycle::~CGroupCycle() = default;

void CGroupCycle::Start(const QString& group_code, const QString& group_name, int seconds_per_plan, PlayOrigin origin) {
  Stop();
  group_code_ = MarUIControl::QStringToString(group_code);
  group_name_ = group_name;
  seconds_ = seconds_per_plan;
  origin_ = origin;
  if (IsRunning()) {
    FetchName();
    SetAsked(Asked::ByUser);
    Turn(1);
  }
}

void CGroupCycle::FetchName() {
  if (!group_name_.isEmpty()) {
    return;
  }
  HostCalls::Ask([group = group_code_] {
    return FindGroupName(group);
  }).Then(this, [this, group = group_code_](const QString& name) {
    if (group != group_code_ || name.isEmpty()) {
      return;
    }
    group_name_ = name;
    if (last_.position >= 0) {
      Q_EMIT SignalProgress(Progress());
    }
  });
}

void CGroupCycle::Stop() {
  if (!IsRunning()) {
    return;
  }
  turns_.Drop();
  SetAsked(Asked::Nothing);
  wall_->EndTurns();
  group_code_.clear();
  last_ = {};
  told_.clear();
  Q_EMIT SignalProgress(QString());
}

void CGroupCycle::OnPlayed(const view_plugin_protocol::GetPlanDetailResponse&, PlayOrigin origin) {
  // Before the first turn of a cycle that the user wants an automatic plan may come; the turn then takes its place.
  const bool gives_way = origin == PlayOrigin::Automatic && origin_ == PlayOrigin::DefaultView;
  if (origin == PlayOrigin::User || origin == PlayOrigin::History || gives_way) {
    Stop();
  }
}

void CGroupCycle::SetAsked(Asked asked) {
  asked_ = asked;
  Q_EMIT SignalFetchingChanged();
}

void CGroupCycle::OnTurnOver() {
  if (asked_ == Asked::Nothing) {
    SetAsked(Asked::ByTime);
    Turn(1);
  }
}

void CGroupCycle::OnStepWanted(int step) {
  SetAsked(Asked::ByUser);
  Turn(step);
}

// The plan on the wall shall stay, so the next one that time has asked for counts for nothing.
void CGroupCycle::OnHeld() {
  if (asked_ == Asked::ByTime) {
    SetAsked(Asked::Nothing);
    turns_.Drop();
  }
}

void CGroupCycle::Turn(int step) {
  HostCalls::Ask([group = group_code_, last = last_, step] { return CycleTurn::Next(group, last, step); })
      .Replacing(turns_)
      .Then(this, [this](const CycleTurn& turn) {
        SetAsked(Asked::Nothing);
        OnTurn(turn);
      });
}

void CGroupCycle::OnTurn(const CycleTurn& turn) {
  if (turn.group_found && turn.plans.isEmpty() && !turn.may_pass) {
    Fail(tr("The group has no plans to cycle through."));
  } else if (turn.position >= 0) {
    told_.clear();
    TellSkipped(turn.skipped);
    Show(turn);
  } else if (turn.may_pass && last_.position >= 0) {
    TryAgain(turn.error);
  } else {
    Fail(turn.error);
  }
}

// No one may be there to start the cycle again. What keeps it waiting is said once, not at every turn.
void CGroupCycle::TryAgain(const QString& error) {
  wall_->Stay(seconds_);
  const QString text = tr("The next plan of the group could not be played and is tried again: %1").arg(error);
  if (text != std::exchange(told_, text)) {
    Q_EMIT SignalMessage(text, CNomalMessage::Failure);
  }
}

// A group of one plan does not begin it again at every turn, unless the plan was changed.
void CGroupCycle::Show(const CycleTurn& turn) {
  const bool on_wall =
      last_.position >= 0 && last_.plan.index_code == turn.plan.index_code && last_.plan.revision == turn.plan.revision;
  const bool was_held = wall_->IsHeld() && wall_->IsInTurn();
  last_ = turn;
  if (!on_wall) {
    player_->PlayOfCycle(turn.plan, origin_);
  }
  if (!IsRunning()) {
    return;  // whoever heard of it has stopped it
  }
  wall_->BeginTurn(seconds_);
  if (was_held && !wall_->IsHeld()) {
    wall_->ToggleHold();
  }
  Q_EMIT SignalProgress(Progress());
}

void CGroupCycle::TellSkipped(const QStringList& names) {
  if (names.size() == 1) {
    Q_EMIT SignalMessage(tr("\"%1\" could not be played and was skipped.").arg(names.first()), CNomalMessage::Failure);
  } else if (names.size() > 1) {
    Q_EMIT SignalMessage(tr("\"%1\" and %2 more could not be played and were skipped.")
                             .arg(names.first(), QString::number(names.size() - 1)),
                         CNomalMessage::Failure);
  }
}

// What is on the wall stays there, without a cycle.
void CGroupCycle::Fail(const QString& text) {
  Stop();
  Q_EMIT SignalMessage(text, CNomalMessage::Failure);
}

QString CGroupCycle::Progress() const {
  const QString place = tr("plan %1 of %2").arg(last_.position + 1).arg(last_.plans.size());
  return group_name_.isEmpty() ? tr("Group \u00b7 %1").arg(place) : tr("Group %1 \u00b7 %2").arg(group_name_, place);
}

}  // namespace TarnClient
