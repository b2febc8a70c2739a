#include "MarUIControl/frame.h"

namespace MarUIControl {

CFrame::CFrame(QWidget* parent) : QFrame(parent) {}

CFrame::~CFrame() = default;

}  // namespace MarUIControl
