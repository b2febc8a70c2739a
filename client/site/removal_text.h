#pragma once

#include <QCoreApplication>
#include <QString>

#include "TarnHost/camera_access.h"

namespace TarnClient {

/// The question before regions and cameras are removed.
class CRemovalText {
  Q_DECLARE_TR_FUNCTIONS(TarnClient::CRemovalText)
 public:
  /// `name`: of the only camera, or of the region that goes with all in it; empty for several cameras.
  static QString Of(const QString& name, bool is_region, int cameras, const TarnHost::PlansShowing& showing);

 private:
  static QString Question(const QString& name, bool is_region, int cameras);
  static QString Plans(const TarnHost::PlansShowing& showing);
};

}  // namespace TarnClient
