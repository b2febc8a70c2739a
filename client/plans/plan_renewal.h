#pragma once

#include <QObject>
#include <QTimer>
#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "host_calls/call_scope.h"

namespace TarnClient {

class CLiveWall;
class CPlanFamily;

/// Brings the new version of the plan that plays onto the wall when this client has saved one, in the editor or else.
/// A version that cannot be read is asked for again and again, at growing pauses, while the plan plays. Thread: GUI;
/// the service is asked on the thread pool.
class CPlanRenewal : public QObject {
  Q_OBJECT
 public:
  explicit CPlanRenewal(CLiveWall* wall, QObject* parent = nullptr);

  /// Not owned; may die first.
  void Attach(CPlanFamily* family);

 private:
  void OnSaved(const std::string& plan_code);
  void Fetch();
  void Take(const view_plugin_protocol::GetPlanDetailResponse& plan);

  CLiveWall* const wall_;
  std::string plan_code_;  // of the plan that was saved last
  QTimer again_;
  int failures_ = 0;  // in a row
  HostCalls::CCallScope newest_;
};

}  // namespace TarnClient
