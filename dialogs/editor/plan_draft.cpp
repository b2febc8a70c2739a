#include "plan_draft.h"

#include <algorithm>
#include <tuple>

namespace TarnPlanView {

using view_plugin_protocol::PlanPage;
using view_plugin_protocol::PlanWindow;

namespace {

auto Fields(const PlanWindow& window) {
  return std::tie(window.window_no, window.content_kind, window.resource_code, window.resource_name, window.stream_type,
                  window.preset_no, window.extra);
}

bool SameWindow(const PlanWindow& one, const PlanWindow& other) {
  return Fields(one) == Fields(other);
}

auto Fields(const PlanPage& page) {
  return std::tie(page.page_no, page.name, page.split_type, page.dwell_seconds, page.extra);
}

auto Head(const PlanDraft& draft) {
  // Not the group's name, which is no part of the plan.
  return std::tie(draft.name, draft.group_code, draft.family, draft.auto_run, draft.begin, draft.end);
}

int FilledOf(const DraftPage& page) {
  return static_cast<int>(std::count_if(page.windows.begin(), page.windows.end(), [&page](const PlanWindow& window) {
    return IsFilled(window) && !page.IsHidden(window.window_no);
  }));
}

}  // namespace

bool DraftPage::operator==(const DraftPage& other) const {
  return Fields(*this) == Fields(other) &&
         std::equal(windows.begin(), windows.end(), other.windows.begin(), other.windows.end(), &SameWindow);
}

int PlanDraft::FilledWindows() const {
  int filled = 0;
  for (const DraftPage& page : pages) {
    filled += FilledOf(page);
  }
  return filled;
}

const PlanWindow* PlanDraft::Window(int page, int window_no) const {
  if (page < 0 || page >= pages.size() || window_no < 1 || window_no > WindowsOfSplit(pages[page].split_type)) {
    return nullptr;
  }
  return ContentOf(pages[page].windows, window_no);
}

PlanDraft PlanDraft::WithoutHiddenWindows() const {
  PlanDraft left = *this;
  for (int i = 0; i < pages.size(); ++i) {
    const int in_sight = WindowsOfSplit(pages[i].split_type);
    if (in_sight < pages[i].seen_windows) {
      DraftPage& page = left.pages[i];
      page.windows.remove_if([&page](const PlanWindow& window) { return page.IsHidden(window.window_no); });
      page.seen_windows = in_sight;
    }
  }
  return left;
}

bool PlanDraft::operator==(const PlanDraft& other) const {
  return Head(*this) == Head(other) && pages == other.pages;
}

}  // namespace TarnPlanView
