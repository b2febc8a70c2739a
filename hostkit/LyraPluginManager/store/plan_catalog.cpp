#include "store/plan_catalog.h"

#include <algorithm>
#include <iterator>
#include <mutex>
#include <utility>

#include "plan_rules/time_span.h"

namespace TarnHost::Store {
namespace {

constexpr int32_t kDay = 24 * 60 * 60;

template <class Rows>
auto LowerBound(Rows& rows, int32_t code) {
  return std::lower_bound(rows.begin(), rows.end(), code,
                          [](const auto& row, int32_t wanted) { return row.code < wanted; });
}

template <class Rows>
int32_t FirstCode(const Rows& rows) {
  return rows.empty() ? 0 : rows.front().code;
}

template <class Row>
void Insert(std::vector<Row>& rows, Row row) {
  rows.insert(LowerBound(rows, row.code), std::move(row));
}

template <class Row>
Row Take(std::vector<Row>& rows, int32_t code) {
  const auto at = LowerBound(rows, code);
  Row row = std::move(*at);
  rows.erase(at);
  return row;
}

/// Null when there is no such key.
template <class Map>
auto* FindIn(Map& map, int32_t key) {
  const auto found = map.find(key);
  return found == map.end() ? nullptr : &found->second;
}

bool StartsByItself(const PlanRow& row) {
  return row.auto_run && row.begin_second >= 0 && view_plugin_protocol::HasSpan(row.begin_second, row.end_second);
}

// Seconds until the plan starts; 0 while it is due.
int32_t WaitFor(const PlanRow& row, int32_t now) {
  if (row.begin_second <= now && now < row.end_second) {
    return 0;
  }
  const int32_t begin = row.begin_second;
  if (begin < now) {
    return begin + kDay - now;  // tomorrow
  }
  return begin - now;
}

}  // namespace

void CPlanCatalog::Replace(const std::vector<GroupRow>& groups, std::vector<PlanRow> plans) {
  CPlanCatalog fresh(nullptr);  // rows alone: built and, with the old ones in it, destroyed while readers go on
  fresh.groups_.reserve(groups.size());
  fresh.plans_.reserve(plans.size());
  fresh.PutGroups(groups);
  fresh.MakeRoomFor(plans);
  for (PlanRow& row : plans) {
    fresh.PutPlan(std::move(row));
  }
  Swap(fresh);
}

// Lists that grow row by row would hold up to twice the memory for good.
void CPlanCatalog::MakeRoomFor(const std::vector<PlanRow>& plans) {
  std::unordered_map<int32_t, size_t> counts;
  for (const PlanRow& row : plans) {
    ++counts[row.parent];
  }
  for (auto& [code, node] : groups_) {
    if (const size_t* count = FindIn(counts, code)) {
      node.children.plans.reserve(*count);
    }
  }
}

void CPlanCatalog::Clear() {
  CPlanCatalog empty(nullptr);
  Swap(empty);
}

void CPlanCatalog::Swap(CPlanCatalog& other) {
  const std::unique_lock<CFairSharedMutex> lock(mutex_);
  std::swap(public_, other.public_);
  std::swap(common_, other.common_);
  own_.swap(other.own_);
  groups_.swap(other.groups_);
  plans_.swap(other.plans_);
  automatic_.swap(other.automatic_);
}

const CPlanCatalog::Children* CPlanCatalog::ChildrenAt(int32_t parent, int32_t owner) const {
  switch (parent) {
    case PublicRoot:
      return &public_;
    case ReceivedRoot:
      return &common_;
    case OwnRoot: {
      static const Children none;
      const Children* own = FindIn(own_, owner);
      return own ? own : &none;
    }
    default: {
      const GroupNode* group = FindIn(groups_, parent);
      return group ? &group->children : nullptr;
    }
  }
}

// The first own row of a user makes the tree of it.
CPlanCatalog::Children* CPlanCatalog::ChildrenAt(int32_t parent, int32_t owner) {
  if (parent == OwnRoot) {
    return &own_[owner];
  }
  return const_cast<Children*>(std::as_const(*this).ChildrenAt(parent, owner));
}

bool CPlanCatalog::SetAudiences(GroupAudiences audiences, int32_t user) {
  const std::unique_lock<CFairSharedMutex> lock(mutex_);
  const std::set<int32_t> closed = audiences_.ClosedTo(user);
  audiences_ = std::move(audiences);
  return closed != audiences_.ClosedTo(user);
}

bool CPlanCatalog::IsOpenUpFrom(int32_t group, int32_t user) const {
  if (audiences_.limited.empty()) {
    return true;
  }
  while (const GroupNode* node = FindIn(groups_, group)) {
    if (!audiences_.Admits(group, user)) {
      return false;
    }
    group = node->place.parent;
  }
  return true;
}

// Of a group whose parent the user sees.
bool CPlanCatalog::IsChildVisible(const GroupRow& group, int32_t user) const {
  return IsVisibleTo(group, user, [&] { return audiences_.Admits(group.code, user); });
}

bool CPlanCatalog::AreAllVisible(const std::vector<GroupRow>& groups, int32_t user) const {
  const auto is_visible = [&](const GroupRow& group) { return IsChildVisible(group, user); };
  return audiences_.limited.empty() || std::all_of(groups.begin(), groups.end(), is_visible);
}

std::vector<GroupRow> CPlanCatalog::VisibleOf(const std::vector<GroupRow>& groups, int32_t user) const {
  std::vector<GroupRow> visible;
  std::copy_if(groups.begin(), groups.end(), std::back_inserter(visible),
               [&](const GroupRow& group) { return IsChildVisible(group, user); });
  return visible;
}

const CPlanCatalog::Children* CPlanCatalog::VisibleChildren(int32_t parent, int32_t user) const {
  if (IsRootCode(parent)) {
    return ChildrenAt(parent, user);
  }
  const GroupNode* group = FindIn(groups_, parent);
  return group && IsVisibleIn(parent, group->place, user) ? &group->children : nullptr;
}

const GroupRow& CPlanCatalog::GroupAt(int32_t code, const Place& place) const {
  return *LowerBound(ChildrenAt(place.parent, place.owner)->groups, code);
}

const PlanRow& CPlanCatalog::PlanAt(int32_t code, const Place& place) const {
  return *LowerBound(ChildrenAt(place.parent, place.owner)->plans, code);
}

CPlanCatalog::Hit CPlanCatalog::HitOf(const PlanRow& row) const {
  Hit hit{row, {}};
  for (int32_t code = row.parent; const GroupNode* group = FindIn(groups_, code); code = group->place.parent) {
    hit.groups_above.push_back(GroupAt(code, group->place).name);
  }
  std::reverse(hit.groups_above.begin(), hit.groups_above.end());
  return hit;
}

std::optional<GroupRow> CPlanCatalog::FindGroup(int32_t code, int32_t user) const {
  const std::shared_lock<CFairSharedMutex> lock(mutex_);
  const GroupNode* group = FindIn(groups_, code);
  if (!group || !IsVisibleIn(code, group->place, user)) {
    return std::nullopt;
  }
  return GroupAt(code, group->place);
}

std::optional<CPlanCatalog::Hit> CPlanCatalog::FindPlan(int32_t code, int32_t user) const {
  const std::shared_lock<CFairSharedMutex> lock(mutex_);
  const Place* place = FindIn(plans_, code);
  if (!place || !IsVisibleIn(place->parent, *place, user)) {
    return std::nullopt;
  }
  return HitOf(PlanAt(code, *place));
}

std::pair<int32_t, int32_t> CPlanCatalog::FirstChildren(int32_t parent, int32_t user) const {
  const std::shared_lock<CFairSharedMutex> lock(mutex_);
  const Children* children = VisibleChildren(parent, user);
  if (children == nullptr) {
    return {0, 0};
  }
  const auto& groups = children->groups;
  const auto first =
      std::find_if(groups.begin(), groups.end(), [&](const GroupRow& group) { return IsChildVisible(group, user); });
  return {first == groups.end() ? 0 : first->code, FirstCode(children->plans)};
}

std::optional<CPlanCatalog::Counts> CPlanCatalog::CountBelow(int32_t group, int32_t user) const {
  const std::shared_lock<CFairSharedMutex> lock(mutex_);
  const Children* children = VisibleChildren(group, user);
  if (children == nullptr) {
    return std::nullopt;
  }
  Counts counts;
  CountBelow(*children, user, &counts);
  return counts;
}

void CPlanCatalog::CountBelow(const Children& children, int32_t user, Counts* counts) const {
  counts->plans += static_cast<int>(children.plans.size());
  for (const GroupRow& group : children.groups) {
    if (IsChildVisible(group, user)) {
      ++counts->groups;
      CountBelow(groups_.at(group.code).children, user, counts);
    }
  }
}

std::optional<int> CPlanCatalog::CountChildren(int32_t group) const {
  const std::shared_lock<CFairSharedMutex> lock(mutex_);
  const GroupNode* node = FindIn(groups_, group);
  if (!node) {
    return std::nullopt;
  }
  return static_cast<int>(node->children.groups.size() + node->children.plans.size());
}

std::vector<CPlanCatalog::Hit> CPlanCatalog::Search(const std::string& folded, int32_t family, int32_t user) const {
  const CFoundCameras cameras = cameras_.Find(folded);
  std::vector<Hit> hits;
  const std::shared_lock<CFairSharedMutex> lock(mutex_);
  const auto search = [&](const Children& children) {
    for (const PlanRow& row : children.plans) {
      if (row.family != family) {
        continue;
      }
      if (row.folded_name.find(folded) != std::string::npos) {
        hits.push_back(HitOf(row));
      } else if (const std::string* camera = cameras.FirstOf(row.cameras)) {
        hits.push_back(HitOf(row));
        hits.back().shown_camera = *camera;
      }
    }
  };
  for (const int32_t root : {PublicRoot, OwnRoot, ReceivedRoot}) {
    search(*ChildrenAt(root, user));
  }
  for (const auto& [code, node] : groups_) {
    if (node.place.family == family && IsVisibleIn(code, node.place, user)) {
      search(node.children);
    }
  }
  const auto rank = [](const Hit& hit) { return std::make_pair(!hit.shown_camera.empty(), hit.plan.code); };
  std::sort(hits.begin(), hits.end(), [rank](const Hit& a, const Hit& b) { return rank(a) < rank(b); });
  return hits;
}

CPlanCatalog::Showing CPlanCatalog::PlansShowing(const std::set<std::string>& camera_codes, int32_t user) const {
  const CFoundCameras cameras = cameras_.FindCodes(camera_codes);
  Showing showing;
  const std::shared_lock<CFairSharedMutex> lock(mutex_);
  for (const auto& [code, place] : plans_) {
    const PlanRow& row = PlanAt(code, place);
    if (cameras.FirstOf(row.cameras) == nullptr) {
      continue;
    }
    if (IsVisibleIn(place.parent, place, user)) {
      showing.plans.push_back(HitOf(row));
    } else {
      ++showing.others;
    }
  }
  std::sort(showing.plans.begin(), showing.plans.end(),
            [](const Hit& a, const Hit& b) { return a.plan.code < b.plan.code; });
  return showing;
}

int32_t CPlanCatalog::FindByName(const std::string& name, int32_t user) const {
  std::pair<int32_t, int32_t> best(0, 0);  // family, code
  const std::shared_lock<CFairSharedMutex> lock(mutex_);
  for (const auto& [code, place] : plans_) {
    const std::pair<int32_t, int32_t> candidate(place.family, code);
    if ((best.second == 0 || candidate < best) && PlanAt(code, place).name == name &&
        IsVisibleIn(place.parent, place, user)) {
      best = candidate;
    }
  }
  return best.second;
}

int32_t CPlanCatalog::AutomaticPlan(int32_t second_of_day, int32_t user) const {
  const auto next = NextAutomaticPlans(second_of_day, user, 1);
  return next.empty() ? 0 : next.front();
}

std::vector<int32_t> CPlanCatalog::NextAutomaticPlans(int32_t second_of_day, int32_t user, size_t most) const {
  std::set<std::pair<int32_t, int32_t>> next;  // seconds to wait, code
  const std::shared_lock<CFairSharedMutex> lock(mutex_);
  for (const int32_t code : automatic_) {
    const Place& place = plans_.at(code);
    const PlanRow& row = PlanAt(code, place);
    const std::pair<int32_t, int32_t> candidate(WaitFor(row, second_of_day), code);
    const bool counts = StartsByItself(row) && (next.size() < most || candidate < *next.rbegin());
    if (counts && IsVisibleIn(place.parent, place, user)) {
      next.insert(candidate);
      if (next.size() > most) {
        next.erase(std::prev(next.end()));
      }
    }
  }
  std::vector<int32_t> codes;
  for (const auto& [wait, code] : next) {
    codes.push_back(code);
  }
  return codes;
}

std::optional<GroupRow> CPlanCatalog::Put(const GroupRow& row) {
  const std::unique_lock<CFairSharedMutex> lock(mutex_);
  return PutGroup(row);
}

std::optional<PlanRow> CPlanCatalog::Put(const PlanRow& row) {
  const std::unique_lock<CFairSharedMutex> lock(mutex_);
  return PutPlan(row);
}

void CPlanCatalog::Put(const std::vector<GroupRow>& groups, const std::vector<PlanRow>& plans) {
  const std::unique_lock<CFairSharedMutex> lock(mutex_);
  PutGroups(groups);
  for (const PlanRow& row : plans) {
    PutPlan(row);
  }
}

// A parent may have the higher code when its row was changed past the program; who is below himself has none.
void CPlanCatalog::PutGroups(const std::vector<GroupRow>& rows) {
  std::unordered_map<int32_t, std::vector<const GroupRow*>> waiting;  // by the parent that is not there yet
  for (const GroupRow& row : rows) {
    if (ChildrenAt(row.parent, row.owner) == nullptr) {
      waiting[row.parent].push_back(&row);
      continue;
    }
    std::vector<const GroupRow*> ready{&row};
    while (!ready.empty()) {
      const GroupRow& next = *ready.back();
      ready.pop_back();
      PutGroup(next);
      if (const auto children = waiting.find(next.code); children != waiting.end()) {
        ready.insert(ready.end(), children->second.begin(), children->second.end());
        waiting.erase(children);
      }
    }
  }
}

std::optional<GroupRow> CPlanCatalog::PutGroup(const GroupRow& row) {
  const Place place{row.parent, row.family, row.owner};
  const auto known = groups_.find(row.code);
  if (known == groups_.end()) {
    if (HasRoomFor(row, 1)) {
      Insert(ChildrenAt(row.parent, row.owner)->groups, row);
      groups_[row.code].place = place;
    }
    return std::nullopt;
  }
  const Place old_place = std::exchange(known->second.place, place);
  std::vector<GroupRow>& old_siblings = ChildrenAt(old_place.parent, old_place.owner)->groups;
  if (old_place.parent == place.parent && old_place.owner == place.owner) {
    return std::exchange(*LowerBound(old_siblings, row.code), row);
  }
  GroupRow old = Take(old_siblings, row.code);
  if (HasRoomFor(row, HeightOf(known->second.children) + 1)) {
    Insert(ChildrenAt(row.parent, row.owner)->groups, row);
  } else {
    ForgetBelow(known->second.children);
    groups_.erase(known);
  }
  return old;
}

// Whether a group of so many levels, itself counted, can stand where the row says: below a parent that is there and
// not below itself, and not too deep for what goes down the tree.
bool CPlanCatalog::HasRoomFor(const GroupRow& row, int levels) {
  int32_t parent = row.parent;
  while (!IsRootCode(parent)) {
    const auto found = groups_.find(parent);
    if (found == groups_.end() || parent == row.code || ++levels > kMostLevels) {
      return false;
    }
    parent = found->second.place.parent;
  }
  return true;
}

int CPlanCatalog::HeightOf(const Children& children) const {
  int height = 0;
  for (const GroupRow& group : children.groups) {
    height = std::max(height, HeightOf(groups_.at(group.code).children) + 1);
  }
  return height;
}

std::optional<PlanRow> CPlanCatalog::PutPlan(PlanRow row) {
  std::optional<PlanRow> old;
  const auto known = plans_.find(row.code);
  if (known != plans_.end()) {
    old = TakePlan(row.code, known->second);
    plans_.erase(known);
  }
  if (Children* siblings = ChildrenAt(row.parent, row.owner)) {
    plans_[row.code] = {row.parent, row.family, row.owner};
    if (row.auto_run) {
      automatic_.insert(row.code);
    }
    Insert(siblings->plans, std::move(row));
  }
  return old;
}

PlanRow CPlanCatalog::TakePlan(int32_t code, const Place& place) {
  automatic_.erase(code);
  return Take(ChildrenAt(place.parent, place.owner)->plans, code);
}

std::optional<PlanRow> CPlanCatalog::RemovePlan(int32_t code) {
  const std::unique_lock<CFairSharedMutex> lock(mutex_);
  const auto known = plans_.find(code);
  if (known == plans_.end()) {
    return std::nullopt;
  }
  const PlanRow row = TakePlan(code, known->second);
  plans_.erase(known);
  return row;
}

std::optional<GroupRow> CPlanCatalog::RemoveGroup(int32_t code) {
  const std::unique_lock<CFairSharedMutex> lock(mutex_);
  const auto known = groups_.find(code);
  if (known == groups_.end()) {
    return std::nullopt;
  }
  const Place place = known->second.place;
  ForgetBelow(known->second.children);
  groups_.erase(known);
  return Take(ChildrenAt(place.parent, place.owner)->groups, code);
}

void CPlanCatalog::ForgetBelow(const Children& children) {
  for (const PlanRow& plan : children.plans) {
    automatic_.erase(plan.code);
    plans_.erase(plan.code);
  }
  for (const GroupRow& group : children.groups) {
    const auto known = groups_.find(group.code);
    ForgetBelow(known->second.children);
    groups_.erase(known);
  }
}

}  // namespace TarnHost::Store
