#include "plans/cycle_turn.h"

#include <TarnPlanView/item_type.h>

#include <QHash>
#include <algorithm>
#include <optional>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "host_calls/result.h"
#include "plan_rules/row_order.h"

namespace TarnClient {

using HostCalls::CallNow;
using LyraPluginManager::CViewBusinessInterfaceMgr;
using MarUIControl::StringToQString;
using namespace view_plugin_protocol;

namespace {

using FailedAnswer = std::optional<ResponseHeader>;

struct Row {
  int type = TarnPlanView::PublicPlanItem;
  std::string code;
  QString name;
};

struct Listing {
  QVector<Row> plans;
  FailedAnswer left_out;  // why a subgroup is missing that may come back
};

// What stands in a group, as the tree shows it.
QVector<Row> RowsOf(const GetPlanGroupsResponse& groups, const GetPlansInGroupResponse& plans) {
  QVector<Row> rows;
  for (const PlanGroup& group : groups.groups) {
    rows.append({TarnPlanView::PublicGroupItem, group.index_code, StringToQString(group.name)});
  }
  for (const PlanBasicInfo& plan : plans.plans) {
    rows.append({TarnPlanView::PublicPlanItem, plan.index_code, StringToQString(plan.name)});
  }
  std::stable_sort(rows.begin(), rows.end(), [](const Row& left, const Row& right) {
    return StandsBefore(left.type, left.name, right.type, right.name);
  });
  return rows;
}

// Why the group itself cannot be listed. Of a subgroup that cannot, what is known is listed; it may have gone in the
// meantime.
FailedAnswer ListPlans(const std::string& group_code, Listing* listing) {
  const auto here = CallNow(&CViewBusinessInterfaceMgr::GetPlansInGroup, GetPlansInGroupRequest{group_code, 0});
  if (!here.ok) {
    return here.response;
  }
  const auto below = CallNow(&CViewBusinessInterfaceMgr::GetPlanGroups, GetPlanGroupsRequest{group_code, 0});
  for (const Row& row : RowsOf(below.response, here.response)) {
    if (row.type == TarnPlanView::PublicPlanItem) {
      listing->plans.append(row);
      continue;
    }
    const FailedAnswer failure = ListPlans(row.code, listing);
    if (failure && failure->error_kind != Gone) {
      listing->left_out = failure;
    }
  }
  if (!below.ok) {
    return below.response;
  }
  return std::nullopt;
}

// As long as no plan has come.
CycleTurn::Outcome OutcomeOf(const FailedAnswer& failure, const Listing& listing) {
  if (!failure && !listing.left_out && listing.plans.isEmpty()) {
    return CycleTurn::Outcome::Empty;
  }
  return CycleTurn::Outcome::Failed;
}

QHash<QString, int> Places(const QVector<std::string>& plans) {
  QHash<QString, int> places;
  for (int i = 0; i < plans.size(); ++i) {
    places.insert(StringToQString(plans[i]), i);
  }
  return places;
}

// Where to look when a plan is not to be had: on, unless the user goes back.
int DirectionOf(int step) {
  if (step < 0) {
    return -1;
  }
  return 1;
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
  const int direction = DirectionOf(step);
  for (int i = last.position + direction; i >= 0 && i < last.plans.size(); i += direction) {
    const int place = places.value(StringToQString(last.plans[i]), -1);
    if (place >= 0) {
      return place;
    }
  }
  if (direction > 0) {
    return 0;
  }
  return plans.size() - 1;
}

bool Fetch(const std::string& code, CycleTurn* turn) {
  GetPlanDetailRequest request;
  request.plan_index_code = code;
  request.play = true;
  const auto detail = CallNow(&CViewBusinessInterfaceMgr::GetPlanDetail, request);
  if (detail.ok) {
    turn->plan = detail.response;
  } else {
    turn->error = StringToQString(detail.response.error_info);
  }
  return detail.ok;
}

}  // namespace

CycleTurn CycleTurn::Next(const std::string& group_code, const CycleTurn& last, int step) {
  CycleTurn turn;
  Listing listing;
  const FailedAnswer failure = ListPlans(group_code, &listing);
  if (failure) {
    listing.plans.clear();
  }
  turn.outcome = OutcomeOf(failure, listing);
  const ResponseHeader why = failure.value_or(listing.left_out.value_or(ResponseHeader()));
  turn.error = StringToQString(why.error_info);
  if (listing.plans.isEmpty()) {
    turn.error_kind = why.error_kind;
  }
  for (const Row& plan : qAsConst(listing.plans)) {
    turn.plans.append(plan.code);
  }
  const int count = turn.plans.size();
  const int first = FirstCandidate(turn.plans, last, step);
  for (int tried = 0; tried < count && turn.position < 0; ++tried) {
    const int place = (first + DirectionOf(step) * tried + count) % count;
    if (Fetch(turn.plans[place], &turn)) {
      turn.position = place;
      turn.outcome = Outcome::Fetched;
    } else {
      turn.skipped.append(listing.plans[place].name);
    }
  }
  return turn;
}

}  // namespace TarnClient
