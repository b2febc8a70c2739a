#pragma once

#include <QObject>
#include <QString>
#include <functional>

#include "devices/camera_presets.h"
#include "host_calls/call_order.h"

namespace TarnClient {

/// Has cameras look at their presets: the service says whether they may and have it, the device turns them. The calls
/// of one camera are made in the order in which they were wanted. Thread: GUI; the service is asked on the thread pool.
class CPresetCalls : public QObject {
  Q_OBJECT
 public:
  explicit CPresetCalls(QObject* parent) : QObject(parent) {}

  /// The plan wants it so: a camera that does not is only noted in the log, since pages turn all day.
  void CallForPlan(const QString& camera_code, int preset_no);
  /// The user wants it now, and hears when it fails.
  void CallForUser(const QString& camera_code, int preset_no);

 Q_SIGNALS:
  void SignalMessage(const QString& text, int state);

 private:
  /// `failed` is called with the reason, and not at all when the camera turns.
  void Call(const QString& camera_code, int preset_no, const std::function<void(const QString&)>& failed);

  HostCalls::CCallOrder order_;
  CCameraPresets devices_{this};
};

}  // namespace TarnClient
