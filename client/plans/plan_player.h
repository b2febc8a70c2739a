#pragma once

#include <TarnPlanView/standard_view_controller.h>

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"

namespace TarnClient {

class CLiveWall;
class CPlanPane;
class CPlayingMark;

/// Decides what plays: what the user asked for last, else the automatic plan during its time. Thread: GUI.
class CPlanPlayer : public QObject {
  Q_OBJECT
 public:
  explicit CPlanPlayer(CLiveWall* wall, QObject* parent = nullptr);

  /// Plans asked for in this pane play from now on.
  void Attach(CPlanPane* pane);
  /// Fetches the plan and plays it; a failure shows a tip and leaves on the wall what is there.
  void Play(const std::string& code);
  void Stop();

 private:
  void PlayThrough(TarnPlanView::CStandardViewController* controller, const std::string& code);
  void OnDetail(const view_plugin_protocol::GetPlanDetailResponse& plan);
  void OnAutomaticStart(const view_plugin_protocol::GetPlanDetailResponse& plan);
  void OnAutomaticStop();
  void Show(const view_plugin_protocol::GetPlanDetailResponse& plan, bool automatic);
  void OnWallChanged();

  CLiveWall* const wall_;
  CPlayingMark* const mark_;
  QPointer<TarnPlanView::CStandardViewController> controller_;
  std::string wanted_;
  bool automatic_ = false;
  QTimer automatic_end_;
};

}  // namespace TarnClient
