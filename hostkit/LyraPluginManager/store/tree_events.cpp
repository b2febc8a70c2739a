#include "store/tree_events.h"

#include "TarnHost/camera_access.h"

namespace TarnHost::Store {
namespace {

using namespace ResourceData;
using Event = CObserverHub::Event;

const char kRoot[] = "root";

// The part of the events that is the same for groups and plans. A row that moved goes and comes again, so that it
// ends under its new parent in every tree.
template <class Row>
std::vector<Event> ComingsAndGoings(const std::optional<Row>& before, const std::optional<Row>& after,
                                    ResourceType type) {
  std::vector<Event> events;
  if (before && (!after || after->parent != before->parent)) {
    events.push_back(ChildEvent(before->parent, RE_CHILD_REMOVED, before->code, type));
  }
  if (after && (!before || after->parent != before->parent)) {
    events.push_back(ChildEvent(after->parent, RE_CHILD_ADDED, after->code, type));
  }
  return events;
}

Event NameEvent(ResourceType type, int32_t code, const std::string& name) {
  const std::string text = std::to_string(code);
  return {{type, text}, {RE_NAME_CHANGED, text, name, type}};
}

}  // namespace

Event WholeTreeEvent() {
  return {{RT_VIEW_GROUP, kRoot}, {RE_TREE_CHANGED, kRoot, {}, RT_NONE}};
}

Event CamerasEvent() {
  return {{kCameraResource, kCameraResourceCode}, {RE_TREE_CHANGED, kCameraResourceCode, {}, RT_NONE}};
}

Event ChildEvent(int32_t parent, int32_t event, int32_t child, ResourceType type) {
  const std::string node = IsRootCode(parent) ? kRoot : std::to_string(parent);
  return {{RT_VIEW_GROUP, node}, {event, node, std::to_string(child), type}};
}

std::vector<Event> EventsOf(const std::optional<GroupRow>& before, const std::optional<GroupRow>& after) {
  std::vector<Event> events = ComingsAndGoings(before, after, RT_VIEW_GROUP);
  if (before && after && before->name != after->name) {
    events.push_back(NameEvent(RT_VIEW_GROUP, after->code, after->name));
  }
  return events;
}

std::vector<Event> EventsOf(const std::optional<PlanRow>& before, const std::optional<PlanRow>& after) {
  std::vector<Event> events = ComingsAndGoings(before, after, RT_VIEW);
  if (before && after) {
    events.push_back(NameEvent(RT_VIEW, after->code, after->name));
  }
  return events;
}

std::vector<Event> CorrectionsOf(const GroupRow& row) {
  return {NameEvent(RT_VIEW_GROUP, row.code, row.name)};
}

// A plan's own notice needs none: the plan is read again for it.
std::vector<Event> CorrectionsOf(const PlanRow& row) {
  return {ChildEvent(row.parent, RE_CHILD_ADDED, row.code, RT_VIEW)};
}

}  // namespace TarnHost::Store
