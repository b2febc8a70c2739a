#include "pictures/test_picture_source.h"

#include <QLinearGradient>
#include <QPainter>
#include <cmath>
#include <utility>

#include "pictures/local_clock.h"

namespace TarnClient {

namespace {

constexpr int kPictureMs = 100;
constexpr int kWidth = 320, kHeight = 240, kHorizon = 104;

QColor Tone(uint seed, int saturation, int value) {
  return QColor::fromHsv(static_cast<int>(seed % 360), saturation, value);
}

void DrawGround(QPainter& painter, uint seed) {
  painter.fillRect(QRect(0, kHorizon, kWidth, kHeight - kHorizon), Tone(seed, 40, 70));
  painter.setPen(QPen(Tone(seed, 30, 95), 1));
  for (int line = -8; line <= 8; ++line) {
    painter.drawLine(QPointF(kWidth / 2.0 + line * 12, kHorizon), QPointF(kWidth / 2.0 + line * 60, kHeight));
  }
  for (int line = 0; line < 5; ++line) {
    const int y = kHorizon + (kHeight - kHorizon) * line * line / 20;
    painter.drawLine(0, y, kWidth, y);
  }
}

void DrawBuildings(QPainter& painter, uint seed) {
  painter.setPen(Qt::NoPen);
  int x = -static_cast<int>(seed % 30);
  for (uint block = 0; x < kWidth; ++block) {
    const uint shape = (seed >> (block % 16)) ^ (block * 2654435761U);
    const int width = 34 + static_cast<int>(shape % 40), height = 20 + static_cast<int>((shape >> 8) % 44);
    painter.setBrush(Tone(seed + 20, 45, 55 + static_cast<int>((shape >> 4) % 30)));
    painter.drawRect(x, kHorizon - height, width - 3, height);
    x += width;
  }
}

QImage DrawScene(uint seed) {
  QImage scene(kWidth, kHeight, QImage::Format_RGB32);
  QPainter painter(&scene);
  painter.setRenderHint(QPainter::Antialiasing);
  QLinearGradient sky(0, 0, 0, kHorizon);
  sky.setColorAt(0, Tone(seed, 90, 105));
  sky.setColorAt(1, Tone(seed, 45, 165));
  painter.fillRect(scene.rect(), sky);
  DrawBuildings(painter, seed);
  DrawGround(painter, seed);
  return scene;
}

}  // namespace

CTestPictureSource::CTestPictureSource(const view_plugin_protocol::PlanWindow& window, IsOnline is_online)
    : is_online_(std::move(is_online)),
      seed_(qHash(QByteArray::fromStdString(window.resource_code + window.resource_name), 11U)),
      scene_(DrawScene(seed_)) {}

std::unique_ptr<IPictureSource> CTestPictureSource::Make(const view_plugin_protocol::PlanWindow& window) {
  return std::make_unique<CTestPictureSource>(window);
}

void CTestPictureSource::Start() {
  running_.start();
}

void CTestPictureSource::Stop() {
  running_.invalidate();
  latest_ = QImage();
  drawn_ = -1;
}

PictureState CTestPictureSource::State() const {
  if (!running_.isValid()) {
    return PictureState::Stopped;
  }
  if (!HasSignal()) {
    return PictureState::Offline;
  }
  return PictureState::Live;
}

PictureStatus CTestPictureSource::Status() const {
  PictureStatus status;
  status.state = State();
  status.kind = QStringLiteral("drawn");
  if (status.state == PictureState::Live) {
    status.age_ms = running_.elapsed() % kPictureMs;
    status.taken = LocalNow().addMSecs(-status.age_ms);
    status.size = QSize(kWidth, kHeight);
  }
  return status;
}

qint64 CTestPictureSource::LatestNumber() const {
  if (State() != PictureState::Live) {
    return -1;
  }
  return running_.elapsed() / kPictureMs;
}

// Always the same size: the window scales, and sixteen small pictures cost next to nothing.
QImage CTestPictureSource::LatestPicture(const QSize& wanted) {
  Q_UNUSED(wanted)
  const qint64 number = LatestNumber();
  if (number < 0) {
    return QImage();
  }
  if (number != drawn_) {
    latest_ = Draw(number);
    drawn_ = number;
  }
  return latest_;
}

QImage CTestPictureSource::Draw(qint64 number) const {
  QImage picture = scene_;
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  const double phase = static_cast<double>(number) / 60.0 + seed_ % 100 / 100.0;
  const double along = std::fmod(phase, 1.0) * (kWidth + 80) - 40;
  const double down = kHorizon + 26 + seed_ / 7 % 34;
  const double size = 0.5 + (down - kHorizon) / 70.0;
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0, 0, 0, 90));
  painter.drawEllipse(QPointF(along, down + 9 * size), 22 * size, 4 * size);
  painter.setBrush(Tone(seed_ + 150, 150, 220));
  painter.drawRoundedRect(QRectF(along - 20 * size, down - 6 * size, 40 * size, 13 * size), 4 * size, 4 * size);
  painter.drawRoundedRect(QRectF(along - 11 * size, down - 14 * size, 22 * size, 11 * size), 4 * size, 4 * size);
  painter.setBrush(QColor(30, 30, 34));
  painter.drawEllipse(QPointF(along - 11 * size, down + 7 * size), 4 * size, 4 * size);
  painter.drawEllipse(QPointF(along + 11 * size, down + 7 * size), 4 * size, 4 * size);
  return picture;
}

}  // namespace TarnClient
