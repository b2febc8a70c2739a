#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

#include "copies/copy_update.h"
#include "store/database_thread.h"

namespace TarnHost::Store {

/// When a copy is written: a while after the first change that is not in it, and not again soon after. A plain value.
struct CopyPace {
  using Clock = std::chrono::steady_clock;
  std::chrono::milliseconds calm{5000};    // after the change, for what comes with it
  std::chrono::milliseconds pause{60000};  // between two writings at least
  std::optional<Clock::time_point> changed, written;

  bool IsDue(Clock::time_point now) const;
};

/// Keeps the copy of who is logged in as the store is, for while that does not answer. Thread: any.
///
/// Owned by a shared pointer: its thread keeps it alive, also when it was left behind.
class CCopyKeeper : public std::enable_shared_from_this<CCopyKeeper> {
 public:
  struct Setup {
    QString folder, url;
    std::chrono::milliseconds pause;
    std::function<QDateTime()> now;
  };
  explicit CCopyKeeper(Setup setup);

  /// Once.
  void Start(RunOnStore run);
  /// The copy is this user's; also under another password.
  void SetOwner(const CopyOwner& owner);
  /// The store's newest change that is in memory, or none while it does not answer.
  void SetNewest(std::optional<int64_t> change);
  /// Something was changed that no entry in the log tells of.
  void Touch() { is_touched_ = true; }

  void BeginStop();
  CDatabaseThread& Thread() { return thread_; }

 private:
  bool Beat();
  bool IsBehind();
  void Update();
  void OnFailure(const QString& text);
  void RemoveForGoneUsers(const std::vector<std::string>& users);

  const Setup setup_;
  std::atomic<bool> stopped_{false}, is_touched_{false};
  std::mutex mutex_;
  CopyOwner owner_;
  std::optional<int64_t> newest_;

  // Of the thread.
  RunOnStore run_;
  CopyPace pace_;
  CopyOwner copied_for_;
  int64_t copied_ = -1;
  QString failure_;
  bool has_looked_ = false;
  CDatabaseThread thread_;
};

}  // namespace TarnHost::Store
