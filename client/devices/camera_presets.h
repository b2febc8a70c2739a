#pragma once

#include <QHash>
#include <QObject>
#include <QString>
#include <functional>

#include "devices/preset_caller.h"

namespace TarnClient {

/// Turns the site's cameras to their presets, over the devices that they belong to. Thread: GUI; the service is asked
/// on the thread pool.
class CCameraPresets : public QObject {
  Q_OBJECT
 public:
  /// What is to be said; empty when the camera turns, or belongs to no device that could be asked.
  using Then = std::function<void(const QString& fault)>;

  explicit CCameraPresets(QObject* parent = nullptr) : QObject(parent) {}

  /// Of several orders for one camera the last one counts. `then` is not called any more when this object is destroyed.
  void Turn(const QString& camera_code, int preset_no, const Then& then);

 private:
  CPresetCaller caller_{this};
  int orders_ = 0;                  // that were ever given
  QHash<QString, int> last_order_;  // by camera
};

}  // namespace TarnClient
