#pragma once

#include <QStandardItem>

namespace TarnQt {

/// Inserts rows in one go. A row that had none gets its column first: Qt would announce that between announcing the
/// rows and having them, which a program that watches the model may take for a fault, as Qt 6's own tester does.
inline void InsertRows(QStandardItem* parent, int at, const QList<QStandardItem*>& rows) {
  if (!rows.isEmpty() && parent->columnCount() == 0) {
    parent->setColumnCount(1);
  }
  parent->insertRows(at, rows);
}

inline void AppendRows(QStandardItem* parent, const QList<QStandardItem*>& rows) {
  InsertRows(parent, parent->rowCount(), rows);
}

}  // namespace TarnQt
