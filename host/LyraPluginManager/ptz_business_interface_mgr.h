#pragma once

#include "LyraPluginManager/ptz_plugin_protocol.h"
#include "Wren/Base/singleton.h"
#include "host_export.h"

namespace LyraPluginManager {

/// The host's camera control service. Thread: any; blocks until there is an answer.
class TARN_HOST_EXPORT CPTZBusinessInterfaceMgr : public Wren::Base::CSingleton<CPTZBusinessInterfaceMgr> {
 public:
  /// The positions stored for a camera.
  bool GetPresets(const ptz_plugin_protocol::GetPresetRequest& request,
                  ptz_plugin_protocol::GetPresetResponse& response);

 private:
  friend class Wren::Base::CSingleton<CPTZBusinessInterfaceMgr>;
  CPTZBusinessInterfaceMgr() = default;
};

}  // namespace LyraPluginManager
