#include "wall/wall_keys.h"

#include <QCoreApplication>

namespace TarnClient {

QList<MarUIControl::KeyEntry> WallKeys() {
  const auto text = [](const char* source) { return QCoreApplication::translate("TarnClient::WallKeys", source); };
  const QString of_windows = text(QT_TRANSLATE_NOOP("TarnClient::WallKeys", "In a window of the live view"));
  const QString group = text(QT_TRANSLATE_NOOP("TarnClient::WallKeys", "In the live view"));
  return {
      {group,
       {Qt::Key_Left, Qt::Key_Right, Qt::Key_PageUp, Qt::Key_PageDown},
       text(QT_TRANSLATE_NOOP("TarnClient::WallKeys", "Previous and next page; in a cycle the plan as well"))},
      {group, {Qt::Key_Space}, text(QT_TRANSLATE_NOOP("TarnClient::WallKeys", "Hold, and go on"))},
      {of_windows,
       {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down},
       text(QT_TRANSLATE_NOOP("TarnClient::WallKeys", "Go to the window beside it; move a zoomed picture"))},
      {of_windows,
       {Qt::CTRL | Qt::Key_Left, Qt::CTRL | Qt::Key_Right, Qt::CTRL | Qt::Key_Up, Qt::CTRL | Qt::Key_Down},
       text(QT_TRANSLATE_NOOP("TarnClient::WallKeys", "Swap it with the window beside it"))},
      {of_windows,
       {Qt::Key_Escape},
       text(QT_TRANSLATE_NOOP("TarnClient::WallKeys", "Whole picture, then all windows, then as everywhere"))},
      {text(QT_TRANSLATE_NOOP("TarnClient::WallKeys", "Everywhere in the window")),
       {Qt::Key_Escape},
       text(QT_TRANSLATE_NOOP("TarnClient::WallKeys", "Stop the plan, the cycle and what is being fetched"))},
  };
}

}  // namespace TarnClient
