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

QString GroupOfPlan(const std::string& code, QString* error) {
  view_plugin_protocol::GetPlanDetailRequest request;
  request.plan_index_code = code;
  view_plugin_protocol::GetPlanDetailResponse response;
  if (!CViewBusinessInterfaceMgr::Instance().GetPlanDetail(request, response)) {
    *error = StringToQString(response.error_info);
    return QString();
  }
  return StringToQString(response.group_index_code);
}

QList<view_plugin_protocol::PlanGroup> GroupsBelow(const QString& code, QString* error) {
  view_plugin_protocol::GetPlanGroupsRequest request;
  request.parent_index_code = QStringToString(code);
  view_plugin_protocol::GetPlanGroupsResponse response;
  if (!CViewBusinessInterfaceMgr::Instance().GetPlanGroups(request, response)) {
    *error = StringToQString(response.error_info);
  }
  return response.groups;
}

/// Each group below the roots with the group that holds it, as far as the search for `wanted` went.
QHash<QString, QString> ParentsUpTo(const QString& wanted, QString* error) {
  QHash<QString, QString> parents{{QString::fromLatin1(kPublicRootCode), QString()},
                                  {QString::fromLatin1(kOwnRootCode), QString()}};
  QQueue<QString> open;
  open << QString::fromLatin1(kPublicRootCode) << QString::fromLatin1(kOwnRootCode);
  while (!open.isEmpty() && !parents.contains(wanted)) {
    const QString above = open.dequeue();
    for (const auto& group : GroupsBelow(above, error)) {
      const QString code = StringToQString(group.index_code);
      if (!parents.contains(code)) {
        parents.insert(code, above);
        open.enqueue(code);
      }
    }
  }
  return parents;
}

std::optional<view_plugin_protocol::ClienDefaultViewConfigRequest> StoredDefaultView(QString* error) {
  view_plugin_protocol::GetClientDefaultViewConfigResponse response;
  if (!CViewBusinessInterfaceMgr::Instance().GetClientViewConfig({}, response)) {
    *error = StringToQString(response.error_info);
    return std::nullopt;
  }
  view_plugin_protocol::ClienDefaultViewConfigRequest stored;
  stored.index_code = response.index_code;
  stored.type = response.type;
  return stored;
}

}  // namespace

PlanWay FindPlanWay(int32_t type, const std::string& code) {
  PlanWay way;
  const bool is_group = type == ResourceData::RT_VIEW_GROUP;
  const QString lowest = is_group ? StringToQString(code) : GroupOfPlan(code, &way.error);
  const QHash<QString, QString> parents =
      lowest.isEmpty() ? QHash<QString, QString>() : ParentsUpTo(lowest, &way.error);
  for (QString group = is_group ? parents.value(lowest) : lowest; parents.contains(group);
       group = parents.value(group)) {
    way.groups.prepend(group);
  }
  if (way.groups.isEmpty()) {
    way.default_view = StoredDefaultView(&way.error);
  }
  return way;
}

}  // namespace TarnPlanView
