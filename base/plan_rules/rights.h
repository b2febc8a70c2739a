#pragma once

#include <QCoreApplication>
#include <QString>
#include <algorithm>
#include <iterator>
#include <set>

#include "LyraPluginManager/resource_business_interface_mgr.h"
#include "plan_rules/families.h"

// The rights of a user. Thread: any.
namespace view_plugin_protocol {

/// The host's codes of the rights that changes of public plans and groups take.
enum Right : int { AddRight = 5, EditRight = 6, DeleteRight = 7 };
constexpr Right kRights[] = {AddRight, EditRight, DeleteRight};

/// The host's code of the right to configure the site. Who has it sees public groups whatever they are limited to; no
/// change of a plan takes it.
constexpr int kConfigureRight = 8;

/// Whether `code` is that of such a right.
inline bool IsRight(int code) {
  return std::find(std::begin(kRights), std::end(kRights), code) != std::end(kRights);
}

/// Whether the host grants the current user this right.
inline bool HasRight(Right right) {
  return LyraPluginManager::CResourceBusinessInterfaceMgr::Instance().CheckControlPermission(right);
}

/// For the user who lacks the right.
inline QString LackOf(Right right) {
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

/// A user's rights, as they were when they were asked for.
class Rights {
 public:
  /// Asks the host for each.
  static Rights OfCurrentUser() {
    Rights rights;
    for (const Right right : kRights) {
      if (HasRight(right)) {
        rights.Add(right);
      }
    }
    return rights;
  }
  void Add(Right right) { held_.insert(right); }
  bool Has(Right right) const { return held_.count(right) != 0; }

 private:
  std::set<Right> held_;
};

/// Whether a change that takes `right` may be made to rows of this family: only the public tree asks for rights.
inline bool MayChange(int32_t family, Right right, const Rights& rights) {
  return family != PublicFamily || rights.Has(right);
}

}  // namespace view_plugin_protocol
