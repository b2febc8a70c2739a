#include "MarUIControl/label.h"

#include <QPaintEvent>
#include <QPainter>
#include <QStyle>

namespace MarUIControl {

namespace {

QString OneLine(QString text) {
  text.replace(QLatin1Char('\n'), QLatin1Char(' '));
  return text.remove(QLatin1Char('\r'));
}

}  // namespace

CLabel::CLabel(QWidget* parent) : CLabel(QString(), parent) {}

CLabel::CLabel(const QString& text, QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  SetText(text);
}

CLabel::~CLabel() = default;

void CLabel::SetText(const QString& text) {
  setText(text);
  setAccessibleName(text);
  updateGeometry();
  RenewToolTip();
}

QSize CLabel::minimumSizeHint() const {
  const QSize whole = QLabel::minimumSizeHint();
  return wordWrap() ? whole
                    : QSize(qMin(whole.width(), fontMetrics().horizontalAdvance(QStringLiteral("M…"))), whole.height());
}

void CLabel::paintEvent(QPaintEvent* event) {
  if (wordWrap() || toolTip().isEmpty()) {
    QLabel::paintEvent(event);
    return;
  }
  QPainter painter(this);
  drawFrame(&painter);
  const QString shown = fontMetrics().elidedText(OneLine(text()), Qt::ElideRight, contentsRect().width());
  style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(), shown,
                        foregroundRole());
}

void CLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  RenewToolTip();
}

void CLabel::RenewToolTip() {}

}  // namespace MarUIControl
