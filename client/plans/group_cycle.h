#pragma once

#include <QObject>
#include <string>

#include "host_calls/call_scope.h"
#include "plans/cycle_turn.h"
#include "plans/play_origin.h"

namespace TarnClient {

class CLiveWall;
class CPlanPlayer;

/// Plays the plans of a group one after the other and around, its own before those of its subgroups. The wall says when
/// a turn is over, or that the user wants another plan of the group. The group is read again at every turn. A plan that
/// cannot be fetched is skipped with a message; when none can, or the service does not answer, what is on the wall
/// stays for another turn. Ends when the user plays something else or stops, when the group is gone or has no plans,
/// and when its first turn fails. Thread: GUI; the service is asked on the thread pool.
class CGroupCycle : public QObject {
  Q_OBJECT
 public:
  CGroupCycle(CPlanPlayer* player, CLiveWall* wall, QObject* parent = nullptr);
  ~CGroupCycle() override;

  /// Takes the place of a cycle that runs. An empty name is looked up.
  /// `origin` is GroupCycle, or DefaultView for a cycle that gives way to an automatic plan.
  void Start(const QString& group_code, const QString& group_name, int seconds_per_plan,
             PlayOrigin origin = PlayOrigin::GroupCycle);
  void Stop();
  bool IsRunning() const { return !group_code_.empty(); }
  /// Whether a plan of the group is on its way.
  bool IsFetching() const { return asked_ != Asked::Nothing; }

 Q_SIGNALS:
  /// Where the cycle is: "Group Gates, plan 2 of 5"; empty when none runs.
  void SignalProgress(const QString& text);
  void SignalFetchingChanged();
  void SignalMessage(const QString& text, int state);

 private:
  enum class Asked { Nothing, ByTime, ByUser };  // who wants the turn that is being fetched

  void SetAsked(Asked asked);
  void OnTurnOver();
  void OnStepWanted(int step);
  void OnHeld();
  void Turn(int step);
  void OnTurn(const CycleTurn& turn);
  void Show(const CycleTurn& turn);
  void TellSkipped(const QStringList& names);
  void TryAgain(const QString& error);
  void FetchName();
  void Fail(const QString& text);
  void OnPlayed(const view_plugin_protocol::GetPlanDetailResponse& plan, PlayOrigin origin);
  QString Progress() const;

  CPlanPlayer* const player_;
  CLiveWall* const wall_;
  std::string group_code_;
  QString group_name_;
  int seconds_ = 0;
  PlayOrigin origin_ = PlayOrigin::GroupCycle;
  HostCalls::CCallScope turns_;
  Asked asked_ = Asked::Nothing;
  CycleTurn last_;
  QString told_;  // why the last turn failed, for a run of failures
};

}  // namespace TarnClient
