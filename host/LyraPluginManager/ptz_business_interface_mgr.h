#pragma once

#include "LyraPluginManager/ptz_plugin_protocol.h"
#include "Wren/Base/singleton.h"
#include "host_export.h"

namespace LyraPluginManager {

/// The host's camera control service. Thread: any; blocks until there is an answer, and is never asked on the GUI
/// thread.
class TARN_HOST_EXPORT CPTZBusinessInterfaceMgr : public Wren::Base::CSingleton<CPTZBusinessInterfaceMgr> {
 public:
  /// The positions stored for a camera. On false the editor offers the position that the window has, and no other.
  bool GetPresets(const ptz_plugin_protocol::GetPresetRequest& request,
                  ptz_plugin_protocol::GetPresetResponse& response);
  /// Turns a camera to a stored position; true once the camera has taken the order. The plug-in does not ask for this:
  /// it is for the host's own wall.
  bool GotoPreset(const ptz_plugin_protocol::GotoPresetRequest& request,
                  ptz_plugin_protocol::GotoPresetResponse& response);

 private:
  friend class Wren::Base::CSingleton<CPTZBusinessInterfaceMgr>;
  CPTZBusinessInterfaceMgr() = default;
};

}  // namespace LyraPluginManager
