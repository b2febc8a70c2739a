#pragma once

#include <QDrag>
#include <QPixmap>

#include "host_export.h"

namespace WidgetKit {

/// Drag of the host. When it comes from an item view, its MIME data carries the property "_tree_drop_" = true, by which
/// the view knows drops of its own rows. Thread: GUI.
class TARN_HOST_EXPORT CDrag : public QDrag {
  Q_OBJECT
 public:
  explicit CDrag(QObject* source);
  ~CDrag() override;

  /// Takes ownership, as the base does.
  void setMimeData(QMimeData* data);
  /// The picture under the cursor while `action` would be done; drawn at the device pixel ratio of the screen.
  void SetCursorPicture(const QString& path, Qt::DropAction action);
  /// What a drag carries, as seen beside the cursor in either skin: its words, with a sign before them unless that is
  /// null. In the colours of `widget`.
  static QPixmap Caption(const QPixmap& sign, const QString& text, const QWidget* widget);
};

}  // namespace WidgetKit
