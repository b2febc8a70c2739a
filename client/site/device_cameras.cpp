#include "site/device_cameras.h"

#include <algorithm>
#include <set>

#include "TarnHost/camera_address.h"

namespace TarnClient {

namespace {

constexpr int kHighestPreset = 65535, kHighestStream = 15;

QString NameOf(const DeviceAnswer& answer, const DeviceChoice& choice, size_t lens) {
  QString name = choice.service.host();
  for (const QString& candidate : {answer.model, choice.name, answer.name}) {
    if (!candidate.trimmed().isEmpty()) {
      name = candidate.simplified();
    }
  }
  if (answer.cameras.size() > 1) {
    name += QStringLiteral(" %1").arg(lens + 1);
  }
  return name.left(TarnHost::kLongestCameraName);
}

std::vector<ptz_plugin_protocol::PresetInfo> PresetsOf(const DeviceCamera& camera) {
  std::vector<ptz_plugin_protocol::PresetInfo> presets;
  std::set<int> numbers;
  const auto add = [&](const DevicePreset& preset, int number) {
    QString name = preset.name.simplified().left(TarnHost::kLongestCameraName);
    if (name.isEmpty()) {
      name = QString::number(number);
    }
    presets.push_back({number, name.toStdString()});
  };
  std::vector<const DevicePreset*> others;
  for (const DevicePreset& preset : camera.presets) {
    const int number = preset.token.toInt();
    if (number > 0 && number <= kHighestPreset && numbers.insert(number).second) {
      add(preset, number);
    } else {
      others.push_back(&preset);
    }
  }
  int next = 1;
  for (const DevicePreset* preset : others) {
    while (numbers.count(next) != 0) {
      ++next;
    }
    numbers.insert(next);
    add(*preset, next);
  }
  return presets;
}

bool IsKnown(const DeviceCamera& camera, const SiteTable& site) {
  const std::string main = camera.streams.front().address.toString().toStdString();
  return std::any_of(site.cameras.begin(), site.cameras.end(),
                     [&](const auto& known) { return site.Address(known.index_code, 0) == main; });
}

}  // namespace

TarnHost::CameraChanges CamerasOfDevice(const DeviceAnswer& answer, const DeviceChoice& choice, const SiteTable& site,
                                        int* known) {
  TarnHost::CameraChanges changes;
  *known = 0;
  for (size_t lens = 0; lens < answer.cameras.size(); ++lens) {
    const DeviceCamera& camera = answer.cameras[lens];
    if (IsKnown(camera, site)) {
      ++*known;
      continue;
    }
    TarnHost::CameraChanges::Camera change;
    change.name = NameOf(answer, choice, lens).toStdString();
    change.region = choice.region;
    for (const DeviceStream& stream : camera.streams) {
      if (stream.kind <= kHighestStream) {
        change.streams.push_back({stream.kind, stream.address.toString().toStdString()});
      }
    }
    change.user = choice.user;
    change.secret = choice.secret;
    change.device_url = choice.service.toString(QUrl::RemoveUserInfo).toStdString();
    change.presets = PresetsOf(camera);
    changes.cameras.push_back(std::move(change));
  }
  return changes;
}

}  // namespace TarnClient
