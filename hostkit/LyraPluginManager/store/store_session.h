#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "store/camera_dictionary.h"
#include "store/change_feed.h"
#include "store/kept_deletions.h"
#include "store/observer_hub.h"
#include "store/plan_catalog.h"
#include "store/plan_repository.h"
#include "store/tree_events.h"

namespace TarnHost::Store {

/// Keeps the catalog in step with the database: fills it, follows the change log, and runs the transactions of this
/// process, which reach the catalog when they are committed.
///
/// Throws CStoreError. Thread: the database thread.
class CStoreSession {
 public:
  /// `user` names whose events are made; `hub` takes them and outlives the session. `is_awaited` answers whether
  /// a caller waits for the running transaction, and has it wait for the end. Once `closed`, no lost connection is
  /// waited for.
  CStoreSession(CSqlEngine& engine, CPlanCatalog& catalog, const std::atomic<int32_t>& user, CObserverHub& hub,
                std::function<bool()> is_awaited, const std::atomic<bool>& closed);

  CSqlEngine& Engine() { return engine_; }
  CPlanRepository& Repository() { return repository_; }
  CKeptDeletions& Deletions() { return deletions_; }

  /// Fills the catalog with the store's content.
  void LoadCatalog();
  /// Empties it; others' changes are not followed until it is loaded again.
  void DropCatalog();
  /// Brings in what other processes changed; raises the whole-tree event when that cannot be done change by change.
  void Poll();
  /// Connects again after the connection was lost, and reads everything again.
  void Reconnect();

  /// Runs `work` in one transaction. What it saves or removes goes through Save...() and Remove...(). When no one waits
  /// for it any more, its changes are reported like somebody else's. When the connection is lost over the commit, it is
  /// found out what became of it before this returns or throws.
  template <class Work>
  auto Write(Work work) {
    std::optional<decltype(work())> result;
    try {
      CTransaction transaction(engine_, CTransaction::kWrite);
      BeginJournal();
      result = work();
      WriteJournal();
      transaction.Commit();
    } catch (const CStoreError& error) {
      if (!result || !WasCommitted(error)) {
        throw;
      }
    }
    RequireKept();
    ApplyJournal();
    return std::move(*result);
  }

  /// Inside the work of Write() only.
  void SaveNew(const GroupRow& group);
  void SaveName(GroupRow group, const std::string& name);
  void RemoveGroup(int32_t code);
  void SaveNew(StoredPlan plan);
  void SaveChanged(StoredPlan plan);
  void RemovePlan(int32_t code);
  /// What was deleted stands where it stood again. The only change that this process's own observers hear of, too: who
  /// asks for it has no record to make the row from. Refused when its rows are not kept any more.
  void PutBack(const CKeptDeletions::Deletion& deletion);
  /// The same of a deleted group, but what was in it stands in that group afterwards.
  void PutBackInto(int32_t group, const CKeptDeletions::Deletion& deletion);

 private:
  struct Step {
    ChangeEntry entry;
    std::function<void(bool awaited)> apply;
  };

  void BeginJournal();
  void WriteJournal();
  void ApplyJournal();
  bool WasCommitted(const CStoreError& error);
  bool IsLogged(const ChangeEntry& entry);
  void AwaitConnection();
  void Connect();
  void RequireKept();
  void ReadAgain();
  /// The row of this code as the current user sees it now.
  std::optional<GroupRow> SeenGroup(int32_t code) const;
  std::optional<PlanRow> SeenPlan(int32_t code) const;
  std::optional<GroupRow> Seen(const GroupRow& row) const { return SeenGroup(row.code); }
  std::optional<PlanRow> Seen(const PlanRow& row) const { return SeenPlan(row.code); }
  template <class Row>
  std::optional<Row> Put(const Row& row, bool awaited) {
    const std::optional<Row> seen = Seen(row);
    const std::optional<Row> before = catalog_.Put(row);
    if (!awaited) {
      hub_.Post(EventsOf(seen, Seen(row)));
    } else if (before) {
      // A change of somebody else's to the same row, brought in just before, may not be reported yet: reported after
      // this one was answered, it would have the last word.
      hub_.PostCorrections(CorrectionsOf(row));
    }
    return before;
  }
  void PutRenamed(const GroupRow& group, bool awaited);
  void PutBackGroup(int32_t code);
  void PutBackPlan(int32_t code);
  void Note(ChangeEntry::Kind kind, int32_t code, std::function<void(bool awaited)> apply);
  void CatchUp();
  void ReadWhole();
  bool ReadAudiences();
  void ReadCameraNames();
  void ApplyForeign(const std::vector<ChangeEntry>& entries);
  std::vector<CObserverHub::Event> ApplyForeignGroup(int32_t code);
  std::vector<CObserverHub::Event> ApplyForeignPlan(int32_t code);
  void ReadBelow(const std::vector<int32_t>& groups);

  CSqlEngine& engine_;
  CPlanRepository repository_;
  CKeptDeletions deletions_;
  CCameraDictionary cameras_;
  CPlanCatalog& catalog_;
  const std::atomic<int32_t>& user_;
  CObserverHub& hub_;
  const std::function<bool()> is_awaited_;
  const std::atomic<bool>& closed_;
  CChangeFeed feed_;
  bool loaded_ = false, unread_ = false;
  std::chrono::steady_clock::time_point next_camera_names_;
  std::vector<Step> journal_;
};

}  // namespace TarnHost::Store
