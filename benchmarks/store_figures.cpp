#include <vector>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "figures.h"
#include "host_fixture.h"

using LyraPluginManager::CViewBusinessInterfaceMgr;
using namespace view_plugin_protocol;

namespace {

constexpr int kParents = 2000;
constexpr int kChildren = 10;
constexpr int kRounds = 70;  // of a millisecond each

/// 2,000 groups, each with ten groups and ten plans.
TarnHost::PlanSite MakeSite() {
  TarnHost::PlanSite site;
  site.users.push_back({"operator", {5, 6, 7}});
  for (int parent = 0; parent < kParents; ++parent) {
    site.groups.push_back({"Sector " + std::to_string(parent), -1, 0, -1});
  }
  for (int parent = 0; parent < kParents; ++parent) {
    for (int child = 0; child < kChildren; ++child) {
      const std::string number = std::to_string(parent) + "-" + std::to_string(child);
      site.groups.push_back({"Yard " + number, parent, 0, -1});
      TarnHost::PlanSite::Plan plan;
      plan.name = "Plan " + number;
      plan.group = parent;
      plan.pages.emplace_back();
      site.plans.push_back(plan);
    }
  }
  return site;
}

std::vector<std::string> ParentCodes() {
  GetPlanGroupsRequest request;
  request.parent_index_code = "-1";
  GetPlanGroupsResponse response;
  if (!CViewBusinessInterfaceMgr::Instance().GetPlanGroups(request, response) || response.groups.size() != kParents) {
    qFatal("the store does not hold the bench site");
  }
  std::vector<std::string> codes;
  for (const PlanGroup& group : qAsConst(response.groups)) {
    codes.push_back(group.index_code);
  }
  return codes;
}

GetPlanGroupsResponse FetchGroups(const std::string& code) {
  GetPlanGroupsRequest request;
  request.parent_index_code = code;
  GetPlanGroupsResponse response;
  CViewBusinessInterfaceMgr::Instance().GetPlanGroups(request, response);
  return response;
}

GetPlansInGroupResponse FetchPlans(const std::string& code) {
  GetPlansInGroupRequest request;
  request.group_index_code = code;
  GetPlansInGroupResponse response;
  CViewBusinessInterfaceMgr::Instance().GetPlansInGroup(request, response);
  return response;
}

template <class Record>
QList<Record> CopyRecords(const QList<Record>& records) {
  QList<Record> copies;
  copies.reserve(records.size());
  for (const Record& record : records) {
    copies.append(record);
  }
  return copies;
}

/// Time of one call for each code against copying the same records one by one.
template <class Record, class Fetch>
Sides Compare(const std::vector<std::string>& codes, const Fetch& fetch) {
  std::vector<QList<Record>> records;
  for (const std::string& code : codes) {
    records.push_back(fetch(code));
  }
  return MeasureManyByTurns(
      kRounds,
      [&] {
        int count = 0;
        const double ms = TimeMs([&] {
          for (const std::string& code : codes) {
            count += fetch(code).size();
          }
        });
        if (count != kParents * kChildren) {
          qFatal("the store answered too little");
        }
        return ms;
      },
      [&] {
        return TimeMs([&] {
          for (const QList<Record>& list : records) {
            CopyRecords(list);
          }
        });
      });
}

}  // namespace

Figures MeasureStoreReads() {
  HostFixture host(MakeSite(), {});
  const std::vector<std::string> codes = ParentCodes();
  const Sides groups = Compare<PlanGroup>(codes, [](const std::string& code) { return FetchGroups(code).groups; });
  const Sides plans = Compare<PlanBasicInfo>(codes, [](const std::string& code) { return FetchPlans(code).plans; });
  return {
      {QStringLiteral("store_groups"), QStringLiteral("GetPlanGroups of ten against copying the records"),
       groups.Ratio(), 3.0, Figure::AtMost, groups.Note()},
      {QStringLiteral("store_plans"), QStringLiteral("GetPlansInGroup of ten against copying the records"),
       plans.Ratio(), 3.0, Figure::AtMost, plans.Note()},
  };
}
