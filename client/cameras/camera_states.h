#pragma once

#include <QObject>
#include <QTimer>
#include <set>
#include <string>
#include <unordered_map>

#include "cameras/camera_notice.h"
#include "host_calls/call_scope.h"

namespace TarnClient {

/// Which of the site's cameras are offline, and how they are called, as its records say. Thread: GUI; the service is
/// asked on the thread pool.
class CCameraStates : public QObject {
  Q_OBJECT
 public:
  struct Records {
    std::set<std::string> offline;
    std::unordered_map<std::string, std::string> names;
  };

  /// `again_ms`: between two looks.
  explicit CCameraStates(QObject* parent = nullptr, int again_ms = 30000);

  /// Looks at them now and then, while someone sees their pictures.
  void Watch(bool on);

  /// False only for a camera that the site says is away: one that is not known may have pictures all the same.
  bool IsOnline(const std::string& camera_code) const { return records_.offline.count(camera_code) == 0; }
  /// Empty for a camera that is not known.
  std::string NameOf(const std::string& camera_code) const;
  /// Looks now.
  void Look() { Ask(); }

 Q_SIGNALS:
  /// The site has other cameras than before, others are offline, or they have other names.
  void SignalChanged();

 private:
  void Ask();
  void Take(const Records& records);

  Records records_;
  QTimer again_{this};
  CCameraNotice notice_;
  bool is_outdated_ = false;  // the question under way was asked before the last notice
  HostCalls::CCallScope question_;
};

}  // namespace TarnClient
