#pragma once

#include <QMetaType>
#include <cstdint>

namespace ResourceData {

/// What a notice or a default view is about. Registered as a meta type under its full name.
enum ResourceType : int32_t {
  RT_NONE = 0,            ///< Nothing, or the whole tree.
  RT_VIEW = 16000,        ///< A plan.
  RT_VIEW_GROUP = 16001,  ///< A group of plans.
};

/// How a region is joined to other sites.
enum CascadeType : int32_t {
  CT_LOCAL = 0,       ///< Of this site.
  CT_LOWER_SITE = 1,  ///< Of a site below this one.
};

}  // namespace ResourceData

Q_DECLARE_METATYPE(ResourceData::ResourceType)
