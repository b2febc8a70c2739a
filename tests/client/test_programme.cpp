#include <QtTest>
#include <limits>

#include "LyraPluginManager/error_kind.h"
#include "plans/programme.h"
#include "plans/programme_texts.h"
#include "plans/retry_pause.h"

using namespace TarnClient;
using namespace TarnClient::Events;
using TarnClient::Commands::SayFailure;

namespace {

using Happened = QVector<ProgrammeEvent>;

// O is an own plan, all others are public. As timed plans they run from nine.
Plan PlanOf(const std::string& code, const std::string& end = "10:00:00") {
  Plan plan;
  plan.index_code = plan.name = code;
  plan.type = code == "O" ? 1 : 0;
  plan.auto_run = true;
  plan.start_time = "09:00:00";
  plan.end_time = end;
  return plan;
}

ProgrammeEvent Want(const std::string& code, PlayOrigin by = PlayOrigin::User) {
  return PlanWanted{code, by};
}
ProgrammeEvent Came(const std::string& code) {
  return PlanCame{PlanOf(code)};
}
ProgrammeEvent Over(const std::string& code) {
  return FetchOver{code};
}
ProgrammeEvent Failed(const std::string& code, int32_t kind = view_plugin_protocol::Unavailable, bool is_said = false) {
  return FetchOver{code, Failure{"tired", kind, is_said}};
}
ProgrammeEvent Unknown(int32_t kind = view_plugin_protocol::Unavailable) {
  return DefaultViewUnknown{{"away", kind}};
}
ProgrammeEvent Timed(const std::string& code, const std::string& end = "10:00:00") {
  return TimedPlanBegins{PlanOf(code, end)};
}
const ProgrammeEvent kArranged = WallArranged{true}, kNotArranged = WallArranged{false};
ProgrammeEvent Back(const CArrangement& arrangement) {
  return ArrangementWanted{arrangement, {2, true}};
}
ProgrammeEvent Cycle(bool may_cycle = true) {
  return GroupWanted{{"G", "Gates", 20, may_cycle}};
}
ProgrammeEvent DefaultGroup(bool may_cycle = true) {
  return DefaultGroupKnown{{"G", "Gates", 20, may_cycle}};
}
ProgrammeEvent Turn(const std::string& code, bool is_held = false, const QStringList& skipped = {}, int revision = 1) {
  CycleTurn turn;
  turn.outcome = CycleTurn::Outcome::Fetched;
  turn.plans = {"1", "2"};
  turn.position = turn.plans.indexOf(code);
  turn.plan = PlanOf(code);
  turn.plan.group_index_code = "G";  // of a host that does not say the name
  turn.plan.revision = revision;
  turn.skipped = skipped;
  return TurnCame{turn, is_held};
}
ProgrammeEvent NoTurn(CycleTurn::Outcome outcome, const QString& error = {}, int32_t kind = 0) {
  CycleTurn turn;
  turn.outcome = outcome;
  turn.error = error;
  turn.error_kind = kind;
  return TurnCame{turn};
}
ProgrammeEvent Seen(const std::string& end = "10:00:00") {
  return SeenAnswered{{true, PlanOf("O", end)}};
}
ProgrammeEvent NotSeen(int32_t kind) {
  SeenAnswered answer;
  answer.plan.response.error_kind = kind;
  return answer;
}
const ProgrammeEvent kNotAnswered = NotSeen(view_plugin_protocol::Unavailable),
                     kNotSeen = NotSeen(view_plugin_protocol::Gone);

QString Name(PlayOrigin by) {
  return QStringList({"user", "history", "timed", "cycle", "default"}).value(static_cast<int>(by));
}

QString Text(const std::string& text) {
  return QString::fromStdString(text);
}

struct Words {
  QString operator()(const Commands::FetchPlan& c) const { return "fetch " + Text(c.code); }
  QString operator()(const Commands::ShowPlan& c) const {
    const QString page = c.place.page > 1 ? QString(" page %1").arg(c.place.page) : QString();
    return "show " + Text(c.plan.index_code) + " " + Name(c.by) + page + QString(c.place.is_held ? " held" : "");
  }
  QString operator()(const Commands::ShowArrangement& c) const {
    return "back " + Text(c.arrangement.PlanAsFetched().index_code) + QString(" page %1").arg(c.place.page);
  }
  QString operator()(const Commands::EmptyWall&) const { return "empty"; }
  QString operator()(const Commands::FetchTurn& c) const { return QString("turn %1").arg(c.step); }
  QString operator()(const Commands::DropTurn&) const { return "drop turn"; }
  QString operator()(const Commands::BeginTurn& c) const {
    return QString("%1 %2 s").arg(c.is_held ? "held" : "stays").arg(c.seconds) +
           (c.page > 0 ? QString(" page %1").arg(c.page) : QString());
  }
  QString operator()(const Commands::Stay& c) const { return QString("again in %1 s").arg(c.seconds); }
  QString operator()(const Commands::EndTurns&) const { return "end turns"; }
  QString operator()(const Commands::AskDefaultView&) const { return "default view?"; }
  QString operator()(const Commands::AskIfSeen& c) const { return "sees " + Text(c.code) + "?"; }
  QString operator()(const Commands::DropQuestion&) const { return "drop question"; }
  QString operator()(const Commands::LookForTimedPlan&) const { return "look"; }
  QString operator()(const Commands::ForgetTimedPlan&) const { return "forget"; }
  QString operator()(const Commands::WatchClock& c) const { return c.on ? "watch" : "no watch"; }
  QString operator()(const Commands::AwaitNextPlan& c) const {
    return QString(c.on ? "wait" : "no wait") + (c.failures > 0 ? QString(" %1").arg(c.failures) : QString());
  }
  QString operator()(const Commands::ShowState&) const { return "shown"; }
  QString operator()(const SayFailure& c) const {
    return QString("say %1 %2").arg(static_cast<int>(c.reason)).arg(c.details.join('+')).trimmed();
  }
};

}  // namespace

Q_DECLARE_METATYPE(QVector<TarnClient::ProgrammeEvent>)
Q_DECLARE_METATYPE(std::string)

/// What plays, without a window: each row is what happens, the commands for the last event, and what then is on the
/// wall.
class ProgrammeTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() { state_ = {}; }
  void Decides_data();
  void Decides();
  void WatchesTheClock();
  void ShowsWhatChanges();
  void SaysWhatHasEnded();
  void ForgetsWhatHasEndedAfterADay();
  void SaysWhatHasFailed_data();
  void SaysWhatHasFailed();
  void PausesGrow();

 private:
  /// The commands for this event, without those that only say what changed.
  QString At(const QString& time, const ProgrammeEvent& event, int day = 2);

  CProgramme::State state_;
  QStringList commands_, shown_;
};

QString ProgrammeTest::At(const QString& time, const ProgrammeEvent& event, int day) {
  const auto step = CProgramme::Next(state_, event, QDateTime(QDate(2026, 3, day), QTime::fromString(time)));
  state_ = step.state;
  commands_.clear();
  shown_.clear();
  for (const ProgrammeCommand& command : step.commands) {
    const QString words = std::visit(Words(), command);
    (words == "shown" ? shown_ : commands_) << words;
  }
  return commands_.join(' ');
}

void ProgrammeTest::Decides_data() {
  QTest::addColumn<Happened>("happened");
  QTest::addColumn<QString>("commands");
  QTest::addColumn<QString>("on_wall");
  const auto row = [](const char* name, const Happened& happened, const char* commands, const char* on_wall) {
    QTest::newRow(name) << happened << commands << on_wall;
  };
  const ProgrammeEvent stop = StopWanted(), again = PlayAgainWanted(), over = OfferOver(), retry = TryAgainWanted(),
                       stop_2 = StopWanted{{2, true}}, ends = TimedPlanEnds(), due = NextPlanDue(),
                       open = DefaultViewWanted(), none = DefaultViewNone(), unknown = Unknown(),
                       plan_d = DefaultPlanKnown{"D"}, user = UserSwitched(), tick = ClockTicked(),
                       time_over = TurnOver(), next = StepWanted{1}, back = StepWanted{-1}, held = Held(),
                       panel_a = PanelFetches{"A"}, panel_d = PanelFetches{"D"};
  using Outcome = CycleTurn::Outcome;

  // Plans that the user picks.
  row("asked for", {Want("A")}, "fetch A", "");
  row("has come", {Want("A"), Came("A")}, "show A user", "A user");
  row("from the history", {Want("A", PlayOrigin::History), panel_a, Over("A"), Came("A")}, "show A history",
      "A history");
  row("of a panel", {panel_a, Came("A")}, "show A user", "A user");
  row("the last one wins", {Want("A"), Want("B"), Came("B"), Over("B"), Came("A")}, "", "B user");
  row("an older one counts no more", {Want("A"), Want("B"), Came("A")}, "", "");
  row("failed", {Want("A"), Over("A"), Came("A")}, "", "");
  row("asked for twice, failed once", {Want("A"), Want("A"), Over("A"), Came("A")}, "show A user", "A user");
  row("stopped", {Want("A"), Came("A"), stop}, "no wait empty", "");
  row("stopped on its way", {Want("A"), stop, Came("A")}, "", "");
  row("another one on its way stopped", {Want("A"), Came("A"), Want("B"), stop, Came("B")}, "", "");
  row("switched away", {Want("A"), Came("A"), user}, "no wait empty", "");

  // Timed plans.
  row("timed", {Timed("T")}, "show T timed watch", "T timed");
  row("timed, over", {Timed("T"), ends}, "look forget empty wait", "");
  row("timed, stopped", {Timed("T"), stop}, "no wait forget empty", "");
  row("timed, again with other times", {Timed("T"), Timed("T", "11:00:00")}, "show T timed", "T timed");
  row("timed, not over the user's", {Want("A"), Came("A"), Timed("T")}, "", "A user");
  row("timed, not over the user's group", {Cycle(), Turn("1"), Timed("T")}, "", "1 cycle");
  row("the user's over a timed one", {Timed("T"), Want("A"), Came("A")}, "show A user", "A user");
  row("that stays at the end", {Timed("T"), Want("A"), Came("A"), ends}, "look no watch", "A user");
  row("on its way before a timed one", {Want("A"), Timed("T"), Came("A")}, "show A user", "A user");
  row("on its way over the end", {Timed("T"), Want("A"), ends, Came("A")}, "show A user no watch", "A user");
  row("a group over the end", {Timed("T"), Cycle(), ends, Turn("1")}, "show 1 cycle stays 20 s no watch", "1 cycle");
  row("a group before a timed one", {Cycle(), Timed("T"), Turn("1")}, "show 1 cycle stays 20 s", "1 cycle");
  row("another timed one at the end", {Timed("T"), ends, Timed("U")}, "show U timed", "U timed");
  row("another user's", {Timed("T"), user}, "no wait forget empty", "");

  // What the user has arranged himself.
  const Happened d_arranged = {open, plan_d, Came("D"), kArranged};
  row("cameras keep a timed plan away", {kArranged, Timed("T")}, "", "");
  row("a changed plan does, too", d_arranged + Happened{Timed("T")}, "", "D default");
  row("until it is saved", d_arranged + Happened{kNotArranged, Timed("T")}, "show T timed watch", "T timed");
  row("and stays when its own time is over", {Timed("T"), kArranged, ends}, "look", "T user");
  row("which keeps the next one away", {Timed("T"), kArranged, ends, Timed("U")}, "", "T user");
  row("nor the one in doubt comes", {user, Timed("O"), kArranged, Seen()}, "no watch", "");
  row("nor what was to open", {open, plan_d, kArranged, Came("D")}, "", "");
  row("nor its group", {open, DefaultGroup(), kArranged, Turn("1")}, "", "");
  row("nor what is known later", {open, kArranged, plan_d}, "", "");
  row("nor what is tried again", {open, unknown, kArranged, due}, "", "");
  row("nor what was deleted", {Want("A"), Came("A"), StopWanted{{}, false}, kArranged, PlanIsBack{"A"}}, "", "");
  row("but what he wants", {kArranged, Want("A"), Came("A")}, "show A user", "A user");
  row("a changed turn goes on", {Cycle(), Turn("1"), kArranged, next, Turn("2")}, "show 2 cycle stays 20 s", "2 cycle");
  row("back", {Want("A"), Came("A"), Want("B"), Back(CArrangement(PlanOf("C")))}, "back C page 2", "C user");
  row("which nothing overtakes", {Want("B"), Back(CArrangement(PlanOf("C"))), Came("B")}, "", "C user");
  row("back over a cycle", {Cycle(), Turn("1"), Back(CArrangement(PlanOf("C")))}, "drop turn end turns back C page 2",
      "C user");
  row("cameras back", {Want("A"), Came("A"), Back(CArrangement::WithoutPlan())}, "back  page 2", "");

  // What opens at the start.
  row("default view", {open, plan_d}, "fetch D", "");
  row("default plan", {open, plan_d, Came("D")}, "show D default", "D default");
  row("default group", {open, DefaultGroup(), Turn("1")}, "show 1 default stays 20 s", "1 default");
  row("default group switched off", {open, DefaultGroup(false)}, "say 1", "");
  row("no code", {open, DefaultPlanKnown{}, DefaultGroupKnown{}}, "", "");
  row("known for another's sake", {plan_d}, "", "");
  row("once only", {open, plan_d, Came("D"), stop, plan_d}, "", "");
  row("failed, and known for another's sake", {open, plan_d, Over("D"), plan_d}, "", "");
  row("something plays by then", {open, Want("A"), Came("A"), plan_d}, "", "A user");
  row("something is wanted by then", {open, Want("A"), plan_d}, "", "");
  row("a group is wanted by then", {open, Cycle(), plan_d}, "", "");
  row("stopped by then", {open, stop, plan_d}, "", "");
  row("the user wants the same", {open, plan_d, panel_d, Came("D")}, "show D user", "D user");
  row("the user wants another", {open, plan_d, Want("A"), Came("D")}, "", "");
  row("timed over the default plan", {open, plan_d, Came("D"), Timed("T")}, "show T timed watch", "T timed");
  row("timed before the default plan", {open, plan_d, Timed("T"), Came("D")}, "", "T timed");
  row("timed over a default group", {open, DefaultGroup(), Turn("1"), Timed("T")},
      "drop turn end turns show T timed watch", "T timed");
  row("timed before a default group", {open, DefaultGroup(), Timed("T"), Turn("1")}, "", "T timed");

  // What comes back when no timed plan follows.
  const Happened opened = {open, plan_d, Came("D"), Over("D"), Timed("T")};
  row("the default view", opened + Happened{ends, due}, "default view?", "");
  row("asked for again", opened + Happened{ends, due, plan_d, Came("D")}, "show D default", "D default");
  row("known during a timed plan", {open, Timed("T"), plan_d, ends, due}, "default view?", "");
  row("not known during a timed plan", {open, Timed("T"), unknown, ends, due}, "default view?", "");
  row("the service is away", opened + Happened{ends, due, unknown}, "say 6 away wait 1", "");
  row("asked until it answers", opened + Happened{ends, due, unknown, due}, "default view?", "");
  row("also at the start", {open, unknown, due}, "default view?", "");
  row("not what was chosen since", {open, unknown, plan_d}, "", "");
  row("not over the user's stop", opened + Happened{ends, due, stop, unknown}, "", "");
  row("none is chosen any more", opened + Happened{ends, due, none, due}, "", "");
  row("after two timed plans", opened + Happened{ends, Timed("U"), due}, "", "U timed");
  row("and their end", opened + Happened{ends, Timed("U"), ends, due}, "default view?", "");
  row("not after a stop", opened + Happened{stop, ends, due}, "", "");
  row("not over the user's", opened + Happened{Want("A"), Came("A"), ends, due}, "", "A user");
  row("not once that is stopped", opened + Happened{Want("A"), Came("A"), stop, due}, "", "");
  row("nothing", {Timed("T"), ends, due}, "", "");
  row("not before what is wanted", opened + Happened{Want("A"), ends, due}, "wait", "");
  row("but when that fails", opened + Happened{Want("A"), ends, due, Over("A"), due}, "default view?", "");
  row("or failed before", opened + Happened{Want("A"), Over("A"), ends, due}, "default view?", "");
  row("not before a group", opened + Happened{Cycle(), ends, due}, "wait", "");
  row("but when that fails, too", opened + Happened{Cycle(), ends, NoTurn(Outcome::Failed), due}, "default view?", "");

  // Groups.
  row("group", {Cycle()}, "turn 1", "");
  row("group switched off", {Cycle(false)}, "say 0", "");
  row("first turn", {Cycle(), Turn("1")}, "show 1 cycle stays 20 s", "1 cycle");
  row("its time is over", {Cycle(), Turn("1"), time_over}, "turn 1", "1 cycle");
  row("next turn", {Cycle(), Turn("1"), time_over, Turn("2")}, "show 2 cycle stays 20 s", "2 cycle");
  row("held over a turn", {Cycle(), Turn("1"), next, Turn("2", true)}, "show 2 cycle held 20 s", "2 cycle");
  row("a group of one", {Cycle(), Turn("1"), time_over, Turn("1")}, "stays 20 s", "1 cycle");
  row("changed meanwhile", {Cycle(), Turn("1"), time_over, Turn("1", false, {}, 2)}, "show 1 cycle stays 20 s",
      "1 cycle");
  row("step back", {Cycle(), Turn("1"), back}, "turn -1", "1 cycle");
  row("time waits for a step", {Cycle(), Turn("1"), back, time_over}, "", "1 cycle");
  row("a step does not wait", {Cycle(), Turn("1"), time_over, back}, "turn -1", "1 cycle");
  row("held while time turns", {Cycle(), Turn("1"), time_over, held}, "drop turn", "1 cycle");
  row("that turn counts no more", {Cycle(), Turn("1"), time_over, held, Turn("2")}, "", "1 cycle");
  row("held while the user turns", {Cycle(), Turn("1"), next, held}, "", "1 cycle");
  row("plans skipped", {Cycle(), Turn("2", false, {"x", "y"})}, "say 5 x+y show 2 cycle stays 20 s", "2 cycle");
  row("first turn fails", {Cycle(), NoTurn(Outcome::Failed, "tired")}, "drop turn end turns say 3 tired", "");
  row("later turn fails", {Cycle(), Turn("1"), time_over, NoTurn(Outcome::Failed, "tired")},
      "again in 20 s say 4 tired", "1 cycle");
  const ProgrammeEvent tired = NoTurn(Outcome::Failed, "x");
  row("said once", {Cycle(), Turn("1"), time_over, tired, time_over, tired}, "again in 20 s", "1 cycle");
  row("and again after a turn", {Cycle(), Turn("1"), time_over, tired, time_over, Turn("2"), time_over, tired},
      "again in 20 s say 4 x", "2 cycle");
  row("said, though the host gives no text", {Cycle(), Turn("1"), time_over, NoTurn(Outcome::Failed)},
      "again in 20 s say 4", "1 cycle");
  namespace kinds = view_plugin_protocol;
  for (const int kind : {kinds::Gone, kinds::NotPermitted, kinds::Refused, kinds::Unavailable}) {
    const bool may_pass = kind == kinds::Unavailable;
    row(qPrintable(QString("later turn fails, kind %1").arg(kind)),
        {Cycle(), Turn("1"), time_over, NoTurn(Outcome::Failed, "x", kind)},
        may_pass ? "again in 20 s say 4 x" : "drop turn end turns say 3 x", "1 cycle");
  }
  row("group without plans", {Cycle(), NoTurn(Outcome::Empty)}, "drop turn end turns say 2", "");
  row("another group", {Cycle(), Turn("1"), Cycle()}, "drop turn end turns turn 1", "1 cycle");
  row("the user wants a plan", {Cycle(), Turn("1"), Want("A")}, "drop turn end turns fetch A", "1 cycle");
  row("of the panel", {Cycle(), Turn("1"), panel_a}, "drop turn end turns", "1 cycle");
  row("turn that comes after it", {Cycle(), Turn("1"), time_over, Want("A"), Turn("2")}, "", "1 cycle");
  row("plan wanted before the group", {Want("A"), Cycle(), Came("A")}, "", "");
  row("group stopped", {Cycle(), Turn("1"), stop}, "drop turn end turns no wait empty", "");
  row("stopped before its first turn", {Cycle(), stop, Turn("1")}, "", "");
  row("no group", {Want("A"), Came("A"), time_over, next, held, Turn("1")}, "", "A user");

  // What was stopped may be had again.
  const Happened a_stopped = {Want("A"), Came("A"), stop_2};
  row("again", a_stopped + Happened{again}, "fetch A", "");
  row("where it was", a_stopped + Happened{again, Came("A")}, "show A user page 2 held", "A user");
  row("once", a_stopped + Happened{again, again}, "", "");
  row("not for ever", a_stopped + Happened{over, again}, "", "");
  row("also while another is wanted", a_stopped + Happened{Want("B"), again, Came("B")}, "", "");
  row("or when that has failed", a_stopped + Happened{Want("B"), Failed("B"), again}, "fetch A", "");
  row("in place of a group", a_stopped + Happened{Cycle(), again}, "drop turn end turns fetch A", "");
  row("nor once one plays", a_stopped + Happened{Timed("T"), ends, again}, "", "");
  row("not for another user", a_stopped + Happened{user, again}, "", "");
  const Happened a_deleted = {Want("A"), Came("A"), StopWanted{{2, true}, false}};
  row("not one that goes", a_deleted + Happened{again}, "", "");
  row("unless it comes back", a_deleted + Happened{PlanIsBack{"A"}, Came("A")}, "show A user page 2 held", "A user");
  row("another that does", a_deleted + Happened{PlanIsBack{"B"}}, "", "");
  row("over what is wanted by then", a_deleted + Happened{Want("B"), PlanIsBack{"A"}, Came("B")}, "show B user",
      "B user");
  row("and what played since", a_deleted + Happened{Want("B"), Came("B"), stop, PlanIsBack{"A"}}, "", "");
  row("for another user", a_deleted + Happened{user, PlanIsBack{"A"}}, "", "");
  row("not what was only wanted", {Want("A"), stop, again}, "", "");
  row("stopped twice", a_stopped + Happened{stop, again}, "fetch A", "");
  row("the one on the wall, not the one awaited", {Want("A"), Came("A"), Want("B"), stop, again}, "fetch A", "");
  row("nor the group awaited", {Want("A"), Came("A"), Cycle(), stop, again}, "fetch A", "");
  const Happened g_stopped = {Cycle(), Turn("1"), next, Turn("2"), stop_2, again};
  row("a cycle goes on", g_stopped, "turn 0", "");
  row("where it stood", g_stopped + Happened{Turn("2")}, "show 2 cycle page 2 held held 20 s page 2", "2 cycle");
  row("in place of a plan", {Cycle(), Turn("1"), stop, Want("A"), again, Came("A")}, "", "");
  row("with the seconds chosen since", {Cycle(), Turn("1"), stop, SecondsPerPlanChosen{50}, again, Turn("1")},
      "show 1 cycle stays 50 s page 1", "1 cycle");
  row("also after a failure", {Cycle(), tired, SecondsPerPlanChosen{50}, retry, Turn("1")}, "show 1 cycle stays 50 s",
      "1 cycle");
  row("its plan has gone", g_stopped + Happened{Turn("1")}, "show 1 cycle stays 20 s", "1 cycle");
  row("its service is away", g_stopped + Happened{tired}, "drop turn end turns say 3 x", "");
  row("but it is tried again there", g_stopped + Happened{tired, retry}, "turn 0", "");
  row("and then held", g_stopped + Happened{tired, retry, Turn("2")}, "show 2 cycle page 2 held held 20 s page 2",
      "2 cycle");
  const Happened d_stopped = {open, DefaultGroup(), Turn("1"), next, Turn("2"), stop_2, again, tired};
  row("a default group, too", d_stopped + Happened{retry}, "turn 0", "");
  row("also by itself", d_stopped + Happened{due}, "turn 0", "");
  row("a timed one, to its end", {Timed("T"), stop, again, Came("T"), ends}, "look forget empty wait", "");
  row("not beyond it", {Timed("T"), stop, ends, again}, "", "");
  row("nor fetched until then", {Timed("T"), stop, again, ends}, "look wait", "");
  row("which comes late", {Timed("T"), stop, again, ends, Came("T")}, "", "");
  row("nor tried again", {Timed("T"), stop, again, Failed("T"), ends, retry}, "", "");
  row("the default view", {open, plan_d, Came("D"), stop, again, Came("D")}, "show D default", "D default");
  row("that gives way", {open, plan_d, Came("D"), stop, again, Came("D"), Timed("T"), ends, due}, "default view?", "");

  // What has failed.
  row("said", {Want("A"), Failed("A")}, "say 6 tired", "");
  row("said by the panel", {panel_a, Failed("A", 0, true)}, "", "");
  row("not one that is wanted no more", {Want("A"), Want("B"), Failed("A")}, "", "");
  row("tried again", {Want("A", PlayOrigin::History), Failed("A"), retry}, "fetch A", "");
  row("beside another", {Want("A"), Came("A"), Want("B"), Failed("B"), retry}, "", "A user");
  row("another is wanted", {Want("A"), Failed("A"), Want("B"), Over("B"), retry}, "", "");
  row("stopped since", {Want("A"), Failed("A"), stop, retry}, "", "");
  row("a group", {Cycle(), tired, retry}, "turn 1", "");
  const Happened d_failed = {open, plan_d, Failed("D")};
  row("the default plan", d_failed, "say 6 tired wait 1", "");
  row("by itself", d_failed + Happened{due}, "default view?", "");
  row("less often, and silent", d_failed + Happened{due, plan_d, Failed("D")}, "wait 2", "");
  row("the whole way", d_failed + Happened{due, unknown, due, plan_d, Failed("D")}, "wait 3", "");
  row("a run of failures ends", d_failed + Happened{due, plan_d, Came("D"), Timed("T"), ends, due, unknown},
      "say 6 away wait 1", "");
  row("at once by hand", d_failed + Happened{due, plan_d, Failed("D"), retry}, "default view?", "");
  row("not what is gone", {open, plan_d, Failed("D", view_plugin_protocol::Gone)}, "say 6 tired", "");
  row("a default group", {open, DefaultGroup(), tired}, "drop turn end turns say 3 x wait 1", "");
  row("silent, too", {open, DefaultGroup(), tired, due, DefaultGroup(), tired}, "drop turn end turns wait 2", "");
  row("until the user plays", d_failed + Happened{Want("A"), Came("A"), due}, "", "A user");
  row("or stops", d_failed + Happened{stop, due}, "", "");

  // Own timed plans after a switch of user.
  const Happened asked = {user, Timed("O")};
  row("may be the last user's", asked, "sees O? watch", "");
  row("a public one is everybody's", {user, Timed("T")}, "show T timed watch", "T timed");
  row("seen", asked + Happened{Seen()}, "show O timed", "O timed");
  row("no doubt from then on", asked + Happened{Seen(), ends, Timed("O")}, "show O timed", "O timed");
  row("not answered", asked + Happened{kNotAnswered}, "", "");
  row("asked again", asked + Happened{kNotAnswered, tick}, "sees O?", "");
  row("not while it is asked", asked + Happened{tick}, "", "");
  row("not seen", asked + Happened{kNotSeen, tick}, "", "");
  row("but perhaps by the next user", asked + Happened{kNotSeen, user}, "drop question no wait sees O?", "");
  row("over the default view", {user, Timed("O"), open, plan_d, Came("D"), Seen()}, "show O timed", "O timed");
  row("another one begins", asked + Happened{Timed("T"), Seen()}, "", "T timed");
  row("the user plays", asked + Happened{Want("A"), Came("A"), Seen()}, "", "A user");
  row("the user stops", asked + Happened{stop, Seen()}, "", "");
  row("its end is announced", asked + Happened{ends, Seen()}, "", "");
  row("it has other times now", asked + Happened{Seen("09:30:00")}, "no watch", "");
}

void ProgrammeTest::Decides() {
  QFETCH(Happened, happened);
  for (const ProgrammeEvent& event : qAsConst(happened)) {
    At("09:00:00", event);
    QVERIFY(!(state_.on_its_way && state_.cycle));
  }
  QTEST(commands_.join(' '), "commands");
  const auto on_wall = state_.on_wall;
  QTEST(on_wall ? Text(on_wall->code) + " " + Name(on_wall->by) : QString(), "on_wall");
}

void ProgrammeTest::WatchesTheClock() {
  At("09:00:00", Timed("T"));
  QCOMPARE(At("09:59:59", ClockTicked()), QString());
  QCOMPARE(At("10:00:00", ClockTicked()), QString());  // the helper has the first go
  QCOMPARE(At("09:59:59", ClockTicked()), QString());  // the clock was set back
  QCOMPARE(At("10:00:01", ClockTicked()), QString());
  QCOMPARE(At("10:00:02", ClockTicked()), QString("look forget empty wait"));
  // No one announces the end of a plan that was stopped, but the next one may be due.
  At("09:00:00", Timed("T"));
  QCOMPARE(At("09:10:00", StopWanted()), QString("no wait forget empty"));
  At("10:00:00", ClockTicked());
  QCOMPARE(At("10:00:01", ClockTicked()), QString("look no watch"));
  // One that is in doubt is not asked for beyond its end.
  At("08:00:00", UserSwitched());
  QCOMPARE(At("09:00:00", Timed("O")), QString("sees O? watch"));
  At("09:30:00", kNotAnswered);
  QCOMPARE(At("09:59:59", ClockTicked()), QString("sees O?"));
  At("09:59:59", kNotAnswered);
  QCOMPARE(At("10:00:00", ClockTicked()), QString("drop question no watch"));
  At("09:00:00", Timed("O"));
  QCOMPARE(At("10:00:00", Seen()), QString("drop question no watch"));
}

// Each by one command, whatever has changed of it.
void ProgrammeTest::ShowsWhatChanges() {
  const auto shows = [this](const ProgrammeEvent& event) {
    At("09:00:00", event);
    return shown_.size() == 1;
  };
  QVERIFY(shows(Want("A")));
  QVERIFY(!shows(Want("A")));
  QVERIFY(shows(Want("B")) && shows(Came("B")) && shows(Cycle()));
  QVERIFY(CProgramme::AwaitsTurn(state_));
  QCOMPARE(CProgrammeTexts::TitleOf(state_), QString("B"));  // that is not of the group
  QVERIFY(shows(Turn("1")));
  QCOMPARE(CProgrammeTexts::TitleOf(state_), QString("1 (Gates)"));
  QVERIFY(!CProgramme::AwaitsTurn(state_) && state_.cycle->name == "Gates");
  QVERIFY(shows(TurnOver()) && shows(Turn("2")) && shows(StopWanted()) && shows(OfferOver()));
  QVERIFY(!shows(ClockTicked()));
  QVERIFY(shows(Want("F")) && shows(Failed("F")) && shows(StopWanted()));
  QVERIFY(shows(Timed("T")) && !shows(PlanRenewed{PlanOf("T")}) && shows(TimedPlanEnds()));
}

// What the wall says of a timed plan, and what is kept of it.
void ProgrammeTest::SaysWhatHasEnded() {
  const auto note = [this] { return CProgrammeTexts::NoteOf(state_); };
  At("09:00:00", Timed("Night watch"));
  QCOMPARE(note(), QString("automatic until 10:00"));
  At("10:00:03", TimedPlanEnds());
  QCOMPARE(note(), QString("Night watch ended at 10:00"));
  At("10:00:05", DefaultViewWanted());
  At("10:00:05", DefaultPlanKnown{"D"});
  At("10:00:05", Came("D"));
  QCOMPARE(note(), QString("Night watch ended at 10:00"));  // beside what has come by itself
  At("10:01:00", Want("A"));
  At("10:01:00", Came("A"));
  QCOMPARE(note(), QString());
  At("11:00:00", StopWanted());
  At("11:00:00", Timed("T", "12:00:00"));
  At("11:30:00", TimedPlanEnds());  // it was deleted
  QCOMPARE(note(), QString("T ended at 11:30"));
  At("11:31:00", UserSwitched());
  QCOMPARE(note(), QString());
  At("12:00:00", Timed("T", "12:30:00"));
  At("12:30:00", TimedPlanEnds());
  At("12:31:00", StopWanted{{}, false});
  QCOMPARE(note(), QString("T ended at 12:30"));
  At("12:32:00", StopWanted());  // the user has seen it
  QCOMPARE(note(), QString());
  At("12:40:00", Timed("T", "12:50:00"));
  At("12:45:00", Timed("U", ""));  // its end is not known
  QCOMPARE(note(), QString());
  At("12:00:00", Timed("T", "13:00:00"));
  At("12:10:00", Want("A"));
  At("12:10:00", Came("A"));
  QCOMPARE(note(), QString());
  At("13:00:00", TimedPlanEnds());  // it was not on any more
  QCOMPARE(note(), QString());
}

// Without the day, its time would say something else then.
void ProgrammeTest::ForgetsWhatHasEndedAfterADay() {
  At("09:00:00", Timed("T"));
  At("10:00:00", TimedPlanEnds());
  At("10:00:05", DefaultViewWanted());
  At("10:00:05", DefaultPlanKnown{"D"});
  At("10:00:05", Came("D"));
  At("09:59:59", ClockTicked(), 3);
  QVERIFY(state_.ended);
  QCOMPARE(At("10:00:00", ClockTicked(), 3), QString("no watch"));
  QCOMPARE(CProgrammeTexts::NoteOf(state_), QString());
  QCOMPARE(shown_.size(), 1);
}

void ProgrammeTest::SaysWhatHasFailed_data() {
  QTest::addColumn<std::string>("code");
  QTest::addColumn<bool>("is_group");
  QTest::addColumn<QString>("name");
  QTest::addColumn<QString>("text");
  QTest::newRow("known") << std::string("A") << false << "Gates"
                         << "\"Gates\" could not be played.";
  QTest::newRow("a plan") << std::string("A") << false << ""
                          << "The plan could not be played.";
  QTest::newRow("a group") << std::string("G") << true << ""
                           << "The group could not be played.";
  QTest::newRow("not known") << std::string() << false << ""
                             << "The default view could not be played.";
}

// At the start: it may be what was played last, and not the default view.
void ProgrammeTest::SaysWhatHasFailed() {
  QFETCH(std::string, code);
  QFETCH(bool, is_group);
  QFETCH(QString, name);
  CProgramme::Failed failed{{code, PlayOrigin::DefaultView}};
  failed.may_pass = false;
  if (is_group) {
    failed.cycle.emplace().code = code;
  }
  QTEST(CProgrammeTexts::Of(failed, name), "text");
}

void ProgrammeTest::PausesGrow() {
  QList<int> pauses;
  for (int failures = 0; failures <= 7; ++failures) {
    pauses << RetryPauseSeconds(failures);
  }
  QCOMPARE(pauses, (QList<int>{3, 3, 6, 12, 24, 48, 60, 60}));
  QCOMPARE(RetryPauseSeconds(std::numeric_limits<int>::max()), 60);
}

QTEST_APPLESS_MAIN(ProgrammeTest)
#include "test_programme.moc"
