#include "devices/preset_caller.h"

#include <algorithm>
#include <utility>

#include "devices/device_session.h"

namespace TarnClient {

namespace {

constexpr qint64 kKnownMs = 60000;

QString DeviceKey(const PresetOrder& order) {
  return order.device.toString() + QLatin1Char(' ') + order.user;
}

QString CameraKey(const PresetOrder& order) {
  return DeviceKey(order) + QLatin1Char(' ') + order.stream.toString();
}

}  // namespace

const DeviceCamera* CameraOf(const DeviceAnswer& device, const QUrl& stream) {
  for (const DeviceCamera& camera : device.cameras) {
    const bool sends_it = std::any_of(camera.streams.begin(), camera.streams.end(), [&](const DeviceStream& sent) {
      return sent.address.path() == stream.path() && sent.address.query() == stream.query();
    });
    if (sends_it) {
      return &camera;
    }
  }
  return device.cameras.size() == 1 ? &device.cameras.front() : nullptr;
}

const DevicePreset* PresetOf(const DeviceCamera& camera, int number, const QString& name) {
  const auto find = [&camera](const auto& is_wanted) -> const DevicePreset* {
    const auto found = std::find_if(camera.presets.begin(), camera.presets.end(), is_wanted);
    return found == camera.presets.end() ? nullptr : &*found;
  };
  const DevicePreset* by_name = find([&](const DevicePreset& preset) { return preset.name == name; });
  if (by_name) {
    return by_name;
  }
  return find([&](const DevicePreset& preset) { return preset.token == QString::number(number); });
}

void CPresetCaller::Call(const PresetOrder& order, const Then& then) {
  const Then overtaken = std::exchange(waiting_[CameraKey(order)], {order, then}).then;
  if (devices_.contains(DeviceKey(order))) {
    SendWaiting(DeviceKey(order));
  } else if (!asked_.contains(DeviceKey(order))) {
    Ask(order);
  }
  if (overtaken) {
    overtaken(std::nullopt, QString());
  }
}

void CPresetCaller::Ask(const PresetOrder& order) {
  const QString device = DeviceKey(order);
  asked_.insert(device);
  auto* question = new CDeviceQuestion(this);
  question->SetPatience(patience_ms_);
  question->SetAuthority(authority_);
  connect(question, &CDeviceQuestion::SignalAnswered, this, [=](const DeviceAnswer& answer) {
    question->deleteLater();
    asked_.remove(device);
    Known known{answer, {}};
    known.age.start();
    devices_.insert(device, known);
    SendWaiting(device);
  });
  connect(question, &CDeviceQuestion::SignalFailed, this, [=](DeviceFailure failure, const QString& words) {
    question->deleteLater();
    asked_.remove(device);
    for (const Waiting& waiting : TakeWaiting(device)) {
      waiting.then(failure, words);
    }
  });
  question->Ask(order.device, order.user, order.password);
}

// Those whose cameras are still turning go on waiting, or the earlier order might come last.
std::vector<CPresetCaller::Waiting> CPresetCaller::TakeWaiting(const QString& device) {
  std::vector<Waiting> taken;
  for (auto entry = waiting_.begin(); entry != waiting_.end();) {
    if (DeviceKey(entry->second.order) == device && !turning_.contains(entry->first)) {
      taken.push_back(entry->second);
      entry = waiting_.erase(entry);
    } else {
      ++entry;
    }
  }
  return taken;
}

void CPresetCaller::SendWaiting(const QString& device) {
  const Known known = devices_.value(device);
  for (const Waiting& waiting : TakeWaiting(device)) {
    Send(waiting, known.answer);
  }
}

void CPresetCaller::Send(const Waiting& waiting, const DeviceAnswer& device) {
  const PresetOrder& order = waiting.order;
  const DeviceCamera* camera = CameraOf(device, order.stream);
  const DevicePreset* preset = nullptr;
  if (camera) {
    preset = PresetOf(*camera, order.number, order.name);
  }
  if (!preset) {
    Forget(DeviceKey(order), DeviceFailure::Refused);
    waiting.then(DeviceFailure::Refused, QString());
    return;
  }
  turning_.insert(CameraKey(order));
  auto* session = new CDeviceSession(order.user, order.password, this);
  session->SetPatience(patience_ms_);
  session->SetAuthority(authority_);
  session->SetDeviceTime(QDateTime::currentDateTimeUtc().addMSecs(device.clock_offset_ms));
  const SoapBody body =
      SimpleBody(Onvif::kPtz, "GotoPreset", {{"ProfileToken", camera->ptz_profile}, {"PresetToken", preset->token}});
  session->Call(camera->ptz_service, body, [=](const DeviceCallResult& result) {
    session->deleteLater();
    OnSent(waiting, result.failure, result.words);
  });
}

void CPresetCaller::OnSent(const Waiting& sent, std::optional<DeviceFailure> failure, const QString& words) {
  const QString device = DeviceKey(sent.order);
  turning_.remove(CameraKey(sent.order));
  if (failure) {
    Forget(device, *failure);
  }
  sent.then(failure, words);
  const auto next = waiting_.find(CameraKey(sent.order));
  if (next == waiting_.end()) {
    return;
  }
  if (devices_.contains(device)) {
    SendWaiting(device);
  } else if (!asked_.contains(device)) {
    Ask(PresetOrder(next->second.order));
  }
}

// A device that refuses, or has no such preset, may have been changed since it was asked; but a plan may call a preset
// at every turn of its pages that is not there, and the whole device is not asked each time.
void CPresetCaller::Forget(const QString& device, DeviceFailure failure) {
  const auto known = devices_.find(device);
  if (known == devices_.end()) {
    return;
  }
  const bool is_known_well = failure == DeviceFailure::Refused && !known->age.hasExpired(kKnownMs);
  if (!is_known_well) {
    devices_.erase(known);
  }
}

}  // namespace TarnClient
