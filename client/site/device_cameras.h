#pragma once

#include <QUrl>
#include <string>

#include "TarnHost/camera_access.h"
#include "devices/device_records.h"
#include "site/site_table.h"

namespace TarnClient {

/// How a device is asked, and where its cameras are to stand.
struct DeviceChoice {
  QUrl service;
  QString name;  // as it answered the search; may be empty
  std::string user, region;
  TarnHost::CSecret secret;
};

/// The cameras to add for what a device has, one for each lens; `known` counts those that the site has already, by the
/// address of their main stream. Presets keep the device's numbers where its words for them are numbers.
TarnHost::CameraChanges CamerasOfDevice(const DeviceAnswer& answer, const DeviceChoice& choice, const SiteTable& site,
                                        int* known);

}  // namespace TarnClient
