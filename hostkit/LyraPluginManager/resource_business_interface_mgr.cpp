#include "LyraPluginManager/resource_business_interface_mgr.h"

#include "TarnHost/host_services.h"

namespace LyraPluginManager {

bool CResourceBusinessInterfaceMgr::CheckControlPermission(int code) {
  const auto services = TarnHost::InstalledHostServices();
  return services && services->CheckControlPermission(code);
}

}  // namespace LyraPluginManager
