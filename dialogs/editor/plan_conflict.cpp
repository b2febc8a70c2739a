#include "plan_conflict.h"

#include <QTimer>
#include <algorithm>
#include <deque>
#include <set>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "host_calls/ask.h"
#include "item_type.h"
#include "plan_item_role.h"
#include "view_config_manager.h"

namespace TarnPlanView {

using LyraPluginManager::CViewBusinessInterfaceMgr;
using view_plugin_protocol::GetPlanDetailResponse;

namespace {

using Ticket = HostCalls::CCallScope::Ticket;

// The host hears of other clients' changes with a short delay, so a plan just deleted may still be listed.
constexpr int kLooks = 4;
constexpr int kBetweenLooksMs = 250;

struct Place {
  std::string code;
  int type;  // of its row in a tree
};

// No value when the host did not say.
std::optional<bool> HasPlan(const Place& group, const std::string& plan_code) {
  view_plugin_protocol::GetPlansInGroupRequest request;
  request.group_index_code = group.code;
  request.node_type = group.type;
  view_plugin_protocol::GetPlansInGroupResponse response;
  if (!CViewBusinessInterfaceMgr::Instance().GetPlansInGroup(request, response)) {
    return std::nullopt;
  }
  return std::any_of(response.plans.cbegin(), response.plans.cend(),
                     [&plan_code](const auto& plan) { return plan.index_code == plan_code; });
}

int TypeBelow(int type) {
  switch (type) {
    case PublicRootItem:
    case PublicGroupItem:
      return PublicGroupItem;
    case OwnRootItem:
    case OwnGroupItem:
      return OwnGroupItem;
    default:
      return ReceivedGroupItem;
  }
}

// The groups that were not known yet join them and `open`. False when the host did not say.
bool AddGroupsBelow(const Place& parent, std::set<std::string>* known, std::deque<Place>* open) {
  view_plugin_protocol::GetPlanGroupsRequest request;
  request.parent_index_code = parent.code;
  request.node_type = parent.type;
  view_plugin_protocol::GetPlanGroupsResponse response;
  if (!CViewBusinessInterfaceMgr::Instance().GetPlanGroups(request, response)) {
    return false;
  }
  for (const auto& group : qAsConst(response.groups)) {
    if (known->insert(group.index_code).second) {
      open->push_back({group.index_code, TypeBelow(parent.type)});
    }
  }
  return true;
}

// Public and own plans stand directly under their root only where that is switched on; the host is not asked else.
bool MayHavePlans(const Place& place) {
  return (place.type != PublicRootItem && place.type != OwnRootItem) ||
         CViewConfigManager::Instance().CreatePlanUnderRootNode();
}

// Asks for every group there is, since the plan may have been moved. No value when one answer fails to come: then
// the plan may be in that very group. Ends early when the question was dropped.
std::optional<bool> IsInAnyGroup(const std::string& plan_code, const Ticket& asked) {
  std::deque<Place> open{
      {kPublicRootCode, PublicRootItem}, {kOwnRootCode, OwnRootItem}, {kReceivedRootCode, ReceivedRootItem}};
  std::set<std::string> known;
  for (; !open.empty() && !asked.IsDropped(); open.pop_front()) {
    const Place place = open.front();
    if (MayHavePlans(place)) {
      const std::optional<bool> is_here = HasPlan(place, plan_code);
      if (!is_here || *is_here) {
        return is_here;
      }
    }
    if (!AddGroupsBelow(place, &known, &open)) {
      return std::nullopt;
    }
  }
  return asked.IsDropped() ? std::nullopt : std::optional<bool>(false);
}

// The group it was in, whose family is not known here, can only say yes: failing, it may be gone with all in it.
std::optional<bool> IsListed(const std::string& plan_code, const std::string& group_code, const Ticket& asked) {
  return HasPlan({group_code, 0}, plan_code).value_or(false) ? true : IsInAnyGroup(plan_code, asked);
}

}  // namespace

CPlanConflict::CPlanConflict(QObject* parent) : QObject(parent) {
  qRegisterMetaType<Kind>("TarnPlanView::CPlanConflict::Kind");
}

CPlanConflict::~CPlanConflict() = default;

void CPlanConflict::FindOut(const Question& question) {
  Forget();
  question_ = question;
  FetchPlan();
}

void CPlanConflict::Forget() {
  calls_.Drop();
}

void CPlanConflict::FetchPlan() {
  view_plugin_protocol::GetPlanDetailRequest request;
  request.plan_index_code = question_.plan_code;
  HostCalls::Ask(&CViewBusinessInterfaceMgr::GetPlanDetail, request).Within(calls_).Then(this, [this](const auto& now) {
    if (!now.ok) {
      AskWhetherListed(kLooks);
    } else {
      Tell(now.response.revision > question_.revision ? ChangedElsewhere : OtherFailure, now.response);
    }
  });
}

void CPlanConflict::AskWhetherListed(int looks_left) {
  HostCalls::Ask([plan = question_.plan_code, group = question_.group_code, asked = calls_.Current()] {
    return IsListed(plan, group, asked);
  })
      .Within(calls_)
      .Then(this, [this, looks_left](const std::optional<bool>& is_listed) { OnListing(is_listed, looks_left - 1); });
}

void CPlanConflict::OnListing(std::optional<bool> is_listed, int looks_left) {
  if (is_listed && !*is_listed) {
    Tell(Deleted);
  } else if (!is_listed || looks_left == 0) {
    Tell(OtherFailure);
  } else {
    QTimer::singleShot(kBetweenLooksMs, this, [this, asked = calls_.Current(), looks_left] {
      if (!asked.IsDropped()) {
        AskWhetherListed(looks_left);
      }
    });
  }
}

void CPlanConflict::Tell(Kind kind, const GetPlanDetailResponse& theirs) {
  Forget();
  Q_EMIT SignalFound(kind, question_.reason, theirs);
}

}  // namespace TarnPlanView
