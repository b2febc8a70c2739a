#include "plugin_version.h"

namespace TarnPlanView {

QString PluginVersion() {
  return QStringLiteral(TARN_PLUGIN_VERSION);
}

int InterfaceVersion() {
  return TARN_INTERFACE_VERSION;
}

}  // namespace TarnPlanView
