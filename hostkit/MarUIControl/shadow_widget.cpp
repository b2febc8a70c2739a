#include "MarUIControl/shadow_widget.h"

#include <QEvent>
#include <QPainter>

namespace MarUIControl {

namespace {

constexpr int kSpread = 12;
constexpr int kDarkest = 26;

}  // namespace

CShadowWidget::CShadowWidget(QWidget* parent, Qt::WindowFlags flags)
    : QWidget(parent, flags | Qt::FramelessWindowHint) {
  setAttribute(Qt::WA_TranslucentBackground);
  setAttribute(Qt::WA_ShowWithoutActivating);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
}

CShadowWidget::~CShadowWidget() = default;

void CShadowWidget::SetContentWidget(QWidget* content, int) {
  if (content_) {
    content_->removeEventFilter(this);
  }
  content_ = content;
  if (content) {
    content->installEventFilter(this);
  }
  Follow();
}

void CShadowWidget::SetShadowMode(int mode) {
  mode_ = mode;
  update();
  Follow();
}

void CShadowWidget::SetAutoShow(bool automatic) {
  automatic_ = automatic;
  Follow();
}

bool CShadowWidget::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
      Follow();
      break;
    default:
      break;
  }
  return QWidget::eventFilter(watched, event);
}

void CShadowWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  for (int ring = 0; ring < kSpread; ++ring) {
    painter.setBrush(QColor(0, 0, 0, kDarkest / kSpread + ring / 3));
    painter.drawRoundedRect(rect().adjusted(ring, ring, -ring, -ring), kSpread - ring / 2, kSpread - ring / 2);
  }
}

void CShadowWidget::Follow() {
  if (!content_) {
    hide();
    return;
  }
  setGeometry(content_->frameGeometry().adjusted(-kSpread, -kSpread, kSpread, kSpread));
  if (automatic_) {
    setVisible(mode_ != 0 && content_->isVisible());
  }
}

}  // namespace MarUIControl
