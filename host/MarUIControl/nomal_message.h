#pragma once

#include <QMetaType>

#include "host_export.h"

namespace MarUIControl {

/// A message shown over a window (the host's own spelling).
class TARN_HOST_EXPORT CNomalMessage {
 public:
  enum AlertState { Success = 0, Failure = 1 };
};

}  // namespace MarUIControl

Q_DECLARE_METATYPE(MarUIControl::CNomalMessage::AlertState)
