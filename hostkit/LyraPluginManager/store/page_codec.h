#pragma once

#include <QString>
#include <list>
#include <optional>

#include "LyraPluginManager/view_plugin_protocol.h"

namespace TarnHost::Store {

/// The pages of a plan as the text that is stored, and back. What a text does not say keeps its default; fields
/// that a newer version wrote survive in `extra`.
QString PagesToText(const std::list<view_plugin_protocol::PlanPage>& pages);
/// Nothing for a text that is no pages at all, or says something of the wrong kind.
std::optional<std::list<view_plugin_protocol::PlanPage>> PagesFromText(const QString& text);

}  // namespace TarnHost::Store
