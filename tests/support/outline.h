#pragma once

#include <QAbstractItemModel>
#include <QStringList>

namespace TarnTest {

/// "name(child,child(...))" of the rows below `parent`, in model order; what a test compares trees by.
inline QString Outline(const QAbstractItemModel* model, const QModelIndex& parent = QModelIndex()) {
  QStringList rows;
  for (int row = 0; row < model->rowCount(parent); ++row) {
    const QModelIndex index = model->index(row, 0, parent);
    const QString below = Outline(model, index);
    rows << index.data().toString() + (below.isEmpty() ? below : QLatin1Char('(') + below + QLatin1Char(')'));
  }
  return rows.join(QLatin1Char(','));
}

}  // namespace TarnTest
