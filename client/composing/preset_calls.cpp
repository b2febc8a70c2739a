#include "composing/preset_calls.h"

#include "LyraPluginManager/ptz_business_interface_mgr.h"
#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "host_calls/ask.h"
#include "marlog/marlog.h"

namespace TarnClient {

using LyraPluginManager::CPTZBusinessInterfaceMgr;
using MarUIControl::StringToQString;

void CPresetCalls::Call(const QString& camera_code, int preset_no, const std::function<void(const QString&)>& failed) {
  ptz_plugin_protocol::GotoPresetRequest request;
  request.camera_index_code = MarUIControl::QStringToString(camera_code);
  request.preset_no = preset_no;
  HostCalls::Ask(&CPTZBusinessInterfaceMgr::GotoPreset, request)
      .InOrder(order_, request.camera_index_code)
      .Then(this, [=](const auto& answer) {
        if (!answer.ok) {
          failed(StringToQString(answer.response.error_info));
          return;
        }
        devices_.Turn(camera_code, preset_no, [failed](const QString& fault) {
          if (!fault.isEmpty()) {
            failed(fault);
          }
        });
      });
}

void CPresetCalls::CallForPlan(const QString& camera_code, int preset_no) {
  Call(camera_code, preset_no, [camera_code, preset_no](const QString& fault) {
    marlog::Write("LyraClientInfo", marlog::Warning, "Camera %s did not go to preset %d: %s",
                  qUtf8Printable(camera_code), preset_no, qUtf8Printable(fault));
  });
}

void CPresetCalls::CallForUser(const QString& camera_code, int preset_no) {
  Call(camera_code, preset_no,
       [this](const QString& fault) { Q_EMIT SignalMessage(fault, MarUIControl::CNomalMessage::Failure); });
}

}  // namespace TarnClient
