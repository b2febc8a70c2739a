#pragma once

#include <QSpinBox>

#include "host_export.h"

namespace MarUIControl {

/// A field for a number. Ctrl+U is left to the window, and a wheel that only passes over changes nothing. Thread: GUI.
class TARN_HOST_EXPORT CSpinBox : public QSpinBox {
  Q_OBJECT
 public:
  explicit CSpinBox(QWidget* parent = nullptr);
  ~CSpinBox() override;

 protected:
  bool event(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
};

}  // namespace MarUIControl
