#include "MarUIControl/switch_control.h"

#include <QKeyEvent>
#include <QPainter>

#include "MarUIControl/control_accessibility.h"
#include "TarnUIDataController/skin_loader.h"

namespace MarUIControl {

namespace {

constexpr int kSlideMs = 120;
constexpr int kWidth = 48;
constexpr int kHeight = 24;

QColor SkinColor(const char* name) {
  return tarn_ui_data_controller::CSkinLoader::Instance().GetColor(QLatin1String(name));
}

QColor Between(const QColor& from, const QColor& to, qreal part) {
  return QColor::fromRgbF(from.redF() + (to.redF() - from.redF()) * part,
                          from.greenF() + (to.greenF() - from.greenF()) * part,
                          from.blueF() + (to.blueF() - from.blueF()) * part);
}

void DrawPill(QPainter* painter, const QRectF& rect, const QPen& pen, const QBrush& brush) {
  painter->setPen(pen);
  painter->setBrush(brush);
  painter->drawRoundedRect(rect, rect.height() / 2, rect.height() / 2);
}

}  // namespace

CSwitchControl::CSwitchControl(QWidget* parent) : QAbstractButton(parent) {
  InstallControlAccessibility();
  setCheckable(true);
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::PointingHandCursor);
  slide_.setDuration(kSlideMs);
  connect(&slide_, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
    knob_ = value.toReal();
    update();
  });
  connect(this, &QAbstractButton::toggled, this, &CSwitchControl::Slide);
}

CSwitchControl::~CSwitchControl() = default;

bool CSwitchControl::isToggled() const {
  return isChecked();
}

void CSwitchControl::setToggle(bool on) {
  setChecked(on);
}

QSize CSwitchControl::sizeHint() const {
  return QSize(kWidth, kHeight);
}

void CSwitchControl::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QRectF track(0, 0, qMin(width(), kWidth), qMin(height(), kHeight));
  track.moveCenter(QRectF(rect()).center());
  if (hasFocus()) {
    DrawPill(&painter, track.adjusted(1, 1, -1, -1), QPen(SkinColor("focus"), 2), Qt::NoBrush);
  }
  track.adjust(4, 4, -4, -4);
  const QColor line = SkinColor(isEnabled() ? "control_border" : "border");
  const QColor on = isEnabled() ? SkinColor("accent") : line;
  DrawPill(&painter, track, QPen(Between(line, on, knob_), 1.4), Between(SkinColor("surface"), on, knob_));
  DrawKnob(&painter, track, line);
}

// Off it is a ring at the near end, on a disc with a tick at the far end.
void CSwitchControl::DrawKnob(QPainter* painter, const QRectF& track, const QColor& off) const {
  const qreal way = track.width() - track.height();
  const QPointF center(track.left() + track.height() / 2 + way * (isRightToLeft() ? 1 - knob_ : knob_),
                       track.center().y());
  const QColor on = SkinColor(isEnabled() ? "accent_text" : "surface");
  const qreal radius = track.height() / 2 - 3.5 + knob_ * 1.5;
  painter->setPen(QPen(Between(off, on, knob_), 2));
  painter->setBrush(knob_ > 0.5 ? QBrush(on) : QBrush(Qt::NoBrush));
  painter->drawEllipse(center, radius - 1, radius - 1);
  if (knob_ > 0.5) {
    painter->setPen(
        QPen(SkinColor(isEnabled() ? "accent" : "border"), 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->setBrush(Qt::NoBrush);
    painter->drawPolyline(
        QPolygonF({center + QPointF(-2.8, 0), center + QPointF(-0.8, 2.2), center + QPointF(3, -2.4)}));
  }
}

void CSwitchControl::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    if (!event->isAutoRepeat()) {
      click();
    }
    event->accept();
    return;
  }
  QAbstractButton::keyPressEvent(event);
}

void CSwitchControl::Slide(bool on) {
  slide_.stop();
  if (!isVisible()) {
    knob_ = on ? 1 : 0;
    update();
    return;
  }
  slide_.setStartValue(knob_);
  slide_.setEndValue(on ? 1.0 : 0.0);
  slide_.start();
}

}  // namespace MarUIControl
