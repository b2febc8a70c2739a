#pragma once

#include <QObject>
#include <functional>
#include <memory>

#include "pictures/picture_source.h"
#include "site/camera_trial.h"

namespace TarnClient {

/// Tries addresses of cameras: opens their pictures until there is one, or a reason why not. Thread: GUI.
class CCameraTrials : public QObject {
  Q_OBJECT
 public:
  /// The pictures at an address, not started; never null.
  using OpenTrial = std::function<std::unique_ptr<IPictureSource>(const CameraTrial& trial)>;

  explicit CCameraTrials(OpenTrial open, QObject* parent = nullptr);

  /// How long one may take.
  void SetPatience(int ms) { patience_ms_ = ms; }
  /// See TryCamera.
  void Try(const CameraTrial& trial, QObject* context, std::function<void(const CameraTrialResult&)> then);

 private:
  const OpenTrial open_;
  int patience_ms_ = 12000;
};

}  // namespace TarnClient
