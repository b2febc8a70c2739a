#include "app/grab_windows.h"

#include <QApplication>
#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <utility>

namespace TarnClient {

namespace {

int KindInStack(const QWidget& window) {
  switch (window.windowType()) {
    case Qt::ToolTip:
      return 3;
    case Qt::Popup:
      return 2;
    case Qt::Window:
      return 0;
    default:
      return 1;
  }
}

// As the screen has them: boxes over windows, menus over boxes, tips over menus, and each over what has opened it.
std::pair<int, int> PlaceInStack(const QWidget& window) {
  int openers = 0;
  for (const QWidget* opener = window.parentWidget(); opener; opener = opener->window()->parentWidget()) {
    ++openers;
  }
  return {KindInStack(window), openers};
}

}  // namespace

QPixmap GrabWindows(QWidget& window) {
  QPixmap picture = window.grab();
  QPainter painter(&picture);
  const QPoint origin = window.mapToGlobal(QPoint());
  QWidgetList others = QApplication::topLevelWidgets();
  std::stable_sort(others.begin(), others.end(),
                   [](const QWidget* one, const QWidget* other) { return PlaceInStack(*one) < PlaceInStack(*other); });
  for (QWidget* other : qAsConst(others)) {
    if (other != &window && other->isVisible()) {
      painter.drawPixmap(other->mapToGlobal(QPoint()) - origin, other->grab());
    }
  }
  return picture;
}

}  // namespace TarnClient
