#include "plugin_version.h"

namespace TarnPlanView {

QString PluginVersion() {
  return QStringLiteral(TARN_PLUGIN_VERSION);
}

}  // namespace TarnPlanView
