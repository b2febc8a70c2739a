#pragma once

#include <QVector>
#include <list>

#include "LyraPluginManager/view_plugin_protocol.h"

namespace TarnClient {

/// Whether two plans show the same. Names of cameras do not count: they belong to the cameras.
bool SamePages(const std::list<view_plugin_protocol::PlanPage>& one,
               const std::list<view_plugin_protocol::PlanPage>& other);

/// Where the page that was on is after its plan was changed: the page that shows the same, else the one in its place,
/// else the first. `now` is not empty.
int PageAfterChange(const QVector<view_plugin_protocol::PlanPage>& before, int page,
                    const QVector<view_plugin_protocol::PlanPage>& now);

/// Whether both pages show the same windows, whatever their numbers, names and times.
bool SameWindows(const view_plugin_protocol::PlanPage& one, const view_plugin_protocol::PlanPage& other);

/// Whether any window of the page has a content.
bool HoldsSomething(const view_plugin_protocol::PlanPage& page);

}  // namespace TarnClient
