#pragma once

#include "MarUIControl/push_button.h"
#include "host_export.h"

namespace MarUIControl {

/// The one button of a dialog that does what the dialog is for. Thread: GUI.
class TARN_HOST_EXPORT CPrimaryButton : public CPushButton {
  Q_OBJECT
 public:
  explicit CPrimaryButton(QWidget* parent = nullptr);
  /// A button that says `text`.
  explicit CPrimaryButton(const QString& text, QWidget* parent = nullptr);
  ~CPrimaryButton() override;
};

}  // namespace MarUIControl
