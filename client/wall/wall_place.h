#pragma once

#include <QMetaType>

namespace TarnClient {

/// Where a plan stands on the wall.
struct WallPlace {
  int page = 1;  // counts from 1; 0: any
  bool is_held = false;
};

}  // namespace TarnClient

Q_DECLARE_METATYPE(TarnClient::WallPlace)
