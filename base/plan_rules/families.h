#pragma once

#include <cstdint>

// The families of plans. Thread: any.
namespace view_plugin_protocol {

/// The family of a group or plan, as records and requests carry it in `type`.
enum Family : int32_t {
  PublicFamily = 0,    // one tree for all users; changing it takes a Right
  OwnFamily = 1,       // a tree for each user
  ReceivedFamily = 2,  // received in common
};

/// The parent that what stands directly under the root of a family has.
enum RootCode : int32_t { PublicRoot = -1, OwnRoot = -2, ReceivedRoot = -4 };

inline bool IsFamily(int32_t family) {
  return family >= PublicFamily && family <= ReceivedFamily;
}

inline bool IsRootCode(int32_t code) {
  return code == PublicRoot || code == OwnRoot || code == ReceivedRoot;
}

/// The root of a family; the public one for what is no family.
inline RootCode RootOf(int32_t family) {
  if (family == OwnFamily) {
    return OwnRoot;
  }
  return family == ReceivedFamily ? ReceivedRoot : PublicRoot;
}

/// The family of a root; the public one for what is no root.
inline Family FamilyOfRoot(int32_t root) {
  if (root == OwnRoot) {
    return OwnFamily;
  }
  return root == ReceivedRoot ? ReceivedFamily : PublicFamily;
}

}  // namespace view_plugin_protocol
