#pragma once

#include <QObject>
#include <memory>
#include <string>

#include "plans/cycle_turn.h"
#include "plans/play_origin.h"
#include "wall/page_clock.h"

namespace TarnClient {

class CPlanPlayer;

/// Plays the plans of a group one after the other and around, its own before those of its subgroups. The group is read
/// anew at every turn. A plan that cannot be fetched is skipped with a message; when none can, or the service does not
/// answer, what is on the wall stays for another turn. Ends when the user plays something else or stops, when the group
/// is gone or has no plans, and when its first turn fails. Thread: GUI; the service is asked on the thread pool.
class CGroupCycle : public QObject {
  Q_OBJECT
 public:
  /// `clock` says when a turn is over.
  CGroupCycle(CPlanPlayer* player, std::unique_ptr<CPageClock> clock, QObject* parent = nullptr);
  ~CGroupCycle() override;

  /// Takes the place of a cycle that runs. An empty name is looked up.
  /// `origin` is GroupCycle, or DefaultView for a cycle that gives way to an automatic plan.
  void Start(const QString& group_code, const QString& group_name, int seconds_per_plan,
             PlayOrigin origin = PlayOrigin::GroupCycle);
  void Stop();
  bool IsRunning() const { return !group_code_.empty(); }

 Q_SIGNALS:
  /// Where the cycle is: "Group Gates, plan 2 of 5"; empty when none runs.
  void SignalProgress(const QString& text);
  void SignalMessage(const QString& text, int state);

 private:
  void Turn();
  void OnTurn(const CycleTurn& turn);
  void Show(const CycleTurn& turn);
  void TellSkipped(const QStringList& names);
  void TryAgain(const QString& error);
  void FetchName();
  void Fail(const QString& text);
  void OnPlayed(const view_plugin_protocol::GetPlanDetailResponse& plan, PlayOrigin origin);
  QString Progress() const;

  CPlanPlayer* const player_;
  const std::unique_ptr<CPageClock> clock_;
  std::string group_code_;
  QString group_name_;
  int seconds_ = 0;
  PlayOrigin origin_ = PlayOrigin::GroupCycle;
  int generation_ = 0;
  CycleTurn last_;
  QString told_;  // why the last turn failed, for a run of failures
};

}  // namespace TarnClient
