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
// The log of changes does not tell of a camera that was renamed past the program.
constexpr auto kBetweenCameraNames = std::chrono::seconds(60);
constexpr int kTryPatience = 200;
// As many as may start while a store is away for a night, and that need little memory.
constexpr size_t kTimedInMemory = 64;
constexpr int32_t kBetweenTimedSeconds = 10;
const char kUnknownOutcome[] = QT_TRANSLATE_NOOP(
    "TarnHost::Store",
    "The connection to the plan store was lost while the change was being saved. Look whether it is there before you"
    " try again.");

}  // namespace

CStoreSession::CStoreSession(CSqlEngine& engine, CPlanCatalog& catalog, CPlanMemory& memory,
                             const std::atomic<int32_t>& user, CObserverHub& hub, std::function<bool()> is_awaited,
                             const std::atomic<bool>& closed)
    : engine_(engine),
      repository_(engine),
      deletions_(engine),
      cameras_(engine, &catalog.Cameras()),
      catalog_(catalog),
      memory_(memory),
      user_(user),
      hub_(hub),
      is_awaited_(std::move(is_awaited)),
      closed_(closed),
      feed_(QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString()) {}

void CStoreSession::LoadCatalog() {
  CTransaction transaction(engine_, CTransaction::kRead);
  ReadWhole();
  transaction.Commit();
  hub_.Post({CamerasEvent()});
}

void CStoreSession::DropCatalog() {
  loaded_ = false;
  catalog_.Clear();
}

// In one transaction, so that there is no change between what is reported and what is read.
void CStoreSession::ReloadCatalog() {
  CTransaction transaction(engine_, CTransaction::kRead);
  CatchUp();
  DropCatalog();
  ReadWhole();
  transaction.Commit();
  hub_.Post({CamerasEvent()});
}

void CStoreSession::ReadWhole() {
  const int64_t newest = repository_.NewestChange();
  cameras_.ReadAgain();
  read_users_();
  ReadCameraNames();
  ReadAudiences();
  memory_.SetDefaultViews(repository_.DefaultViews());
  catalog_.Replace(repository_.AllGroups(), repository_.AllPlans());
  memory_.Clear();
  timed_.change = -1;
  feed_.Restart(newest);
  loaded_ = true;
}

// Whether the current user now sees another part of the tree.
bool CStoreSession::ReadAudiences() {
  return catalog_.SetAudiences(repository_.Audiences().All(), user_);
}

std::optional<GroupRow> CStoreSession::SeenGroup(int32_t code, int32_t user) const {
  return catalog_.FindGroup(code, user);
}

std::optional<PlanRow> CStoreSession::SeenPlan(int32_t code, int32_t user) const {
  const auto hit = catalog_.FindPlan(code, user);
  return hit ? std::make_optional(hit->plan) : std::nullopt;
}

void CStoreSession::ReadCameraNames() {
  catalog_.Cameras().SetSiteNames(repository_.Cameras().Names());
  next_camera_names_ = steady_clock::now() + kBetweenCameraNames;
}

void CStoreSession::Poll() {
  // Asked without plans, too: it takes what the server announces, and finds out whether there still is one.
  unread_ = engine_.MayHaveChanged() || unread_;  // until it was read: the engine reports a change once
  if (loaded_ && unread_) {
    CTransaction transaction(engine_, CTransaction::kRead);
    CatchUp();
    transaction.Commit();
    unread_ = false;
  }
  if (loaded_ && steady_clock::now() >= next_camera_names_) {
    ReadCameraNames();
  }
}

// Without waiting for others for long: who changes something waits behind it.
void CStoreSession::TryToWrite() {
  engine_.SetPatience(kTryPatience);
  try {
    Write([this] {
      Note(ChangeEntry::kPlanSaved, 0, [](bool) {});
      return true;
    });
  } catch (const CStoreError&) {
    engine_.SetPatience(CSqlEngine::kPatience);
    throw;
  }
  engine_.SetPatience(CSqlEngine::kPatience);
}

// The engine reports what others write.
void CStoreSession::LookAgain() {
  unread_ = true;
  try {
    Poll();
  } catch (const CStoreError&) {
  }
}

void CStoreSession::Connect() {
  engine_.Reopen();
  ++connections_;
  feed_.Restart(-1);  // whatever comes next: all is to be read again
}

void CStoreSession::OpenAgain(const std::function<void()>& opened) {
  Connect();
  opened();
  if (loaded_) {
    LoadCatalog();
  }
}

void CStoreSession::LoadCopy(CSqlEngine& copy) {
  CPlanRepository repository(copy);
  const auto names = repository.Cameras().Names();
  auto audiences = repository.Audiences().All();
  auto views = repository.DefaultViews();
  const auto groups = repository.AllGroups();
  auto plans = repository.AllPlans();
  CCameraDictionary(copy, &catalog_.Cameras()).ReadAgain();  // as all is in memory already or stays as it was
  catalog_.Cameras().SetSiteNames(names);
  catalog_.SetAudiences(std::move(audiences), user_);
  memory_.SetDefaultViews(std::move(views));
  catalog_.Replace(groups, std::move(plans));
  memory_.Clear();
  feed_.Restart(-1);
  loaded_ = true;
}

std::optional<int64_t> CStoreSession::NewestChange() const {
  return loaded_ && feed_.Last() >= 0 ? std::make_optional(feed_.Last()) : std::nullopt;
}

void CStoreSession::Reconnect(const std::function<void()>& connected) {
  Connect();
  connected();
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
  if (!loaded_) {
    return;
  }
  const CPlanRepository::News news = NewsNow();
  if (news.newest == feed_.Last()) {
    return;
  }
  if (!feed_.Take(news.entries, news.newest)) {
    ReadWhole();
    hub_.Post({WholeTreeEvent(), CamerasEvent()});
    return;
  }
  try {
    ApplyForeign(news.entries);
  } catch (...) {
    feed_.Restart(-1);  // what is left of the entries is made up for by reading everything again
    throw;
  }
}

// Where all is to be read again, the entries are of no interest.
CPlanRepository::News CStoreSession::NewsNow() {
  if (feed_.Last() < 0) {
    return {repository_.NewestChange(), {}};
  }
  return repository_.NewsAfter(feed_.Last());
}

// Reported when all is in: who hears of a group may ask at once for what is in it. A group that comes back, because its
// deletion was taken back or its row was repaired, has content that no entry names. First comes who is let into
// which group: of what the user may no longer see nothing is reported.
void CStoreSession::ApplyForeign(const std::vector<ChangeEntry>& entries) {
  std::vector<CObserverHub::Event> events;
  std::vector<int32_t> arrived;
  const auto tell_of = [&entries](int32_t kind) {
    return std::any_of(entries.begin(), entries.end(), [kind](const ChangeEntry& entry) { return entry.kind == kind; });
  };
  const bool may_do_something_else = tell_of(ChangeEntry::kUsersSaved) && read_users_();
  const bool sees_another_tree = (tell_of(ChangeEntry::kAudiencesSaved) && ReadAudiences()) || may_do_something_else;
  if (sees_another_tree && engine_.BoundUser()) {
    ReadWhole();  // the database gives no row that the user does not see
    hub_.Post({WholeTreeEvent(), CamerasEvent()});
    return;
  }
  if (tell_of(ChangeEntry::kDefaultViewsSaved)) {
    memory_.SetDefaultViews(repository_.DefaultViews());
  }
  if (tell_of(ChangeEntry::kCamerasSaved)) {
    ReadCameraNames();
    events.push_back(CamerasEvent());
  }
  for (const ChangeEntry& entry : entries) {
    if (entry.kind >= ChangeEntry::kAudiencesSaved) {
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

void CStoreSession::ReadCamerasOf(const std::vector<PlanRow>& plans) {
  for (const PlanRow& plan : plans) {
    cameras_.ReadFor(plan);
  }
}

void CStoreSession::ReadBelow(const std::vector<int32_t>& groups) {
  for (const int32_t group : groups) {
    if (catalog_.CountChildren(group).value_or(0) < repository_.CountChildren(group)) {
      const auto [below, plans] = repository_.Subtree(group);
      ReadCamerasOf(plans);
      catalog_.Put(below, plans);
    }
  }
}

// The rows are read as they are now, which may be later than the entry: a row that is gone by now counts as removed,
// for the entry that removed it may name only the group it went with. So does one that stands nowhere in the tree.
std::vector<CObserverHub::Event> CStoreSession::ApplyForeignGroup(int32_t code) {
  const int32_t user = user_;
  const auto before = SeenGroup(code, user);
  if (const auto now = repository_.Group(code)) {
    catalog_.Put(*now);
  } else {
    catalog_.RemoveGroup(code);
  }
  return EventsOf(before, SeenGroup(code, user));
}

std::vector<CObserverHub::Event> CStoreSession::ApplyForeignPlan(int32_t code) {
  const int32_t user = user_;
  const auto before = SeenPlan(code, user);
  if (const auto now = ReadPlan(code)) {
    cameras_.ReadFor(*now);
    catalog_.Put(*now);
  } else {
    memory_.Remove(code);
    catalog_.RemovePlan(code);
  }
  return EventsOf(before, SeenPlan(code, user));
}

// Who hears that it has changed asks for all of it at once, on the GUI thread.
std::optional<PlanRow> CStoreSession::ReadPlan(int32_t code) {
  if (memory_.Has(code) || hub_.IsObserved({ResourceData::RT_VIEW, std::to_string(code)})) {
    return Remember(code);
  }
  const auto row = repository_.Plan(code);
  if (row && row->auto_run) {
    return Remember(code);
  }
  return row;
}

std::optional<PlanRow> CStoreSession::Remember(int32_t plan) {
  auto whole = repository_.WholePlan(plan);
  if (!whole) {
    memory_.Remove(plan);
    return std::nullopt;
  }
  const PlanRow row = whole->row;
  memory_.Put(std::move(*whole));
  return row;
}

// Looks again when something has changed, and as the time goes on.
void CStoreSession::KeepTimedPlans(int32_t second_of_day) {
  const int32_t user = user_;
  const bool is_known = timed_.change == feed_.Last() && timed_.user == user && timed_.second <= second_of_day &&
                        second_of_day < timed_.second + kBetweenTimedSeconds;
  if (!loaded_ || is_known) {
    return;
  }
  const auto next = catalog_.NextAutomaticPlans(second_of_day, user, kTimedInMemory);
  memory_.Keep({next.begin(), next.end()});
  for (const int32_t code : next) {
    if (!memory_.Has(code)) {
      Remember(code);
    }
  }
  timed_ = {feed_.Last(), user, second_of_day};
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
    } catch (const CStoreError& error) {
      if (closed_ || error.RefusesAccount() || steady_clock::now() >= end) {
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
    hub_.Post(EventsOf(before, SeenGroup(group.code, user_)));
  }
}

void CStoreSession::RemoveGroup(int32_t code) {
  repository_.DeleteGroup(code);
  Note(ChangeEntry::kGroupRemoved, code, [this, code](bool awaited) {
    const auto before = SeenGroup(code, user_);
    catalog_.RemoveGroup(code);
    if (!awaited) {
      hub_.Post(EventsOf(before, {}));
    }
  });
}

void CStoreSession::SaveNew(StoredPlan plan) {
  plan.row.revision = plan.revision;
  plan.row.cameras = cameras_.NumbersOf(CamerasOf(plan.pages));
  repository_.InsertPlan(plan);
  NoteSaved(std::move(plan));
}

void CStoreSession::SaveShared(const GroupRow& group) {
  repository_.ShareGroup(group);
  Note(ChangeEntry::kGroupSaved, group.code, [this, group](bool awaited) { Put(group, awaited); });
}

void CStoreSession::SaveShared(StoredPlan plan) {
  plan.row.revision = plan.revision;
  plan.row.cameras = cameras_.NumbersOf(CamerasOf(plan.pages));
  repository_.SharePlan(plan);
  Note(ChangeEntry::kPlanSaved, plan.row.code, [this, row = plan.row](bool awaited) { Put(row, awaited); });
}

void CStoreSession::SaveChanged(StoredPlan plan) {
  plan.row.revision = plan.revision;
  plan.row.cameras = cameras_.NumbersOf(CamerasOf(plan.pages), plan.row.cameras);
  repository_.UpdatePlan(plan);
  NoteSaved(std::move(plan));
}

void CStoreSession::NoteSaved(StoredPlan plan) {
  const int32_t code = plan.row.code;
  Note(ChangeEntry::kPlanSaved, code, [this, plan = std::move(plan)](bool awaited) {
    memory_.Put(plan);
    Put(plan.row, awaited);
  });
}

void CStoreSession::RemovePlan(int32_t code) {
  repository_.DeletePlan(code);
  Note(ChangeEntry::kPlanRemoved, code, [this, code](bool awaited) {
    const auto before = SeenPlan(code, user_);
    memory_.Remove(code);
    catalog_.RemovePlan(code);
    if (!awaited) {
      hub_.Post(EventsOf(before, {}));
    }
  });
}

void CStoreSession::PutBack(const CKeptDeletions::Deletion& deletion) {
  deletions_.PutBack(deletion);
  DefaultViewsChanged();
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
  DefaultViewsChanged();
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

// Read before the commit: what comes after it must not fail.
void CStoreSession::DefaultViewsChanged() {
  Note(ChangeEntry::kDefaultViewsSaved, 0,
       [this, views = repository_.DefaultViews()](bool) { memory_.SetDefaultViews(views); });
}

// The names are read with the next look, which is near: what comes after a commit must not fail.
void CStoreSession::CamerasChanged() {
  Note(ChangeEntry::kCamerasSaved, 0, [this](bool) {
    next_camera_names_ = {};
    hub_.Post({CamerasEvent()});
  });
}

// What is below the group is not reported row by row: a tree fetches it when the group is expanded.
void CStoreSession::PutBackGroup(int32_t code) {
  if (!repository_.Group(code)) {
    throw CStoreError(CStoreError::kGone, kTooLateToUndo);
  }
  const auto rows = repository_.Subtree(code);
  ReadCamerasOf(rows.second);
  Note(ChangeEntry::kGroupSaved, code, [this, code, rows](bool) {
    catalog_.Put(rows.first, rows.second);
    hub_.Post(EventsOf({}, SeenGroup(code, user_)));
  });
}

void CStoreSession::PutBackPlan(int32_t code) {
  const auto row = repository_.Plan(code);
  if (!row) {
    throw CStoreError(CStoreError::kGone, kTooLateToUndo);
  }
  ReadCamerasOf({*row});
  Note(ChangeEntry::kPlanSaved, code, [this, code, row](bool) {
    memory_.Remove(code);  // it may stand elsewhere now
    catalog_.Put(*row);
    hub_.Post(EventsOf({}, SeenPlan(code, user_)));
  });
}

}  // namespace TarnHost::Store
