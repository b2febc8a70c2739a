#pragma once

#include <QMetaType>

#include "host_export.h"

namespace MarUIControl {

/// A message shown over a window (the host's own spelling). Thread: any.
class TARN_HOST_EXPORT CNomalMessage {
 public:
  /// What kind of message it is. A meta type under its full name.
  enum AlertState {
    Success = 0,  ///< What the user asked for is done.
    Failure = 1,  ///< It is not done, or something has broken.
    Warning = 2,  ///< It cannot be done so, and the user can mend that.
    Hint = 3,     ///< Nothing was tried and nothing has failed, as when a command has nothing to do.
  };
};

}  // namespace MarUIControl

Q_DECLARE_METATYPE(MarUIControl::CNomalMessage::AlertState)
