#include "copies/copy_update.h"

#include <QFileInfo>
#include <algorithm>
#include <iterator>
#include <utility>

#include "accounts/password_hash.h"
#include "marlog/marlog.h"
#include "store/migrations.h"
#include "store/new_store_file.h"
#include "store/store_texts.h"

namespace TarnHost::Store {
namespace {

constexpr int kMostRounds = 5;
constexpr size_t kMostInPlace = 5000;  // plans: until the end all pages that they change are held in memory

std::vector<int32_t> Difference(const std::set<int32_t>& all, const std::set<int32_t>& without) {
  std::vector<int32_t> rest;
  std::set_difference(all.begin(), all.end(), without.begin(), without.end(), std::back_inserter(rest));
  return rest;
}

// What cannot be opened is made, too, unless others hold it or the disk is full.
std::unique_ptr<CSqlEngine> ToBeRenewed(std::unique_ptr<CSqlEngine> (*open)(const QString&), const QString& path) {
  try {
    return open(path);
  } catch (const CStoreError& error) {
    const bool may_pass = error.GetKind() == CStoreError::kBusy || error.GetKind() == CStoreError::kNoRoom;
    throw CStoreError(may_pass ? error.GetKind() : CStoreError::kRefused, error.Text(), error.Words());
  }
}

template <class Work>
void InParts(const std::vector<int32_t>& numbers, const Work& work) {
  for (size_t begin = 0; begin < numbers.size(); begin += CCopySource::kMostAtOnce) {
    const size_t end = std::min(numbers.size(), begin + CCopySource::kMostAtOnce);
    work(std::vector<int32_t>(numbers.begin() + begin, numbers.begin() + end));
  }
}

// A copy of another site, user or layout, one that is damaged, and one of which too much has changed; in a catch
// clause.
void RequireToBeMade(const CStoreError& error) {
  const CStoreError::Kind kind = error.GetKind();
  if (kind != CStoreError::kRefused && kind != CStoreError::kDamaged && kind != CStoreError::kTooLarge) {
    throw;
  }
  marlog::Write("LyraClientInfo", marlog::Info, "A copy of the plans is made again: %s",
                qUtf8Printable(error.LogText()));
}

}  // namespace

CCopyUpdate::CCopyUpdate(RunOnStore run, CopyOwner owner, QDateTime now, const std::atomic<bool>& stopped)
    : run_(std::move(run)), owner_(std::move(owner)), now_(std::move(now)), stopped_(stopped) {}

void CCopyUpdate::RequireOwner(const CSqlEngine& store, const CopyOwner& owner) {
  const std::optional<int32_t> bound = store.BoundUser();
  if (bound.has_value() != owner.is_bound || (bound && *bound != owner.user_id)) {
    throw CStoreError(CStoreError::kChanged, QStringLiteral("Another user has logged in."));
  }
}

void CCopyUpdate::RequireWanted() const {
  if (stopped_) {
    throw CStoreError(CStoreError::kClosed, kStoreClosed);
  }
}

CCopyUpdate::Result CCopyUpdate::Run(const QString& path) {
  if (QFileInfo::exists(path)) {
    try {
      const auto copy = ToBeRenewed(&CopyFile::Open, path);
      return Renew(*copy, CopyFile::FactsOf(*copy));
    } catch (const CStoreError& error) {
      RequireToBeMade(error);
    }
  }
  return Make(path);
}

CCopyUpdate::Result CCopyUpdate::RunAgain(const QString& path) {
  try {
    return RunAtOnce(path);
  } catch (const CStoreError& error) {
    RequireToBeMade(error);
  }
  return Make(path);
}

CCopyUpdate::Result CCopyUpdate::RunAtOnce(const QString& path) {
  is_hash_known_ = true;
  const auto copy = ToBeRenewed(&CopyFile::OpenAgain, path);
  return Renew(*copy, CopyFile::FactsOf(*copy));
}

CCopyUpdate::Result CCopyUpdate::Renew(CSqlEngine& copy, CopyFacts facts) {
  if (facts.user_id != owner_.user_id || facts.user != owner_.user || facts.is_bound != owner_.is_bound) {
    throw CStoreError(CStoreError::kRefused, QStringLiteral("It is another user's."));
  }
  is_in_place_ = true;
  CTransaction transaction(copy, CTransaction::kWrite);
  CCopyWriter writer(copy);
  BringAlong(writer, &facts);
  CopyFile::SetFacts(copy, facts);
  transaction.Commit();
  return {facts.change, users_};
}

// Whole under another name first, so that under its own there never is a part of one.
CCopyUpdate::Result CCopyUpdate::Make(const QString& path) {
  is_hash_known_ = is_in_place_ = false;
  CopyFile::MakeFolder(QFileInfo(path).absolutePath());
  CNewStoreFile::RemoveLeftOvers(path);
  const CNewStoreFile part(path);
  Result result;
  {
    CSqliteEngine copy(part.Path(), CSqliteEngine::kMake, path);
    copy.Open();
    copy.RunOnce(QStringLiteral("PRAGMA application_id = %1").arg(CSqliteEngine::kApplicationId));
    copy.RunOnce("PRAGMA journal_mode = OFF");
    copy.RunOnce("PRAGMA synchronous = OFF");
    CTransaction transaction(copy, CTransaction::kWrite);
    MakeLayout(copy);
    CopyFacts facts;
    facts.user = owner_.user;
    facts.user_id = owner_.user_id;
    facts.is_bound = owner_.is_bound;
    CCopyWriter writer(copy);
    BringAlong(writer, &facts);
    CopyFile::SetFacts(copy, facts);
    transaction.Commit();
    result = {facts.change, users_};
  }
  if (QFileInfo::exists(path + "-journal")) {
    CopyFile::Remove(path);  // or what it holds of the old file would be written into the new one
  }
  part.Replace();
  return result;
}

// What changed while it was read is read again, so that the end is one state.
void CCopyUpdate::BringAlong(CCopyWriter& writer, CopyFacts* facts) {
  for (int round = 0; round < kMostRounds; ++round) {
    const CopyNews news =
        Ask([known = facts->change, mark = facts->mark](CCopySource& source) { return source.News(known, mark); });
    if (!facts->station.isEmpty() && facts->station != news.station) {
      throw CStoreError(CStoreError::kRefused, QStringLiteral("It is of another site."));
    }
    const bool is_last = news.change == facts->change && !news.is_whole;
    TakeTables(writer, facts, news);
    if (is_last) {
      break;
    }
  }
  facts->at = now_;
  facts->hash = HashOf(facts->hash);
}

void CCopyUpdate::TakeTables(CCopyWriter& writer, CopyFacts* facts, const CopyNews& news) {
  const std::set<int32_t> before = writer.Groups();
  for (const TableRows& rows : news.tables) {
    writer.Replace(rows);
  }
  if (news.has_cameras) {
    facts->withheld = news.withheld;
  }
  groups_ = writer.Groups();
  users_ = news.users;
  TakePlans(writer, news, before);
  store_hash_ = news.hash;
  facts->station = news.station;
  facts->change = news.change;
  facts->mark = news.mark;
}

// Of a group that the user sees since then, or no more, no entry names the plans.
void CCopyUpdate::TakePlans(CCopyWriter& writer, const CopyNews& news, const std::set<int32_t>& before) {
  writer.RemovePlansIn(Difference(before, groups_));
  if (news.is_whole) {
    writer.RemoveCameras();
    Fetch(writer, OtherPlans(writer));
  } else {
    Fetch(writer, PlansIn(Difference(groups_, before)));
    const std::vector<int32_t> changed(news.changed_plans.begin(), news.changed_plans.end());
    writer.RemovePlans(changed);
    Fetch(writer, changed);
  }
  TakeCameraNames(writer, news.has_groups);
}

std::vector<int32_t> CCopyUpdate::PlansIn(const std::vector<int32_t>& groups) {
  std::vector<int32_t> codes;
  InParts(groups, [&](const std::vector<int32_t>& part) {
    for (const PlanVersion& plan :
         Ask([part, seen = groups_](CCopySource& source) { return source.PlansIn(part, seen); })) {
      codes.push_back(plan.code);
    }
  });
  return codes;
}

// Those that the copy has in another state. The ones that it alone has go.
std::vector<int32_t> CCopyUpdate::OtherPlans(CCopyWriter& writer) {
  std::map<int32_t, PlanVersion> left = writer.Plans();
  std::vector<int32_t> others;
  for (const PlanVersion& plan : Ask([seen = groups_](CCopySource& source) { return source.Plans(seen); })) {
    const auto known = left.find(plan.code);
    if (known == left.end() || !(known->second == plan)) {
      others.push_back(plan.code);
    }
    if (known != left.end()) {
      left.erase(known);
    }
  }
  std::vector<int32_t> gone;
  for (const auto& plan : left) {
    gone.push_back(plan.first);
  }
  writer.RemovePlans(gone);
  return others;
}

void CCopyUpdate::Fetch(CCopyWriter& writer, const std::vector<int32_t>& codes) {
  fetched_ += codes.size();
  if (is_in_place_ && fetched_ > kMostInPlace) {
    throw CStoreError(CStoreError::kTooLarge, QStringLiteral("Too much of it has changed."));
  }
  InParts(codes, [&](const std::vector<int32_t>& part) {
    writer.PutPlans(Ask([part, seen = groups_](CCopySource& source) { return source.PlanRows(part, seen); }));
  });
}

void CCopyUpdate::TakeCameraNames(CCopyWriter& writer, bool has_groups) {
  InParts(writer.MissingCameras(), [&](const std::vector<int32_t>& part) {
    writer.Put(Ask([part](CCopySource& source) { return source.CameraNames(part); }));
  });
  if (has_groups) {
    writer.RemoveUnnamedCameras();
  }
}

// The same password keeps its hash: to make one takes long.
QString CCopyUpdate::HashOf(const QString& known) const {
  if (!owner_.is_bound) {
    return store_hash_;
  }
  if (is_hash_known_) {
    return known;
  }
  if (owner_.password.IsEmpty()) {
    return QString();
  }
  const bool is_known = !known.isEmpty() && PasswordHash::Fits(known, owner_.password);
  return is_known ? known : PasswordHash::Of(owner_.password);
}

}  // namespace TarnHost::Store
