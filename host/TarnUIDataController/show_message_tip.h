#pragma once

#include <QString>

#include "host_export.h"

class QWidget;

namespace tarn_ui_data_controller {

/// Modal tip over the window of `widget`; `state` 0 success, 1 warning. `buttons` is a bit mask, 1 OK and 2 cancel:
/// 2 is shown as a single "Close", 3 as a question that begins on cancel. Gives 1 only on OK, else 0. Tests answer it
/// through TarnHost::SetModalAnswer(). Delivers events while it is open, so anything may have gone. Thread: GUI.
TARN_HOST_EXPORT int ShowMessageTip(const QString& text, int state, QWidget* widget, int buttons);
/// The same with a word of its own on the button that is OK otherwise: what it does. Thread: GUI.
TARN_HOST_EXPORT int ShowMessageTip(const QString& text, int state, QWidget* widget, int buttons,
                                    const QString& confirm_text);

}  // namespace tarn_ui_data_controller
