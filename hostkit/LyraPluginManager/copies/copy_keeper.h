#pragma once

#include <QDateTime>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

#include "copies/copy_pace.h"
#include "copies/copy_update.h"
#include "store/database_thread.h"

namespace TarnHost::Store {

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
  /// The store's newest change that is in memory, and when it was the newest; none while the store does not answer.
  /// Over another connection than before the same number may stand for another change.
  void SetNewest(std::optional<int64_t> change, const QDateTime& at, int connection);
  /// Something was changed that no entry in the log tells of.
  void Touch() { is_touched_ = true; }

  /// Writes what a copy that was up to date once lacks by now, if the store answers; as the thread's last act. Once or
  /// more.
  void BeginStop();
  /// Breaks that off as soon as may be.
  void Abandon() { stopped_ = true; }
  CDatabaseThread& Thread() { return thread_; }

 private:
  bool Beat();
  bool IsBehind();
  void Update(bool is_last = false);
  CCopyUpdate::Result Write(const QDateTime& now, bool is_last);
  bool IsMomentOwed() const { return equal_at_.isValid() && equal_at_ != written_at_; }
  void WriteMoment();
  void WriteOwed();
  QString Path() const { return CopyFile::PathOf(setup_.folder, setup_.url, copied_for_.user); }
  void OnFailure(const QString& text);
  void RemoveForGoneUsers(const std::vector<std::string>& users);

  const Setup setup_;
  std::atomic<bool> stopped_{false}, is_touched_{false};
  std::mutex mutex_;
  CopyOwner owner_;
  std::optional<int64_t> newest_;
  QDateTime newest_at_;
  int connection_ = 0;

  // Of the thread.
  RunOnStore run_;
  CopyPace pace_;
  CopyOwner copied_for_;
  int64_t copied_ = -1;
  QDateTime equal_at_, written_at_;  // when the copy was as the store last; when it says so
  QString failure_;
  bool has_looked_ = false;
  CDatabaseThread thread_;
};

}  // namespace TarnHost::Store
