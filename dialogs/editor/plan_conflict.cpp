#include "plan_conflict.h"

#include <QTimer>
#include <algorithm>
#include <optional>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "async_call.h"

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

bool ServiceAnswers() {
  view_plugin_protocol::GetPlanGroupsRequest request;
  request.parent_index_code = "-1";
  view_plugin_protocol::GetPlanGroupsResponse response;
  return CViewBusinessInterfaceMgr::Instance().GetPlanGroups(request, response);
}

struct Listing {
  bool is_known = false;  // the host told what is in the group, or that there is no such group
  bool has_plan = false;
};

Listing ListingOf(const std::string& plan_code, const std::string& group_code) {
  view_plugin_protocol::GetPlansInGroupRequest request;
  request.group_index_code = group_code;
  view_plugin_protocol::GetPlansInGroupResponse response;
  if (!CViewBusinessInterfaceMgr::Instance().GetPlansInGroup(request, response)) {
    return {ServiceAnswers(), false};
  }
  const auto is_it = [&plan_code](const view_plugin_protocol::PlanBasicInfo& plan) {
    return plan.index_code == plan_code;
  };
  return {true, std::any_of(response.plans.cbegin(), response.plans.cend(), is_it)};
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
      this, [plan = question_.plan_code, group = question_.group_code] { return ListingOf(plan, group); },
      [this, asked = asked_, looks_left](const Listing& listing) {
        if (asked == asked_) {
          OnListing(listing.is_known, listing.has_plan, looks_left - 1);
        }
      });
}

void CPlanConflict::OnListing(bool is_known, bool has_plan, int looks_left) {
  if (is_known && !has_plan) {
    Tell(Deleted);
  } else if (!is_known || looks_left == 0) {
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
