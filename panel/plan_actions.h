#pragma once

#include <QModelIndex>
#include <optional>

namespace TarnPlanView {

/// What the user may do with a row: one answer for each button of the bar, none where the button stays as it is.
struct PlanActions {
  std::optional<bool> add_group, add_plan, edit, remove;
};

/// What the current user may do with `index`, by its item type, the rights and the switches as they are now. The rights
/// are asked of the host at every call. Own plans need no rights; received ones only ever take new groups.
/// Thread: GUI.
PlanActions AllowedActions(const QModelIndex& index);

/// Whether the user has the host's right with this code.
bool HasRight(int code);

constexpr int kAddRight = 5;
constexpr int kEditRight = 6;
constexpr int kDeleteRight = 7;

}  // namespace TarnPlanView
