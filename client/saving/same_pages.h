#pragma once

#include <list>

#include "LyraPluginManager/view_plugin_protocol.h"

namespace TarnClient {

/// Whether two plans show the same. Names of cameras do not count: they belong to the cameras.
bool SamePages(const std::list<view_plugin_protocol::PlanPage>& one,
               const std::list<view_plugin_protocol::PlanPage>& other);

/// Whether any window of the page has a content.
bool HoldsSomething(const view_plugin_protocol::PlanPage& page);

}  // namespace TarnClient
