#pragma once

#include <QString>
#include <QTime>
#include <QVector>

#include "plan_rules/plan_limits.h"
#include "plan_rules/splits.h"
#include "plan_rules/window_content.h"

namespace TarnPlanView {

using view_plugin_protocol::IsKnownSplit;
using view_plugin_protocol::kMaxDwellSeconds;
using view_plugin_protocol::kMaxFilledWindows;
using view_plugin_protocol::kMaxPages;
using view_plugin_protocol::SideOfSplit;
using view_plugin_protocol::WindowsOfSplit;

/// A camera to put into a window.
struct DraftCamera {
  QString index_code, name;
};

/// A page being edited: the host's record, and what its life in the editor adds.
///
/// Windows that a smaller split put out of sight stay in the record, so that a larger split brings them back, but they
/// are not saved. Windows that were never in sight are not the editor's: they are kept and saved as they are.
struct DraftPage : view_plugin_protocol::PlanPage {
  DraftPage() = default;
  explicit DraftPage(view_plugin_protocol::PlanPage page)
      : PlanPage(std::move(page)), seen_windows(WindowsOfSplit(split_type)) {}

  /// Windows numbered up to here have been in sight since the plan was loaded or saved.
  int seen_windows = 1;
  /// Where the host's list has the page.
  int place = 0;

  /// Whether the number is one of a window that the split put out of sight.
  bool IsHidden(int window_no) const { return window_no > WindowsOfSplit(split_type) && window_no <= seen_windows; }
  bool operator==(const DraftPage& other) const;
  bool operator!=(const DraftPage& other) const { return !(*this == other); }
};

/// A plan as it is being edited. Pages and windows are the host's records, so that what the editor does not know of
/// them is kept. Pages stand in the order in which they play. Windows are numbered from 1 within a page; a window
/// without a record is empty.
struct PlanDraft {
  QString name, group_code, group_name;
  int family = 0;  // of the group
  bool auto_run = false;
  QTime begin = QTime(0, 0), end = QTime(0, 0);
  QVector<DraftPage> pages;

  /// Windows with a camera or other content that would be saved, on all pages. Those out of sight do not count.
  int FilledWindows() const;
  /// The record that a window in sight shows, or null for an empty one. Of several records the wall shows the last one
  /// with a camera.
  const view_plugin_protocol::PlanWindow* Window(int page, int window_no) const;
  /// The plan as a save would leave it: without the windows out of sight.
  PlanDraft WithoutHiddenWindows() const;

  bool operator==(const PlanDraft& other) const;
  bool operator!=(const PlanDraft& other) const { return !(*this == other); }
};

constexpr int kMinDwellSeconds = 5;
constexpr int kDefaultDwellSeconds = 10;

}  // namespace TarnPlanView
