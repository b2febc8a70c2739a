#pragma once

#include <deque>
#include <string>
#include <unordered_set>

namespace TarnPlanView {

/// What became of the tree from some moment on.
struct RecentChanges {
  bool everything = false;  // nothing fetched before holds any more
  std::unordered_set<std::string> plans;
  std::unordered_set<std::string> groups;
  std::unordered_set<std::string> parents;  // groups and roots whose children are others now

  bool IsEmpty() const { return !everything && plans.empty() && groups.empty() && parents.empty(); }
};

/// The changes of plans and groups that were applied lately: who fetched something sees whether it still holds. It
/// keeps the last ones only; of an older moment it says that everything changed.
class CChangeJournal {
 public:
  static constexpr int kKept = 1000;

  /// Grows with every change.
  int Now() const { return count_; }
  RecentChanges Since(int moment) const;

  /// `parent` is where the plan or group stands now; empty when it has gone or nothing is known of that.
  void NotePlan(const std::string& code, const std::string& parent);
  void NoteGroup(const std::string& code, const std::string& parent);
  void NoteChildrenOf(const std::string& parent);
  void NoteEverything();

 private:
  struct Change {
    bool everything = false;
    std::string plan, group, parent;  // each may be empty
  };

  void note(const Change& change);

  int count_ = 0;
  std::deque<Change> last_;
};

}  // namespace TarnPlanView
