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
const Value* FindIn(const QHash<QString, Value>& known, const QString& camera_code) {
  const auto found = known.constFind(camera_code);
  if (found == known.cend()) {
    return nullptr;
  }
  return &*found;
}

auto QuestionForStreams(const QString& camera_code) {
  play_plugin_protocol::GetStreamAbiRequest request;
  request.camera_index_code = QStringToString(camera_code);
  return HostCalls::Ask(&LyraPluginManager::CPreviewBusinessInterfaceMgr::GetStreamAbility, request);
}

QVector<int> StreamsIn(const play_plugin_protocol::GetStreamAbiResponse& response) {
  return {response.stream_types.cbegin(), response.stream_types.cend()};
}

auto QuestionForPresets(const QString& camera_code) {
  ptz_plugin_protocol::GetPresetRequest request;
  request.camera_index_code = QStringToString(camera_code);
  return HostCalls::Ask(&LyraPluginManager::CPTZBusinessInterfaceMgr::GetPresets, request);
}

QVector<CCameraAbilities::Preset> PresetsIn(const ptz_plugin_protocol::GetPresetResponse& response) {
  QVector<CCameraAbilities::Preset> presets;
  for (const ptz_plugin_protocol::PresetInfo& preset : response.presets) {
    presets.append({preset.preset_no, StringToQString(preset.name)});
  }
  return presets;
}

}  // namespace

CCameraAbilities::CCameraAbilities(QObject* parent) : QObject(parent) {}

CCameraAbilities::~CCameraAbilities() = default;

void CCameraAbilities::Ask(const QString& camera_code) {
  if (camera_code.isEmpty()) {
    return;
  }
  using Self = CCameraAbilities;
  AskFor(&streams_, camera_code, QuestionForStreams(camera_code), &StreamsIn,
         {&Self::SignalStreamsKnown, &Self::SignalStreamsFailed});
  AskFor(&presets_, camera_code, QuestionForPresets(camera_code), &PresetsIn,
         {&Self::SignalPresetsKnown, &Self::SignalPresetsFailed});
}

template <class Value, class Question, class Read>
void CCameraAbilities::AskFor(Shelf<Value>* shelf, const QString& camera_code, Question question, Read read,
                              Signals signal) {
  if (shelf->fresh.contains(camera_code)) {
    Q_EMIT(this->*signal.known)(camera_code);
    return;
  }
  if (shelf->asked.contains(camera_code)) {
    return;
  }
  shelf->asked.insert(camera_code);
  question.On(HostCalls::QuestionPool()).Within(calls_).Then(this, [=](const auto& answer) {
    shelf->asked.remove(camera_code);
    if (answer.ok) {
      shelf->known.insert(camera_code, read(answer.response));
      shelf->fresh.insert(camera_code);
      Q_EMIT(this->*signal.known)(camera_code);
    } else {
      Q_EMIT(this->*signal.failed)(camera_code, StringToQString(answer.response.error_info));
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
  return FindIn(streams_.known, camera_code);
}

const QVector<CCameraAbilities::Preset>* CCameraAbilities::Presets(const QString& camera_code) const {
  return FindIn(presets_.known, camera_code);
}

}  // namespace TarnPlanView
