#pragma once

#include <QObject>
#include <QTimer>
#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "host_calls/call_scope.h"
#include "host_calls/result.h"

namespace TarnPlanView {

/// Looks at the host's version of one plan whenever something was changed anywhere, so that its editor hears of changes
/// that concern it, whichever rows are loaded. Many changes in a row make one look, and one look is
/// under way at a time. Thread: GUI.
class CPlanWatch : public QObject {
  Q_OBJECT
 public:
  explicit CPlanWatch(QObject* parent);

  void Watch(const std::string& plan_code, const std::string& group_code);
  void Stop();
  bool IsWatching() const { return !plan_code_.empty(); }
  /// Whether a look follows the one under way.
  bool LooksAgain() const { return looks_again_; }
  /// A look without a notice.
  void LookSoon();

 Q_SIGNALS:
  /// What the host says of the plan now, also when that is nothing.
  void SignalLooked(const HostCalls::Result<view_plugin_protocol::GetPlanDetailResponse>& now);

 private:
  void Observe(const std::string& group_code) const;
  void LookIn(int milliseconds);
  void Look();
  void OnLooked(const HostCalls::Result<view_plugin_protocol::GetPlanDetailResponse>& now);

  std::string plan_code_;  // empty: nothing is watched
  QTimer timer_;
  HostCalls::CCallScope calls_;
  bool looks_again_ = false;  // there was a notice during the look under way
};

}  // namespace TarnPlanView
