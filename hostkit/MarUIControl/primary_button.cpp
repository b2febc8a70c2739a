#include "MarUIControl/primary_button.h"

namespace MarUIControl {

CPrimaryButton::CPrimaryButton(QWidget* parent) : CPushButton(parent) {}

CPrimaryButton::CPrimaryButton(const QString& text, QWidget* parent) : CPushButton(text, parent) {}

CPrimaryButton::~CPrimaryButton() = default;

}  // namespace MarUIControl
