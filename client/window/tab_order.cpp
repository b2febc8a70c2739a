#include "window/tab_order.h"

#include <QWidget>
#include <algorithm>
#include <iterator>

namespace TarnClient {

namespace {

bool IsStop(const QWidget* widget) {
  return !widget->isWindow() && (widget->focusPolicy() & Qt::TabFocus) != 0;
}

QVector<QWidget*> StopsOf(const QVector<QWidget*>& parts) {
  QVector<QWidget*> stops;
  for (QWidget* part : parts) {
    const QList<QWidget*> all = QList<QWidget*>{part} + part->findChildren<QWidget*>();
    std::copy_if(all.begin(), all.end(), std::back_inserter(stops), &IsStop);
  }
  return stops;
}

}  // namespace

void SetTabOrder(const QVector<QWidget*>& parts) {
  const QVector<QWidget*> stops = StopsOf(parts);
  for (int i = 1; i < stops.size(); ++i) {
    QWidget::setTabOrder(stops[i - 1], stops[i]);
  }
}

}  // namespace TarnClient
