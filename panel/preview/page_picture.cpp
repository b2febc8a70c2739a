#include "page_picture.h"

#include <QPainter>
#include <cmath>

#include "TarnUIDataController/skin_loader.h"
#include "plan_rules/splits.h"
#include "plan_rules/window_content.h"
#include "split_layout.h"
#include "window_text.h"

namespace TarnPlanView {

using view_plugin_protocol::PlanPage;
using view_plugin_protocol::PlanWindow;
using view_plugin_protocol::SideOfSplit;

namespace {

QColor SkinColor(const char* name) {
  return tarn_ui_data_controller::CSkinLoader::Instance().GetColor(QString::fromLatin1(name));
}

void DrawWindow(QPainter& painter, const QRect& cell, const PlanWindow* content) {
  painter.fillRect(cell, SkinColor(content ? "wall_bar" : "wall_empty"));
  painter.setPen(SkinColor("wall_text"));
  const QRect place = cell.adjusted(3, 2, -3, -2);
  const QString name = CWindowText().Name(content);
  painter.drawText(place, Qt::AlignCenter, painter.fontMetrics().elidedText(name, Qt::ElideRight, place.width()));
}

}  // namespace

QImage PagePicture(const PlanPage& page, const QSize& size, qreal device_pixel_ratio) {
  QImage picture(static_cast<int>(std::ceil(size.width() * device_pixel_ratio)),
                 static_cast<int>(std::ceil(size.height() * device_pixel_ratio)), QImage::Format_RGB32);
  picture.setDevicePixelRatio(device_pixel_ratio);
  picture.fill(SkinColor("wall"));
  QPainter painter(&picture);
  const int side = SideOfSplit(page.split_type);
  QFont font = painter.font();
  font.setPixelSize(side > 2 ? 9 : 11);
  painter.setFont(font);
  for (int window = 0; window < side * side; ++window) {
    const int left = window % side * size.width() / side;
    const int top = window / side * size.height() / side;
    const QRect cell(left, top, size.width() / side - 1, size.height() / side - 1);
    DrawWindow(painter, cell, ContentOf(page.windows, window + 1));  // windows count from 1
  }
  return picture;
}

}  // namespace TarnPlanView
