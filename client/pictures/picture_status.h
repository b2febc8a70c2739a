#pragma once

#include <QDateTime>
#include <QSize>
#include <QString>

namespace TarnClient {

enum class PictureState {
  Stopped,
  Opening,
  Live,
  /// It is connected, but its last picture is older than it should be.
  Late,
  /// The connection is lost or was refused; it is tried again by itself.
  Lost,
  /// The site says that the camera is away.
  Offline
};

/// Why there are no new pictures.
enum class PictureLoss {
  None,
  /// None was entered for it.
  NoAddress,
  BadAddress,
  NotReachable,
  NoAnswer,
  WrongPassword,
  UnknownDigest,
  NoSuchStream,
  UnknownCodec,
  Certificate,
  /// The camera serves no more viewers, or not in this way.
  Refused,
  Ended,
  /// A copy of the site is shown, which has neither its password nor an address in which one stands.
  NeedsStore,
  Removed
};

/// What a source can say of its pictures.
struct PictureStatus {
  PictureState state = PictureState::Stopped;
  PictureLoss loss = PictureLoss::None;
  /// How old the latest picture is, by the stream's own clock, in milliseconds; -1 while there was none.
  qint64 age_ms = -1;
  /// When the latest picture was taken, in local time; invalid while there was none.
  QDateTime taken;
  /// The camera has sent the same coded picture for so long that it may stand still.
  bool repeats = false;
  /// The machine cannot decode all: only key frames are shown.
  bool key_frames_only = false;
  /// As the pictures come; empty while there was none.
  QSize size;
  /// "rtsp" or "drawn".
  QString kind;
};

}  // namespace TarnClient
