#pragma once

#include <QAbstractButton>
#include <QVariantAnimation>

#include "host_export.h"

namespace MarUIControl {

/// On/off switch. toggled(bool) of the base is emitted on a change only. Space and Return toggle it. On and off differ
/// in place and shape, not in colour alone. Thread: GUI.
class TARN_HOST_EXPORT CSwitchControl : public QAbstractButton {
  Q_OBJECT
 public:
  explicit CSwitchControl(QWidget* parent = nullptr);
  ~CSwitchControl() override;

  /// Whether it is on; off at first.
  bool isToggled() const;
  /// Turns it on or off; toggled() comes when that changes it.
  void setToggle(bool on);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Slide(bool on);
  void DrawKnob(QPainter* painter, const QRectF& track) const;

  QVariantAnimation slide_;
  qreal knob_ = 0;  // 0 off, 1 on
};

}  // namespace MarUIControl
