#pragma once

#include "LyraPluginManager/view_plugin_protocol.h"

// What a window of a plan holds: the one answer for whoever shows, edits, counts or saves plans. Thread: any.
namespace view_plugin_protocol {

enum ContentKind : int32_t { NoKind = 0, CameraKind = 1 };

/// Whether there is a camera or other content in this record. A code or a kind is enough.
inline bool IsFilled(const PlanWindow& window) {
  return window.content_kind != NoKind || !window.resource_code.empty();
}

/// Whether this record is a camera. Plans of older hosts have cameras without a kind.
inline bool IsCamera(const PlanWindow& window) {
  return !window.resource_code.empty() && (window.content_kind == CameraKind || window.content_kind == NoKind);
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

/// The most filled windows that a plan may have on all its pages together.
constexpr int kMaxFilledWindows = 128;

}  // namespace view_plugin_protocol
