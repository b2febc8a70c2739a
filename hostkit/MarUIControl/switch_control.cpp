#include "MarUIControl/switch_control.h"

#include <QEvent>
#include <QKeyEvent>
#include <QPainter>

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

}  // namespace

CSwitchControl::CSwitchControl(QWidget* parent) : QAbstractButton(parent) {
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
  constexpr qreal kMargin = 1.5;
  const QSizeF size(qMin<qreal>(width(), kWidth), qMin<qreal>(height(), kHeight));
  QRectF track(QPointF((width() - size.width()) / 2, (height() - size.height()) / 2), size);
  track.adjust(kMargin, kMargin, -kMargin, -kMargin);
  const QColor off = SkinColor("surface");
  const QColor line = SkinColor(isEnabled() ? "control_border" : "border");
  const QColor on = isEnabled() ? SkinColor("accent") : line;
  const qreal radius = track.height() / 2;
  const bool marked = hasFocus();
  painter.setPen(QPen(marked ? SkinColor("focus") : Between(line, on, knob_), marked ? 2 : 1.2));
  painter.setBrush(Between(off, on, knob_));
  painter.drawRoundedRect(track, radius, radius);

  const qreal knob = track.height() - 6;
  const qreal way = track.width() - track.height();
  const qreal place = isRightToLeft() ? 1 - knob_ : knob_;
  QRectF circle(0, 0, knob, knob);
  circle.moveCenter(QPointF(track.left() + radius + way * place, track.center().y()));
  painter.setPen(Qt::NoPen);
  painter.setBrush(Between(line, SkinColor(isEnabled() ? "accent_text" : "surface"), knob_));
  painter.drawEllipse(circle);
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
