#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "pictures/picture_source.h"
#include "pictures/stream_addresses.h"
#include "pictures/stream_choice.h"
#include "pictures/stream_hub.h"

namespace TarnClient {

class CStreamLease;

/// The largest stream that the plan allows in this window.
StreamKind PlannedKind(const view_plugin_protocol::PlanWindow& window);

class CStreamPictureSource;

/// What the sources of one supply share. Thread: GUI.
struct StreamDesk {
  std::unique_ptr<CStreamHub> hub;
  std::unique_ptr<CStreamAddresses> addresses;
  std::function<bool(const std::string& camera)> is_online;
  std::vector<CStreamPictureSource*> sources;  // that are alive
};

/// A camera's pictures in one window: of the stream that suits the window's size, or drawn ones for a camera of a
/// pretended site. Thread: GUI.
class CStreamPictureSource : public IPictureSource {
 public:
  CStreamPictureSource(std::weak_ptr<StreamDesk> desk, const view_plugin_protocol::PlanWindow& window);
  ~CStreamPictureSource() override;

  void Start() override;
  void Stop() override;
  PictureStatus Status() const override;
  QImage LatestPicture(const QSize& wanted) override;
  qint64 LatestNumber() const override;
  void SetWeight(PictureWeight weight) override;
  /// Does what is due since the last call; called a few times a second.
  void Advance();

 private:
  bool IsOffline(const StreamDesk& desk) const;
  void Draw();
  void Follow(StreamDesk& desk, const CameraStreams& streams);
  std::optional<StreamKind> WantedKind(const CameraStreams& streams) const;
  void Change(StreamDesk& desk, const CameraStreams& streams, StreamKind kind);
  void TakeOver();
  void LetGo();
  std::unique_ptr<CStreamLease> Take(StreamDesk& desk, const CameraStreams& streams, StreamKind kind) const;
  PictureStatus BlankStatus() const;

  const std::weak_ptr<StreamDesk> desk_;
  const view_plugin_protocol::PlanWindow window_;
  CStreamChoice choice_;
  bool has_size_ = false;                       // the choice was made by the window's size
  PictureState state_ = PictureState::Stopped;  // while there is no stream
  PictureLoss loss_ = PictureLoss::None;
  PictureWeight weight_ = PictureWeight::Normal;
  qint64 started_ms_ = 0;
  std::unique_ptr<IPictureSource> drawn_;
  std::unique_ptr<CStreamLease> shown_, next_;  // next: until it has a picture
  StreamKind shown_kind_ = StreamKind::Main, next_kind_ = StreamKind::Main;
  qint64 counted_ = 0;  // added to the stream's own numbers
};

}  // namespace TarnClient
