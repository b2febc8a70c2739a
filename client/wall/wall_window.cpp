#include "wall/wall_window.h"

#include <QLocale>
#include <QPainter>
#include <QTime>

#include "MarUIControl/accessible_role.h"
#include "TarnUIDataController/skin_color.h"
#include "wall/plain_text_tip.h"

namespace TarnClient {

using tarn_ui_data_controller::SkinColor;

namespace {

constexpr int kMargin = 8, kVeil = 220;

}  // namespace

CWallWindow::CWallWindow(int number, QWidget* parent) : QWidget(parent), number_(number) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  MarUIControl::SetAccessibleRole(this, QAccessible::Graphic);
  RenewDescription();
}

CWallWindow::~CWallWindow() = default;

void CWallWindow::Show(const QString& camera, std::unique_ptr<IPictureSource> source) {
  if (source_) {
    source_->Stop();
  }
  source_ = std::move(source);
  camera_.clear();
  shown_number_ = -1;
  frames_ = 0;
  if (source_) {
    camera_ = camera;
    source_->Start();
  }
  RenewDescription();
  update();
}

QString CWallWindow::StateName() const {
  const auto state = source_->GetState();
  if (state == IPictureSource::State::Live) {
    return QStringLiteral("live");
  }
  if (state == IPictureSource::State::Opening) {
    return QStringLiteral("opening");
  }
  return QStringLiteral("lost");
}

void CWallWindow::Tick() {
  if (!source_) {
    return;
  }
  const int second = QTime::currentTime().second();
  if (source_->LatestNumber() != shown_number_ || second != shown_second_) {
    shown_second_ = second;
    update();
  }
  RenewDescription();
}

void CWallWindow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), SkinColor("wall_empty"));
  if (source_) {
    PaintPicture(painter);
    PaintLoss(painter);
    PaintBar(painter);
  } else {
    PaintEmpty(painter);
  }
}

void CWallWindow::PaintPicture(QPainter& painter) {
  const qint64 number = source_->LatestNumber();
  const QImage picture = source_->LatestPicture(size());
  if (picture.isNull()) {
    painter.setPen(SkinColor("wall_hint"));
    painter.drawText(rect(), Qt::AlignCenter, NoPictureText());
    return;
  }
  QRect target(QPoint(), picture.size().scaled(size(), Qt::KeepAspectRatio));
  target.moveCenter(rect().center());
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(target, picture);
  if (number != shown_number_) {
    shown_number_ = number;
    ++frames_;
  }
}

QString CWallWindow::NoPictureText() const {
  if (source_->GetState() == IPictureSource::State::Lost) {
    return tr("Camera offline");
  }
  return tr("Connecting...");
}

// The last picture must not pass for a live one, beside a clock that goes on.
void CWallWindow::PaintLoss(QPainter& painter) {
  if (source_->GetState() != IPictureSource::State::Lost || source_->LatestPicture(size()).isNull()) {
    return;
  }
  QColor veil = SkinColor("wall_empty");
  veil.setAlpha(kVeil);
  painter.fillRect(rect(), veil);
  painter.setPen(SkinColor("wall_text"));
  painter.drawText(rect().adjusted(kMargin, kMargin, -kMargin, -kMargin), Qt::AlignCenter | Qt::TextWordWrap,
                   NoPictureText());
}

void CWallWindow::PaintBar(QPainter& painter) {
  const QFontMetrics metrics = fontMetrics();
  const QRect bar(0, 0, width(), metrics.height() + 6);
  QColor back = SkinColor("wall_bar");
  back.setAlpha(225);
  painter.fillRect(bar, back);
  const QRect inside = bar.adjusted(kMargin, 0, -kMargin, 0);
  const QString time = QLocale().toString(QTime::currentTime(), QStringLiteral("HH:mm:ss"));
  const int time_width = metrics.horizontalAdvance(time);
  const bool room_for_time = inside.width() > 3 * time_width;
  int name_width = inside.width();
  painter.setPen(SkinColor("wall_text"));
  if (room_for_time) {
    painter.drawText(inside, Qt::AlignRight | Qt::AlignVCenter, time);
    name_width -= time_width + kMargin;
  }
  painter.drawText(inside, Qt::AlignLeft | Qt::AlignVCenter, metrics.elidedText(camera_, Qt::ElideRight, name_width));
}

void CWallWindow::PaintEmpty(QPainter& painter) {
  painter.setPen(SkinColor("wall_hint"));
  painter.drawText(rect().adjusted(kMargin, kMargin, -kMargin, -kMargin), Qt::AlignCenter | Qt::TextWordWrap,
                   tr("No camera"));
}

QString CWallWindow::SpokenState() const {
  if (!source_) {
    return QString();
  }
  switch (source_->GetState()) {
    case IPictureSource::State::Live:
      return tr("live");
    case IPictureSource::State::Opening:
      return tr("connecting");
    default:
      return tr("no picture");
  }
}

// Each call is read out, and this is looked at many times a second.
void CWallWindow::RenewDescription() {
  QString name = tr("Window %1: no camera").arg(number_);
  if (source_) {
    name = tr("Window %1: %2").arg(QString::number(number_), camera_);
  }
  if (name != accessibleName()) {
    setAccessibleName(name);
    setToolTip(PlainTextTip(camera_));
  }
  const QString state = SpokenState();
  if (state != accessibleDescription()) {
    setAccessibleDescription(state);
  }
}

}  // namespace TarnClient
