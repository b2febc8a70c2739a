#pragma once

#include "Wren/Base/singleton.h"
#include "host_export.h"

namespace LyraPluginManager {

/// The host's rights. Thread: any; answers from memory.
class TARN_HOST_EXPORT CResourceBusinessInterfaceMgr : public Wren::Base::CSingleton<CResourceBusinessInterfaceMgr> {
 public:
  /// Whether the logged-in user has the right `code`: 5 add, 6 edit, 7 delete (all for public plans).
  bool CheckControlPermission(int code);

 private:
  friend class Wren::Base::CSingleton<CResourceBusinessInterfaceMgr>;
  CResourceBusinessInterfaceMgr() = default;
};

}  // namespace LyraPluginManager
