#pragma once

#include <QPainterPath>
#include <QPointer>
#include <QWidget>

#include "host_export.h"

namespace MarUIControl {

/// Shadow around a frameless pop-up: a window of its own behind it that takes neither clicks nor activation and follows
/// the pop-up's place, size, showing and hiding. Where the desktop cannot blend windows, it stays away. Thread: GUI.
class TARN_HOST_EXPORT CShadowWidget : public QWidget {
  Q_OBJECT
 public:
  /// `parent`: the window that it belongs to, or the pop-up itself; `flags`: what kind of window.
  CShadowWidget(QWidget* parent, Qt::WindowFlags flags);
  ~CShadowWidget() override;

  /// The pop-up that casts the shadow; null ends that. `flag` other than 0: the shadow owns the pop-up, unless it is
  /// itself one of the pop-up's children.
  void SetContentWidget(QWidget* content, int flag);
  /// 0 none, which it is at first; any other number: on all four sides.
  void SetShadowMode(int mode);
  /// Whether the shadow comes and goes with its content; at first it does not.
  void SetAutoShow(bool automatic);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void Follow();
  void KeepBelow();
  QPainterPath Outline(int ring) const;

  QPointer<QWidget> content_;
  int mode_ = 0;
  bool automatic_ = false;
};

}  // namespace MarUIControl
