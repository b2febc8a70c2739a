#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <utility>

#include "store/plan_repository.h"

namespace TarnHost::Store {

/// What the GUI thread may ask for at any moment, and must be answered at once whatever the server does: the plans that
/// start by themselves, those that have just changed, and what opens at the start. As true as the catalog: the database
/// thread brings in every change. Thread: any.
class CPlanMemory {
 public:
  using DefaultView = std::pair<int32_t, int32_t>;  // code and type; zeros are none

  /// Null when it is not here.
  std::shared_ptr<const StoredPlan> Find(int32_t code) const;
  bool Has(int32_t code) const { return Find(code) != nullptr; }
  /// Of plans that are not kept those that were put in first go when there are too many.
  void Put(StoredPlan plan);
  /// Puts it in the place of an older revision, if there is one: who has read it reads nothing older later on.
  void Renew(const StoredPlan& plan);
  void Remove(int32_t code);
  /// These stay until others are named.
  void Keep(std::set<int32_t> codes);
  /// Forgets all plans.
  void Clear();

  DefaultView DefaultViewOf(int32_t user) const;
  void SetDefaultViews(std::map<int32_t, DefaultView> views);

 private:
  struct Place {
    std::shared_ptr<const StoredPlan> plan;
    std::list<int32_t>::iterator age;
    size_t bytes;
  };
  void PutLocked(std::shared_ptr<const StoredPlan> plan);
  void RemoveLocked(int32_t code);
  void MakeRoom();

  mutable std::mutex mutex_;
  std::map<int32_t, Place> plans_;
  std::list<int32_t> ages_;  // the oldest first
  std::set<int32_t> kept_;
  size_t bytes_ = 0;
  std::map<int32_t, DefaultView> default_views_;
};

}  // namespace TarnHost::Store
