#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "ResourceData/resource_observer.h"
#include "plan_rules/code_table.h"

namespace TarnHost::Store {

/// Who is registered for which node. A client that has loaded everything registers an observer for each plan, so those
/// of the codes that are numbers, which all but the root's are, take one slot in a table each. Thread: one at a time.
class CNodeObservers {
 public:
  using Key = std::pair<int32_t, std::string>;  // resource type, code
  using Observer = ResourceData::IResourceObserver;

  /// Once: who is registered for the node already stays where he is.
  void Add(Observer* observer, const Key& key);
  void Remove(Observer* observer, const Key& key);
  /// In the order in which they were registered.
  std::vector<Observer*> Of(const Key& key) const;
  void Clear();

 private:
  std::map<int32_t, view_plugin_protocol::CCodeTable<Observer*>> numbered_;  // by resource type
  std::map<Key, std::vector<Observer*>> others_;
};

}  // namespace TarnHost::Store
