#include "plan_way.h"

#include <QHash>
#include <QQueue>

#include "LyraPluginManager/error_kind.h"
#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "ResourceData/resource_type.h"
#include "host_calls/result.h"
#include "plan_item_role.h"

namespace TarnPlanView {

using HostCalls::CallNow;
using LyraPluginManager::CViewBusinessInterfaceMgr;
using MarUIControl::QStringToString;
using MarUIControl::StringToQString;

namespace {

QString GroupOfPlan(const std::string& code, PlanWay* way) {
  view_plugin_protocol::GetPlanDetailRequest request;
  request.plan_index_code = code;
  const auto plan = CallNow(&CViewBusinessInterfaceMgr::GetPlanDetail, request);
  if (!plan.ok) {
    way->is_gone = plan.response.error_kind == view_plugin_protocol::Gone;
    way->error = StringToQString(plan.response.error_info);
  }
  return StringToQString(plan.response.group_index_code);
}

auto GroupsBelow(const QString& code) {
  view_plugin_protocol::GetPlanGroupsRequest request;
  request.parent_index_code = QStringToString(code);
  return CallNow(&CViewBusinessInterfaceMgr::GetPlanGroups, request);
}

void CheckGroup(const QString& code, PlanWay* way) {
  const auto groups = GroupsBelow(code);
  way->is_gone = !groups.ok && groups.response.error_kind == view_plugin_protocol::Gone;
}

/// Each group below the roots with the group that holds it, as far as the search for `wanted` went. A group that is
/// deleted meanwhile does not matter, one that cannot be read may hold what is wanted.
QHash<QString, QString> ParentsUpTo(const QString& wanted, QString* error) {
  QHash<QString, QString> parents{{QString::fromLatin1(kPublicRootCode), QString()},
                                  {QString::fromLatin1(kOwnRootCode), QString()}};
  QQueue<QString> open;
  open << QString::fromLatin1(kPublicRootCode) << QString::fromLatin1(kOwnRootCode);
  while (!open.isEmpty() && !parents.contains(wanted)) {
    const QString above = open.dequeue();
    const auto groups = GroupsBelow(above);
    if (!groups.ok && groups.response.error_kind != view_plugin_protocol::Gone) {
      *error = StringToQString(groups.response.error_info);
    }
    for (const auto& group : groups.response.groups) {
      const QString code = StringToQString(group.index_code);
      if (!parents.contains(code)) {
        parents.insert(code, above);
        open.enqueue(code);
      }
    }
  }
  return parents;
}

}  // namespace

PlanWay FindPlanWay(int32_t type, const std::string& code) {
  PlanWay way;
  const bool is_group = type == ResourceData::RT_VIEW_GROUP;
  QString lowest = StringToQString(code);
  if (is_group) {
    CheckGroup(lowest, &way);
  } else {
    lowest = GroupOfPlan(code, &way);
  }
  if (way.is_gone || lowest.isEmpty()) {
    return way;
  }
  const QHash<QString, QString> parents = ParentsUpTo(lowest, &way.error);
  QString group = is_group ? parents.value(lowest) : lowest;
  for (; parents.contains(group); group = parents.value(group)) {
    way.groups.prepend(group);
  }
  return way;
}

}  // namespace TarnPlanView
