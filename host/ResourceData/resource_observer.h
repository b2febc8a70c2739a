#pragma once

#include <cstdint>
#include <string>

#include "ResourceData/resource_type.h"
#include "host_export.h"

namespace ResourceData {

/// Kinds of IResourceObserver::Param::event.
enum ResourceEvent : int32_t { RE_NAME_CHANGED = 2, RE_CHILD_ADDED = 3, RE_CHILD_REMOVED = 4, RE_TREE_CHANGED = 8 };

/// Hears of changes that somebody else made to one resource. Thread: called on the GUI thread with no lock held.
class TARN_HOST_EXPORT IResourceObserver {
 public:
  struct Param {
    int32_t event = 0;            // a ResourceEvent; for a plan any change
    std::string index_code;       // the observed node; "root" for the root observer
    std::string second;           // the new name, or the child's code
    ResourceType type = RT_NONE;  // the child's type for "child added" and "child removed"
  };

  virtual ~IResourceObserver() = default;
  /// May remove observers, this one too.
  virtual void OnResourceUpdate(const Param& param) = 0;
};

}  // namespace ResourceData
