#pragma once

#include <QString>
#include <list>
#include <optional>
#include <vector>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "store/camera_names.h"

namespace TarnHost::Store {

/// The pages of a plan as the text that is stored, and back. What a text does not say keeps its default; fields
/// that a newer version wrote survive in `extra`.
QString PagesToText(const std::list<view_plugin_protocol::PlanPage>& pages);
/// Nothing for a text that is no pages at all, or says something of the wrong kind.
std::optional<std::list<view_plugin_protocol::PlanPage>> PagesFromText(const QString& text);

/// The cameras that the windows of these pages show, in their order, more than once if so.
std::vector<NamedCamera> CamerasOf(const std::list<view_plugin_protocol::PlanPage>& pages);
/// The same of stored pages, at less cost than making all of them; of a damaged text what can be read.
std::vector<NamedCamera> CamerasInText(const QString& text);

}  // namespace TarnHost::Store
