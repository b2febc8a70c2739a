#pragma once

#include <QObject>
#include <QTimer>
#include <set>
#include <string>

#include "host_calls/call_scope.h"

namespace TarnClient {

/// Which of the site's cameras are offline, as its records say. Thread: GUI; the service is asked on the thread pool.
class CCameraStates : public QObject {
  Q_OBJECT
 public:
  /// `again_ms`: between two looks.
  explicit CCameraStates(QObject* parent = nullptr, int again_ms = 30000);

  /// Looks at them now and then, while someone sees their pictures.
  void Watch(bool on);

  /// False only for a camera that the site says is away: one that is not known may have pictures all the same.
  bool IsOnline(const std::string& camera_code) const { return offline_.count(camera_code) == 0; }

 private:
  void Ask();

  std::set<std::string> offline_;
  QTimer again_{this};
  HostCalls::CCallScope question_;
};

}  // namespace TarnClient
