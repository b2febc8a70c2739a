#include "app/grab_windows.h"

#include <QApplication>
#include <QPainter>
#include <QWidget>
#include <algorithm>

namespace TarnClient {

QPixmap GrabWindows(QWidget& window) {
  QPixmap picture = window.grab();
  QPainter painter(&picture);
  const QPoint origin = window.mapToGlobal(QPoint());
  QWidgetList others = QApplication::topLevelWidgets();
  std::stable_partition(others.begin(), others.end(),
                        [](const QWidget* other) { return other->windowType() != Qt::Popup; });
  for (QWidget* other : qAsConst(others)) {
    if (other != &window && other->isVisible()) {
      painter.drawPixmap(other->mapToGlobal(QPoint()) - origin, other->grab());
    }
  }
  return picture;
}

}  // namespace TarnClient
