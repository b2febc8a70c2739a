#pragma once

#include "LyraPluginManager/play_plugin_protocol.h"
#include "Wren/Base/singleton.h"
#include "host_export.h"

namespace LyraPluginManager {

/// The host's live-view service. Thread: any; blocks until there is an answer, and is never asked on the GUI thread.
class TARN_HOST_EXPORT CPreviewBusinessInterfaceMgr : public Wren::Base::CSingleton<CPreviewBusinessInterfaceMgr> {
 public:
  /// The streams that a camera offers. On false the editor offers the stream that the window has, and no other.
  bool GetStreamAbility(const play_plugin_protocol::GetStreamAbiRequest& request,
                        play_plugin_protocol::GetStreamAbiResponse& response);

 private:
  friend class Wren::Base::CSingleton<CPreviewBusinessInterfaceMgr>;
  CPreviewBusinessInterfaceMgr() = default;
};

}  // namespace LyraPluginManager
