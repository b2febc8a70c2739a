#pragma once

#include <cstdint>
#include <string>

namespace TarnHost::Store {

enum Family : int32_t { kPublic = 0, kOwn = 1, kCommon = 2 };

/// Parents of what stands directly under a root.
enum RootCode : int32_t { kPublicRoot = -1, kOwnRoot = -2, kCommonRoot = -4 };

inline bool IsRootCode(int32_t code) {
  return code == kPublicRoot || code == kOwnRoot || code == kCommonRoot;
}
inline int32_t FamilyOfRoot(int32_t root) {
  return root == kPublicRoot ? kPublic : root == kOwnRoot ? kOwn : kCommon;
}

/// A group as the tree shows it.
struct GroupRow {
  int32_t code = 0;
  int32_t parent = kPublicRoot;
  int32_t family = kPublic;
  int32_t owner = 0;  // user of an own group; 0 otherwise
  std::string name;
};

/// A plan as the tree, the search and the automatic start need it.
struct PlanRow {
  int32_t code = 0;
  int32_t parent = kPublicRoot;
  int32_t family = kPublic;
  int32_t owner = 0;
  std::string name, folded_name;  // folded for searching
  int32_t split_type = 1, page_count = 1;
  bool auto_run = false;
  int32_t begin_second = -1, end_second = -1;  // of the day; -1 when there is none
};

/// The code that `text` writes in plain decimal form; 0, which is no code, for anything else.
int32_t ParseCode(const std::string& text);

}  // namespace TarnHost::Store
