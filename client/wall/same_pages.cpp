#include "wall/same_pages.h"

#include <algorithm>
#include <tuple>

#include "plan_rules/window_content.h"

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

bool SameLists(const std::list<PlanWindow>& one, const std::list<PlanWindow>& other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(), &SameWindow);
}

bool SamePage(const PlanPage& one, const PlanPage& other) {
  return Key(one) == Key(other) && SameLists(one.windows, other.windows);
}

}  // namespace

bool SameWindows(const PlanPage& one, const PlanPage& other) {
  return one.split_type == other.split_type && SameLists(one.windows, other.windows);
}

int PageAfterChange(const QVector<PlanPage>& before, int page, const QVector<PlanPage>& now) {
  const bool in_place = page < now.size();
  if (in_place && SameWindows(before[page], now[page])) {
    return page;
  }
  const auto same = std::find_if(now.begin(), now.end(),
                                 [&](const PlanPage& candidate) { return SameWindows(before[page], candidate); });
  if (same != now.end()) {
    return static_cast<int>(same - now.begin());
  }
  return in_place ? page : 0;
}

bool SamePages(const std::list<PlanPage>& one, const std::list<PlanPage>& other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(), &SamePage);
}

bool HoldsSomething(const PlanPage& page) {
  return std::any_of(page.windows.begin(), page.windows.end(),
                     [](const PlanWindow& window) { return view_plugin_protocol::IsFilled(window); });
}

}  // namespace TarnClient
