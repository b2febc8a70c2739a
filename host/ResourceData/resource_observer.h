#pragma once

#include <cstdint>
#include <string>

#include "ResourceData/resource_type.h"
#include "host_export.h"

namespace ResourceData {

/// Kinds of IResourceObserver::Param::event. Others are ignored.
enum ResourceEvent : int32_t {
  RE_NAME_CHANGED = 2,   ///< The group has another name. For a plan: anything of it has changed.
  RE_CHILD_ADDED = 3,    ///< A plan or group has come into the observed group, or below a root ("root").
  RE_CHILD_REMOVED = 4,  ///< One has gone from there. One that moves goes and comes.
  RE_TREE_CHANGED = 8,   ///< For "root": everything is to be read again, as after a switch of user.
};

/// Hears of changes that somebody else made to one resource: of what the process itself has changed nothing comes, but
/// for what RestoreDeleted() brought back. Notices come in the order of the changes; of those that are about the same
/// row the last may stand for all. What stands directly below a root is the business of the observer of "root", of all
/// three. Thread: called on the GUI thread with no lock held.
class TARN_HOST_EXPORT IResourceObserver {
 public:
  /// What has happened. Texts are UTF-8.
  struct Param {
    int32_t event = 0;            ///< A ResourceEvent; for a plan any change.
    std::string index_code;       ///< Code of the observed plan or group; "root" for the root observer.
    std::string second;           ///< The new name, or the child's code.
    ResourceType type = RT_NONE;  ///< The child's type for "child added" and "child removed".
  };

  virtual ~IResourceObserver() = default;
  /// Something has happened. May remove observers, this one too, and ask the service.
  virtual void OnResourceUpdate(const Param& param) = 0;
};

}  // namespace ResourceData
