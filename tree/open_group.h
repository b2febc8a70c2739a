#pragma once

#include <QString>
#include <QVector>

namespace TarnPlanView {

/// A group that is open in a tree, by its code and that of the group it stands in. A plain value.
struct OpenGroup {
  QString code, above;

  bool operator==(const OpenGroup& other) const { return code == other.code && above == other.above; }
};

using OpenGroups = QVector<OpenGroup>;

}  // namespace TarnPlanView
