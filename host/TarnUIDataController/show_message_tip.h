#pragma once

#include <QString>

#include "host_export.h"

class QWidget;

namespace tarn_ui_data_controller {

/// Modal tip over the window of `widget`. `state`: 0 has the mark of a hint, any other that of a warning. So 1 is a
/// warning here, a state 1 of message tips (MarUIControl::CNomalMessage) a failure: these say what has become of
/// something, a modal tip mostly comes before it is done. `buttons` is a bit mask, 1 OK and 2 cancel: 2 is shown as a
/// single "Close", 3 as a question, with a question's mark, that begins on cancel. Gives 1 only on OK, else 0. Delivers
/// events while it is open, so anything may have gone. In the substitute host TarnHost::SetModalAnswer() answers it
/// without showing it; another host has its own way for tests, or none. Thread: GUI.
TARN_HOST_EXPORT int ShowMessageTip(const QString& text, int state, QWidget* widget, int buttons);
/// The same with a word of its own on the button that is OK otherwise: what it does. Thread: GUI.
TARN_HOST_EXPORT int ShowMessageTip(const QString& text, int state, QWidget* widget, int buttons,
                                    const QString& confirm_text);

}  // namespace tarn_ui_data_controller
