#pragma once

#include <QString>
#include <QVector>

namespace TarnPlanView {

/// A group that is open in a tree, by its code and that of the group it stands in. A plain value.
struct OpenGroup {
  QString code;   ///< Its code.
  QString above;  ///< Code of the group or root that it stands in.

  /// Whether it is the same group in the same place.
  bool operator==(const OpenGroup& other) const { return code == other.code && above == other.above; }
};

/// Outer groups come before those in them.
using OpenGroups = QVector<OpenGroup>;

}  // namespace TarnPlanView
