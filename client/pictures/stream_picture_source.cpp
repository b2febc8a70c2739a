#include "pictures/stream_picture_source.h"

#include <algorithm>
#include <utility>

#include "pictures/stream_lease.h"
#include "pictures/test_picture_source.h"

namespace TarnClient {

namespace {

// A window that is not painted for so long has no size to go by.
constexpr qint64 kWaitForSizeMs = 300;

PictureLoss LossOf(CameraStreams::State state) {
  switch (state) {
    case CameraStreams::NoAddress:
      return PictureLoss::NoAddress;
    case CameraStreams::NeedsStore:
      return PictureLoss::NeedsStore;
    case CameraStreams::Removed:
      return PictureLoss::Removed;
    case CameraStreams::Unknown:
    case CameraStreams::Drawn:
    case CameraStreams::Known:
      break;
  }
  return PictureLoss::None;
}

}  // namespace

StreamKind PlannedKind(const view_plugin_protocol::PlanWindow& window) {
  if (window.stream_type == 0) {
    return StreamKind::Main;
  }
  return StreamKind::Sub;
}

CStreamPictureSource::CStreamPictureSource(std::weak_ptr<StreamDesk> desk,
                                           const view_plugin_protocol::PlanWindow& window)
    : desk_(std::move(desk)), window_(window), choice_(PlannedKind(window)) {
  if (const auto shared = desk_.lock()) {
    shared->sources.push_back(this);
  }
}

CStreamPictureSource::~CStreamPictureSource() {
  LetGo();
  if (const auto desk = desk_.lock()) {
    desk->sources.erase(std::remove(desk->sources.begin(), desk->sources.end(), this), desk->sources.end());
  }
}

void CStreamPictureSource::Start() {
  started_ms_ = SteadyMs();
  state_ = PictureState::Opening;
  Advance();
}

void CStreamPictureSource::Stop() {
  LetGo();
  drawn_.reset();
  state_ = PictureState::Stopped;
}

void CStreamPictureSource::LetGo() {
  if (shown_) {
    counted_ += shown_->Number() + 1;
  }
  next_.reset();
  shown_.reset();
}

bool CStreamPictureSource::IsOffline(const StreamDesk& desk) const {
  return desk.is_online && !desk.is_online(window_.resource_code);
}

void CStreamPictureSource::Advance() {
  const auto desk = desk_.lock();
  if (!desk || state_ == PictureState::Stopped) {
    return;
  }
  const CameraStreams& streams = desk->addresses->Of(window_.resource_code);
  if (streams.state == CameraStreams::Drawn) {
    return Draw();
  }
  drawn_.reset();
  loss_ = PictureLoss::None;
  if (IsOffline(*desk)) {
    LetGo();
    state_ = PictureState::Offline;
    return;
  }
  state_ = PictureState::Opening;
  Follow(*desk, streams);
}

void CStreamPictureSource::Draw() {
  if (drawn_) {
    return;
  }
  LetGo();
  drawn_ = std::make_unique<CTestPictureSource>(window_, [shared = desk_, code = window_.resource_code] {
    const auto desk = shared.lock();
    return !desk || !desk->is_online || desk->is_online(code);
  });
  drawn_->Start();
}

void CStreamPictureSource::Follow(StreamDesk& desk, const CameraStreams& streams) {
  loss_ = LossOf(streams.state);
  if (loss_ != PictureLoss::None) {
    LetGo();
    state_ = PictureState::Lost;
    return;
  }
  const std::optional<StreamKind> kind = WantedKind(streams);
  if (streams.state == CameraStreams::Known && kind) {
    Change(desk, streams, *kind);
  }
}

// Empty while it is too early to say.
std::optional<StreamKind> CStreamPictureSource::WantedKind(const CameraStreams& streams) const {
  if (!has_size_ && SteadyMs() - started_ms_ < kWaitForSizeMs) {
    return std::nullopt;
  }
  if (!streams.Of(choice_.Kind())) {
    return OtherKind(choice_.Kind());
  }
  return choice_.Kind();
}

std::unique_ptr<CStreamLease> CStreamPictureSource::Take(StreamDesk& desk, const CameraStreams& streams,
                                                         StreamKind kind) const {
  auto lease = desk.hub->Take({window_.resource_code, kind}, *streams.Of(kind), StreamUse::Shown);
  lease->SetInFocus(weight_ == PictureWeight::InFocus);
  return lease;
}

// The camera's other stream, where that has a picture already, is better than none until the wanted one comes.
void CStreamPictureSource::Change(StreamDesk& desk, const CameraStreams& streams, StreamKind kind) {
  if (!shown_) {
    const StreamKind other = OtherKind(kind);
    shown_kind_ = kind;
    if (streams.Of(other) && !desk.hub->HasPicture({window_.resource_code, kind}) &&
        desk.hub->HasPicture({window_.resource_code, other})) {
      shown_kind_ = other;
    }
    shown_ = Take(desk, streams, shown_kind_);
    counted_ -= qMax<qint64>(0, shown_->Number());
  }
  if (kind == shown_kind_) {
    next_.reset();
    return;
  }
  if (!next_ || next_kind_ != kind) {
    next_ = Take(desk, streams, kind);
    next_kind_ = kind;
  }
  TakeOver();
}

// The old stream is shown until the new one has a picture.
void CStreamPictureSource::TakeOver() {
  if (next_->Status().state != PictureState::Live) {
    return;
  }
  counted_ += shown_->Number() + 1 - next_->Number();
  shown_ = std::move(next_);
  shown_kind_ = next_kind_;
}

PictureStatus CStreamPictureSource::BlankStatus() const {
  PictureStatus status;
  status.state = state_;
  status.loss = loss_;
  status.kind = QStringLiteral("rtsp");
  return status;
}

PictureStatus CStreamPictureSource::Status() const {
  if (drawn_) {
    return drawn_->Status();
  }
  if (shown_ && !desk_.expired()) {
    return shown_->Status();
  }
  return BlankStatus();
}

QImage CStreamPictureSource::LatestPicture(const QSize& wanted) {
  if (drawn_) {
    return drawn_->LatestPicture(wanted);
  }
  choice_.Take(wanted.height(), SteadyMs());
  has_size_ = true;
  Advance();
  if (!shown_ || desk_.expired()) {
    return QImage();
  }
  return shown_->Latest(wanted);
}

qint64 CStreamPictureSource::LatestNumber() const {
  if (drawn_) {
    return drawn_->LatestNumber();
  }
  if (!shown_) {
    return counted_ - 1;
  }
  return counted_ + shown_->Number();
}

void CStreamPictureSource::SetWeight(PictureWeight weight) {
  weight_ = weight;
  for (CStreamLease* lease : {shown_.get(), next_.get()}) {
    if (lease) {
      lease->SetInFocus(weight == PictureWeight::InFocus);
    }
  }
}

}  // namespace TarnClient
