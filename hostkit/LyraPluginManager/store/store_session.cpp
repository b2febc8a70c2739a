#include "store/store_session.h"

#include <QUuid>
#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

#include "store/page_codec.h"
#include "store/store_texts.h"

namespace TarnHost::Store {
namespace {

using std::chrono::steady_clock;

// For a line to come back while a write waits to be answered, and between two attempts.
constexpr auto kPatience = std::chrono::seconds(6);
constexpr auto kPause = std::chrono::milliseconds(200);
// The log of changes does not tell that a camera was renamed.
constexpr auto kBetweenCameraNames = std::chrono::seconds(60);
const char kUnknownOutcome[] = QT_TRANSLATE_NOOP(
    "TarnHost::Store",
    "The connection to the plan store was lost while the change was being saved. Look whether it is there before you"
    " try again.");

}  // namespace

CStoreSession::CStoreSession(CSqlEngine& engine, CPlanCatalog& catalog, const std::atomic<int32_t>& user,
                             CObserverHub& hub, std::function<bool()> is_awaited, const std::atomic<bool>& closed)
    : engine_(engine),
      repository_(engine),
      deletions_(engine),
      cameras_(engine, &catalog.Cameras()),
      catalog_(catalog),
      user_(user),
      hub_(hub),
      is_awaited_(std::move(is_awaited)),
      closed_(closed),
      feed_(QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString()) {}

void CStoreSession::LoadCatalog() {
  CTransaction transaction(engine_, CTransaction::kRead);
  ReadWhole();
  transaction.Commit();
}

void CStoreSession::DropCatalog() {
  loaded_ = false;
  catalog_.Clear();
}

void CStoreSession::ReadWhole() {
  const int64_t newest = repository_.NewestChange();
  cameras_.ReadAgain();
  ReadCameraNames();
  ReadAudiences();
  catalog_.Replace(repository_.AllGroups(), repository_.AllPlans());
  feed_.Restart(newest);
  loaded_ = true;
}

// Whether the current user now sees another part of the tree.
bool CStoreSession::ReadAudiences() {
  return catalog_.SetAudiences(repository_.Audiences().All(), user_);
}

std::optional<GroupRow> CStoreSession::SeenGroup(int32_t code) const {
  return catalog_.FindGroup(code, user_);
}

std::optional<PlanRow> CStoreSession::SeenPlan(int32_t code) const {
  const auto hit = catalog_.FindPlan(code, user_);
  return hit ? std::make_optional(hit->plan) : std::nullopt;
}

void CStoreSession::ReadCameraNames() {
  catalog_.Cameras().SetSiteNames(repository_.CameraNames());
  next_camera_names_ = steady_clock::now() + kBetweenCameraNames;
}

void CStoreSession::Poll() {
  if (loaded_ && (engine_.MayHaveChanged() || unread_)) {
    unread_ = true;  // until it was read: the engine reports a change once
    CTransaction transaction(engine_, CTransaction::kRead);
    CatchUp();
    transaction.Commit();
    unread_ = false;
  }
  if (loaded_ && steady_clock::now() >= next_camera_names_) {
    ReadCameraNames();
  }
}

void CStoreSession::Connect() {
  engine_.Reopen();
  feed_.Restart(-1);  // whatever comes next: all is to be read again
}

void CStoreSession::Reconnect() {
  Connect();
  if (loaded_) {
    LoadCatalog();
    hub_.Post({WholeTreeEvent()});
  }
}

// Others' changes come first, so that the catalog sees all changes in the order of their numbers.
void CStoreSession::BeginJournal() {
  journal_.clear();
  cameras_.Begin();
  CatchUp();
}

void CStoreSession::CatchUp() {
  const int64_t newest = loaded_ ? repository_.NewestChange() : feed_.Last();
  if (newest == feed_.Last()) {
    return;
  }
  const std::vector<ChangeEntry> entries = repository_.ChangesAfter(feed_.Last());
  if (!feed_.Take(entries, newest)) {
    ReadWhole();
    hub_.Post({WholeTreeEvent()});
    return;
  }
  cameras_.Refresh();
  try {
    ApplyForeign(entries);
  } catch (...) {
    feed_.Restart(-1);  // what is left of the entries is made up for by reading everything again
    throw;
  }
}

// Reported when all is in: who hears of a group may ask at once for what is in it. A group that comes back, because its
// deletion was taken back or its row was repaired, has content of which no entry tells. First comes who is let into
// which group: of what the user may no longer see nothing is reported.
void CStoreSession::ApplyForeign(const std::vector<ChangeEntry>& entries) {
  std::vector<CObserverHub::Event> events;
  std::vector<int32_t> arrived;
  const bool tells_of_audiences = std::any_of(entries.begin(), entries.end(), [](const ChangeEntry& entry) {
    return entry.kind == ChangeEntry::kAudiencesSaved;
  });
  const bool sees_another_tree = tells_of_audiences && ReadAudiences();
  for (const ChangeEntry& entry : entries) {
    if (entry.kind == ChangeEntry::kAudiencesSaved) {
      continue;
    }
    const bool is_group = entry.kind == ChangeEntry::kGroupSaved || entry.kind == ChangeEntry::kGroupRemoved;
    const bool was_there = catalog_.CountChildren(entry.code).has_value();
    const auto news = is_group ? ApplyForeignGroup(entry.code) : ApplyForeignPlan(entry.code);
    events.insert(events.end(), news.begin(), news.end());
    if (is_group && !was_there && catalog_.CountChildren(entry.code)) {
      arrived.push_back(entry.code);
    }
  }
  ReadBelow(arrived);
  if (sees_another_tree) {
    events.push_back(WholeTreeEvent());
  }
  hub_.Post(events);
}

void CStoreSession::ReadBelow(const std::vector<int32_t>& groups) {
  for (const int32_t group : groups) {
    if (catalog_.CountChildren(group).value_or(0) < repository_.CountChildren(group)) {
      const auto [below, plans] = repository_.Subtree(group);
      catalog_.Put(below, plans);
    }
  }
}

// The rows are read as they are now, which may be later than the entry: a row that is gone by now counts as removed,
// for the entry that removed it may name only the group it went with. So does one that stands nowhere in the tree.
std::vector<CObserverHub::Event> CStoreSession::ApplyForeignGroup(int32_t code) {
  const auto before = SeenGroup(code);
  if (const auto now = repository_.Group(code)) {
    catalog_.Put(*now);
  } else {
    catalog_.RemoveGroup(code);
  }
  return EventsOf(before, SeenGroup(code));
}

std::vector<CObserverHub::Event> CStoreSession::ApplyForeignPlan(int32_t code) {
  const auto before = SeenPlan(code);
  if (const auto now = repository_.Plan(code)) {
    catalog_.Put(*now);
  } else {
    catalog_.RemovePlan(code);
  }
  return EventsOf(before, SeenPlan(code));
}

void CStoreSession::Note(ChangeEntry::Kind kind, int32_t code, std::function<void(bool awaited)> apply) {
  journal_.push_back({{0, feed_.OwnOrigin(), kind, code}, std::move(apply)});
}

void CStoreSession::WriteJournal() {
  for (Step& step : journal_) {
    step.entry.seq = repository_.LogChange(step.entry);
  }
}

// At the next look, also when nothing seems to have changed by then.
void CStoreSession::ReadAgain() {
  feed_.Restart(-1);
  unread_ = true;
}

// Nothing counts as saved that went into a file that no one will find again.
void CStoreSession::RequireKept() {
  try {
    engine_.RequireInPlace();
  } catch (...) {
    ReadAgain();  // the change may be found after all
    throw;
  }
}

void CStoreSession::ApplyJournal() {
  cameras_.Keep();
  if (loaded_) {
    const bool awaited = is_awaited_();
    if (!journal_.empty()) {
      feed_.Restart(journal_.back().entry.seq);
    }
    for (const Step& step : journal_) {
      step.apply(awaited);
    }
  }
  journal_.clear();
}

// The server may have committed before the line broke. A user who reads that nothing was saved saves again, so the log
// of changes is asked first.
bool CStoreSession::WasCommitted(const CStoreError& error) {
  const std::vector<Step> journal = std::exchange(journal_, {});  // all is read again
  if (error.GetKind() != CStoreError::kConnectionLost || journal.empty() || journal.back().entry.seq == 0) {
    return false;
  }
  bool committed = false;
  try {
    AwaitConnection();
    committed = IsLogged(journal.back().entry);
  } catch (const CStoreError&) {
    throw CStoreError(CStoreError::kOutcomeUnknown, kUnknownOutcome);
  }
  try {
    Poll();
  } catch (const CStoreError&) {
    // It is saved all the same; the next look reads what this one did not.
  }
  return committed;
}

// In its turn to write: by then the lost transaction has ended, one way or the other.
bool CStoreSession::IsLogged(const ChangeEntry& entry) {
  CTransaction transaction(engine_, CTransaction::kWrite);
  const std::optional<std::string> origin = repository_.OriginOf(entry.seq);
  if (!origin && repository_.NewestChange() >= entry.seq) {
    throw CStoreError(CStoreError::kOutcomeUnknown,
                      kUnknownOutcome);  // others have written so much that the entry is forgotten
  }
  return origin == entry.origin;
}

void CStoreSession::AwaitConnection() {
  const auto end = steady_clock::now() + kPatience;
  for (;;) {
    try {
      Connect();
      return;
    } catch (const CStoreError&) {
      if (closed_ || steady_clock::now() >= end) {
        throw;
      }
    }
    std::this_thread::sleep_for(kPause);
  }
}

void CStoreSession::SaveNew(const GroupRow& group) {
  repository_.InsertGroup(group);
  Note(ChangeEntry::kGroupSaved, group.code, [this, group](bool awaited) { Put(group, awaited); });
}

void CStoreSession::SaveName(GroupRow group, const std::string& name) {
  repository_.RenameGroup(group.code, name);
  group.name = name;
  Note(ChangeEntry::kGroupSaved, group.code, [this, group](bool awaited) { PutRenamed(group, awaited); });
}

// The program moves no group. One that stands elsewhere by now was moved past it, which has not been reported yet.
void CStoreSession::PutRenamed(const GroupRow& group, bool awaited) {
  const auto before = Put(group, awaited);
  if (!before && catalog_.CountChildren(group.code)) {
    ReadAgain();  // it had no place in the tree before, nor had what is below it
  }
  if (awaited && before && before->parent != group.parent) {
    hub_.Post(EventsOf(before, SeenGroup(group.code)));
  }
}

void CStoreSession::RemoveGroup(int32_t code) {
  repository_.DeleteGroup(code);
  Note(ChangeEntry::kGroupRemoved, code, [this, code](bool awaited) {
    const auto before = SeenGroup(code);
    catalog_.RemoveGroup(code);
    if (!awaited) {
      hub_.Post(EventsOf(before, {}));
    }
  });
}

void CStoreSession::SaveNew(StoredPlan plan) {
  plan.row.cameras = cameras_.NumbersOf(CamerasOf(plan.pages));
  repository_.InsertPlan(plan);
  Note(ChangeEntry::kPlanSaved, plan.row.code, [this, row = plan.row](bool awaited) { Put(row, awaited); });
}

void CStoreSession::SaveChanged(StoredPlan plan) {
  plan.row.cameras = cameras_.NumbersOf(CamerasOf(plan.pages));
  repository_.UpdatePlan(plan);
  Note(ChangeEntry::kPlanSaved, plan.row.code, [this, row = plan.row](bool awaited) { Put(row, awaited); });
}

void CStoreSession::RemovePlan(int32_t code) {
  repository_.DeletePlan(code);
  Note(ChangeEntry::kPlanRemoved, code, [this, code](bool awaited) {
    const auto before = SeenPlan(code);
    catalog_.RemovePlan(code);
    if (!awaited) {
      hub_.Post(EventsOf(before, {}));
    }
  });
}

void CStoreSession::PutBack(const CKeptDeletions::Deletion& deletion) {
  deletions_.PutBack(deletion);
  if (deletion.is_group) {
    PutBackGroup(deletion.code);
  } else {
    PutBackPlan(deletion.code);
  }
}

void CStoreSession::PutBackInto(int32_t group, const CKeptDeletions::Deletion& deletion) {
  deletions_.PutBack(deletion);
  if (!repository_.Group(deletion.code)) {
    throw CStoreError(CStoreError::kGone, kTooLateToUndo);
  }
  const auto [groups, plans] = repository_.Subtree(deletion.code);
  repository_.MergeGroup(deletion.code, group);
  for (const GroupRow& row : groups) {
    if (row.parent == deletion.code) {
      PutBackGroup(row.code);
    }
  }
  for (const PlanRow& row : plans) {
    if (row.parent == deletion.code) {
      PutBackPlan(row.code);
    }
  }
}

// What is below the group is not reported row by row: a tree fetches it when the group is expanded.
void CStoreSession::PutBackGroup(int32_t code) {
  if (!repository_.Group(code)) {
    throw CStoreError(CStoreError::kGone, kTooLateToUndo);
  }
  Note(ChangeEntry::kGroupSaved, code, [this, code, rows = repository_.Subtree(code)](bool) {
    catalog_.Put(rows.first, rows.second);
    hub_.Post(EventsOf({}, SeenGroup(code)));
  });
}

void CStoreSession::PutBackPlan(int32_t code) {
  const auto row = repository_.Plan(code);
  if (!row) {
    throw CStoreError(CStoreError::kGone, kTooLateToUndo);
  }
  Note(ChangeEntry::kPlanSaved, code, [this, code, row](bool) {
    catalog_.Put(*row);
    hub_.Post(EventsOf({}, SeenPlan(code)));
  });
}

}  // namespace TarnHost::Store
