#pragma once

#include <algorithm>

#include "plan_rules/splits.h"
#include "plan_rules/window_content.h"

// What can be done to the windows of a page: the same in the editor and on the wall. Thread: any.
namespace view_plugin_protocol {

/// The record that a window in sight shows; null for an empty one.
inline PlanWindow* ShownIn(PlanPage* page, int window_no) {
  if (window_no < 1 || window_no > WindowsOfSplit(page->split_type)) {
    return nullptr;
  }
  const PlanWindow* shown = ContentOf(page->windows, window_no);
  const auto found = std::find_if(page->windows.begin(), page->windows.end(),
                                  [shown](const PlanWindow& window) { return &window == shown; });
  return found == page->windows.end() ? nullptr : &*found;
}

inline void ClearIn(PlanPage* page, int window_no) {
  page->windows.remove_if([window_no](const PlanWindow& window) { return window.window_no == window_no; });
}

/// Over what is there; the same camera keeps its stream and preset. Says whether another one is there now.
inline bool PutIn(PlanPage* page, int window_no, const std::string& camera_code, const std::string& camera_name) {
  PlanWindow* shown = ShownIn(page, window_no);
  if (IsCamera(shown) && shown->resource_code == camera_code) {
    shown->resource_name = camera_name;
    return false;
  }
  ClearIn(page, window_no);
  PlanWindow window;
  window.window_no = window_no;
  window.content_kind = CameraKind;
  window.resource_code = camera_code;
  window.resource_name = camera_name;
  const auto place = std::find_if(page->windows.begin(), page->windows.end(),
                                  [window_no](const PlanWindow& other) { return other.window_no > window_no; });
  page->windows.insert(place, window);
  return true;
}

/// What the two windows hold changes places.
inline void SwapIn(PlanPage* page, int one, int other) {
  for (PlanWindow& window : page->windows) {
    if (window.window_no == one) {
      window.window_no = other;
    } else if (window.window_no == other) {
      window.window_no = one;
    }
  }
  page->windows.sort([](const PlanWindow& a, const PlanWindow& b) { return a.window_no < b.window_no; });
}

}  // namespace view_plugin_protocol
