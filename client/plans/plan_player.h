#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QVector>
#include <deque>
#include <optional>
#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "host_calls/call_scope.h"
#include "host_calls/result.h"
#include "plans/play_origin.h"
#include "plans/programme.h"

namespace TarnPlanView {
class CStandardViewController;
}  // namespace TarnPlanView

namespace TarnClient {

class CLiveWall;
class CPlanFamily;
class CPlayingMark;

/// Carries out what CProgramme decides, and lets it know what happens: on the wall, in the panels, in the service and
/// by the clock. Thread: GUI; the service is asked on the thread pool.
class CPlanPlayer : public QObject {
  Q_OBJECT
 public:
  explicit CPlanPlayer(CLiveWall* wall, QObject* parent = nullptr);
  ~CPlanPlayer() override;

  /// Timed plans begin and end here from now on.
  void FollowTimedPlans();
  /// Plans asked for in this family's panel play from now on. Not owned; may die first.
  void Attach(CPlanFamily* family);
  /// Fetches the plan and plays it; a failure shows a tip and leaves on the wall what is there.
  void Play(const std::string& code, PlayOrigin origin = PlayOrigin::User, const WallPlace& place = {});
  /// Plays the plans of the group and its subgroups in turn, in the order of the tree's rows, and around, until the
  /// user plays something else or stops. The group is read again at every turn.
  void PlayGroup(const QString& code);
  /// The least time of a plan in a group cycle, from the next turn on.
  void SetSecondsPerPlan(int seconds);
  /// Opens the user's default view: a plan plays, a group cycles. Nothing when something plays already by the time it
  /// is known, or when none was chosen.
  void OpenDefaultView();
  /// The user's own arrangement is on the wall again, as it was left. Not a play: no record of it is made.
  void BringBack(const CArrangement& arrangement, const WallPlace& place);
  /// This plan or group takes the place of the default view until another user comes.
  void OpenInItsPlace(const QString& code, bool is_group);
  /// Also takes back what was asked for and has not come yet. What was on the wall is in State().stopped.
  void Stop();
  /// What was stopped plays again, a cycle goes on.
  void PlayAgain();
  /// What was stopped is offered no more.
  void ForgetStopped();
  /// What has failed on the empty wall is tried once more.
  void TryAgain();
  /// Another user has logged in: stops, and no timed plan of the last user's own starts any more.
  void ForgetUser();
  /// What plays and what is to follow.
  const CProgramme::State& State() const { return state_; }

 Q_SIGNALS:
  /// Something has changed that the user is shown of State().
  void SignalStateChanged();
  /// The plan is on the wall.
  void SignalPlayed(const view_plugin_protocol::GetPlanDetailResponse& plan, TarnClient::PlayOrigin origin);
  /// For the user; `state` is that of a tip.
  void SignalMessage(const QString& text, int state);

 private:
  void FollowWall();
  void Handle(const ProgrammeEvent& event);
  void OnDefaultView(const QString& code, bool is_group);
  void ClearOwnCameras();
  void LookAhead();
  void OnDefaultViewAnswer(const HostCalls::Result<view_plugin_protocol::GetClientDefaultViewConfigResponse>& answer);
  void FetchByPanel(const std::string& code);
  Events::Group GroupOf(const QString& code) const;

  void Do(const Commands::FetchPlan& fetch);
  void Do(const Commands::ShowPlan& show);
  void Do(const Commands::ShowArrangement& show);
  void Do(const Commands::EmptyWall& empty);
  void Do(const Commands::FetchTurn& fetch);
  void Do(const Commands::DropTurn& drop);
  void Do(const Commands::BeginTurn& begin);
  void Do(const Commands::Stay& stay);
  void Do(const Commands::EndTurns& end);
  void Do(const Commands::AskDefaultView& ask);
  void Do(const Commands::AskIfSeen& ask);
  void Do(const Commands::DropQuestion& drop);
  void Do(const Commands::LookForTimedPlan& look);
  void Do(const Commands::ForgetTimedPlan& forget);
  void Do(const Commands::WatchClock& watch);
  void Do(const Commands::AwaitNextPlan& await);
  void Do(const Commands::ShowState& show);
  void Do(const Commands::SayFailure& say);

  CLiveWall* const wall_;
  CPlayingMark* const mark_;
  QVector<QPointer<CPlanFamily>> families_;
  QPointer<TarnPlanView::CStandardViewController> controller_;  // the first family's: it fetches plans of all
  CProgramme::State state_;
  int seconds_per_plan_ = 20;
  /// What takes the place of the default view.
  struct InItsPlace {
    QString code;
    bool is_group = false;
  };
  std::optional<InItsPlace> in_its_place_;
  std::deque<ProgrammeEvent> events_;  // the first one is being handled
  QTimer clock_{this};
  QTimer next_plan_{this};
  HostCalls::CCallScope turn_, look_ahead_;
  HostCalls::CCallScope question_;
  HostCalls::CCallScope default_view_;
};

}  // namespace TarnClient

Q_DECLARE_METATYPE(TarnClient::PlayOrigin)
