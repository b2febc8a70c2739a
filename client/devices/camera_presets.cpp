#include "devices/camera_presets.h"

#include "LyraPluginManager/ptz_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "TarnHost/host_services.h"
#include "devices/device_texts.h"
#include "host_calls/ask.h"
#include "wall/window_truth.h"

namespace TarnClient {

using MarUIControl::QStringToString;
using MarUIControl::StringToQString;

namespace {

/// What is to be done, as the site's records say.
struct CameraOrder {
  PresetOrder order;
  QByteArray authority;
  QString fault;
};

QString NameOfPreset(const std::string& camera_code, int preset_no) {
  ptz_plugin_protocol::GetPresetResponse response;
  LyraPluginManager::CPTZBusinessInterfaceMgr::Instance().GetPresets({camera_code}, response);
  for (const ptz_plugin_protocol::PresetInfo& preset : response.presets) {
    if (preset.preset_no == preset_no) {
      return StringToQString(preset.name);
    }
  }
  return QString();
}

CameraOrder OrderFor(const std::string& camera_code, int preset_no) {
  CameraOrder order;
  TarnHost::CameraAccessList access;
  std::string error;
  const auto services = TarnHost::InstalledHostServices();
  if (!services || !services->GetCameraAccess({camera_code}, access, &error)) {
    order.fault = StringToQString(error);
    return order;
  }
  if (access.cameras.empty() || access.cameras.front().device_url.empty()) {
    return order;
  }
  const TarnHost::CameraAccess& camera = access.cameras.front();
  if (camera.needs_store) {
    order.fault = TextOf(PictureLoss::NeedsStore);
    return order;
  }
  order.authority = QByteArray::fromStdString(access.authority);
  order.order = {DeviceAddress(StringToQString(camera.device_url)),
                 StringToQString(camera.user),
                 StringToQString(camera.secret.Reveal()),
                 QUrl(),
                 preset_no,
                 NameOfPreset(camera_code, preset_no)};
  if (!camera.streams.empty()) {
    order.order.stream = QUrl(StringToQString(camera.streams.front().url));
  }
  return order;
}

}  // namespace

void CCameraPresets::Turn(const QString& camera_code, int preset_no, const Then& then) {
  const int number = ++orders_;
  last_order_.insert(camera_code, number);
  HostCalls::Ask([code = QStringToString(camera_code), preset_no] {
    return OrderFor(code, preset_no);
  }).Then(this, [this, then, camera_code, number](const CameraOrder& answer) {
    if (last_order_.value(camera_code) != number) {
      then(QString());
      return;
    }
    if (!answer.fault.isEmpty() || answer.order.device.isEmpty()) {
      then(answer.fault);
      return;
    }
    caller_.SetAuthority(answer.authority);
    caller_.Call(answer.order, [then](std::optional<DeviceFailure> failure, const QString& words) {
      then(failure ? TextOf(*failure, words) : QString());
    });
  });
}

}  // namespace TarnClient
