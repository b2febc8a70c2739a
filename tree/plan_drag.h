#pragma once

#include <QByteArray>
#include <QModelIndex>
#include <QString>

#include "WidgetKit/drag.h"

class QAbstractItemView;

namespace TarnPlanView {

/// Drag of one plan or group row: what the live wall needs to play it, and the pictures. Deleted by Qt when the drag
/// has ended. Thread: GUI.
class CPlanDrag : public WidgetKit::CDrag {
  Q_OBJECT
 public:
  CPlanDrag(const QModelIndex& row, QAbstractItemView* view);

  /// Plans always, groups where the client can play a group's plans in turn, roots never.
  static bool CanDrag(const QModelIndex& row);
  /// JSON of the row, compact UTF-8.
  static QByteArray Payload(const QModelIndex& row);
  static QString PayloadFormat();

  /// The picture at the cursor while a move would be done.
  void ShowMoveCursor(const QString& path);

 private:
  QString move_cursor_;
};

}  // namespace TarnPlanView
