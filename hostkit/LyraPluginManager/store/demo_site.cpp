#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>

#include "TarnHost/plan_site.h"
#include "plan_rules/families.h"
#include "plan_rules/rights.h"
#include "plan_rules/splits.h"
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

constexpr int kOperator = 0, kSupervisor = 1, kGuard = 2;
constexpr size_t kPlanCount = 120;
constexpr int kGateOverview = 0;  // the first of the plans
constexpr size_t kCameraOffline = 12;
constexpr int kNumberPlates = 3, kMainDoor = 20;  // places of cameras

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

struct DemoGroup {
  PlanSite::Group group;
  std::vector<int> cameras;  // their places, that its plans show
};

PlanSite::Group OwnGroup(const char* name, int parent, int owner) {
  return {name, parent, OwnFamily, owner};
}

/// Cameras beside each other.
std::vector<int> Cameras(int first, int last) {
  std::vector<int> places;
  for (int place = first; place <= last; ++place) {
    places.push_back(place);
  }
  return places;
}

// Parents come first. The deepest group is on the sixth level, the root row counted.
const std::vector<DemoGroup>& Groups() {
  static const std::vector<DemoGroup> groups = {
      {{"Perimeter", -1}, {0, 4, 7, 8, 9, 10, 11, 1, 5}},              // 0
      {{"Gates", 0}, Cameras(0, 6)},                                   // 1
      {{"North gate", 1}, Cameras(0, 3)},                              // 2
      {{"Entry lane", 2}, {0, 3, 2}},                                  // 3
      {{"Barrier", 3}, {1}},                                           // 4
      {{"Service gate", 1}, Cameras(4, 6)},                            // 5
      {{"North fence", 0}, {7, 8, 11}},                                // 6
      {{"South fence", 0}, {9, 10, 11}},                               // 7
      {{"Car park", -1}, Cameras(12, 19)},                             // 8
      {{"Level 1", 8}, Cameras(14, 16)},                               // 9
      {{"Level 2", 8}, Cameras(17, 19)},                               // 10
      {{"Building A", -1}, Cameras(20, 28)},                           // 11
      {{"Ground floor", 11}, Cameras(20, 23)},                         // 12
      {{"Reception", 12}, {21, 20, 22}},                               // 13
      {{"First floor", 11}, Cameras(24, 26)},                          // 14
      {{"Second floor", 11}, Cameras(27, 29)},                         // 15
      {{"Warehouse", -1}, Cameras(30, 37)},                            // 16
      {{"Loading bays", 16}, Cameras(30, 32)},                         // 17
      {{"Cold store", 16}, Cameras(35, 37)},                           // 18
      {{"Tours", -1}, Cameras(0, 15)},                                 // 19
      {{"Roof", -1}, {38, 39, 29}},                                    // 20
      {OwnGroup("My plans", -1, kOperator), {0, 20, 12, 30}},          // 21
      {OwnGroup("Morning round", 21, kOperator), {20, 21, 23, 12}},    // 22
      {OwnGroup("Night shift", 21, kOperator), {11, 26, 35, 38, 39}},  // 23
      {OwnGroup("Drafts", -1, kOperator), {0, 6, 13, 28}},             // 24
      {OwnGroup("Handover", -1, kSupervisor), {0, 4, 20, 21}},         // 25
      {OwnGroup("Incidents", 25, kSupervisor), {6, 13, 34, 37}},       // 26
      {OwnGroup("Patrol", -1, kGuard), Cameras(7, 11)},                // 27
      {OwnGroup("Night round", 27, kGuard), {13, 20, 26, 35, 38}},     // 28
      {{"Exercises", -1}, {0, 12, 21, 30}},                            // 29
  };
  return groups;
}

constexpr int kGates = 1, kTours = 19, kMorningRound = 22, kExercises = 29;

std::vector<int> AllRights() {
  std::vector<int> rights(std::begin(kRights), std::end(kRights));
  rights.push_back(kConfigureRight);
  return rights;
}

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

PlanPage MakePage(int page_no, int dwell_seconds, const std::vector<int>& cameras) {
  PlanPage page;
  page.page_no = page_no;
  page.name = "Page " + std::to_string(page_no);
  page.split_type = view_plugin_protocol::SplitFor(static_cast<int>(cameras.size()));
  page.dwell_seconds = dwell_seconds;
  for (const int camera : cameras) {
    PlanWindow window;
    window.window_no = static_cast<int>(page.windows.size()) + 1;
    window.content_kind = view_plugin_protocol::CameraKind;
    window.resource_code = "#" + std::to_string(camera);
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
  site->plans.push_back(MakePlan(*site, "Gate overview", kGates, {MakePage(1, 10, Cameras(0, 3))}));
  site->plans.push_back(
      MakePlan(*site, "Night patrol", kTours,
               {MakePage(1, 15, Cameras(7, 10)), MakePage(2, 20, Cameras(12, 20)), MakePage(3, 10, {kNumberPlates})}));
  site->plans.back().auto_run = true;
  site->plans.back().begin_time = "02:00:00";
  site->plans.back().end_time = "04:00:00";
  site->plans.push_back(
      MakePlan(*site, "Whole site", kTours,
               {MakePage(1, 30, Cameras(0, 15)), MakePage(2, 30, Cameras(16, 31)), MakePage(3, 15, Cameras(31, 39))}));
  site->plans.push_back(MakePlan(*site, "Opening the doors", kMorningRound,
                                 {MakePage(1, 5, {kMainDoor}), MakePage(2, 12, {kMainDoor, 26, 30, 35})}));
  site->plans.push_back(
      MakePlan(*site, "Perimeter tour", kTours,
               {MakePage(1, 4, Cameras(0, 3)), MakePage(2, 3, Cameras(4, 7)), MakePage(3, 5, Cameras(8, 11))}));
}

struct Kind {
  const char* name;
  size_t cameras_on_page;
  int preset;  // 1 "Wide", 2 "Close up"; 0: as the cameras stand
};
constexpr Kind kKinds[] = {{"overview", 16, 0}, {"close view", 1, 2}, {"wide view", 16, 1}, {"day view", 4, 0}};

std::vector<PlanPage> PagesOf(const Kind& kind, const std::vector<int>& cameras, int dwell) {
  constexpr size_t kMostPages = 3;
  std::vector<PlanPage> pages;
  for (size_t at = 0; at < cameras.size() && pages.size() < kMostPages; at += kind.cameras_on_page) {
    const auto begin = cameras.begin() + static_cast<std::ptrdiff_t>(at);
    const size_t count = std::min(kind.cameras_on_page, cameras.size() - at);
    const std::vector<int> on_page(begin, begin + static_cast<std::ptrdiff_t>(count));
    pages.push_back(MakePage(static_cast<int>(pages.size()) + 1, dwell, on_page));
    for (PlanWindow& window : pages.back().windows) {
      window.preset_no = kind.preset;
    }
    dwell += 5;  // so that it is seen which page a plan is on
  }
  return pages;
}

void AddViews(PlanSite* site) {
  for (size_t number = 0; site->plans.size() < kPlanCount; ++number) {
    const size_t group = number % Groups().size();
    const Kind& kind = kKinds[number / Groups().size() % std::size(kKinds)];
    const int dwell = 10 + 5 * static_cast<int>(number % 4);
    site->plans.push_back(MakePlan(*site, site->groups[group].name + " " + kind.name, static_cast<int>(group),
                                   PagesOf(kind, Groups()[group].cameras, dwell)));
  }
}

// The staff sees all public groups, a trainee the exercises.
void AddGroups(PlanSite* site) {
  constexpr int kStaff = 0;
  site->user_groups = {{"Staff", {kOperator, kSupervisor, kGuard}}};
  for (const DemoGroup& demo : Groups()) {
    site->groups.push_back(demo.group);
    PlanSite::Group& group = site->groups.back();
    if (group.parent == -1 && group.family != OwnFamily) {
      group.audience = {kStaff};
    }
  }
  site->groups[kExercises].audience.clear();
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
  site.is_pretended = true;
  site.users = {
      {"operator", AllRights(), kGateOverview}, {"supervisor", {AddRight, EditRight}}, {"guard", {}}, {"trainee", {}}};
  site.switches = {{"timed_play", 1}, {"creation_info", 1}, {"show_mode", 1}};
  AddPlaces(&site);
  AddGroups(&site);
  AddNamedPlans(&site);
  AddViews(&site);
  return site;
}

}  // namespace TarnHost
