#pragma once

#include <QSize>
#include <QString>
#include <QUrl>
#include <vector>

namespace TarnClient {

/// Why a device did not say what it has.
enum class DeviceFailure {
  NoAnswer,        // no connection, or silence on it
  Certificate,     // https with a certificate that no one vouches for
  WrongPassword,   // user, password, or the right to ask
  Refused,         // it answers, but not this
  NotUnderstood,   // what answers is no device of this kind
  NoVideoProfile,  // it has no stream that can be shown
};

/// A device that has answered a search.
struct DeviceFound {
  QString id;     // the same at its next answer
  QUrl service;   // where it is asked
  QString name;   // as it calls itself; may be empty
  QString model;  // likewise
  QString place;  // likewise
};

struct DeviceStream {
  int kind = 0;   // 0 main, 1 sub and so on, as a plan's windows name them
  QString codec;  // "H264", "H265" or "JPEG"
  QSize size;
  QUrl address;     // rtsp, without user and password
  QString profile;  // the device's own word for it
};

struct DevicePreset {
  QString token;  // the device's own word for it
  QString name;
};

/// What stands behind one lens of a device.
struct DeviceCamera {
  std::vector<DeviceStream> streams;  // main first; never empty
  std::vector<DevicePreset> presets;
  QUrl ptz_service;  // empty when it cannot be turned
  QString ptz_profile;
};

struct DeviceAnswer {
  qint64 clock_offset_ms = 0;         // of its clock to ours
  QString name, model;                // as it calls itself; may be empty
  std::vector<DeviceCamera> cameras;  // never empty
};

}  // namespace TarnClient
