#pragma once

#include <QPixmap>

class QWidget;

namespace TarnClient {

/// The window as it stands on the screen, with the pop-ups and boxes over it. Thread: GUI.
QPixmap GrabWindows(QWidget& window);

}  // namespace TarnClient
