#pragma once

#include <QMetaType>
#include <cstdint>

namespace ResourceData {

enum ResourceType : int32_t { RT_NONE = 0, RT_VIEW = 16000, RT_VIEW_GROUP = 16001 };

/// How a region is joined to other sites.
enum CascadeType : int32_t { CT_LOCAL = 0, CT_LOWER_SITE = 1 };

}  // namespace ResourceData

Q_DECLARE_METATYPE(ResourceData::ResourceType)
