#include "commands/wall_choice.h"

#include <QCoreApplication>

namespace TarnClient {

QString WallName(int number) {
  return QCoreApplication::translate("TarnClient::CWalls", "Wall %1").arg(number + 1);
}

}  // namespace TarnClient
