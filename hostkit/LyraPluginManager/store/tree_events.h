#pragma once

#include <optional>
#include <vector>

#include "store/observer_hub.h"
#include "store/plan_records.h"

namespace TarnHost::Store {

/// The notices to the observers of a user's tree when a row became another, as that user saw and sees it; "no row" on
/// either side for one that came or went, or that the user did not see or sees no more.
std::vector<CObserverHub::Event> EventsOf(const std::optional<GroupRow>& before, const std::optional<GroupRow>& after);
std::vector<CObserverHub::Event> EventsOf(const std::optional<PlanRow>& before, const std::optional<PlanRow>& after);

/// The notices that say how a row is now, for observers that may still get one of how it was.
std::vector<CObserverHub::Event> CorrectionsOf(const GroupRow& row);
std::vector<CObserverHub::Event> CorrectionsOf(const PlanRow& row);

CObserverHub::Event WholeTreeEvent();
CObserverHub::Event CamerasEvent();
CObserverHub::Event ChildEvent(int32_t parent, int32_t event, int32_t child, ResourceData::ResourceType type);

}  // namespace TarnHost::Store
