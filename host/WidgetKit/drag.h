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
  /// `source`: the widget or the view that it comes from, which owns it as Qt's drags are owned.
  explicit CDrag(QObject* source);
  ~CDrag() override;

  /// What is carried. Takes ownership, as the base does. Hides the base's call, which sets no property.
  void setMimeData(QMimeData* data);
  /// The picture under the cursor while `action` would be done, an SVG resource or file; drawn at the device pixel
  /// ratio of the screen. An empty path, or a file that is not there, gives the platform's own.
  void SetCursorPicture(const QString& path, Qt::DropAction action);
  /// What a drag carries, in words beside the cursor, for QDrag::setPixmap(). In font and colours of `widget`.
  static QPixmap Caption(const QString& text, const QWidget* widget);
};

}  // namespace WidgetKit
