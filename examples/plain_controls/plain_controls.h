#pragma once

#include <string>
#include <vector>

#include "ResourceTreeKit/camera_item_info.h"

/// What the plain controls ask of the host that takes them; the host defines it. Thread: GUI.
namespace PlainControls {

/// The cameras of the site, for the tree of cameras.
std::vector<ResourceTreeKit::CCameraItemInfo> Cameras();
/// The site's identity, as TarnConfiguration::IViewConfigInterface::GetStationId() answers it, for drags.
std::string Station();

}  // namespace PlainControls
