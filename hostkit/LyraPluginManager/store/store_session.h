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
#include "store/plan_memory.h"
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
  CStoreSession(CSqlEngine& engine, CPlanCatalog& catalog, CPlanMemory& memory, const std::atomic<int32_t>& user,
                CObserverHub& hub, std::function<bool()> is_awaited, const std::atomic<bool>& closed);

  /// `read` reads the users again, and answers whether the current one may now do something else.
  void FollowUsers(std::function<bool()> read) { read_users_ = std::move(read); }

  CSqlEngine& Engine() { return engine_; }
  CPlanRepository& Repository() { return repository_; }
  CKeptDeletions& Deletions() { return deletions_; }

  /// Empties the catalog and fills it with the store's content. What others changed since the last look is reported
  /// before, for nothing else reports it.
  void ReloadCatalog();
  /// Empties it; others' changes are not followed until it is loaded again.
  void DropCatalog();
  /// Brings in what was changed over this very connection past the session; at the next look where that fails now.
  void LookAgain();
  /// Brings in what other processes changed; raises the whole-tree event when that cannot be done change by change.
  void Poll();
  /// Connects as the engine is set now, and reads everything again after opened().
  void OpenAgain(const std::function<void()>& opened);
  /// Fills the catalog from a copy, until the store is connected for the first time.
  void LoadCopy(CSqlEngine& copy);
  /// Connects again after the connection was lost, and reads everything again after connected().
  void Reconnect(const std::function<void()>& connected);
  /// The newest change that is in the catalog; none while there may be one that is not.
  std::optional<int64_t> NewestChange() const;
  /// How often it has connected.
  int Connections() const { return connections_; }
  /// Throws what keeps changes from being saved. They are made as any other, but of no plan.
  void TryToWrite();
  /// Has the plans in memory that start by themselves next.
  void KeepTimedPlans(int32_t second_of_day);
  /// Has this plan in memory, where it may be asked for at once. Answers its row; none when it is not there.
  std::optional<PlanRow> Remember(int32_t plan);

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
  /// New rows among another user's own ones.
  void SaveShared(const GroupRow& group);
  void SaveShared(StoredPlan plan);
  /// What was deleted stands where it stood again. The only change that this process's own observers hear of, too: who
  /// asks for it has no record to make the row from. Refused when its rows are not kept any more.
  void PutBack(const CKeptDeletions::Deletion& deletion);
  /// The same of a deleted group, but what was in it stands in that group afterwards.
  void PutBackInto(int32_t group, const CKeptDeletions::Deletion& deletion);
  /// What opens at the start is not what it was for somebody.
  void DefaultViewsChanged();
  /// Regions or cameras are not what they were. This process's own observers hear of it, too.
  void CamerasChanged();

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
  void LoadCatalog();
  void RequireKept();
  void ReadAgain();
  /// The row of this code as this user sees it now. What a change means for a user is asked of one and the same, though
  /// another one may log in meanwhile.
  std::optional<GroupRow> SeenGroup(int32_t code, int32_t user) const;
  std::optional<PlanRow> SeenPlan(int32_t code, int32_t user) const;
  std::optional<GroupRow> Seen(const GroupRow& row, int32_t user) const { return SeenGroup(row.code, user); }
  std::optional<PlanRow> Seen(const PlanRow& row, int32_t user) const { return SeenPlan(row.code, user); }
  template <class Row>
  std::optional<Row> Put(const Row& row, bool awaited) {
    const int32_t user = user_;
    const std::optional<Row> seen = Seen(row, user);
    const std::optional<Row> before = catalog_.Put(row);
    if (!awaited) {
      hub_.Post(EventsOf(seen, Seen(row, user)));
    } else if (before) {
      // A change of somebody else's to the same row, brought in just before, may not be reported yet: reported after
      // this one was answered, it would have the last word.
      hub_.PostCorrections(CorrectionsOf(row));
    }
    return before;
  }
  void NoteSaved(StoredPlan plan);
  void PutRenamed(const GroupRow& group, bool awaited);
  void PutBackGroup(int32_t code);
  void PutBackPlan(int32_t code);
  void Note(ChangeEntry::Kind kind, int32_t code, std::function<void(bool awaited)> apply);
  void CatchUp();
  CPlanRepository::News NewsNow();
  void ReadWhole();
  bool ReadAudiences();
  void ReadCameraNames();
  void ApplyForeign(const std::vector<ChangeEntry>& entries);
  std::vector<CObserverHub::Event> ApplyForeignGroup(int32_t code);
  std::vector<CObserverHub::Event> ApplyForeignPlan(int32_t code);
  std::optional<PlanRow> ReadPlan(int32_t code);
  void ReadCamerasOf(const std::vector<PlanRow>& plans);
  void ReadBelow(const std::vector<int32_t>& groups);

  CSqlEngine& engine_;
  CPlanRepository repository_;
  CKeptDeletions deletions_;
  CCameraDictionary cameras_;
  CPlanCatalog& catalog_;
  CPlanMemory& memory_;
  const std::atomic<int32_t>& user_;
  CObserverHub& hub_;
  const std::function<bool()> is_awaited_;
  std::function<bool()> read_users_ = [] { return false; };
  const std::atomic<bool>& closed_;
  CChangeFeed feed_;
  bool loaded_ = false, unread_ = false;
  int connections_ = 0;
  std::chrono::steady_clock::time_point next_camera_names_;
  struct {
    int64_t change = -1;
    int32_t user = 0, second = 0;
  } timed_;  // when it was last looked which plans start next
  std::vector<Step> journal_;
};

}  // namespace TarnHost::Store
