#pragma once

#include <QString>
#include <functional>

#include "host_export.h"

namespace TarnHost {

/// A modal question as it would be shown.
struct ModalQuestion {
  QString title;    ///< Above the text; empty for none.
  QString text;     ///< What it says, plain.
  int buttons = 0;  ///< Bit mask: 1 OK (result 1), 2 cancel (result 0), 4 another way (result 2).
};

/// From now on modal tips and dialogs are not shown but answered by `answer`, which gives the result of the box; an
/// empty function shows them again. For tests and for unattended runs. The function may change anything, as a user at
/// another desk could while the box is open. Thread: GUI.
TARN_HOST_EXPORT void SetModalAnswer(std::function<int(const ModalQuestion&)> answer);

}  // namespace TarnHost
