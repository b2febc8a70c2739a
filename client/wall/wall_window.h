#pragma once

#include <QWidget>
#include <memory>

#include "wall/picture_source.h"

namespace TarnClient {

/// One window of the live wall: the camera's picture with its name and the time, or a hint that there is none.
/// Thread: GUI.
class CWallWindow : public QWidget {
  Q_OBJECT
 public:
  CWallWindow(int number, QWidget* parent);
  ~CWallWindow() override;

  /// Shows this source's pictures from now on; null empties the window, and nothing of the last camera stays.
  void Show(const QString& camera, std::unique_ptr<IPictureSource> source);
  bool IsEmpty() const { return !source_; }
  QString Camera() const { return camera_; }
  /// "live", "opening" or "lost".
  QString StateName() const;
  /// Pictures shown since the camera came into this window.
  qint64 Frames() const { return frames_; }
  /// Paints again when there is a new picture or the clock went on.
  void Tick();

  QSize minimumSizeHint() const override { return QSize(80, 60); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void PaintPicture(QPainter& painter);
  QString NoPictureText() const;
  void PaintLoss(QPainter& painter);
  void PaintBar(QPainter& painter);
  void PaintEmpty(QPainter& painter);
  QString SpokenState() const;
  void RenewDescription();

  const int number_;
  QString camera_;
  std::unique_ptr<IPictureSource> source_;
  qint64 shown_number_ = -1, frames_ = 0;
  int shown_second_ = -1;
};

}  // namespace TarnClient
