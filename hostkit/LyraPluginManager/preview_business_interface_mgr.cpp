#include "LyraPluginManager/preview_business_interface_mgr.h"

#include "forward_call.h"

namespace LyraPluginManager {

bool CPreviewBusinessInterfaceMgr::GetStreamAbility(const play_plugin_protocol::GetStreamAbiRequest& request,
                                                    play_plugin_protocol::GetStreamAbiResponse& response) {
  return TarnHost::ForwardCall(&TarnHost::IHostServices::GetStreamAbility, request, response);
}

}  // namespace LyraPluginManager
