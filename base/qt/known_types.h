#pragma once

#include <QMetaType>

namespace TarnQt {

/// Whether values of the type can go through queued connections that are made by name.
inline bool IsKnownType(const char* name) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
  return QMetaType::fromName(name).isValid();
#else
  return QMetaType::type(name) != QMetaType::UnknownType;
#endif
}

}  // namespace TarnQt
