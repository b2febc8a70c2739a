#include "plans/programme.h"

#include <QTime>
#include <algorithm>
#include <tuple>
#include <utility>

#include "LyraPluginManager/error_kind.h"
#include "MarUIControl/string_conversion.h"
#include "plan_rules/families.h"

// Timed plans: what gives way to them, and they to.
namespace TarnClient {

using MarUIControl::StringToQString;

namespace {

QDateTime EndOf(const Events::Plan& plan, const QDate& day) {
  const QTime time = QTime::fromString(StringToQString(plan.end_time));
  if (!time.isValid()) {
    return QDateTime();
  }
  return QDateTime(day, time);
}

bool IsTimedAlike(const Events::Plan& one, const Events::Plan& other) {
  return std::tie(one.auto_run, one.start_time, one.end_time) ==
         std::tie(other.auto_run, other.start_time, other.end_time);
}

bool IsTimed(const std::optional<CProgramme::Play>& play) {
  return play && play->by == PlayOrigin::Automatic;
}

}  // namespace

// The helper keeps the plan that it knows while it gets no answer: after a switch of user that may be one which only
// the last user can see.
void CProgramme::On(const Events::TimedPlanBegins& begins) {
  DropDoubtful();
  const bool is_picked = state_.on_wall && !StartsByItself(state_.on_wall->by);
  if (is_picked || state_.is_arranged) {
    return;
  }
  if (state_.is_new_user && begins.plan.type != view_plugin_protocol::PublicFamily) {
    state_.doubtful = Doubtful{begins.plan, EndOf(begins.plan, now_.date())};
    AskIfSeen();
  } else {
    BeginTimed(begins.plan);
  }
}

// No end is announced when the plan vanishes in mid-run or was stopped, so it is kept here. The clock is looked at
// again and again, since it may be set, or the computer sleep, in between.
void CProgramme::BeginTimed(const Events::Plan& plan) {
  Show(plan, PlayOrigin::Automatic, {});
  state_.timed_end.reset();
  const QDateTime end = EndOf(plan, now_.date());
  if (end.isValid()) {
    state_.timed_end = TimedEnd{end};
  }
}

void CProgramme::On(const Events::TimedPlanEnds&) {
  DropDoubtful();
  EndTimed();
}

// The next timed plan may be due, long before the helper asks by itself. What is wanted meanwhile goes on, but not the
// timed plan itself, which was stopped and is fetched again: nothing would end it.
void CProgramme::EndTimed() {
  const std::optional<TimedEnd> end = std::exchange(state_.timed_end, std::nullopt);
  Do(Commands::LookForTimedPlan());
  for (std::optional<Stopped>* gone : {&state_.stopped, &state_.deleted}) {
    if (*gone && (*gone)->play.by == PlayOrigin::Automatic) {
      gone->reset();
    }
  }
  if (state_.failed && state_.failed->play.by == PlayOrigin::Automatic) {
    state_.failed.reset();
  }
  std::optional<Play> over = state_.on_wall;
  if (IsTimed(over) && state_.is_arranged) {
    return LeaveToUser(end);
  }
  if (IsTimed(state_.on_its_way)) {
    over = std::exchange(state_.on_its_way, std::nullopt);
  }
  if (IsTimed(over)) {
    NoteEnd(over->name, end);
    EmptyWall();
    Do(Commands::AwaitNextPlan());
  }
}

// He is changing its windows: that stays like all that he has arranged, until it is saved or he goes.
void CProgramme::LeaveToUser(const std::optional<TimedEnd>& end) {
  NoteEnd(state_.on_wall->name, end);
  state_.on_wall->by = PlayOrigin::User;
}

void CProgramme::NoteEnd(const QString& name, const std::optional<TimedEnd>& end) {
  state_.ended = Ended{name, std::min(now_, end.value_or(TimedEnd{now_}).at)};
}

void CProgramme::On(const Events::ClockTicked&) {
  // The time alone, without the day, says when it was for a day only.
  if (state_.ended && now_ >= state_.ended->at.addDays(1)) {
    state_.ended.reset();
  }
  // The helper, which looks as often, goes first at the end: it forgets its plan by announcing it.
  if (state_.timed_end) {
    const bool is_past = now_ >= state_.timed_end->at;
    if (std::exchange(state_.timed_end->is_past, is_past) && is_past) {
      EndTimed();
    }
  }
  if (state_.doubtful && now_ >= state_.doubtful->end) {
    DropDoubtful();
  } else if (state_.doubtful && state_.doubtful->question == Doubtful::Question::Failed) {
    AskIfSeen();
  }
}

void CProgramme::AskIfSeen() {
  if (state_.doubtful) {
    state_.doubtful->question = Doubtful::Question::Asked;
    Do(Commands::AskIfSeen{state_.doubtful->plan.index_code});
  }
}

void CProgramme::DropDoubtful() {
  if (state_.doubtful) {
    state_.doubtful.reset();
    Do(Commands::DropQuestion());
  }
}

// A plan that is not this user's may be the next one's; with other times it is announced again.
void CProgramme::On(const Events::SeenAnswered& answer) {
  if (!state_.doubtful) {
    return;
  }
  if (now_ >= state_.doubtful->end) {
    DropDoubtful();
  } else if (answer.plan.ok) {
    const Doubtful doubtful = *std::exchange(state_.doubtful, std::nullopt);
    if (IsTimedAlike(doubtful.plan, answer.plan.response)) {
      state_.is_new_user = false;
      On(Events::TimedPlanBegins{answer.plan.response});
    }
  } else if (answer.plan.response.error_kind == view_plugin_protocol::Gone) {
    state_.doubtful->question = Doubtful::Question::NotSeen;
  } else {
    state_.doubtful->question = Doubtful::Question::Failed;
  }
}

}  // namespace TarnClient
