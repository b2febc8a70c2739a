#include "wall/window_face.h"

#include <QCoreApplication>
#include <QLocale>
#include <QPainter>
#include <algorithm>

#include "TarnUIDataController/skin_color.h"
#include "qt/stretched_image.h"
#include "wall/window_sign.h"

namespace TarnClient {

using tarn_ui_data_controller::SkinColor;

namespace {

constexpr int kMargin = 8, kBarAlpha = 225, kVeilAlpha = 130, kFrame = 2;
constexpr int kSpare = 4;  // a text that just fits is not elided for a pixel

struct Words {
  Q_DECLARE_TR_FUNCTIONS(TarnClient::WindowFace)
};

QColor Shade(int alpha) {
  QColor shade = SkinColor("wall_bar");
  shade.setAlpha(alpha);
  return shade;
}

int BarHeight(const QPainter& painter) {
  return painter.fontMetrics().height() + 6;
}

void PaintPicture(QPainter* painter, const QRect& window, const WindowFace& face) {
  const QRect room = PictureRoom(window.size(), face.picture.size()).translated(window.topLeft());
  const QRectF part = face.zoom.Part();
  const QSizeF whole = face.picture.size();
  const QRectF source(part.x() * whole.width(), part.y() * whole.height(), part.width() * whole.width(),
                      part.height() * whole.height());
  painter->setRenderHint(QPainter::SmoothPixmapTransform);
  if (face.truth.look == WindowTruth::Look::Grey) {
    TarnQt::DrawStretched(painter, room, face.picture.convertToFormat(QImage::Format_Grayscale8), source);
  } else {
    TarnQt::DrawStretched(painter, room, face.picture, source);
  }
  if (face.truth.look != WindowTruth::Look::Clear) {
    QColor veil = SkinColor("wall_empty");
    veil.setAlpha(kVeilAlpha);
    painter->fillRect(room, veil);
  }
}

// The clock belongs to live pictures: beside an old one it would make that look like one of now.
void PaintBar(QPainter* painter, const QRect& window, const WindowFace& face) {
  const QFontMetrics metrics = painter->fontMetrics();
  const QRect bar(window.topLeft(), QSize(window.width(), BarHeight(*painter)));
  painter->fillRect(bar, Shade(kBarAlpha));
  const QRect inside = bar.adjusted(kMargin, 0, -kMargin, 0);
  const QString time = QLocale().toString(face.now, QStringLiteral("HH:mm:ss"));
  const int time_width = metrics.horizontalAdvance(time);
  int name_width = inside.width();
  painter->setPen(SkinColor("wall_text"));
  if (face.truth.look == WindowTruth::Look::Clear && inside.width() > 3 * time_width) {
    painter->drawText(inside, Qt::AlignRight | Qt::AlignVCenter, time);
    name_width -= time_width + kMargin;
  }
  painter->drawText(inside, Qt::AlignLeft | Qt::AlignVCenter,
                    metrics.elidedText(face.camera, Qt::ElideRight, name_width));
}

/// The sign with the headline beside it and the age below, on a ground of their own.
class CMessage {
 public:
  CMessage(QPainter* painter, const QRect& room, const WindowTruth& truth)
      : painter_(painter), room_(room), truth_(truth), line_(painter->fontMetrics().height()) {}

  void Paint() const {
    const QFontMetrics metrics = painter_->fontMetrics();
    const int sign = line_ + 4;
    const int wanted =
        std::max(sign + kMargin + metrics.horizontalAdvance(truth_.headline), metrics.horizontalAdvance(truth_.age));
    QRect box(0, 0, std::min(wanted + 2 * kMargin + kSpare, room_.width()), Lines() * (line_ + 2) + kMargin);
    box.moveCenter(room_.center());
    painter_->fillRect(box, Shade(kBarAlpha));
    QRect inside = box.adjusted(kMargin, kMargin / 2, -kMargin, -kMargin / 2);
    PaintSign(painter_, QRectF(inside.left(), inside.top() - 1, sign, sign), truth_.sign, SkinColor("wall_text"));
    painter_->setPen(SkinColor("wall_text"));
    PaintLine(inside.adjusted(sign + kMargin, 0, 0, 0), truth_.headline);
    inside.setTop(inside.top() + line_ + 2);
    PaintLine(inside, truth_.age);
  }

 private:
  int Lines() const { return truth_.age.isEmpty() ? 1 : 2; }
  void PaintLine(const QRect& from, const QString& text) const {
    const QRect line(from.topLeft(), QSize(from.width(), line_ + 2));
    painter_->drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                       painter_->fontMetrics().elidedText(text, Qt::ElideRight, line.width()));
  }

  QPainter* const painter_;
  const QRect room_;
  const WindowTruth& truth_;
  const int line_;
};

/// Small labels along the bottom: what is wrong with live pictures on the left, how far it is zoomed on the right.
void PaintLabel(QPainter* painter, const QRect& line, Qt::Alignment side, const QString& text) {
  const QFontMetrics metrics = painter->fontMetrics();
  QRect label(0, 0, std::min(metrics.horizontalAdvance(text) + kMargin, line.width()), line.height());
  label.moveTopLeft(line.topLeft());
  if (side & Qt::AlignRight) {
    label.moveRight(line.right());
  }
  painter->fillRect(label, Shade(kBarAlpha));
  painter->setPen(SkinColor("wall_text"));
  painter->drawText(label, Qt::AlignCenter, metrics.elidedText(text, Qt::ElideRight, label.width() - kMargin / 2));
}

void PaintLabels(QPainter* painter, const QRect& window, const WindowFace& face) {
  const int height = painter->fontMetrics().height() + 2;
  QRect line = window.adjusted(4, 0, -4, -4);
  line.setTop(line.bottom() - height);
  if (face.zoom.IsOn()) {
    const QString factor = QLocale().toString(face.zoom.Factor(), 'f', 1);
    PaintLabel(painter, line, Qt::AlignRight, Words::tr("Zoomed %1 times").arg(factor));
    line.translate(0, -height - 3);
  }
  for (const QString& note : face.truth.notes) {
    PaintLabel(painter, line, Qt::AlignLeft, QStringLiteral("\u26a0 ") + note);
    line.translate(0, -height - 3);
  }
}

void PaintFrame(QPainter* painter, const QRect& window, WindowFace::Frame frame) {
  if (frame == WindowFace::Frame::None) {
    return;
  }
  QPen pen(SkinColor("wall_hint"), kFrame);
  if (frame == WindowFace::Frame::Current) {
    pen.setStyle(Qt::DashLine);
  } else {
    pen.setColor(SkinColor("wall_focus"));
    pen.setWidth(kFrame + 1);
  }
  painter->setPen(pen);
  painter->setBrush(Qt::NoBrush);
  painter->drawRect(window.adjusted(1, 1, -2, -2));
}

}  // namespace

QRect PictureRoom(const QSize& window, const QSize& picture) {
  QRect room(QPoint(), picture.scaled(window, Qt::KeepAspectRatio));
  room.moveCenter(QRect(QPoint(), window).center());
  return room;
}

void PaintFace(QPainter* painter, const QRect& window, const WindowFace& face) {
  painter->fillRect(window, SkinColor("wall_empty"));
  if (face.has_camera) {
    if (!face.picture.isNull()) {
      PaintPicture(painter, window, face);
    }
    PaintBar(painter, window, face);
    if (!face.truth.headline.isEmpty()) {
      CMessage(painter, window.adjusted(4, BarHeight(*painter), -4, -4), face.truth).Paint();
    }
    PaintLabels(painter, window, face);
  } else {
    painter->setPen(SkinColor("wall_hint"));
    painter->drawText(window.adjusted(kMargin, kMargin, -kMargin, -kMargin), Qt::AlignCenter | Qt::TextWordWrap,
                      Words::tr("No camera"));
  }
  PaintFrame(painter, window, face.frame);
}

}  // namespace TarnClient
