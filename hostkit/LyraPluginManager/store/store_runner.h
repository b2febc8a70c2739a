#pragma once

#include <QThread>
#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include "TarnHost/plan_store.h"
#include "copies/copy_keeper.h"
#include "copies/shown_copy.h"
#include "store/database_thread.h"
#include "store/download_state.h"
#include "store/observer_hub.h"
#include "store/plan_catalog.h"
#include "store/plan_memory.h"
#include "store/plan_reader.h"
#include "store/plan_writer.h"
#include "store/server_account.h"
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
  const CSiteDirectory& Site() const { return site_; }
  CObserverHub& Hub() { return *hub_; }
  QDateTime Now() const { return options_.now(); }
  /// Where the cameras without an address have their pictures in this process; empty: nowhere.
  std::string CamerasAt() const { return options_.cameras_at.toStdString(); }
  std::string DevicesAt() const { return options_.devices_at.toStdString(); }

  /// Whether the database keeps from this process what the user does not see.
  bool HidesRows() const { return hides_rows_; }

  /// The user who is logged in; 0 for none.
  int32_t User() const { return user_; }
  void SetUser(int32_t user) { user_ = user; }
  /// Whether the server of the store lets this user in.
  LogInAnswer AskServer(const LogInRequest& user) const;
  /// Whether the store has said since the log-in that the current user has another password.
  bool HasOtherPassword() const { return has_other_password_; }
  /// The current user has given the one that the store takes.
  void OnPasswordGiven() { has_other_password_ = false; }
  /// With which the store was opened as this user; none for another user, where the server has not been given one, or
  /// where that does not count any more.
  std::optional<CSecret> PasswordOf(const QString& user) const;
  /// Goes over to the account of this user, who is the current one then. Where that fails, all stays as it was.
  void GoOverTo(const LogInRequest& user);

  /// The copy that stands in for a store which has not answered yet; null for none.
  std::shared_ptr<CShownCopy> Copy() const { return std::atomic_load(&copy_); }
  /// The copy of who is logged in, while a store that has answered does not; null for none. On the GUI thread only one
  /// that was asked for before.
  std::shared_ptr<CShownCopy> StandIn();
  /// The user of this copy, whose password was right, is the current one; his is shown from here on.
  void LogInAtCopy(const LogInRequest& user);
  /// Whether the password is that of the copy which this machine has of the user's plans.
  LogInAnswer AskCopy(const LogInRequest& user) const;

  /// Drops the plans in memory and fetches them again.
  void Download();
  bool IsDownloaded() const { return !closed_ && downloads_.IsReady(); }

  void RequireOpen() const;
  /// The number of who is logged in, though it may be no user's any more.
  int32_t RequireLogIn() const;
  int32_t RequireUser() const;
  void RequireDownloaded() const;

  /// Answers work(writer), a change of the store. `work` refers to nothing of the caller's; nor does that of Read().
  template <class Work>
  auto Write(Work work) {
    return thread_.Call([self = shared_from_this(), work] { return self->Run(work, true); });
  }
  /// The same of what stands in no copy.
  template <class Work>
  auto WriteUncopied(Work work) {
    return thread_.Call([self = shared_from_this(), work] { return self->Run(work, false); });
  }
  /// Answers work(repository), over a connection of its own where the store has one.
  template <class Work>
  auto Read(Work work, CDatabaseThread::Patience patience = CDatabaseThread::kBounded) {
    if (const auto copy = Copy()) {
      return copy->Reader().Read(work, patience);
    }
    if (reader_) {
      RequireAccount();
      return reader_->Read(work, patience);
    }
    return thread_.Call([self = shared_from_this(), work] { return work(self->session_->Repository()); }, patience);
  }
  /// The same with the copy that it was read from, if it was. Without the connection from the stand-in, too, where that
  /// has_all(answer): it may be older than what is in memory. Not while the store only hangs: it may go on without the
  /// notice by which cameras are read again.
  template <class Work, class HasAll>
  auto ReadOfCameras(Work work, const HasAll& has_all)
      -> std::pair<decltype(work(std::declval<CPlanRepository&>())), std::shared_ptr<CShownCopy>> {
    if (const auto copy = Copy()) {
      return {copy->Reader().Read(work, CDatabaseThread::kBounded), copy};
    }
    if (const auto copy = answering_->IsDisconnected() ? StandIn() : nullptr) {
      try {
        auto answer = copy->Reader().Read(work, CDatabaseThread::kBounded);
        if (has_all(answer)) {
          return {std::move(answer), copy};
        }
      } catch (const CStoreError&) {
        // as good as none
      }
    }
    return {Read(work), nullptr};
  }
  /// What is asked from memory: on the GUI thread, which nothing may hold up, and while the store does not answer.
  bool AsksMemory() const { return hub_->thread() == QThread::currentThread() || answering_->IsLost(); }
  CPlanMemory& Memory() { return memory_; }
  /// Answers work(engine), about what the plans know nothing of; likewise.
  template <class Work>
  auto OnDatabase(Work work) {
    return thread_.Call([self = shared_from_this(), work] { return work(*self->engine_); });
  }
  /// The same of changes, which count for this process as for others when this returns.
  template <class Work>
  void ChangeOnDatabase(Work work) {
    thread_.Call([self = shared_from_this(), work] {
      work(*self->engine_);
      self->session_->LookAgain();
    });
  }
  /// A tree could not read this plan because the store does not answer.
  void NoteUnread(int32_t code) { unread_plans_.Note(code); }

 private:
  template <class Work>
  auto Run(const Work& work, bool is_copied) {
    try {
      if constexpr (std::is_void_v<decltype(work(*writer_))>) {
        work(*writer_);
        OnSaved(is_copied);
      } else {
        auto result = work(*writer_);
        OnSaved(is_copied);
        return result;
      }
    } catch (const CStoreError& refusal) {
      troubles_.OnChange(refusal);
      throw;
    }
  }
  void OnSaved(bool is_copied);
  void OpenDatabase();
  void OpenFromCopy();
  void ShowCopy(const std::shared_ptr<CShownCopy>& copy);
  void ChangeCopy(const std::shared_ptr<CShownCopy>& copy, const LogInRequest& user);
  void TakeUserOf(const CShownCopy& copy, const LogInRequest& user);
  void BeginConnecting();
  void RequireSiteOfCopy();
  void TakeConnection();
  bool KnowsOtherPassword(const CopyFacts& facts);
  void LeaveCopy();
  bool EndCopy();
  bool IsForWhoIsLoggedIn() const;
  [[noreturn]] void BreakOff();
  void OnAccountRefused();
  void OnAccountTaken();
  void RequireAccount() const;
  void AskForPassword();
  void StartKeeper();
  void NameOwner();
  void OpenReader();
  void RunInEvents(std::function<void()> call) const;
  bool ReadUsers();
  LogInRequest AccountOf(const LogInRequest& user) const;
  void OpenAs(const LogInRequest& account);
  void ReleaseReader();
  void OnLook(const CStoreError& error);
  bool Beat();
  bool LookWhenItIsTime();
  std::optional<CStoreError> Look();
  CDatabaseThread::Rest BeforeRest();
  void RequireWritable() const;
  void TryToWrite();
  void Reconnect();
  void DownloadWhenWanted();
  void ReportUnread();
  void CloseDatabase();
  bool EndThreads();
  void CutConnections();
  void LeaveThreadsBehind();
  void EndKeeper(CDatabaseThread::Clock::time_point deadline);
  bool WaitUntilEnded(CDatabaseThread::Clock::time_point deadline);
  void Report(StoreTrouble trouble, const QString& line);

  const PlanStoreOptions options_;
  const std::shared_ptr<CStoreUrl> url_;
  std::unique_ptr<CObserverHub, CObserverHub::Disposer> hub_;
  std::atomic<int32_t> user_{0};
  std::atomic<bool> closed_{false}, hides_rows_{false}, has_other_password_{false};
  std::atomic<bool> is_refused_{false};  // the account, by the server, since it was given
  std::once_flag close_once_;
  bool closed_in_order_ = false;
  CDownloadState downloads_;
  CPlanCatalog catalog_{&FoldedName};
  CPlanMemory memory_;
  CSiteDirectory site_;
  CUnreadPlans unread_plans_;

  // Live on the database thread.
  std::unique_ptr<CSqlEngine> engine_;
  std::unique_ptr<CStoreSession> session_;
  std::unique_ptr<CPlanWriter> writer_;
  std::chrono::steady_clock::time_point next_attempt_, next_try_;
  bool connection_lost_ = false, is_followed_ = false;
  bool knows_other_password_ = false;  // the store, than the copy that is shown; while it is gone over to
  int connecting_after_ = 0;           // so many log-ins at the copy
  QDateTime read_up_to_;               // what was changed up to then is in memory

  // Reads what the catalog does not hold; null where the store has but one connection. Made with the database.
  std::unique_ptr<CPlanReader> reader_;

  std::shared_ptr<CShownCopy> copy_, stand_in_;
  std::mutex log_in_mutex_;  // who logs in at the copy does so before it is left or not at all
  int log_ins_at_copy_ = 0;
  const std::shared_ptr<CCopyKeeper> keeper_;  // null where no copy is kept

  const std::shared_ptr<CAnswering> answering_;
  const std::shared_ptr<CConnectionWatch> watch_;
  CStoreTroubles troubles_;
  CDatabaseThread thread_;
};

}  // namespace TarnHost::Store
