#include "plan_way.h"

#include <QHash>
#include <QQueue>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "ResourceData/resource_type.h"
#include "plan_item_role.h"

namespace TarnPlanView {

using LyraPluginManager::CViewBusinessInterfaceMgr;
using MarUIControl::QStringToString;
using MarUIControl::StringToQString;

namespace {

QString GroupOfPlan(const std::string& code) {
  view_plugin_protocol::GetPlanDetailRequest request;
  request.plan_index_code = code;
  view_plugin_protocol::GetPlanDetailResponse response;
  const bool found = CViewBusinessInterfaceMgr::Instance().GetPlanDetail(request, response);
  return found ? StringToQString(response.group_index_code) : QString();
}

QList<view_plugin_protocol::PlanGroup> GroupsBelow(const QString& code) {
  view_plugin_protocol::GetPlanGroupsRequest request;
  request.parent_index_code = QStringToString(code);
  view_plugin_protocol::GetPlanGroupsResponse response;
  CViewBusinessInterfaceMgr::Instance().GetPlanGroups(request, response);
  return response.groups;
}

/// Each group below the roots with the group that holds it, as far as the search for `wanted` went.
QHash<QString, QString> ParentsUpTo(const QString& wanted) {
  QHash<QString, QString> parents{{QString::fromLatin1(kPublicRootCode), QString()},
                                  {QString::fromLatin1(kOwnRootCode), QString()}};
  QQueue<QString> open;
  open << QString::fromLatin1(kPublicRootCode) << QString::fromLatin1(kOwnRootCode);
  while (!open.isEmpty() && !parents.contains(wanted)) {
    const QString above = open.dequeue();
    for (const auto& group : GroupsBelow(above)) {
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

QStringList PlanWay(int32_t type, const std::string& code) {
  const bool is_group = type == ResourceData::RT_VIEW_GROUP;
  const QString lowest = is_group ? StringToQString(code) : GroupOfPlan(code);
  const QHash<QString, QString> parents = ParentsUpTo(lowest);
  QStringList way;
  for (QString group = is_group ? parents.value(lowest) : lowest; parents.contains(group);
       group = parents.value(group)) {
    way.prepend(group);
  }
  return way;
}

}  // namespace TarnPlanView
