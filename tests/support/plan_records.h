#pragma once

#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"

/// Records of plans made in a line, and told in words.
namespace TarnTest {

using view_plugin_protocol::GetPlanDetailResponse;
using view_plugin_protocol::PlanPage;
using view_plugin_protocol::PlanWindow;
using view_plugin_protocol::UpdatePlanRequest;

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

inline PlanPage FullPage(int no) {
  PlanPage page = Page(no, 8, {});
  for (int window = 1; window <= 16; ++window) {
    page.windows.push_back(Window(window, std::to_string(window)));
  }
  return page;
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

/// A whole request in words, so that a failed comparison shows what differs.
inline std::string Words(const std::list<PlanPage>& pages) {
  std::string words;
  for (const PlanPage& page : pages) {
    words += "[" + std::to_string(page.page_no) + " " + page.name + " /" + std::to_string(page.split_type) + " " +
             std::to_string(page.dwell_seconds) + "s";
    for (const PlanWindow& window : page.windows) {
      words += " " + std::to_string(window.window_no) + ":" + std::to_string(window.content_kind) + "," +
               window.resource_code + "," + window.resource_name + "," + std::to_string(window.stream_type) + "," +
               std::to_string(window.preset_no);
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
