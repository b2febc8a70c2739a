#pragma once

#include <QModelIndex>
#include <optional>

namespace TarnPlanView {

/// What the user may do with a row: one answer for each button of the bar, none where the button stays as it is.
struct PlanActions {
  std::optional<bool> add_group, add_plan, edit, remove;
};

constexpr int kAddRight = 5;
constexpr int kEditRight = 6;
constexpr int kDeleteRight = 7;

/// The user's rights over public plans, as they were when they were asked for.
struct PlanRights {
  bool add = false, edit = false, remove = false;

  /// By the host's code of the right.
  bool Has(int code) const;
};

/// Asks the host for each right once. Thread: GUI.
PlanRights AskRights();

/// What a user with these rights may do with `index`, by its item type and the switches. Own plans need no rights;
/// received ones only ever take new groups.
PlanActions AllowedActions(const QModelIndex& index, const PlanRights& rights);

/// Whether a user with these rights may share plans, also his own: a copy comes into trees that are not his, so it
/// takes the right to add. Apart from the actions of a row, for the bar has no button of it.
bool MaySharePlans(const PlanRights& rights);

}  // namespace TarnPlanView
