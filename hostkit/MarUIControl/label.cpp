#include "MarUIControl/label.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

#include "MarUIControl/plain_tool_tip.h"

namespace MarUIControl {

namespace {

QString OneLine(QString text) {
  return text.replace(QLatin1Char('\n'), QLatin1Char(' ')).remove(QLatin1Char('\r'));
}

}  // namespace

CLabel::CLabel(QWidget* parent) : CLabel(QString(), parent) {}

CLabel::CLabel(const QString& text, QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setText(text);
}

CLabel::~CLabel() = default;

void CLabel::SetText(const QString& text) {
  setText(text);
}

QSize CLabel::minimumSizeHint() const {
  const QSize whole = QLabel::minimumSizeHint();
  if (wordWrap() || !pixmap(Qt::ReturnByValue).isNull()) {
    return whole;
  }
  return QSize(qMin(whole.width(), fontMetrics().horizontalAdvance(QStringLiteral("MM\u2026"))), whole.height());
}

bool CLabel::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && IsElided()) {
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), PlainToolTip(text()), this);
    return true;
  }
  return QLabel::event(event);
}

void CLabel::paintEvent(QPaintEvent* event) {
  if (!IsElided()) {
    QLabel::paintEvent(event);
    return;
  }
  QPainter painter(this);
  drawFrame(&painter);
  const QRect room = contentsRect().adjusted(margin(), margin(), -margin(), -margin());
  const QString shown = fontMetrics().elidedText(OneLine(text()), Qt::ElideRight, room.width());
  style()->drawItemText(&painter, room, static_cast<int>(alignment()), palette(), isEnabled(), shown, foregroundRole());
}

bool CLabel::IsElided() const {
  return !wordWrap() && (text().contains(QLatin1Char('\n')) ||
                         fontMetrics().horizontalAdvance(text()) > contentsRect().width() - 2 * margin());
}

}  // namespace MarUIControl
