#include "MarUIControl/switch_control.h"

#include <QKeyEvent>
#include <QPainter>

#include "MarUIControl/control_accessibility.h"
#include "MarUIControl/return_key.h"
#include "TarnUIDataController/skin_loader.h"

namespace MarUIControl {

namespace {

constexpr int kSlideMs = 120;
constexpr int kWidth = 48;
constexpr int kHeight = 24;

QColor SkinColor(const char* name) {
  return tarn_ui_data_controller::CSkinLoader::Instance().GetColor(QLatin1String(name));
}

struct SwitchColors {
  QColor line, track, knob, tick;
};

SwitchColors Colors(bool enabled) {
  if (!enabled) {
    return {SkinColor("border"), SkinColor("border"), SkinColor("surface"), SkinColor("border")};
  }
  return {SkinColor("control_border"), SkinColor("accent"), SkinColor("accent_text"), SkinColor("accent")};
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

void DrawTick(QPainter* painter, const QPointF& center, const QColor& color) {
  painter->setPen(QPen(color, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter->setBrush(Qt::NoBrush);
  painter->drawPolyline(QPolygonF({center + QPointF(-2.8, 0), center + QPointF(-0.8, 2.2), center + QPointF(3, -2.4)}));
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
  const SwitchColors colors = Colors(isEnabled());
  DrawPill(&painter, track, QPen(Between(colors.line, colors.track, knob_), 1.4),
           Between(SkinColor("surface"), colors.track, knob_));
  DrawKnob(&painter, track);
}

// Off it is a ring at the near end, on a disc with a tick at the far end.
void CSwitchControl::DrawKnob(QPainter* painter, const QRectF& track) const {
  const qreal way = track.width() - track.height();
  const qreal at = isRightToLeft() ? 1 - knob_ : knob_;
  const QPointF center(track.left() + track.height() / 2 + way * at, track.center().y());
  const qreal radius = track.height() / 2 - 3.5 + knob_ * 1.5;
  const bool past_middle = knob_ > 0.5;
  const SwitchColors colors = Colors(isEnabled());
  painter->setPen(QPen(Between(colors.line, colors.knob, knob_), 2));
  painter->setBrush(Qt::NoBrush);
  if (past_middle) {
    painter->setBrush(colors.knob);
  }
  painter->drawEllipse(center, radius - 1, radius - 1);
  if (past_middle) {
    DrawTick(painter, center, colors.tick);
  }
}

void CSwitchControl::keyPressEvent(QKeyEvent* event) {
  if (IsReturn(event->key())) {
    if (!event->isAutoRepeat()) {
      click();
    }
    event->accept();
    return;
  }
  QAbstractButton::keyPressEvent(event);
}

void CSwitchControl::Slide(bool on) {
  const qreal end = on ? 1 : 0;
  slide_.stop();
  if (!isVisible()) {
    knob_ = end;
    update();
    return;
  }
  slide_.setStartValue(knob_);
  slide_.setEndValue(end);
  slide_.start();
}

}  // namespace MarUIControl
