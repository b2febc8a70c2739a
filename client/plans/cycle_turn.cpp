#include "plans/cycle_turn.h"

#include <TarnPlanView/plan_item_role.h>

#include <QHash>
#include <QQueue>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"

namespace TarnClient {

using LyraPluginManager::CViewBusinessInterfaceMgr;
using MarUIControl::StringToQString;
using namespace view_plugin_protocol;

namespace {

using PlanList = QVector<PlanBasicInfo>;

// False when the group itself cannot be read; a subgroup that cannot, since it went in the meantime, is left out.
bool CollectPlans(const std::string& group_code, PlanList* plans, std::string* error) {
  auto& host = CViewBusinessInterfaceMgr::Instance();
  GetPlansInGroupResponse here;
  GetPlanGroupsResponse below;
  if (!host.GetPlansInGroup({group_code, 0}, here)) {
    *error = here.error_info;
    return false;
  }
  for (const PlanBasicInfo& plan : qAsConst(here.plans)) {
    plans->append(plan);
  }
  if (!host.GetPlanGroups({group_code, 0}, below)) {
    *error = below.error_info;
    return false;
  }
  for (const PlanGroup& group : qAsConst(below.groups)) {
    CollectPlans(group.index_code, plans, error);
  }
  return true;
}

bool ListsRoots() {
  auto& host = CViewBusinessInterfaceMgr::Instance();
  GetPlansInGroupResponse plans;
  GetPlanGroupsResponse groups;
  return host.GetPlansInGroup({TarnPlanView::kPublicRootCode, 0}, plans) &&
         host.GetPlanGroups({TarnPlanView::kPublicRootCode, 0}, groups);
}

// A group that cannot be read is gone when others can, before and after: the service may come back in between.
PlanList FindPlans(const std::string& group_code, CycleTurn* turn) {
  PlanList plans;
  std::string error;
  turn->group_found = CollectPlans(group_code, &plans, &error);
  if (!turn->group_found) {
    plans.clear();
    turn->may_pass = !ListsRoots();
    turn->group_found = !turn->may_pass && CollectPlans(group_code, &plans, &error);
  } else if (plans.isEmpty()) {
    turn->may_pass = !error.empty();  // they may be in a subgroup that could not be read
  }
  turn->error = StringToQString(error);
  return turn->group_found ? plans : PlanList();
}

QHash<QString, int> Places(const QVector<std::string>& plans) {
  QHash<QString, int> places;
  for (int i = 0; i < plans.size(); ++i) {
    places.insert(StringToQString(plans[i]), i);
  }
  return places;
}

// Place in `plans` where the next turn begins to look: beside the last plan, or at the first one that was beyond it.
int FirstCandidate(const QVector<std::string>& plans, const CycleTurn& last, int step) {
  if (last.position < 0) {
    return 0;
  }
  const QHash<QString, int> places = Places(plans);
  const int current = places.value(StringToQString(last.plans[last.position]), -1);
  if (current >= 0) {
    return current + step;
  }
  for (int i = last.position + step; i >= 0 && i < last.plans.size(); i += step) {
    const int place = places.value(StringToQString(last.plans[i]), -1);
    if (place >= 0) {
      return place;
    }
  }
  return step > 0 ? 0 : plans.size() - 1;
}

bool Fetch(const std::string& code, CycleTurn* turn) {
  GetPlanDetailRequest request;
  request.plan_index_code = code;
  request.play = true;
  GetPlanDetailResponse response;
  if (!CViewBusinessInterfaceMgr::Instance().GetPlanDetail(request, response)) {
    turn->error = StringToQString(response.error_info);
    return false;
  }
  turn->plan = response;
  return true;
}

}  // namespace

CycleTurn CycleTurn::Next(const std::string& group_code, const CycleTurn& last, int step) {
  CycleTurn turn;
  const PlanList plans = FindPlans(group_code, &turn);
  for (const PlanBasicInfo& plan : qAsConst(plans)) {
    turn.plans.append(plan.index_code);
  }
  const int count = plans.size();
  const int first = FirstCandidate(turn.plans, last, step);
  for (int tried = 0; tried < count; ++tried) {
    const int place = (first + step * tried + count) % count;
    if (Fetch(plans[place].index_code, &turn)) {
      turn.position = place;
      break;
    }
    turn.skipped.append(StringToQString(plans[place].name));
  }
  turn.may_pass = turn.may_pass || (turn.position < 0 && !plans.isEmpty());
  return turn;
}

QString FindGroupName(const std::string& group_code) {
  QQueue<std::string> open;
  open << TarnPlanView::kPublicRootCode << TarnPlanView::kOwnRootCode;
  while (!open.isEmpty()) {
    GetPlanGroupsResponse below;
    CViewBusinessInterfaceMgr::Instance().GetPlanGroups({open.dequeue(), 0}, below);
    for (const PlanGroup& group : qAsConst(below.groups)) {
      if (group.index_code == group_code) {
        return StringToQString(group.name);
      }
      open << group.index_code;
    }
  }
  return QString();
}

}  // namespace TarnClient
