#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <optional>
#include <vector>

#include "devices/device_records.h"
#include "devices/xml_node.h"

namespace TarnClient {

// What a device's answers say: each takes the first element of an answer's body. What is missing is empty.

/// Where the services of a device stand.
struct DeviceServices {
  QUrl media2, media1, ptz;
};
DeviceServices ReadServices(const XmlNode& answer);
DeviceServices ReadCapabilities(const XmlNode& answer);

/// The device's clock; invalid when it does not say.
QDateTime ReadDeviceTime(const XmlNode& answer);

/// What a device says of itself in its scopes, "onvif://www.onvif.org/name/North%20gate"; empty when it does not.
QString ScopeText(const QStringList& scopes, const char* category);
/// Of an answer that lists the scopes.
QString ReadDeviceName(const XmlNode& answer);

/// One of the ways in which a device can send a picture.
struct DeviceProfile {
  QString token;
  QString source;  // which lens
  QString codec;   // "H264", "H265" or "JPEG"; empty for what cannot be shown
  QSize size;
  bool turns = false;  // a camera that presets can be called of
};
std::vector<DeviceProfile> ReadProfiles2(const XmlNode& answer);
std::vector<DeviceProfile> ReadProfiles1(const XmlNode& answer);

/// Without user and password. Empty for what is no rtsp address.
QUrl ReadStreamAddress(const XmlNode& answer);

std::vector<DevicePreset> ReadPresets(const XmlNode& answer);

/// The profiles of one lens, in the order of the stream kinds.
struct DeviceLens {
  std::vector<DeviceProfile> streams;  // largest first, no two of one size
  QString ptz_profile;                 // empty when it cannot be turned
};
/// H.264 and H.265 before all else; a lens with neither shows its JPEG. The first 64 lenses.
std::vector<DeviceLens> LensesOf(const std::vector<DeviceProfile>& profiles);

/// Where to ask a service: as the device has named it, but always on the machine that was asked. Behind a router it
/// names an address of its own, and no answer may send a user's name to another machine.
QUrl ServiceOn(const QUrl& asked, const QUrl& named);

/// The service's address for what a user has typed: "10.0.0.7", "camera:8080", or a whole URL. Invalid for the rest.
QUrl DeviceAddress(const QString& typed);

}  // namespace TarnClient
