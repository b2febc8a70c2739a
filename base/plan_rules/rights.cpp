#include "plan_rules/rights.h"

#include <QCoreApplication>
#include <algorithm>
#include <iterator>

#include "LyraPluginManager/resource_business_interface_mgr.h"

namespace view_plugin_protocol {

bool IsRight(int code) {
  return std::find(std::begin(kRights), std::end(kRights), code) != std::end(kRights);
}

bool HasRight(Right right) {
  return LyraPluginManager::CResourceBusinessInterfaceMgr::Instance().CheckControlPermission(right);
}

QString LackOf(Right right) {
  switch (right) {
    case AddRight:
      return QCoreApplication::translate("PlanRules", "You lack the right to add plans.");
    case EditRight:
      return QCoreApplication::translate("PlanRules", "You lack the right to edit plans.");
    case DeleteRight:
      return QCoreApplication::translate("PlanRules", "You lack the right to delete plans.");
  }
  return QString();
}

}  // namespace view_plugin_protocol
