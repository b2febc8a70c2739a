#include "MarUIControl/push_button.h"

namespace MarUIControl {

// An automatic default button is clicked by Return while it has the focus.
CPushButton::CPushButton(QWidget* parent) : QPushButton(parent) {
  setAutoDefault(true);
}

CPushButton::CPushButton(const QString& text, QWidget* parent) : QPushButton(text, parent) {
  setAutoDefault(true);
}

CPushButton::~CPushButton() = default;

}  // namespace MarUIControl
