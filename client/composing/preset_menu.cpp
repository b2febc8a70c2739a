#include "composing/preset_menu.h"

#include "LyraPluginManager/ptz_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "host_calls/ask.h"

namespace TarnClient {

using LyraPluginManager::CPTZBusinessInterfaceMgr;
using MarUIControl::QStringToString;
using MarUIControl::StringToQString;
using ptz_plugin_protocol::GetPresetRequest;
using ptz_plugin_protocol::GetPresetResponse;

CPresetMenu::CPresetMenu(const QString& camera_code, int preset_no, QWidget* parent)
    : QMenu(parent), preset_no_(preset_no) {
  setAttribute(Qt::WA_DeleteOnClose);
  setAccessibleName(tr("Presets"));
  ShowInstead(tr("Presets are being fetched..."));
  GetPresetRequest request;
  request.camera_index_code = QStringToString(camera_code);
  HostCalls::Ask(&CPTZBusinessInterfaceMgr::GetPresets, request).Then(this, [this](const auto& answer) {
    Show(answer);
  });
}

void CPresetMenu::ShowInstead(const QString& text) {
  clear();
  addAction(text)->setEnabled(false);
}

void CPresetMenu::Show(const HostCalls::Result<GetPresetResponse>& answer) {
  if (!answer.ok) {
    return ShowInstead(StringToQString(answer.response.error_info));
  }
  if (answer.response.presets.empty()) {
    return ShowInstead(tr("This camera has no presets"));
  }
  clear();
  Add(tr("None"), 0);
  for (const auto& preset : answer.response.presets) {
    Add(StringToQString(preset.name), preset.preset_no);
  }
  setActiveAction(actions().value(0));
}

void CPresetMenu::Add(const QString& text, int preset_no) {
  QAction* action = addAction(QString(text).replace(QLatin1Char('&'), QStringLiteral("&&")));
  action->setCheckable(true);
  action->setChecked(preset_no == preset_no_);
  connect(action, &QAction::triggered, this, [this, preset_no] { Q_EMIT SignalChosen(preset_no); });
}

}  // namespace TarnClient
