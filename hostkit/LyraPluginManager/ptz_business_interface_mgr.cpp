#include "LyraPluginManager/ptz_business_interface_mgr.h"

#include "forward_call.h"

namespace LyraPluginManager {

bool CPTZBusinessInterfaceMgr::GetPresets(const ptz_plugin_protocol::GetPresetRequest& request,
                                          ptz_plugin_protocol::GetPresetResponse& response) {
  return TarnHost::ForwardCall(&TarnHost::IHostServices::GetPresets, request, response);
}

bool CPTZBusinessInterfaceMgr::GotoPreset(const ptz_plugin_protocol::GotoPresetRequest& request,
                                          ptz_plugin_protocol::GotoPresetResponse& response) {
  return TarnHost::ForwardCall(&TarnHost::IHostServices::GotoPreset, request, response);
}

}  // namespace LyraPluginManager
