#pragma once

#include <QString>
#include <string>
#include <vector>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "TarnHost/plan_site.h"
#include "plan_rules/update_request.h"

/// Records and requests made in a line: what stands in a plan (Window, Page, CameraPage, FullPage), plans of a site
/// (SitePlan), rows as the host sends them (GroupRecord, PlanRecord, Detail), what is asked of the host (NewPlan,
/// ChangedPlan, Unchanged), and both in words (Words). What sends them to a store past the plug-in: plan_calls.h.
namespace TarnTest {

using view_plugin_protocol::AddPlanRequest;
using view_plugin_protocol::GetPlanDetailResponse;
using view_plugin_protocol::PlanBasicInfo;
using view_plugin_protocol::PlanGroup;
using view_plugin_protocol::PlanPage;
using view_plugin_protocol::PlanWindow;
using view_plugin_protocol::UpdatePlanRequest;

/// A name or a code, from either kind of string.
struct Text : std::string {
  Text(const char* text) : std::string(text) {}
  Text(std::string text) : std::string(std::move(text)) {}
  Text(const QString& text) : std::string(text.toStdString()) {}
};

inline PlanGroup GroupRecord(const Text& code, const Text& name, int family = 0, const Text& parent = "") {
  PlanGroup group;
  group.index_code = code;
  group.name = name;
  group.type = family;
  group.parent_index_code = parent;
  return group;
}

inline PlanBasicInfo PlanRecord(const Text& code, const Text& name, int family = 0, const Text& group = "") {
  PlanBasicInfo plan;
  plan.index_code = code;
  plan.name = name;
  plan.type = family;
  plan.group_index_code = group;
  return plan;
}

inline PlanWindow Window(int no, const std::string& code, int kind = 1, int stream = 0, int preset = 0) {
  return {no, kind, code, "name of " + code, stream, preset};
}

inline PlanPage Page(int no, int split, std::list<PlanWindow> windows, const std::string& name = {}, int dwell = 10) {
  PlanPage page;
  page.page_no = no;
  page.name = name;
  page.split_type = split;
  page.dwell_seconds = dwell;
  page.windows = std::move(windows);
  return page;
}

/// A page with these cameras in its first windows; "#0" is the first camera of a PlanSite.
inline PlanPage CameraPage(int no, int split, const std::vector<std::string>& cameras = {"#0"}, int dwell = 10) {
  PlanPage page = Page(no, split, {}, {}, dwell);
  for (const std::string& camera : cameras) {
    page.windows.push_back({static_cast<int32_t>(page.windows.size()) + 1, 1, camera, {}, 0, 0});
  }
  return page;
}

inline PlanPage FullPage(int no) {
  PlanPage page = Page(no, 8, {});
  for (int window = 1; window <= 16; ++window) {
    page.windows.push_back(Window(window, std::to_string(window)));
  }
  return page;
}

inline std::list<PlanPage> FullPages(int count) {
  std::list<PlanPage> pages;
  for (int no = 1; no <= count; ++no) {
    pages.push_back(FullPage(no));
  }
  return pages;
}

/// Of the site that a store is filled with.
inline TarnHost::PlanSite::Plan SitePlan(const std::string& name, int group, int family, int owner,
                                         std::vector<PlanPage> pages) {
  TarnHost::PlanSite::Plan plan;
  plan.name = name;
  plan.group = group;
  plan.family = family;
  plan.owner = owner;
  plan.pages = std::move(pages);
  return plan;
}

inline GetPlanDetailResponse Detail(std::list<PlanPage> pages) {
  GetPlanDetailResponse detail;
  detail.index_code = "77";
  detail.name = "Night";
  detail.group_index_code = "12";
  detail.group_name = "Yard";
  detail.type = 1;
  detail.pages = std::move(pages);
  detail.thumbnail = std::string("\x89PNG\0\1", 6);
  detail.revision = 5;
  return detail;
}

inline AddPlanRequest NewPlan(const Text& name, const Text& parent, std::list<PlanPage> pages = {}) {
  AddPlanRequest request;
  request.plan_name = name;
  request.parent_index_code = parent;
  request.pages = std::move(pages);
  return request;
}

/// Without a revision: takes the place of whatever is stored. An empty parent leaves the plan where it is.
inline UpdatePlanRequest ChangedPlan(const Text& code, const Text& name, const Text& parent = "",
                                     std::list<PlanPage> pages = {}) {
  UpdatePlanRequest request;
  static_cast<AddPlanRequest&>(request) = NewPlan(name, parent, std::move(pages));
  request.plan_index_code = code;
  return request;
}

/// The request that leaves the plan as it was read.
inline UpdatePlanRequest Unchanged(const GetPlanDetailResponse& plan) {
  return view_plugin_protocol::UpdateRequestFrom(plan);
}

/// A whole request in words, so that a failed comparison shows what differs.
inline std::string Words(const std::list<PlanPage>& pages) {
  std::string words;
  for (const PlanPage& page : pages) {
    words += "[" + std::to_string(page.page_no) + " " + page.name + " /" + std::to_string(page.split_type) + " " +
             std::to_string(page.dwell_seconds) + "s" + page.extra;
    for (const PlanWindow& window : page.windows) {
      words += " " + std::to_string(window.window_no) + ":" + std::to_string(window.content_kind) + "," +
               window.resource_code + "," + window.resource_name + "," + std::to_string(window.stream_type) + "," +
               std::to_string(window.preset_no) + window.extra;
    }
    words += "]";
  }
  return words;
}

inline std::string Words(const UpdatePlanRequest& request) {
  return request.plan_index_code + " r" + std::to_string(request.revision) + " " + request.plan_name + " in " +
         request.parent_index_code + " " + request.parent_name + " family " + std::to_string(request.index_type) +
         (request.auto_play ? " runs " : " rests ") + request.begin_time + "-" + request.end_time + " picture " +
         std::to_string(request.thumbnail.size()) + " " + Words(request.pages);
}

}  // namespace TarnTest
