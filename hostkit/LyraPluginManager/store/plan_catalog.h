#pragma once

#include <map>
#include <optional>
#include <set>
#include <shared_mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include "store/camera_names.h"
#include "store/fair_shared_mutex.h"
#include "store/group_audiences.h"
#include "store/plan_records.h"

namespace TarnHost::Store {

/// The whole plan tree in memory, of all users; what a reader sees of it goes by the user it names.
///
/// Rows stand ready in lists by parent, in the order of their codes. Thread: any; readers share, a writer excludes.
class CPlanCatalog {
 public:
  /// Groups below each other that are shown at most. The program makes far fewer; rows changed past it may say
  /// anything.
  static constexpr int kMostLevels = 64;

  struct Hit {
    PlanRow plan;
    std::vector<std::string> groups_above;  // their names, the outermost first; none directly under a root
    std::string shown_camera = {};          // the camera by which a search found it; empty: found by its name
  };

  struct Counts {
    int groups = 0, plans = 0;
  };

  /// Names of cameras are compared in the form that `fold` makes.
  explicit CPlanCatalog(CCameraNames::Fold fold) : cameras_(fold) {}

  /// The names behind the numbers in PlanRow::cameras.
  CCameraNames& Cameras() { return cameras_; }

  /// Who is let into which group, from now on. Whether the user now sees another part of the tree.
  bool SetAudiences(GroupAudiences audiences, int32_t user);

  /// Takes new content; both lists in the order of their codes. Groups that hang from no root are left out.
  void Replace(const std::vector<GroupRow>& groups, std::vector<PlanRow> plans);
  void Clear();

  /// Calls visit(rows) with the children, which must not call the catalog. False when `user` sees no such parent.
  template <class Visit>
  bool VisitGroups(int32_t parent, int32_t user, const Visit& visit) const {
    const std::shared_lock<CFairSharedMutex> lock(mutex_);
    const Children* children = VisibleChildren(parent, user);
    if (children == nullptr) {
      return false;
    }
    if (AreAllVisible(children->groups, user)) {
      visit(children->groups);
    } else {
      visit(VisibleOf(children->groups, user));
    }
    return true;
  }
  template <class Visit>
  bool VisitPlans(int32_t parent, int32_t user, const Visit& visit) const {
    const std::shared_lock<CFairSharedMutex> lock(mutex_);
    const Children* children = VisibleChildren(parent, user);
    if (children == nullptr) {
      return false;
    }
    visit(children->plans);
    return true;
  }

  std::optional<GroupRow> FindGroup(int32_t code, int32_t user) const;
  std::optional<Hit> FindPlan(int32_t code, int32_t user) const;
  /// Groups and plans on all levels below a group; none when `user` sees no such group.
  std::optional<Counts> CountBelow(int32_t group, int32_t user) const;
  /// Codes of the parent's first group and first plan; 0 for what it has none of.
  std::pair<int32_t, int32_t> FirstChildren(int32_t parent, int32_t user) const;

  /// Groups and plans of all users directly in a group; nothing for one that is not in the tree.
  std::optional<int> CountChildren(int32_t group) const;

  /// Visible plans of one family whose folded name contains `folded`, by code, and behind them, by code, those that
  /// show a camera of such a name.
  std::vector<Hit> Search(const std::string& folded, int32_t family, int32_t user) const;
  struct Showing {
    std::vector<Hit> plans;  // by code
    int others = 0;          // that the user does not see
  };
  /// The plans with a window for one of these cameras.
  Showing PlansShowing(const std::set<std::string>& camera_codes, int32_t user) const;
  /// First visible plan of this exact name, by family, then code; 0 when there is none.
  int32_t FindByName(const std::string& name, int32_t user) const;
  /// The visible automatic plan that is due at this second of the day, else the one that starts next; ties go to the
  /// lower code. 0 when there is none.
  int32_t AutomaticPlan(int32_t second_of_day, int32_t user) const;
  /// That one and those that come after it, at most so many.
  std::vector<int32_t> NextAutomaticPlans(int32_t second_of_day, int32_t user, size_t most) const;

  /// Puts a row in, or in the place of the one with its code; answers what stood there. One with another parent goes
  /// there, a group with all below it. Left out is a row whose parent is unknown, and a group that would stand below
  /// itself or too deep, with all below it.
  std::optional<GroupRow> Put(const GroupRow& row);
  std::optional<PlanRow> Put(const PlanRow& row);
  /// Puts in a group with all below it, for readers at once; the rows in the order of their codes.
  void Put(const std::vector<GroupRow>& groups, const std::vector<PlanRow>& plans);
  /// Takes out a group with all below it, or a plan; answers what stood there.
  std::optional<GroupRow> RemoveGroup(int32_t code);
  std::optional<PlanRow> RemovePlan(int32_t code);

 private:
  struct Children {
    std::vector<GroupRow> groups;
    std::vector<PlanRow> plans;
  };
  struct Place {
    int32_t parent, family, owner;
  };
  struct GroupNode {
    Place place;
    Children children;
  };

  template <class Row>
  bool IsVisibleIn(int32_t group, const Row& row, int32_t user) const {
    return IsVisibleTo(row, user, [&] { return IsOpenUpFrom(group, user); });
  }
  bool IsOpenUpFrom(int32_t group, int32_t user) const;
  bool IsChildVisible(const GroupRow& group, int32_t user) const;
  bool AreAllVisible(const std::vector<GroupRow>& groups, int32_t user) const;
  std::vector<GroupRow> VisibleOf(const std::vector<GroupRow>& groups, int32_t user) const;
  void CountBelow(const Children& children, int32_t user, Counts* counts) const;
  const Children* VisibleChildren(int32_t parent, int32_t user) const;
  const Children* ChildrenAt(int32_t parent, int32_t owner) const;
  Children* ChildrenAt(int32_t parent, int32_t owner);
  const PlanRow& PlanAt(int32_t code, const Place& place) const;
  const GroupRow& GroupAt(int32_t code, const Place& place) const;
  Hit HitOf(const PlanRow& row) const;
  void PutGroups(const std::vector<GroupRow>& rows);
  std::optional<GroupRow> PutGroup(const GroupRow& row);
  bool HasRoomFor(const GroupRow& row, int levels);
  int HeightOf(const Children& children) const;
  std::optional<PlanRow> PutPlan(PlanRow row);
  void MakeRoomFor(const std::vector<PlanRow>& plans);
  PlanRow TakePlan(int32_t code, const Place& place);
  void ForgetBelow(const Children& children);
  void Swap(CPlanCatalog& other);

  CCameraNames cameras_;
  mutable CFairSharedMutex mutex_;
  GroupAudiences audiences_;
  Children public_, common_;
  std::map<int32_t, Children> own_;  // by user
  std::unordered_map<int32_t, GroupNode> groups_;
  std::unordered_map<int32_t, Place> plans_;
  std::set<int32_t> automatic_;
};

}  // namespace TarnHost::Store
