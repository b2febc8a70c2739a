#pragma once

#include <QMetaType>

#include "host_export.h"

namespace MarUIControl {

/// A message shown over a window (the host's own spelling).
class TARN_HOST_EXPORT CNomalMessage {
 public:
  /// Hint: nothing was tried and nothing has failed, as when a command has nothing to do.
  enum AlertState { Success = 0, Failure = 1, Warning = 2, Hint = 3 };
};

}  // namespace MarUIControl

Q_DECLARE_METATYPE(MarUIControl::CNomalMessage::AlertState)
