#pragma once

#include <QDateTime>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QVariant>
#include <map>
#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "plans/play_origin.h"

namespace TarnPlanView {
class CStandardViewController;
}

namespace TarnClient {

class CLiveWall;
class CPlanFamily;
class CPlanInquiry;
class CPlayingMark;

/// Decides what plays: what the user asked for last, else the automatic plan during its time, else the default view.
/// Thread: GUI.
class CPlanPlayer : public QObject {
  Q_OBJECT
 public:
  explicit CPlanPlayer(CLiveWall* wall, QObject* parent = nullptr);
  ~CPlanPlayer() override;

  /// Plans asked for in this family's panel play from now on.
  void Attach(CPlanFamily* family);
  /// Fetches the plan and plays it; a failure shows a tip and leaves on the wall what is there.
  void Play(const std::string& code, PlayOrigin origin = PlayOrigin::User);
  void PlayFromHistory(CPlanFamily* family, const std::string& code);
  /// Plays a plan that a group cycle has fetched; `origin` is the cycle's.
  void PlayOfCycle(const view_plugin_protocol::GetPlanDetailResponse& plan, PlayOrigin origin);
  /// Whether something plays or was asked for and is on its way.
  bool IsBusy() const;
  /// Whether an automatic plan is on the wall.
  bool ShowsAutomatic() const;
  /// A plan that was asked for and has not come yet is not wanted any more; what is on the wall stays.
  void DropWanted() { SetWanted({}); }
  /// The plan that was asked for and is on its way; empty for none.
  const std::string& Wanted() const { return wanted_; }
  /// Also takes back a wish whose plan has not come yet.
  void Stop();
  /// Another user has logged in: stops, and no timed plan of the last user's own starts any more.
  void ForgetUser();
  /// Something is still on its way of which this object knows nothing: SignalAutomaticOver() comes again a moment later
  /// unless something plays by then or the user has stopped.
  void AwaitNextPlan() { next_plan_.start(); }

 Q_SIGNALS:
  /// The user has asked for a plan; it may still be on its way.
  void SignalWanted();
  /// Another plan is on its way, or none.
  void SignalWantedChanged();
  /// The plan is on the wall.
  void SignalPlayed(const view_plugin_protocol::GetPlanDetailResponse& plan, TarnClient::PlayOrigin origin);
  /// Everything was stopped. Not at the end of an automatic plan: what the user wants meanwhile goes on.
  void SignalStopped();
  /// A while ago an automatic plan has ended; nothing has come in its place, and no wish is on its way any more.
  void SignalAutomaticOver();

 private:
  void OnWanted(const QVariant& plan);
  void OnFetched(const std::string& code);
  void Want(const std::string& code, PlayOrigin origin);
  void SetWanted(const std::string& code);
  void OnDetail(const view_plugin_protocol::GetPlanDetailResponse& plan);
  void OnAutomaticStart(const view_plugin_protocol::GetPlanDetailResponse& plan);
  void OnAutomaticStop();
  void OnSeen(const view_plugin_protocol::GetPlanDetailResponse& plan);
  void EndAutomatic();
  void WatchAutomaticEnd(const std::string& end);
  void CheckAutomaticEnd();
  void OnNoNextPlan();
  bool GivesWay() const;
  void Show(const view_plugin_protocol::GetPlanDetailResponse& plan, PlayOrigin origin);
  void Record(const std::string& name, PlayOrigin origin);
  void OnWallChanged();

  CLiveWall* const wall_;
  CPlayingMark* const mark_;
  CPlanInquiry* const inquiry_;  // about a timed plan that may be the last user's
  QPointer<TarnPlanView::CStandardViewController> controller_;
  std::string wanted_;
  std::map<std::string, int> on_way_;  // fetches of each plan whose answers have not come yet
  PlayOrigin wanted_by_ = PlayOrigin::User;
  PlayOrigin shown_by_ = PlayOrigin::User;
  QDateTime automatic_end_;
  QTimer end_check_{this};
  QTimer next_plan_{this};
  bool is_past_end_ = false;    // the last look at the clock was the first one after the end
  bool ends_by_time_ = false;   // the wall is being emptied because the automatic plan's time is over
  bool user_switched_ = false;  // and no own plan of the new user has started by itself yet
};

}  // namespace TarnClient

Q_DECLARE_METATYPE(TarnClient::PlayOrigin)
