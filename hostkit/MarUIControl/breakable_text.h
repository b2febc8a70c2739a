#pragma once

#include <QString>

namespace MarUIControl {

/// `text` with invisible places to break at inside words that no line may hold. Thread: any.
QString BreakableText(const QString& text);

}  // namespace MarUIControl
