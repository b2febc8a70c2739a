#pragma once

namespace TarnPlanView {

/// Value of role 657: four slots a family (root, group, plan, plan-like leaf). The number 9 is unused.
enum ItemType {
  PlaceholderItem = -1,    ///< The row that stands for "nothing", on top of a chooser.
  PublicRootItem = 1,      ///< The root of the public family.
  PublicGroupItem = 2,     ///< A group in it.
  PublicPlanItem = 3,      ///< A plan in it.
  PublicLeafItem = 4,      ///< Another leaf in it; treated as a plan.
  OwnRootItem = 5,         ///< The root of the user's own family.
  OwnGroupItem = 6,        ///< A group in it.
  OwnPlanItem = 7,         ///< A plan in it.
  OwnLeafItem = 8,         ///< Another leaf in it; treated as a plan.
  ReceivedRootItem = 10,   ///< The root of the received family.
  ReceivedGroupItem = 11,  ///< A group in it.
  ReceivedPlanItem = 12,   ///< A plan in it.
  ReceivedLeafItem = 13,   ///< Another leaf in it; treated as a plan.
};

/// Whether it is a group of any family; a root is none. Thread: any.
inline bool IsGroupItem(int type) {
  return type == PublicGroupItem || type == OwnGroupItem || type == ReceivedGroupItem;
}

/// The type of a family's root, its groups or its plans; `family` is a ThemeNodeType. 0 for what is no family.
/// Thread: any.
inline int ItemTypeIn(int family, bool is_root, bool is_group) {
  constexpr int kRoots[] = {PublicRootItem, OwnRootItem, ReceivedRootItem};
  if (family < 0 || family > 2) {
    return 0;
  }
  if (is_root) {
    return kRoots[family];
  }
  return kRoots[family] + (is_group ? 1 : 2);
}

/// Whether it is a plan or a plan-like leaf of any family. Thread: any.
inline bool IsPlanItem(int type) {
  return type == PublicPlanItem || type == PublicLeafItem || type == OwnPlanItem || type == OwnLeafItem ||
         type == ReceivedPlanItem || type == ReceivedLeafItem;
}

}  // namespace TarnPlanView
