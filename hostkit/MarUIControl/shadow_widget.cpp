#include "MarUIControl/shadow_widget.h"

#include <QEvent>
#include <QPainter>
#include <QWindow>

#include "qt/x11_display.h"

namespace MarUIControl {

namespace {

constexpr int kSpread = 12;
constexpr qreal kDarkest = 0.34;

}  // namespace

CShadowWidget::CShadowWidget(QWidget* parent, Qt::WindowFlags flags)
    : QWidget(parent, flags | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint | Qt::WindowDoesNotAcceptFocus) {
  setAttribute(Qt::WA_TranslucentBackground);
  setAttribute(Qt::WA_ShowWithoutActivating);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
}

CShadowWidget::~CShadowWidget() = default;

void CShadowWidget::SetContentWidget(QWidget* content, int flag) {
  if (content_) {
    content_->removeEventFilter(this);
  }
  content_ = content;
  if (content) {
    content->installEventFilter(this);
    if (flag != 0 && parentWidget() != content) {
      content->setParent(this, content->windowFlags());
    }
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

// The pop-up gets its show event before its window comes up: so the shadow's is below it and was active before it.
bool CShadowWidget::eventFilter(QObject* watched, QEvent* event) {
  if (watched == content_) {
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
  }
  return QWidget::eventFilter(watched, event);
}

// Nothing is painted where the pop-up stands: some desktops keep a window's own tool windows above it.
void CShadowWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath around;
  around.addRect(rect());
  around.addRect(rect().adjusted(kSpread, kSpread, -kSpread, -kSpread));
  painter.setClipPath(around);
  painter.setPen(Qt::NoPen);
  // Each ring lies on those outside it; weights rise inwards, so that the edge is soft.
  for (int ring = 0; ring < kSpread; ++ring) {
    const qreal weight = kDarkest * 2 * (ring + 1) / (kSpread * (kSpread + 1));
    painter.fillPath(Outline(ring), QColor::fromRgbF(0, 0, 0, weight));
  }
}

QPainterPath CShadowWidget::Outline(int ring) const {
  QPainterPath outline;
  outline.addRoundedRect(rect().adjusted(ring, ring, -ring, -ring), kSpread - ring, kSpread - ring);
  return outline;
}

void CShadowWidget::Follow() {
  if (content_) {
    const QRect place(content_->mapToGlobal(QPoint(0, 0)), content_->size());
    setGeometry(place.adjusted(-kSpread, -kSpread, kSpread, kSpread));
  }
  const bool visible = content_ && mode_ != 0 && content_->isVisible() && TarnQt::X11Display::CanBlend();
  if (!automatic_ && content_) {
    return;
  }
  const bool appears = visible && !isVisible();
  setVisible(visible);
  if (appears) {
    KeepBelow();
  }
}

void CShadowWidget::KeepBelow() {
  const QWindow* window = content_->windowHandle();
  if (window && window->isExposed()) {
    content_->raise();
    content_->activateWindow();
  }
}

}  // namespace MarUIControl
