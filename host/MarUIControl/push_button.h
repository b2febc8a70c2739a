#pragma once

#include <QPushButton>

#include "host_export.h"

namespace MarUIControl {

/// The host's plain button. Its accessible name is its text; Return clicks it while it has the focus. Thread: GUI.
class TARN_HOST_EXPORT CPushButton : public QPushButton {
  Q_OBJECT
 public:
  explicit CPushButton(QWidget* parent = nullptr);
  /// A button that says `text`.
  explicit CPushButton(const QString& text, QWidget* parent = nullptr);
  ~CPushButton() override;
};

}  // namespace MarUIControl
