#include "app/grab_windows.h"

#include <QApplication>
#include <QPainter>
#include <QWidget>

namespace TarnClient {

QPixmap GrabWindows(QWidget& window) {
  QPixmap picture = window.grab();
  QPainter painter(&picture);
  const QPoint origin = window.mapToGlobal(QPoint());
  for (QWidget* other : QApplication::topLevelWidgets()) {
    if (other != &window && other->isVisible()) {
      painter.drawPixmap(other->mapToGlobal(QPoint()) - origin, other->grab());
    }
  }
  return picture;
}

}  // namespace TarnClient
