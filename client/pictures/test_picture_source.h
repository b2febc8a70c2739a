#pragma once

#include <QElapsedTimer>
#include <functional>
#include <memory>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "pictures/picture_source.h"

namespace TarnClient {

/// A generated scene with something moving in it; its colours come from the camera's code, so that each camera
/// has its own. About ten pictures a second, made when they are asked for. Thread: GUI.
class CTestPictureSource : public IPictureSource {
 public:
  /// A camera without power or line has no pictures; unset: it always has.
  using IsOnline = std::function<bool()>;

  explicit CTestPictureSource(const view_plugin_protocol::PlanWindow& window, IsOnline is_online = nullptr);

  void Start() override;
  void Stop() override;
  PictureStatus Status() const override;
  QImage LatestPicture(const QSize& wanted) override;
  qint64 LatestNumber() const override;

  static std::unique_ptr<IPictureSource> Make(const view_plugin_protocol::PlanWindow& window);

 private:
  QImage Draw(qint64 number) const;
  PictureState State() const;
  bool HasSignal() const { return !is_online_ || is_online_(); }

  const IsOnline is_online_;
  const uint seed_;
  QImage scene_;
  QImage latest_;
  qint64 drawn_ = -1;
  QElapsedTimer running_;
};

}  // namespace TarnClient
