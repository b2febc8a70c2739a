#pragma once

#include "Wren/Base/singleton.h"
#include "host_export.h"

namespace LyraPluginManager {

/// The host's rights. Thread: any; answers from memory, since the panel asks whenever it greys its commands.
class TARN_HOST_EXPORT CResourceBusinessInterfaceMgr : public Wren::Base::CSingleton<CResourceBusinessInterfaceMgr> {
 public:
  /// Whether the logged-in user has the right `code`: 5 add, 6 edit, 7 delete, all for public plans and groups; a
  /// user's own take none. Adding is asked for by sharing, too. 8, to configure the site, is for the host's own pages.
  /// False for any other code, and while no user is logged in. It greys commands: the service has to refuse all the
  /// same.
  bool CheckControlPermission(int code);

 private:
  friend class Wren::Base::CSingleton<CResourceBusinessInterfaceMgr>;
  CResourceBusinessInterfaceMgr() = default;
};

}  // namespace LyraPluginManager
