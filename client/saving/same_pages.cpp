#include "saving/same_pages.h"

#include <algorithm>
#include <tuple>

namespace TarnClient {

using view_plugin_protocol::PlanPage;
using view_plugin_protocol::PlanWindow;

namespace {

auto Key(const PlanWindow& window) {
  return std::tie(window.window_no, window.content_kind, window.resource_code, window.stream_type, window.preset_no,
                  window.extra);
}

auto Key(const PlanPage& page) {
  return std::tie(page.page_no, page.name, page.split_type, page.dwell_seconds, page.extra);
}

bool SameWindow(const PlanWindow& one, const PlanWindow& other) {
  return Key(one) == Key(other);
}

bool SamePage(const PlanPage& one, const PlanPage& other) {
  return Key(one) == Key(other) &&
         std::equal(one.windows.begin(), one.windows.end(), other.windows.begin(), other.windows.end(), &SameWindow);
}

}  // namespace

bool SamePages(const std::list<PlanPage>& one, const std::list<PlanPage>& other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(), &SamePage);
}

bool HoldsSomething(const PlanPage& page) {
  return std::any_of(page.windows.begin(), page.windows.end(), [](const PlanWindow& window) {
    return window.content_kind != 0 || !window.resource_code.empty();
  });
}

}  // namespace TarnClient
