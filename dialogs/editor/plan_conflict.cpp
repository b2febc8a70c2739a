#include "plan_conflict.h"

#include <QTimer>
#include <algorithm>
#include <deque>
#include <set>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "async_call.h"
#include "plan_item_role.h"

namespace TarnPlanView {

using LyraPluginManager::CViewBusinessInterfaceMgr;
using view_plugin_protocol::GetPlanDetailResponse;

namespace {

// The host hears of other clients' changes with a short delay, so a plan just deleted may still be listed.
constexpr int kLooks = 4;
constexpr int kBetweenLooksMs = 250;

std::optional<GetPlanDetailResponse> PlanOf(const std::string& plan_code) {
  view_plugin_protocol::GetPlanDetailRequest request;
  request.plan_index_code = plan_code;
  GetPlanDetailResponse response;
  if (!CViewBusinessInterfaceMgr::Instance().GetPlanDetail(request, response)) {
    return std::nullopt;
  }
  return response;
}

// No value when the host did not say.
std::optional<bool> IsInGroup(const std::string& plan_code, const std::string& group_code) {
  view_plugin_protocol::GetPlansInGroupRequest request;
  request.group_index_code = group_code;
  view_plugin_protocol::GetPlansInGroupResponse response;
  if (!CViewBusinessInterfaceMgr::Instance().GetPlansInGroup(request, response)) {
    return std::nullopt;
  }
  return std::any_of(response.plans.cbegin(), response.plans.cend(),
                     [&plan_code](const auto& plan) { return plan.index_code == plan_code; });
}

// The groups that were not known yet join them and `open`. False when the host did not say.
bool AddGroupsBelow(const std::string& group_code, std::set<std::string>* known, std::deque<std::string>* open) {
  view_plugin_protocol::GetPlanGroupsRequest request;
  request.parent_index_code = group_code;
  view_plugin_protocol::GetPlanGroupsResponse response;
  if (!CViewBusinessInterfaceMgr::Instance().GetPlanGroups(request, response)) {
    return false;
  }
  for (const auto& group : qAsConst(response.groups)) {
    if (known->insert(group.index_code).second) {
      open->push_back(group.index_code);
    }
  }
  return true;
}

// Asks for every group there is, since the plan may have been moved. No value when one answer fails to come: then
// the plan may be in that very group.
std::optional<bool> IsInAnyGroup(const std::string& plan_code) {
  std::deque<std::string> open{kPublicRootCode, kOwnRootCode, kReceivedRootCode};
  std::set<std::string> known(open.begin(), open.end());
  for (; !open.empty(); open.pop_front()) {
    const std::string group = open.front();
    const std::optional<bool> is_here = IsInGroup(plan_code, group);
    if (!is_here || *is_here) {
      return is_here;
    }
    if (!AddGroupsBelow(group, &known, &open)) {
      return std::nullopt;
    }
  }
  return false;
}

// The group it was in comes first; when it fails that group may be gone with all in it.
std::optional<bool> IsListed(const std::string& plan_code, const std::string& group_code) {
  return IsInGroup(plan_code, group_code).value_or(false) ? true : IsInAnyGroup(plan_code);
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
  ++asked_;
}

void CPlanConflict::FetchPlan() {
  CallAsync(
      this, [code = question_.plan_code] { return PlanOf(code); },
      [this, asked = asked_](const std::optional<GetPlanDetailResponse>& theirs) {
        if (asked != asked_) {
          return;
        }
        if (!theirs) {
          AskWhetherListed(kLooks);
        } else {
          Tell(theirs->revision > question_.revision ? ChangedElsewhere : OtherFailure, *theirs);
        }
      });
}

void CPlanConflict::AskWhetherListed(int looks_left) {
  CallAsync(
      this, [plan = question_.plan_code, group = question_.group_code] { return IsListed(plan, group); },
      [this, asked = asked_, looks_left](const std::optional<bool>& is_listed) {
        if (asked == asked_) {
          OnListing(is_listed, looks_left - 1);
        }
      });
}

void CPlanConflict::OnListing(std::optional<bool> is_listed, int looks_left) {
  if (is_listed && !*is_listed) {
    Tell(Deleted);
  } else if (!is_listed || looks_left == 0) {
    Tell(OtherFailure);
  } else {
    QTimer::singleShot(kBetweenLooksMs, this, [this, asked = asked_, looks_left] {
      if (asked == asked_) {
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
