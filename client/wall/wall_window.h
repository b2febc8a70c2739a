#pragma once

#include <QElapsedTimer>
#include <QWidget>
#include <memory>
#include <optional>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "pictures/picture_source.h"
#include "wall/picture_memory.h"
#include "wall/window_face.h"

namespace TarnClient {

/// One window of the live wall: the camera's picture with its name and the time, what is wrong with it, or a hint that
/// there is no camera. The wheel looks closer into the picture, and the mouse drags it then; a double click takes that
/// back, and enlarges a picture that is whole. Thread: GUI.
class CWallWindow : public QWidget {
  Q_OBJECT
 public:
  CWallWindow(int number, QWidget* parent);
  ~CWallWindow() override;

  /// Shows this source's pictures from now on. Until the first one comes, this older one of the same camera stands in.
  void Show(const view_plugin_protocol::PlanWindow& content, std::unique_ptr<IPictureSource> source,
            const TakenPicture& older = {});
  /// Nothing of the last camera stays.
  void Clear();
  /// The same camera and stream go on under what the plan says of them now.
  void GoOnWith(const view_plugin_protocol::PlanWindow& content);
  /// Whether the source that is here is also that of `content`.
  bool Plays(const view_plugin_protocol::PlanWindow& content) const;

  int Number() const { return number_; }
  bool IsEmpty() const { return !source_; }
  QString Camera() const;
  /// What the plan says of it; a blank record for an empty window.
  const view_plugin_protocol::PlanWindow& Content() const { return content_; }
  /// "live", "opening", "late", "lost" or "offline".
  QString StateName() const { return NameOf(Status().state); }
  /// A blank one of an empty window.
  PictureStatus Status() const;
  /// Pictures shown since the camera came into this window.
  qint64 Frames() const { return frames_; }
  /// The one shown last; null while there was none of this camera.
  TakenPicture LastPicture() const { return shown_; }
  /// As the camera sent it last, as large as it comes.
  TakenPicture FullPicture() const;
  bool IsZoomed() const { return zoom_.IsOn(); }
  /// Closer, or away for less than 1, around the middle of the window.
  void Zoom(double factor);
  /// What is further that way comes into a zoomed picture.
  void MoveZoom(const QPoint& direction);
  void ResetZoom();
  /// Whether cameras go here next, and whether a drag is over it.
  void SetMarks(bool is_current, bool is_target);
  /// The user looks at this one: it is the last to lose pictures.
  void SetInFocus(bool on);
  /// What it shows, with the whole picture and without marks.
  WindowFace Face() const;
  /// Paints again when there is a new picture, the state changed or the clock went on.
  void Tick();

  QSize minimumSizeHint() const override { return QSize(80, 60); }

 Q_SIGNALS:
  /// It has got the focus, or lost it.
  void SignalFocus(bool on);
  /// The user wants it enlarged, or as large as the others again.
  void SignalEnlarge();
  void SignalZoomed(bool on);
  /// The user drags the window's camera away.
  void SignalDragged();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void Forget();
  void TakePicture();
  QSize WantedSize() const;
  WindowTruth Truth() const;
  WindowFace::Frame Frame() const;
  QRect Room() const;
  void ZoomAt(double factor, const QPointF& at);
  void ReportZoom(bool before);
  void RenewDescription();

  const int number_;
  view_plugin_protocol::PlanWindow content_;
  std::unique_ptr<IPictureSource> source_;
  TakenPicture shown_;
  qint64 shown_number_ = -1, last_number_ = -1, frames_ = 0;  // shown may be older: a window out of sight paints none
  int shown_second_ = -1;
  PictureStatus said_;               // when the description was made
  mutable QElapsedTimer since_new_;  // since last_number_ changed
  CZoom zoom_;
  bool is_current_ = false, is_target_ = false;
  PictureWeight weight_ = PictureWeight::Normal;
  std::optional<QPoint> pressed_at_;
};

}  // namespace TarnClient
