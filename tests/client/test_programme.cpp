#include <QtTest>

#include "LyraPluginManager/error_kind.h"
#include "plans/programme.h"

using namespace TarnClient;
using namespace TarnClient::Events;
using TarnClient::Commands::SayFailure;

namespace {

using Happened = QVector<ProgrammeEvent>;

// O is an own plan, all others are public. As timed plans they run from nine.
Plan PlanOf(const std::string& code, const std::string& end = "10:00:00") {
  Plan plan;
  plan.index_code = code;
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
ProgrammeEvent Timed(const std::string& code, const std::string& end = "10:00:00") {
  return TimedPlanBegins{PlanOf(code, end)};
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
  QString operator()(const Commands::ShowPlan& c) const { return "show " + Text(c.plan.index_code) + " " + Name(c.by); }
  QString operator()(const Commands::EmptyWall&) const { return "empty"; }
  QString operator()(const Commands::FetchTurn& c) const { return QString("turn %1").arg(c.step); }
  QString operator()(const Commands::DropTurn&) const { return "drop turn"; }
  QString operator()(const Commands::BeginTurn& c) const {
    return QString("%1 %2 s").arg(c.is_held ? "held" : "stays").arg(c.seconds);
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
    return QString(c.on ? "wait" : "no wait") + QString(c.is_long ? " long" : "");
  }
  QString operator()(const Commands::SayAwaited&) const { return "awaited"; }
  QString operator()(const Commands::SayProgress&) const { return "progress"; }
  QString operator()(const SayFailure& c) const {
    return QString("say %1 %2").arg(static_cast<int>(c.reason)).arg(c.details.join('+')).trimmed();
  }
};

}  // namespace

Q_DECLARE_METATYPE(QVector<TarnClient::ProgrammeEvent>)

/// What plays, without a window: each row is what happens, the commands for the last event, and what then is on the
/// wall.
class ProgrammeTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() { state_ = {}; }
  void Decides_data();
  void Decides();
  void WatchesTheClock();
  void SaysWhatChanges();

 private:
  /// The commands for this event, without those that only say what changed.
  QString At(const QString& time, const ProgrammeEvent& event);

  CProgramme::State state_;
  QStringList commands_, said_;
};

QString ProgrammeTest::At(const QString& time, const ProgrammeEvent& event) {
  const auto step = CProgramme::Next(state_, event, QDateTime(QDate(2026, 3, 2), QTime::fromString(time)));
  state_ = step.state;
  commands_.clear();
  said_.clear();
  for (const ProgrammeCommand& command : step.commands) {
    const QString words = std::visit(Words(), command);
    (words == "awaited" || words == "progress" ? said_ : commands_) << words;
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
  const ProgrammeEvent stop = StopWanted(), emptied = WallEmptied(), ends = TimedPlanEnds(), due = NextPlanDue(),
                       open = DefaultViewWanted(), none = DefaultViewNone(), unknown = DefaultViewUnknown(),
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
  row("stopped on the wall", {Want("A"), Came("A"), emptied}, "no wait empty", "");
  row("emptied by a command", {Want("A"), Came("A"), stop, emptied}, "", "");
  row("stopped on its way", {Want("A"), stop, Came("A")}, "", "");
  row("another one on its way stopped", {Want("A"), Came("A"), Want("B"), emptied, Came("B")}, "", "");
  row("switched away", {Want("A"), Came("A"), user}, "no wait empty", "");

  // Timed plans.
  row("timed", {Timed("T")}, "show T timed watch", "T timed");
  row("timed, over", {Timed("T"), ends}, "look forget empty wait no watch", "");
  row("timed, stopped", {Timed("T"), emptied}, "no wait forget empty", "");
  row("timed, again with other times", {Timed("T"), Timed("T", "11:00:00")}, "show T timed", "T timed");
  row("timed, not over the user's", {Want("A"), Came("A"), Timed("T")}, "", "A user");
  row("timed, not over the user's group", {Cycle(), Turn("1"), Timed("T")}, "", "1 cycle");
  row("the user's over a timed one", {Timed("T"), Want("A"), Came("A")}, "show A user", "A user");
  row("that stays at the end", {Timed("T"), Want("A"), Came("A"), ends}, "look no watch", "A user");
  row("on its way before a timed one", {Want("A"), Timed("T"), Came("A")}, "show A user", "A user");
  row("on its way over the end", {Timed("T"), Want("A"), ends, Came("A")}, "show A user", "A user");
  row("a group over the end", {Timed("T"), Cycle(), ends, Turn("1")}, "show 1 cycle stays 20 s", "1 cycle");
  row("a group before a timed one", {Cycle(), Timed("T"), Turn("1")}, "show 1 cycle stays 20 s", "1 cycle");
  row("another timed one at the end", {Timed("T"), ends, Timed("U")}, "show U timed watch", "U timed");
  row("another user's", {Timed("T"), user}, "no wait forget empty", "");

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
  row("the service is away", opened + Happened{ends, due, unknown}, "wait long", "");
  row("asked until it answers", opened + Happened{ends, due, unknown, due}, "default view?", "");
  row("not at the start", {open, unknown}, "", "");
  row("nor what was chosen since", {open, unknown, plan_d}, "", "");
  row("not over the user's stop", opened + Happened{ends, due, stop, unknown}, "", "");
  row("none is chosen any more", opened + Happened{ends, due, none, due}, "", "");
  row("after two timed plans", opened + Happened{ends, Timed("U"), due}, "", "U timed");
  row("and their end", opened + Happened{ends, Timed("U"), ends, due}, "default view?", "");
  row("not after a stop", opened + Happened{emptied, ends, due}, "", "");
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

  // Own timed plans after a switch of user.
  const Happened asked = {user, Timed("O")};
  row("may be the last user's", asked, "sees O? watch", "");
  row("a public one is everybody's", {user, Timed("T")}, "show T timed watch", "T timed");
  row("seen", asked + Happened{Seen()}, "show O timed", "O timed");
  row("no doubt from then on", asked + Happened{Seen(), ends, Timed("O")}, "show O timed watch", "O timed");
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
  QCOMPARE(At("10:00:02", ClockTicked()), QString("look forget empty wait no watch"));
  // No one announces the end of a plan that was stopped, but the next one may be due.
  At("09:00:00", Timed("T"));
  QCOMPARE(At("09:10:00", WallEmptied()), QString("no wait forget empty"));
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

void ProgrammeTest::SaysWhatChanges() {
  const auto said = [this](const ProgrammeEvent& event) {
    At("09:00:00", event);
    return said_.join(' ');
  };
  QCOMPARE(said(Want("A")), QString("awaited"));
  QCOMPARE(said(Want("A")), QString());
  QCOMPARE(said(Want("B")), QString("awaited"));
  QCOMPARE(said(Came("B")), QString("awaited"));
  QCOMPARE(said(Cycle()), QString("awaited progress"));
  QVERIFY(CProgramme::AwaitsTurn(state_));
  QCOMPARE(said(Turn("1")), QString("awaited progress"));
  QVERIFY(!CProgramme::AwaitsTurn(state_) && state_.cycle->name == "Gates");
  QCOMPARE(said(TurnOver()), QString("awaited"));
  QCOMPARE(said(Turn("2")), QString("awaited progress"));
  QCOMPARE(said(StopWanted()), QString("progress"));
}

QTEST_APPLESS_MAIN(ProgrammeTest)
#include "test_programme.moc"
