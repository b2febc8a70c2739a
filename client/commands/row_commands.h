#pragma once

#include <QString>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "plan_rules/rights.h"

namespace TarnClient {

/// What the client adds to the menu of a row, in this order.
enum class RowCommand { NewPlan, NewGroup, Duplicate, MoveTo, Rename, PlayOn, Stop, OpenAtStart };
constexpr int kRowCommands = 8;

enum class RowKind { None, Root, Group, Plan };

/// All that decides which of them a row has.
struct RowSituation {
  RowKind kind = RowKind::None;
  int32_t family = 0;
  view_plugin_protocol::Rights rights;
  bool cycles = true;                         // the site's switch
  QString why_no_new_plan, why_no_new_group;  // in the group of the row, as its panel says
  bool edited = false;                        // the plan is open in an editor
  QString list_of_row;   // the title of the list that the row stands in; empty when it is the panel's own
  bool loading = false;  // the panel waits for its rows
  bool playing = false;  // the plan, or the plans of the group in turn
};

struct RowCommandState {
  bool shown = true;
  /// Why it does nothing, for the user; empty when it does. Never empty for what is not shown.
  QString reason;

  bool IsEnabled() const { return reason.isEmpty(); }
};

RowCommandState StateOf(RowCommand command, const RowSituation& row);

}  // namespace TarnClient
