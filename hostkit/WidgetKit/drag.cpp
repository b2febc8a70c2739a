#include "WidgetKit/drag.h"

#include <QAbstractItemView>
#include <QGuiApplication>
#include <QIcon>
#include <QMimeData>
#include <QPainter>
#include <QPixmapCache>
#include <QScreen>
#include <QSvgRenderer>
#include <QWindow>

namespace WidgetKit {

namespace {

bool ComesFromItemView(const QObject* source) {
  return source && (qobject_cast<const QAbstractItemView*>(source) ||
                    qobject_cast<const QAbstractItemView*>(source->parent()));  // a view's viewport
}

qreal PixelRatio(const QObject* source) {
  const auto* widget = qobject_cast<const QWidget*>(source);
  return widget ? widget->devicePixelRatioF() : qGuiApp->devicePixelRatio();
}

QPixmap Drawn(const QString& path, qreal ratio) {
  QSvgRenderer renderer(path);
  if (!renderer.isValid()) {
    return QPixmap(path);
  }
  QPixmap picture((QSizeF(renderer.defaultSize()) * ratio).toSize());
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  renderer.render(&painter);
  painter.end();
  picture.setDevicePixelRatio(ratio);
  return picture;
}

// The same pixmap each time: for another one the cursor would be set again and flicker.
QPixmap CachedPicture(const QString& path, qreal ratio) {
  const QString key = QStringLiteral("drag cursor %1 %2").arg(ratio).arg(path);
  QPixmap picture;
  if (!QPixmapCache::find(key, &picture)) {
    picture = Drawn(path, ratio);
    QPixmapCache::insert(key, picture);
  }
  return picture;
}

constexpr int kPadding = 8;
constexpr int kMostTextWidth = 240;
constexpr qreal kCorner = 4;

QPixmap Empty(const QSize& size, qreal ratio) {
  QPixmap picture(size * ratio);
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  return picture;
}

}  // namespace

CDrag::CDrag(QObject* source) : QDrag(source) {}

CDrag::~CDrag() = default;

void CDrag::setMimeData(QMimeData* data) {
  if (data && ComesFromItemView(source())) {
    data->setProperty("_tree_drop_", true);
  }
  QDrag::setMimeData(data);
}

QPixmap CDrag::Caption(const QString& text, const QWidget* widget) {
  const QFontMetrics metrics = widget->fontMetrics();
  const QString shown = metrics.elidedText(text, Qt::ElideMiddle, kMostTextWidth);
  const QSize size(metrics.horizontalAdvance(shown) + 2 * kPadding, metrics.height() + kPadding);
  QPixmap picture = Empty(size, widget->devicePixelRatioF());
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(widget->font());
  painter.setBrush(widget->palette().color(QPalette::Highlight));
  painter.setPen(Qt::NoPen);
  painter.drawRoundedRect(QRect(QPoint(), size), kCorner, kCorner);
  painter.setPen(widget->palette().color(QPalette::HighlightedText));
  painter.drawText(QRect(QPoint(), size), Qt::AlignCenter | Qt::TextSingleLine, shown);
  return picture;
}

void CDrag::SetCursorPicture(const QString& path, Qt::DropAction action) {
  QPixmap picture;
  if (!path.isEmpty()) {
    picture = CachedPicture(path, PixelRatio(source()));
  }
  setDragCursor(picture, action);
}

}  // namespace WidgetKit
