#pragma once

#include <QDateTime>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QVariant>
#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "plans/play_origin.h"

namespace TarnPlanView {
class CStandardViewController;
}

namespace TarnClient {

class CLiveWall;
class CPlanFamily;
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
  /// Also takes back a wish whose plan has not come yet.
  void Stop();

 Q_SIGNALS:
  /// The user has asked for a plan; it may still be on its way.
  void SignalWanted();
  /// The plan is on the wall.
  void SignalPlayed(const view_plugin_protocol::GetPlanDetailResponse& plan, TarnClient::PlayOrigin origin);
  /// Everything was stopped, or the wall has become empty.
  void SignalStopped();

 private:
  void OnWanted(const QVariant& plan);
  void Want(const std::string& code, PlayOrigin origin);
  void OnDetail(const view_plugin_protocol::GetPlanDetailResponse& plan);
  void OnAutomaticStart(const view_plugin_protocol::GetPlanDetailResponse& plan);
  void OnAutomaticStop();
  void WatchAutomaticEnd(const std::string& end);
  void CheckAutomaticEnd();
  bool GivesWay() const;
  void Show(const view_plugin_protocol::GetPlanDetailResponse& plan, PlayOrigin origin);
  void Record(const std::string& name, PlayOrigin origin);
  void OnWallChanged();

  CLiveWall* const wall_;
  CPlayingMark* const mark_;
  QPointer<TarnPlanView::CStandardViewController> controller_;
  std::string wanted_;
  PlayOrigin wanted_by_ = PlayOrigin::User;
  PlayOrigin shown_by_ = PlayOrigin::User;
  QDateTime automatic_end_;
  QTimer end_check_{this};
};

}  // namespace TarnClient

Q_DECLARE_METATYPE(TarnClient::PlayOrigin)
