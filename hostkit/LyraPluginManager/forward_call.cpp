#include "forward_call.h"

#include <QCoreApplication>

#include "LyraPluginManager/error_kind.h"

namespace TarnHost {

void FillStopped(view_plugin_protocol::ResponseHeader* response) {
  response->error_info =
      QCoreApplication::translate("TarnHost::Store", "The plan service has been stopped.").toStdString();
  response->error_kind = view_plugin_protocol::Unavailable;
}

}  // namespace TarnHost
