#include "camera_abilities.h"

#include "LyraPluginManager/preview_business_interface_mgr.h"
#include "LyraPluginManager/ptz_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "host_calls/ask.h"
#include "host_calls/question_pool.h"

namespace TarnPlanView {

using MarUIControl::QStringToString;
using MarUIControl::StringToQString;

namespace {

template <class Value>
struct Answer {
  bool is_there = false;
  Value value;
  QString error;
};

Answer<QVector<int>> FetchStreams(const QString& camera_code) {
  play_plugin_protocol::GetStreamAbiRequest request;
  request.camera_index_code = QStringToString(camera_code);
  play_plugin_protocol::GetStreamAbiResponse response;
  if (!LyraPluginManager::CPreviewBusinessInterfaceMgr::Instance().GetStreamAbility(request, response)) {
    return {false, {}, StringToQString(response.error_info)};
  }
  return {true, {response.stream_types.cbegin(), response.stream_types.cend()}, {}};
}

Answer<QVector<CCameraAbilities::Preset>> FetchPresets(const QString& camera_code) {
  ptz_plugin_protocol::GetPresetRequest request;
  request.camera_index_code = QStringToString(camera_code);
  ptz_plugin_protocol::GetPresetResponse response;
  if (!LyraPluginManager::CPTZBusinessInterfaceMgr::Instance().GetPresets(request, response)) {
    return {false, {}, StringToQString(response.error_info)};
  }
  QVector<CCameraAbilities::Preset> presets;
  for (const ptz_plugin_protocol::PresetInfo& preset : response.presets) {
    presets.append({preset.preset_no, StringToQString(preset.name)});
  }
  return {true, presets, {}};
}

}  // namespace

CCameraAbilities::CCameraAbilities(QObject* parent) : QObject(parent) {}

CCameraAbilities::~CCameraAbilities() = default;

void CCameraAbilities::Ask(const QString& camera_code) {
  if (camera_code.isEmpty()) {
    return;
  }
  using Self = CCameraAbilities;
  AskFor(&streams_, camera_code, &FetchStreams, &Self::SignalStreamsKnown, &Self::SignalStreamsFailed);
  AskFor(&presets_, camera_code, &FetchPresets, &Self::SignalPresetsKnown, &Self::SignalPresetsFailed);
}

template <class Value, class Fetch>
void CCameraAbilities::AskFor(Shelf<Value>* shelf, const QString& camera_code, Fetch fetch, Told told, Failed failed) {
  if (shelf->fresh.contains(camera_code)) {
    Q_EMIT(this->*told)(camera_code);
    return;
  }
  if (shelf->asked.contains(camera_code)) {
    return;
  }
  shelf->asked.insert(camera_code);
  HostCalls::Ask([camera_code, fetch] { return fetch(camera_code); })
      .On(HostCalls::QuestionPool())
      .Within(calls_)
      .Then(this, [this, shelf, camera_code, told, failed](const Answer<Value>& answer) {
        shelf->asked.remove(camera_code);
        if (answer.is_there) {
          shelf->known.insert(camera_code, answer.value);
          shelf->fresh.insert(camera_code);
          Q_EMIT(this->*told)(camera_code);
        } else {
          Q_EMIT(this->*failed)(camera_code, answer.error);
        }
      });
}

void CCameraAbilities::Doubt() {
  calls_.Drop();
  streams_.asked.clear();
  presets_.asked.clear();
  streams_.fresh.clear();
  presets_.fresh.clear();
}

const QVector<int>* CCameraAbilities::Streams(const QString& camera_code) const {
  const auto found = streams_.known.constFind(camera_code);
  return found == streams_.known.cend() ? nullptr : &*found;
}

const QVector<CCameraAbilities::Preset>* CCameraAbilities::Presets(const QString& camera_code) const {
  const auto found = presets_.known.constFind(camera_code);
  return found == presets_.known.cend() ? nullptr : &*found;
}

}  // namespace TarnPlanView
