#include "TarnHost/host_version.h"

namespace TarnHost {

QString HostVersion() {
  return QStringLiteral(TARN_HOST_VERSION);
}

}  // namespace TarnHost
