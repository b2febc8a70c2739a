#include "wall/wall_keys.h"

#include <QCoreApplication>

namespace TarnClient {

QList<MarUIControl::KeyEntry> WallKeys() {
  const auto text = [](const char* source) { return QCoreApplication::translate("TarnClient::WallKeys", source); };
  const QString group = text(QT_TRANSLATE_NOOP("TarnClient::WallKeys", "In the live view"));
  return {
      {group,
       {Qt::Key_Left, Qt::Key_Right},
       text(QT_TRANSLATE_NOOP("TarnClient::WallKeys", "Previous and next page; in a cycle the plan as well"))},
      {group, {Qt::Key_Space}, text(QT_TRANSLATE_NOOP("TarnClient::WallKeys", "Hold, and go on"))},
      {text(QT_TRANSLATE_NOOP("TarnClient::WallKeys", "Everywhere in the window")),
       {Qt::Key_Escape},
       text(QT_TRANSLATE_NOOP("TarnClient::WallKeys", "Stop the plan, the cycle and what is being fetched"))},
  };
}

}  // namespace TarnClient
