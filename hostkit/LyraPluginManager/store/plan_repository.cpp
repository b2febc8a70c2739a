#include "store/plan_repository.h"

#include <limits>

#include "store/page_codec.h"
#include "store/plan_catalog.h"
#include "store/plan_soundness.h"
#include "store/store_functions.h"
#include "store/store_texts.h"
#include "store/text_rules.h"

namespace TarnHost::Store {
namespace {

constexpr int64_t kKeptChanges = 10000;

const char kGroupColumns[] = "code, parent_code, family, owner_id, name";
const char kPlanColumns[] =
    "code, parent_code, family, owner_id, name, split_type, page_count, auto_run, begin_time, end_time,"
    " cameras, revision";
const char kWholePlans[] =
    "SELECT plan.code, parent_code, family, owner_id, name, split_type, page_count, auto_run, begin_time, end_time,"
    " cameras, revision, pages, thumbnail, creator, creation_time, changed_by, changed_at, checksum"
    " FROM plan LEFT JOIN plan_content content ON content.code = plan.code ";
enum FurtherColumn { kPages = 12, kThumbnail, kCreator, kCreated, kChangedBy, kChangedAt, kChecksum };

GroupRow GroupFrom(const QSqlQuery& query) {
  return {query.value(0).toInt(), query.value(1).toInt(), query.value(2).toInt(), query.value(3).toInt(),
          query.value(4).toString().toStdString()};
}

PlanRow PlanFrom(const QSqlQuery& query) {
  PlanRow row;
  const QString name = query.value(4).toString();
  row.code = query.value(0).toInt();
  row.parent = query.value(1).toInt();
  row.family = query.value(2).toInt();
  row.owner = query.value(3).toInt();
  row.name = name.toStdString();
  row.folded_name = Folded(name);
  row.split_type = query.value(5).toInt();
  row.page_count = query.value(6).toInt();
  row.auto_run = query.value(7).toInt() != 0;
  row.begin_second = SecondOfDay(query.value(8).toString());
  row.end_second = SecondOfDay(query.value(9).toString());
  row.cameras = NumbersFromText(query.value(10).toString().toStdString());
  row.revision = query.value(11).toLongLong();
  return row;
}

StoredPlan WholePlanFrom(const QSqlQuery& query) {
  StoredPlan plan;
  plan.row = PlanFrom(query);
  plan.name = query.value(4).toString();
  plan.begin_time = query.value(8).toString();
  plan.end_time = query.value(9).toString();
  plan.thumbnail = query.value(kThumbnail).toByteArray();
  plan.creator = query.value(kCreator).toString();
  plan.creation_time = query.value(kCreated).toString();
  plan.revision = plan.row.revision;
  plan.changed_by = query.value(kChangedBy).toString();
  plan.changed_at = query.value(kChangedAt).toString();
  TakePages(&plan, query.value(kPages).toString(), query.value(kChecksum).toString());
  return plan;
}

}  // namespace

const char kSharedGroupName[] = "Shared";

// UNION, not UNION ALL: ends for groups that are below themselves, too.
const char kGroupTree[] =
    "WITH RECURSIVE tree (code) AS (SELECT code FROM plan_group WHERE code = ?"
    " UNION SELECT child.code FROM plan_group child JOIN tree ON child.parent_code = tree.code) ";

int32_t SplitOf(const std::list<view_plugin_protocol::PlanPage>& pages) {
  return pages.empty() ? 1 : pages.front().split_type;
}

void StoredPlan::Complete() {
  row.name = name.toStdString();
  row.folded_name = Folded(name);
  row.split_type = SplitOf(pages);
  row.page_count = static_cast<int32_t>(pages.size());
  row.begin_second = SecondOfDay(begin_time);
  row.end_second = SecondOfDay(end_time);
}

std::vector<GroupRow> CPlanRepository::AllGroups() {
  std::vector<GroupRow> rows;
  engine_.ForEach(QStringLiteral("SELECT %1 FROM plan_group ORDER BY code").arg(kGroupColumns), {},
                  [&](const QSqlQuery& query) { rows.push_back(GroupFrom(query)); });
  return rows;
}

std::vector<PlanRow> CPlanRepository::AllPlans() {
  std::vector<PlanRow> rows;
  engine_.ForEach(QStringLiteral("SELECT %1 FROM plan ORDER BY code").arg(kPlanColumns), {},
                  [&](const QSqlQuery& query) { rows.push_back(PlanFrom(query)); });
  return rows;
}

std::pair<std::vector<GroupRow>, std::vector<PlanRow>> CPlanRepository::Subtree(int32_t group) {
  std::pair<std::vector<GroupRow>, std::vector<PlanRow>> rows;
  const QString tree = kGroupTree;
  engine_.ForEach(tree + QStringLiteral("SELECT %1 FROM plan_group WHERE code IN (SELECT code FROM tree) ORDER BY code")
                             .arg(kGroupColumns),
                  {group}, [&](const QSqlQuery& query) { rows.first.push_back(GroupFrom(query)); });
  engine_.ForEach(
      tree + QStringLiteral("SELECT %1 FROM plan WHERE parent_code IN (SELECT code FROM tree) ORDER BY code")
                 .arg(kPlanColumns),
      {group}, [&](const QSqlQuery& query) { rows.second.push_back(PlanFrom(query)); });
  return rows;
}

std::optional<GroupRow> CPlanRepository::Group(int32_t code) {
  std::optional<GroupRow> row;
  engine_.ForEach(QStringLiteral("SELECT %1 FROM plan_group WHERE code = ?").arg(kGroupColumns), {code},
                  [&](const QSqlQuery& query) { row = GroupFrom(query); });
  return row;
}

std::optional<GroupRow> CPlanRepository::OwnTopGroup(int32_t owner, const QString& name) {
  std::optional<GroupRow> row;
  engine_.ForEach(
      QStringLiteral("SELECT %1 FROM plan_group WHERE parent_code = ? AND owner_id = ? AND name = ? ORDER BY code"
                     " LIMIT 1")
          .arg(kGroupColumns),
      {int32_t{OwnRoot}, owner, name}, [&](const QSqlQuery& query) { row = GroupFrom(query); });
  return row;
}

std::optional<PlanRow> CPlanRepository::Plan(int32_t code) {
  std::optional<PlanRow> row;
  engine_.ForEach(QStringLiteral("SELECT %1 FROM plan WHERE code = ?").arg(kPlanColumns), {code},
                  [&](const QSqlQuery& query) { row = PlanFrom(query); });
  return row;
}

std::optional<StoredPlan> CPlanRepository::WholePlan(int32_t code) {
  std::optional<StoredPlan> plan;
  engine_.ForEach(QLatin1String(kWholePlans) + "WHERE plan.code = ?", {code},
                  [&](const QSqlQuery& query) { plan = WholePlanFrom(query); });
  return plan;
}

std::optional<StoredPlan> CPlanRepository::WholePlan(int32_t code, int32_t user) {
  auto plan = WholePlan(code);
  if (plan && !audiences_.IsVisible(plan->row, user)) {
    return std::nullopt;
  }
  return plan;
}

std::optional<CKeptDeletions::Deletion> CPlanRepository::DeletionOf(int32_t plan, int32_t user) {
  const auto deletion = CKeptDeletions(engine_).OfPlan(plan);
  if (deletion && !audiences_.IsKeptPlanVisible(plan, user)) {
    return std::nullopt;
  }
  return deletion;
}

void CPlanRepository::ForEachPlan(const std::function<void(const StoredPlan&, Vouched)>& visit) {
  engine_.ForEach(QLatin1String(kWholePlans) + "ORDER BY plan.code", {}, [&](const QSqlQuery& query) {
    const StoredPlan plan = WholePlanFrom(query);
    visit(plan, CheckedBy(query.value(kChecksum).toString(), plan, query.value(kPages).toString()));
  });
}

std::pair<int32_t, int32_t> CPlanRepository::DefaultView(int32_t user) {
  std::pair<int32_t, int32_t> view(0, 0);
  engine_.ForEach("SELECT code, type FROM default_view WHERE user_id = ?", {user}, [&](const QSqlQuery& query) {
    view = {query.value(0).toInt(), query.value(1).toInt()};
  });
  return view;
}

int CPlanRepository::CountHiddenPlansShowing(const QStringList& cameras) {
  CStoreFunctions* const functions = engine_.Functions();
  return functions != nullptr ? functions->CountHiddenPlansShowing(cameras) : 0;
}

std::map<int32_t, std::pair<int32_t, int32_t>> CPlanRepository::DefaultViews() {
  std::map<int32_t, std::pair<int32_t, int32_t>> views;
  engine_.ForEach("SELECT user_id, code, type FROM default_view", {}, [&](const QSqlQuery& query) {
    views[query.value(0).toInt()] = {query.value(1).toInt(), query.value(2).toInt()};
  });
  return views;
}

bool CPlanRepository::HasChildren(int32_t group) {
  return engine_.Value("SELECT 1 FROM plan_group WHERE parent_code = ? LIMIT 1", {group}).isValid() ||
         engine_.Value("SELECT 1 FROM plan WHERE parent_code = ? LIMIT 1", {group}).isValid();
}

int CPlanRepository::CountChildren(int32_t group) {
  return engine_.Value("SELECT count(*) FROM plan_group WHERE parent_code = ?", {group}).toInt() +
         engine_.Value("SELECT count(*) FROM plan WHERE parent_code = ?", {group}).toInt();
}

int CPlanRepository::LevelOf(int32_t group) {
  int level = 1;
  while (!IsRootCode(group) && level <= CPlanCatalog::kMostLevels) {
    const QVariant parent = engine_.Value("SELECT parent_code FROM plan_group WHERE code = ?", {group});
    if (!parent.isValid()) {
      break;
    }
    group = parent.toInt();
    ++level;
  }
  return level;
}

int64_t CPlanRepository::Advance(const char* counter, int64_t count) {
  if (CStoreFunctions* functions = engine_.Functions()) {
    return functions->Advance(counter, count);
  }
  engine_.Execute("UPDATE counter SET value = value + ? WHERE name = ?", {qint64(count), counter});
  return engine_.Value("SELECT value FROM counter WHERE name = ?", {counter}).toLongLong();
}

int32_t CPlanRepository::NewCode() {
  return NewCodes(1);
}

int32_t CPlanRepository::NewCodes(int32_t count) {
  const int64_t last = Advance("code", count);
  if (last > std::numeric_limits<int32_t>::max()) {
    throw CStoreError(CStoreError::kRefused, kNoMoreCodes);
  }
  return static_cast<int32_t>(last - count + 1);
}

void CPlanRepository::InsertGroup(const GroupRow& group) {
  engine_.Execute("INSERT INTO plan_group (code, parent_code, family, owner_id, name) VALUES (?, ?, ?, ?, ?)",
                  {group.code, group.parent, group.family, group.owner, ToQt(group.name)});
}

void CPlanRepository::RenameGroup(int32_t code, const std::string& name) {
  engine_.Execute("UPDATE plan_group SET name = ? WHERE code = ?", {ToQt(name), code});
}

void CPlanRepository::DeleteGroup(int32_t code) {
  if (CStoreFunctions* functions = engine_.Functions()) {
    return functions->Delete(code, true);
  }
  const QString tree = kGroupTree;
  engine_.Execute(tree +
                      "DELETE FROM default_view WHERE code IN (SELECT code FROM tree) OR code IN"
                      " (SELECT code FROM plan WHERE parent_code IN (SELECT code FROM tree))",
                  {code});
  engine_.Execute(tree + "DELETE FROM plan WHERE parent_code IN (SELECT code FROM tree)", {code});
  engine_.Execute(tree + "DELETE FROM plan_group WHERE code IN (SELECT code FROM tree)", {code});
}

// A damaged plan keeps the checksum that shows it.
void CPlanRepository::MergeGroup(int32_t code, int32_t into) {
  std::vector<int32_t> plans;
  engine_.ForEach("SELECT code FROM plan WHERE parent_code = ?", {code},
                  [&plans](const QSqlQuery& query) { plans.push_back(query.value(0).toInt()); });
  for (const int32_t plan_code : plans) {
    auto plan = WholePlan(plan_code);
    if (plan && plan->damage.IsEmpty()) {
      plan->row.parent = into;
      UpdatePlan(*plan);
    }
  }
  engine_.Execute("UPDATE plan SET parent_code = ? WHERE parent_code = ?", {into, code});
  engine_.Execute("UPDATE plan_group SET parent_code = ? WHERE parent_code = ?", {into, code});
  engine_.Execute("UPDATE default_view SET code = ? WHERE code = ?", {into, code});
  DeleteGroup(code);
}

std::optional<int32_t> CPlanRepository::SharedGroup(int32_t user) {
  if (CStoreFunctions* functions = engine_.Functions()) {
    return functions->SharedGroup(user);
  }
  const auto group = OwnTopGroup(user, kSharedGroupName);
  return group ? std::make_optional(group->code) : std::nullopt;
}

void CPlanRepository::ShareGroup(const GroupRow& group) {
  if (CStoreFunctions* functions = engine_.Functions()) {
    return functions->ShareGroup(group);
  }
  InsertGroup(group);
}

void CPlanRepository::SharePlan(const StoredPlan& plan) {
  if (CStoreFunctions* functions = engine_.Functions()) {
    const QString pages = PagesToText(plan.pages);
    return functions->SharePlan(plan, pages, ChecksumOf(plan, pages));
  }
  InsertPlan(plan);
}

void CPlanRepository::InsertPlan(const StoredPlan& plan) {
  const QString pages = PagesToText(plan.pages);
  engine_.Execute(
      "INSERT INTO plan (code, parent_code, family, owner_id, name, split_type, page_count, auto_run, begin_time,"
      " end_time, cameras, creator, creation_time, revision, changed_by, changed_at, checksum)"
      " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
      {plan.row.code, plan.row.parent, plan.row.family, plan.row.owner, plan.name, plan.row.split_type,
       plan.row.page_count, int(plan.row.auto_run), plan.begin_time, plan.end_time,
       ToQt(NumbersToText(plan.row.cameras)), plan.creator, plan.creation_time, qint64(plan.revision), plan.changed_by,
       plan.changed_at, ChecksumOf(plan, pages)});
  SetContent(plan, pages);
}

void CPlanRepository::UpdatePlan(const StoredPlan& plan) {
  const QString pages = PagesToText(plan.pages);
  engine_.Execute(
      "UPDATE plan SET parent_code = ?, family = ?, owner_id = ?, name = ?, split_type = ?, page_count = ?,"
      " auto_run = ?, begin_time = ?, end_time = ?, cameras = ?, revision = ?, changed_by = ?, changed_at = ?,"
      " checksum = ? WHERE code = ?",
      {plan.row.parent, plan.row.family, plan.row.owner, plan.name, plan.row.split_type, plan.row.page_count,
       int(plan.row.auto_run), plan.begin_time, plan.end_time, ToQt(NumbersToText(plan.row.cameras)),
       qint64(plan.revision), plan.changed_by, plan.changed_at, ChecksumOf(plan, pages), plan.row.code});
  SetContent(plan, pages);
}

// A plan that was only renamed or moved leaves its content, most of its bytes, as it is.
void CPlanRepository::SetContent(const StoredPlan& plan, const QString& pages) {
  engine_.Execute(
      "INSERT INTO plan_content (code, pages, thumbnail) VALUES (?, ?, ?)"
      " ON CONFLICT (code) DO UPDATE SET pages = excluded.pages, thumbnail = excluded.thumbnail"
      " WHERE plan_content.pages <> excluded.pages OR plan_content.thumbnail <> excluded.thumbnail"
      " OR (plan_content.thumbnail IS NULL) <> (excluded.thumbnail IS NULL)",
      {plan.row.code, pages, plan.thumbnail});
}

void CPlanRepository::DeletePlan(int32_t code) {
  if (CStoreFunctions* functions = engine_.Functions()) {
    return functions->Delete(code, false);
  }
  engine_.Execute("DELETE FROM default_view WHERE code = ?", {code});
  engine_.Execute("DELETE FROM plan WHERE code = ?", {code});
}

int64_t CPlanRepository::NewestChange() {
  return engine_.Value("SELECT value FROM counter WHERE name = 'seq'").toLongLong();
}

CPlanRepository::News CPlanRepository::NewsAfter(int64_t seq) {
  News news;
  engine_.ForEach(
      "SELECT newest.value, log.seq, log.origin, log.kind, log.code FROM counter newest"
      " LEFT JOIN change_log log ON log.seq > ? WHERE newest.name = 'seq' ORDER BY log.seq",
      {qint64(seq)}, [&news](const QSqlQuery& query) {
        news.newest = query.value(0).toLongLong();
        if (!query.isNull(1)) {
          news.entries.push_back({query.value(1).toLongLong(), query.value(2).toString().toStdString(),
                                  query.value(3).toInt(), query.value(4).toInt()});
        }
      });
  return news;
}

std::optional<std::string> CPlanRepository::OriginOf(int64_t seq) {
  const QVariant origin = engine_.Value("SELECT origin FROM change_log WHERE seq = ?", {qint64(seq)});
  return origin.isValid() ? std::make_optional(origin.toString().toStdString()) : std::nullopt;
}

int64_t CPlanRepository::LogChange(const ChangeEntry& entry) {
  if (CStoreFunctions* functions = engine_.Functions()) {
    return functions->LogChange(entry);
  }
  const int64_t seq = Advance("seq", 1);
  engine_.Execute("INSERT INTO change_log (seq, origin, kind, code) VALUES (?, ?, ?, ?)",
                  {qint64(seq), ToQt(entry.origin), entry.kind, entry.code});
  engine_.Execute("DELETE FROM change_log WHERE seq <= ?", {qint64(seq - kKeptChanges)});
  engine_.Announce();
  return seq;
}

}  // namespace TarnHost::Store
