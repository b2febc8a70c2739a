#include <array>
#include <cstdio>
#include <iterator>

#include "TarnHost/plan_site.h"
#include "plan_rules/families.h"
#include "plan_rules/rights.h"
#include "plan_rules/window_content.h"

namespace TarnHost {
namespace {

using view_plugin_protocol::AddRight;
using view_plugin_protocol::EditRight;
using view_plugin_protocol::kConfigureRight;
using view_plugin_protocol::kRights;
using view_plugin_protocol::OwnFamily;
using view_plugin_protocol::PlanPage;
using view_plugin_protocol::PlanWindow;

constexpr int kOperator = 0, kSupervisor = 1, kGuard = 2, kTrainee = 3;
constexpr size_t kPlanCount = 120;
constexpr int kGateOverview = 0;  // the first of the plans
constexpr size_t kCameraOffline = 12;

struct Place {
  const char* region;
  int parent;
  std::vector<const char*> cameras;
};

const std::vector<Place>& Places() {
  static const std::vector<Place> places = {
      {"Site", -1, {}},
      {"North gate", 0, {"Gate", "Gate barrier", "Gate intercom", "Gate number plates"}},
      {"Service gate", 0, {"Service gate", "Service barrier", "Weighbridge"}},
      {"Fence", 0, {"North fence east", "North fence west", "South fence east", "South fence west", "Fence corner"}},
      {"Car park", 0, {"Car park entry", "Car park exit"}},
      {"Car park level 1", 4, {"Level 1 ramp", "Level 1 lifts", "Level 1 bays"}},
      {"Car park level 2", 4, {"Level 2 ramp", "Level 2 lifts", "Level 2 bays"}},
      {"Building A", 0, {"Main door", "Reception desk", "Lobby", "Lifts ground floor"}},
      {"First floor", 7, {"Corridor first floor", "Meeting rooms", "Server room door"}},
      {"Second floor", 7, {"Corridor second floor", "Canteen", "Terrace"}},
      {"Warehouse", 0, {"Loading bay 1", "Loading bay 2", "Loading bay 3", "Aisle north", "Aisle south"}},
      {"Cold store", 10, {"Cold store door", "Cold store aisle", "Cold store machine room"}},
      {"Roof", 0, {"Roof east", "Roof west"}},
  };
  return places;
}

// Parents come first. The deepest group is on the sixth level, the root row counted.
const std::vector<PlanSite::Group>& Groups() {
  static const std::vector<PlanSite::Group> groups = {
      {"Perimeter", -1},                            // 0
      {"Gates", 0},                                 // 1
      {"North gate", 1},                            // 2
      {"Entry lane", 2},                            // 3
      {"Barrier", 3},                               // 4
      {"Service gate", 1},                          // 5
      {"North fence", 0},                           // 6
      {"South fence", 0},                           // 7
      {"Car park", -1},                             // 8
      {"Level 1", 8},                               // 9
      {"Level 2", 8},                               // 10
      {"Building A", -1},                           // 11
      {"Ground floor", 11},                         // 12
      {"Reception", 12},                            // 13
      {"First floor", 11},                          // 14
      {"Second floor", 11},                         // 15
      {"Warehouse", -1},                            // 16
      {"Loading bays", 16},                         // 17
      {"Cold store", 16},                           // 18
      {"Tours", -1},                                // 19
      {"Roof", -1},                                 // 20
      {"My views", -1, OwnFamily, kOperator},       // 21
      {"Morning round", 21, OwnFamily, kOperator},  // 22
      {"Night shift", 21, OwnFamily, kOperator},    // 23
      {"Drafts", -1, OwnFamily, kOperator},         // 24
      {"Handover", -1, OwnFamily, kSupervisor},     // 25
      {"Incidents", 25, OwnFamily, kSupervisor},    // 26
      {"Patrol", -1, OwnFamily, kGuard},            // 27
      {"Night round", 27, OwnFamily, kGuard},       // 28
      {"Exercises", -1, OwnFamily, kTrainee},       // 29
  };
  return groups;
}

std::vector<int> AllRights() {
  std::vector<int> rights(std::begin(kRights), std::end(kRights));
  rights.push_back(kConfigureRight);
  return rights;
}

constexpr int kGates = 1, kTours = 19, kMorningRound = 22;

std::string CameraName(size_t number, const char* where) {
  std::array<char, 64> name{};
  std::snprintf(name.data(), name.size(), "CAM %03zu %s", number, where);
  return name.data();
}

// One, two or three: what offers a choice of streams is seen with each.
std::vector<int32_t> Streams(size_t number) {
  std::vector<int32_t> streams = {0};
  for (int32_t more = 1; more <= static_cast<int32_t>(number % 3); ++more) {
    streams.push_back(more);
  }
  return streams;
}

void AddPlaces(PlanSite* site) {
  for (const Place& place : Places()) {
    const int region = static_cast<int>(site->regions.size());
    site->regions.push_back({place.region, place.parent});
    for (const char* camera : place.cameras) {
      const size_t number = site->cameras.size() + 1;
      site->cameras.push_back(
          {CameraName(number, camera), region, number != kCameraOffline, {"Wide", "Close up"}, Streams(number)});
    }
  }
}

int WindowCount(int split_type) {
  switch (split_type) {
    case 1:
      return 1;
    case 2:
      return 4;
    case 4:
      return 9;
    default:
      return 16;
  }
}

PlanPage MakePage(int page_no, int split_type, int dwell_seconds, size_t first_camera, size_t camera_count) {
  PlanPage page;
  page.page_no = page_no;
  page.name = "Page " + std::to_string(page_no);
  page.split_type = split_type;
  page.dwell_seconds = dwell_seconds;
  for (int window_no = 1; window_no <= WindowCount(split_type); ++window_no) {
    PlanWindow window;
    window.window_no = window_no;
    window.content_kind = view_plugin_protocol::CameraKind;
    window.resource_code = "#" + std::to_string((first_camera + static_cast<size_t>(window_no) - 1) % camera_count);
    page.windows.push_back(window);
  }
  return page;
}

PlanSite::Plan MakePlan(const PlanSite& site, const std::string& name, int group, std::vector<PlanPage> pages) {
  PlanSite::Plan plan;
  plan.name = name;
  plan.group = group;
  plan.family = site.groups[static_cast<size_t>(group)].family;
  plan.owner = site.groups[static_cast<size_t>(group)].owner;
  plan.pages = std::move(pages);
  return plan;
}

void AddNamedPlans(PlanSite* site) {
  const size_t cameras = site->cameras.size();
  site->plans.push_back(MakePlan(*site, "Gate overview", kGates, {MakePage(1, 2, 10, 0, cameras)}));
  site->plans.push_back(
      MakePlan(*site, "Night patrol", kTours,
               {MakePage(1, 2, 15, 7, cameras), MakePage(2, 4, 20, 12, cameras), MakePage(3, 1, 10, 3, cameras)}));
  site->plans.back().auto_run = true;
  site->plans.back().begin_time = "02:00:00";
  site->plans.back().end_time = "04:00:00";
  site->plans.push_back(
      MakePlan(*site, "Whole site", kTours,
               {MakePage(1, 8, 30, 0, cameras), MakePage(2, 8, 30, 16, cameras), MakePage(3, 4, 15, 31, cameras)}));
  site->plans.push_back(MakePlan(*site, "Opening the doors", kMorningRound,
                                 {MakePage(1, 1, 5, 18, cameras), MakePage(2, 2, 12, 18, cameras)}));
  site->plans.push_back(
      MakePlan(*site, "Perimeter tour", kTours,
               {MakePage(1, 2, 4, 0, cameras), MakePage(2, 2, 3, 4, cameras), MakePage(3, 2, 5, 8, cameras)}));
}

size_t PageCount(size_t number) {
  if (number % 5 == 0) {
    return 3;
  }
  return number % 3 == 0 ? 2 : 1;
}

// One to three pages; every split turns up, and no two pages of a plan have the same dwell.
std::vector<PlanPage> PagesOfView(size_t number, size_t camera_count) {
  const std::array<int, 4> splits = {1, 2, 4, 8};
  const size_t page_count = PageCount(number);
  std::vector<PlanPage> pages;
  for (size_t page = 0; page < page_count; ++page) {
    const int dwell = 10 + 5 * static_cast<int>(page + number % 4);
    pages.push_back(MakePage(static_cast<int>(page) + 1, splits[(number + page) % splits.size()], dwell,
                             number * 3 + page * 7, camera_count));
  }
  return pages;
}

void AddViews(PlanSite* site) {
  const std::array<const char*, 6> kinds = {"overview", "close view", "wide view", "day view", "night view", "round"};
  for (size_t number = 0; site->plans.size() < kPlanCount; ++number) {
    const size_t group = number % site->groups.size();
    const std::string name = site->groups[group].name + " " + kinds[number / site->groups.size() % kinds.size()];
    site->plans.push_back(MakePlan(*site, name, static_cast<int>(group), PagesOfView(number, site->cameras.size())));
  }
}

}  // namespace

PlanSite MakeEmptySite() {
  PlanSite site;
  site.users = {{"operator", AllRights()}};
  return site;
}

PlanSite MakeDemoSite() {
  PlanSite site;
  site.root_name = "Plans";
  site.users = {
      {"operator", AllRights(), kGateOverview}, {"supervisor", {AddRight, EditRight}}, {"guard", {}}, {"trainee", {}}};
  site.groups = Groups();
  site.switches = {{"timed_play", 1}, {"creation_info", 1}, {"show_mode", 1}};
  AddPlaces(&site);
  AddNamedPlans(&site);
  AddViews(&site);
  return site;
}

}  // namespace TarnHost
