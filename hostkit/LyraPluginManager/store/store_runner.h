#pragma once

#include <atomic>
#include <memory>
#include <mutex>

#include "TarnHost/plan_store.h"
#include "store/database_thread.h"
#include "store/download_state.h"
#include "store/observer_hub.h"
#include "store/plan_catalog.h"
#include "store/plan_reader.h"
#include "store/plan_writer.h"
#include "store/site_directory.h"
#include "store/store_session.h"
#include "store/store_troubles.h"
#include "store/text_rules.h"
#include "store/unread_plans.h"

namespace TarnHost::Store {

/// Runs an open store: its database threads, the look at what others changed, downloads, and the way back after a
/// connection was lost. Its calls wait for what they ask of the threads. Throws CStoreError. Thread: any.
///
/// Owned by a shared pointer: what runs on the threads keeps it alive, also when it was left behind by Close().
class CStoreRunner : public std::enable_shared_from_this<CStoreRunner> {
 public:
  explicit CStoreRunner(PlanStoreOptions options);

  /// Opens the database and starts the first download. Once, before anything else.
  void Start();
  /// Ends the threads; false when one of them was left behind. Later calls answer the same and wait for nothing.
  bool Close();
  bool IsClosed() const { return closed_; }

  const CPlanCatalog& Catalog() const { return catalog_; }
  /// What stands in it does not change after Start().
  const CSiteDirectory& Site() const { return site_; }
  CObserverHub& Hub() { return *hub_; }
  QDateTime Now() const { return options_.now(); }

  /// The user who is logged in; 0 for none.
  int32_t User() const { return user_; }
  void SetUser(int32_t user) { user_ = user; }

  /// Drops the plans in memory and fetches them again.
  void Download();
  bool IsDownloaded() const { return !closed_ && downloads_.IsReady(); }

  void RequireOpen() const;
  int32_t RequireUser() const;
  void RequireDownloaded() const;

  /// Answers work(writer), a change of the store. `work` refers to nothing of the caller's; nor does that of Read().
  template <class Work>
  auto Write(Work work) {
    return thread_.Call([self = shared_from_this(), work] { return self->Run(work); });
  }
  /// Answers work(repository), over a connection of its own where the store has one.
  template <class Work>
  auto Read(Work work) {
    if (reader_) {
      return reader_->Read(work);
    }
    return thread_.Call([self = shared_from_this(), work] { return work(self->session_->Repository()); });
  }
  /// A tree could not read this plan because the store does not answer.
  void NoteUnread(int32_t code) { unread_plans_.Note(code); }

 private:
  template <class Work>
  auto Run(const Work& work) {
    try {
      if constexpr (std::is_void_v<decltype(work(*writer_))>) {
        work(*writer_);
        troubles_.OnChange({});
      } else {
        auto result = work(*writer_);
        troubles_.OnChange({});
        return result;
      }
    } catch (const CStoreError& refusal) {
      troubles_.OnChange(refusal);
      throw;
    }
  }
  void OpenDatabase();
  void OpenReader();
  bool Beat();
  void RequireWritable() const;
  void Reconnect();
  void DownloadWhenWanted();
  void ReportUnread();
  void CloseDatabase();
  bool EndThreads();
  void CutConnections();
  void LeaveThreadsBehind();
  bool WaitUntilEnded(CDatabaseThread::Clock::time_point deadline);
  void Report(StoreTrouble trouble, const QString& line);

  const PlanStoreOptions options_;
  std::unique_ptr<CObserverHub, CObserverHub::Disposer> hub_;
  std::atomic<int32_t> user_{0};
  std::atomic<bool> closed_{false};
  std::once_flag close_once_;
  bool closed_in_order_ = false;
  CDownloadState downloads_;
  CPlanCatalog catalog_{&FoldedName};
  CSiteDirectory site_;
  CUnreadPlans unread_plans_;

  // Live on the database thread.
  std::unique_ptr<CSqlEngine> engine_;
  std::unique_ptr<CStoreSession> session_;
  std::unique_ptr<CPlanWriter> writer_;
  std::chrono::steady_clock::time_point next_attempt_;
  bool connection_lost_ = false;

  // Reads what the catalog does not hold; null where the store has but one connection. Made with the database.
  std::unique_ptr<CPlanReader> reader_;

  const std::shared_ptr<CAnswering> answering_;
  const std::shared_ptr<CConnectionWatch> watch_;
  CStoreTroubles troubles_;
  CDatabaseThread thread_;
};

}  // namespace TarnHost::Store
