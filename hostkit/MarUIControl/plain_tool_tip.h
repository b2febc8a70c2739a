#pragma once

#include <QString>

namespace MarUIControl {

/// `text` as a tool tip that shows markup in it as it is. Thread: any.
QString PlainToolTip(const QString& text);

}  // namespace MarUIControl
