#include "wall/wall_window.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <cmath>
#include <utility>

#include "MarUIControl/accessible_role.h"
#include "MarUIControl/string_conversion.h"
#include "pictures/local_clock.h"
#include "wall/plain_text_tip.h"

namespace TarnClient {

using MarUIControl::StringToQString;
using view_plugin_protocol::PlanWindow;

namespace {

constexpr double kWheelStep = 1.25, kKeyStep = 0.15;
constexpr int kNotch = 120;  // of a wheel

}  // namespace

CWallWindow::CWallWindow(int number, QWidget* parent) : QWidget(parent), number_(number) {
  setObjectName(QStringLiteral("wall_window_%1").arg(number));
  setAttribute(Qt::WA_OpaquePaintEvent);
  setFocusPolicy(Qt::StrongFocus);
  MarUIControl::SetAccessibleRole(this, QAccessible::Graphic);
  RenewDescription();
}

CWallWindow::~CWallWindow() = default;

void CWallWindow::Show(const PlanWindow& content, std::unique_ptr<IPictureSource> source, const TakenPicture& older) {
  Forget();
  content_ = content;
  source_ = std::move(source);
  shown_ = older;
  since_new_.start();
  source_->SetWeight(weight_);
  source_->Start();
  RenewDescription();
  update();
}

void CWallWindow::Clear() {
  if (!source_) {
    return;
  }
  Forget();
  RenewDescription();
  update();
}

void CWallWindow::Forget() {
  if (source_) {
    source_->Stop();
  }
  source_.reset();
  content_ = {};
  shown_ = {};
  shown_number_ = last_number_ = -1;
  frames_ = 0;
  ResetZoom();
}

void CWallWindow::GoOnWith(const PlanWindow& content) {
  content_ = content;
  RenewDescription();
  update();
}

bool CWallWindow::Plays(const PlanWindow& content) const {
  return source_ && content.resource_code == content_.resource_code && content.stream_type == content_.stream_type;
}

QString CWallWindow::Camera() const {
  return StringToQString(content_.resource_name);
}

PictureStatus CWallWindow::Status() const {
  if (!source_) {
    return PictureStatus();
  }
  const qint64 without_new = since_new_.isValid() ? since_new_.elapsed() : 0;
  return WithoutFrozen(source_->Status(), without_new);
}

WindowTruth CWallWindow::Truth() const {
  return TruthOf(Status(), shown_.taken, LocalNow().date());
}

void CWallWindow::Tick() {
  if (!source_) {
    return;
  }
  const int second = LocalNow().time().second();
  const qint64 number = source_->LatestNumber();
  if (number != std::exchange(last_number_, number)) {
    since_new_.start();
  }
  const bool is_new = number != shown_number_;
  const bool says_more = !SaysTheSame(Status(), said_);
  if (is_new || second != shown_second_ || says_more) {
    shown_second_ = second;
    update();
  }
  if (says_more) {
    RenewDescription();
  }
}

void CWallWindow::TakePicture() {
  const qint64 number = source_->LatestNumber();
  const QImage picture = source_->LatestPicture(WantedSize());
  if (picture.isNull()) {
    return;
  }
  shown_ = {picture, source_->Status().taken};
  if (number != shown_number_) {
    shown_number_ = number;
    ++frames_;
  }
}

QSize CWallWindow::WantedSize() const {
  return size() * (devicePixelRatioF() * zoom_.Factor());
}

TakenPicture CWallWindow::FullPicture() const {
  if (!source_) {
    return TakenPicture();
  }
  const PictureStatus status = source_->Status();
  return {source_->LatestPicture(status.size), status.taken};
}

WindowFace CWallWindow::Face() const {
  WindowFace face;
  face.has_camera = !IsEmpty();
  face.now = LocalNow().time();
  if (face.has_camera) {
    face.camera = Camera();
    face.picture = shown_.picture;
    face.truth = Truth();
  }
  return face;
}

WindowFace::Frame CWallWindow::Frame() const {
  if (is_target_) {
    return WindowFace::Frame::Target;
  }
  if (hasFocus()) {
    return WindowFace::Frame::Focus;
  }
  return is_current_ ? WindowFace::Frame::Current : WindowFace::Frame::None;
}

void CWallWindow::SetMarks(bool is_current, bool is_target) {
  is_current_ = is_current;
  is_target_ = is_target;
  update();
}

void CWallWindow::SetInFocus(bool on) {
  weight_ = on ? PictureWeight::InFocus : PictureWeight::Normal;
  if (source_) {
    source_->SetWeight(weight_);
  }
}

void CWallWindow::paintEvent(QPaintEvent*) {
  if (source_) {
    TakePicture();
  }
  WindowFace face = Face();
  face.zoom = zoom_;
  face.frame = Frame();
  QPainter painter(this);
  PaintFace(&painter, rect(), face);
}

// While it was hidden, no one looked whether pictures came.
void CWallWindow::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  since_new_.start();
}

void CWallWindow::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  Q_EMIT SignalFocus(true);
}

void CWallWindow::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  Q_EMIT SignalFocus(false);
}

QRect CWallWindow::Room() const {
  return PictureRoom(size(), shown_.picture.size());
}

void CWallWindow::ReportZoom(bool before) {
  update();
  if (before != IsZoomed()) {
    Q_EMIT SignalZoomed(IsZoomed());
  }
}

void CWallWindow::ZoomAt(double factor, const QPointF& at) {
  const bool before = IsZoomed();
  const QRectF room = Room();
  if (!shown_.picture.isNull() && !room.isEmpty()) {
    zoom_.By(factor, {qBound(0.0, (at.x() - room.x()) / room.width(), 1.0),
                      qBound(0.0, (at.y() - room.y()) / room.height(), 1.0)});
    ReportZoom(before);
  }
}

void CWallWindow::Zoom(double factor) {
  ZoomAt(factor, rect().center());
}

void CWallWindow::MoveZoom(const QPoint& direction) {
  zoom_.Drag(QPointF(-direction) * kKeyStep);
  update();
}

void CWallWindow::ResetZoom() {
  const bool before = IsZoomed();
  zoom_.Reset();
  ReportZoom(before);
}

void CWallWindow::wheelEvent(QWheelEvent* event) {
  ZoomAt(std::pow(kWheelStep, event->angleDelta().y() / double(kNotch)), event->position());
  event->accept();
}

void CWallWindow::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) {
    pressed_at_ = event->pos();
  }
}

void CWallWindow::mouseMoveEvent(QMouseEvent* event) {
  if (!pressed_at_ || IsEmpty()) {
    return;
  }
  const QPoint moved = event->pos() - *pressed_at_;
  if (IsZoomed()) {
    const QSizeF room = Room().size();
    zoom_.Drag({moved.x() / room.width(), moved.y() / room.height()});
    pressed_at_ = event->pos();
    update();
  } else if (moved.manhattanLength() >= QApplication::startDragDistance()) {
    pressed_at_.reset();
    Q_EMIT SignalDragged();
  }
}

void CWallWindow::mouseReleaseEvent(QMouseEvent*) {
  pressed_at_.reset();
}

void CWallWindow::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) {
    return;
  }
  if (IsZoomed()) {
    ResetZoom();
  } else {
    Q_EMIT SignalEnlarge();
  }
}

// Each call is read out.
void CWallWindow::RenewDescription() {
  said_ = Status();
  const QString state = IsEmpty() ? QString() : Truth().spoken;
  QString name = tr("Window %1: no camera").arg(number_);
  if (source_) {
    name = tr("Window %1: %2").arg(QString::number(number_), Camera());
  }
  if (name != accessibleName()) {
    setAccessibleName(name);
    setToolTip(PlainTextTip(Camera()));
  }
  if (state != accessibleDescription()) {
    setAccessibleDescription(state);
  }
}

}  // namespace TarnClient
