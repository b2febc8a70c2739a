#include "wall/drop_hint.h"

#include <QPainter>

#include "TarnUIDataController/skin_color.h"

namespace TarnClient {

using tarn_ui_data_controller::SkinColor;

namespace {

constexpr int kFrame = 3, kPadding = 12, kVeil = 110;

}  // namespace

CDropHint::CDropHint(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setObjectName(QStringLiteral("wall_drop_hint"));
  hide();
}

void CDropHint::ShowOver(const QRect& area, const QString& text) {
  text_ = text;
  setAccessibleName(text);
  setGeometry(area);
  raise();
  show();
  update();
}

void CDropHint::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QColor veil = SkinColor("background");
  veil.setAlpha(kVeil);
  painter.fillRect(rect(), veil);
  painter.setPen(QPen(SkinColor("focus"), kFrame, Qt::DashLine));
  painter.drawRect(rect().adjusted(kFrame, kFrame, -kFrame - 1, -kFrame - 1));
  const QString shown = fontMetrics().elidedText(text_, Qt::ElideMiddle, width() - 4 * kPadding);
  QRect box = fontMetrics().boundingRect(shown).adjusted(-kPadding, -kPadding, kPadding, kPadding);
  box.moveCenter(rect().center());
  painter.setPen(Qt::NoPen);
  painter.setBrush(SkinColor("raised"));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.drawRoundedRect(box, 4, 4);
  painter.setPen(SkinColor("text"));
  painter.drawText(box, Qt::AlignCenter, shown);
}

}  // namespace TarnClient
