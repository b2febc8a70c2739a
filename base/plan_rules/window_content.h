#pragma once

#include "LyraPluginManager/view_plugin_protocol.h"
#include "plan_rules/plan_limits.h"

// What a window of a plan holds: the one answer for all that show, edit, count or save plans. Thread: any.
namespace view_plugin_protocol {

/// The kinds that a window's record can name.
enum ContentKind : int32_t { NoKind = 0, CameraKind = 1 };

/// What a window really has. OtherContent is what this version cannot show.
enum class Content { Nothing, Camera, OtherContent };

inline Content ContentIn(const PlanWindow& window) {
  const bool is_named = !window.resource_code.empty();
  if (window.content_kind == NoKind) {
    return is_named ? Content::Camera : Content::Nothing;  // plans of older hosts have cameras without a kind
  }
  return is_named && window.content_kind == CameraKind ? Content::Camera : Content::OtherContent;
}

/// The same of a window's record, null when it has none.
inline Content ContentIn(const PlanWindow* window) {
  return window ? ContentIn(*window) : Content::Nothing;
}

/// Whether there is a camera or other content in this record. A code or a kind is enough.
inline bool IsFilled(const PlanWindow& window) {
  return ContentIn(window) != Content::Nothing;
}
inline bool IsFilled(const PlanWindow* window) {
  return ContentIn(window) != Content::Nothing;
}

inline bool IsCamera(const PlanWindow& window) {
  return ContentIn(window) == Content::Camera;
}
inline bool IsCamera(const PlanWindow* window) {
  return ContentIn(window) == Content::Camera;
}

/// Filled windows on all pages together.
template <class Pages>
int FilledWindowsOf(const Pages& pages) {
  int filled = 0;
  for (const PlanPage& page : pages) {
    for (const PlanWindow& window : page.windows) {
      filled += static_cast<int>(IsFilled(window));
    }
  }
  return filled;
}

/// The record that shows what a window holds: a camera before other content, of equals the last. Null when it holds
/// nothing.
template <class Windows>
const PlanWindow* ContentOf(const Windows& windows, int window_no) {
  const PlanWindow* content = nullptr;
  for (const PlanWindow& window : windows) {
    if (window.window_no == window_no && IsFilled(window) && (!content || IsCamera(window) || !IsCamera(*content))) {
      content = &window;
    }
  }
  return content;
}

}  // namespace view_plugin_protocol
