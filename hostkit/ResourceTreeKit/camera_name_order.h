#pragma once

#include <vector>

#include "ResourceTreeKit/camera_content.h"

namespace ResourceTreeKit {

/// Sorts neighbours by name as people do, numbers by value; equal names by code. Names of plain characters, which is
/// most of them, are compared by keys of their own: a collator's keys would cost more than all else of a load.
/// Thread: any.
void SortByName(std::vector<CCameraContent::Node>* nodes);

}  // namespace ResourceTreeKit
