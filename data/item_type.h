#pragma once

namespace TarnPlanView {

/// Value of role 657: four slots a family (root, group, plan, plan-like leaf). The number 9 is unused.
enum ItemType {
  PlaceholderItem = -1,
  PublicRootItem = 1,
  PublicGroupItem = 2,
  PublicPlanItem = 3,
  PublicLeafItem = 4,
  OwnRootItem = 5,
  OwnGroupItem = 6,
  OwnPlanItem = 7,
  OwnLeafItem = 8,
  ReceivedRootItem = 10,
  ReceivedGroupItem = 11,
  ReceivedPlanItem = 12,
  ReceivedLeafItem = 13,
};

inline bool IsGroupItem(int type) {
  return type == PublicGroupItem || type == OwnGroupItem || type == ReceivedGroupItem;
}

/// The type of a family's root, its groups or its plans; `family` is a ThemeNodeType.
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

/// A plan or a plan-like leaf.
inline bool IsPlanItem(int type) {
  return type == PublicPlanItem || type == PublicLeafItem || type == OwnPlanItem || type == OwnLeafItem ||
         type == ReceivedPlanItem || type == ReceivedLeafItem;
}

}  // namespace TarnPlanView
