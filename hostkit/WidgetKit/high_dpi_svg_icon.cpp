#include "WidgetKit/high_dpi_svg_icon.h"

#include <QSvgRenderer>

namespace WidgetKit {

namespace {

QSize SizeFor(const QString& path, const QSize& size) {
  return size.isEmpty() ? QSvgRenderer(path).defaultSize() : size;
}

// The file itself goes into the icon: its engine draws the vectors for each device pixel ratio.
void Add(QIcon& icon, const QString& path, const QSize& size, QIcon::Mode mode) {
  if (!path.isEmpty()) {
    icon.addFile(path, SizeFor(path, size), mode, QIcon::Off);
  }
}

}  // namespace

QIcon GetHighDpiSvgIcon(const QString& normal, const QString& selected, const QSize& size) {
  QIcon icon;
  Add(icon, normal, size, QIcon::Normal);
  Add(icon, selected, size, QIcon::Selected);
  return icon;
}

}  // namespace WidgetKit
