#pragma once

#include <QString>
#include <QTime>
#include <QVector>

#include "LyraPluginManager/view_plugin_protocol.h"

namespace TarnPlanView {

/// A plan as it is being edited. Pages and windows are the host's records, so that what the editor does not know of
/// them is kept. Windows are numbered from 1 within a page; a window without a record is empty.
struct PlanDraft {
  QString name, group_code;
  bool auto_run = false;
  QTime begin = QTime(0, 0), end = QTime(0, 0);
  QVector<view_plugin_protocol::PlanPage> pages;

  /// Windows with a camera or other content on all pages, those beyond a page's split included.
  int FilledWindows() const;
  /// The record of a window, or null for an empty one.
  const view_plugin_protocol::PlanWindow* Window(int page, int window_no) const;

  bool operator==(const PlanDraft& other) const;
  bool operator!=(const PlanDraft& other) const { return !(*this == other); }
};

constexpr int kMaxFilledWindows = 128;
constexpr int kMinDwellSeconds = 5;
constexpr int kMaxDwellSeconds = 24 * 60 * 60;
constexpr int kDefaultDwellSeconds = 10;
constexpr int kMaxPages = 64;

/// Windows of a page with this split type (1, 2, 4, 8): 1, 4, 9, 16. An unknown type counts as one window.
int WindowsOfSplit(int split_type);

}  // namespace TarnPlanView
