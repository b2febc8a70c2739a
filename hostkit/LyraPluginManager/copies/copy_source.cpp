#include "copies/copy_source.h"

#include <QCryptographicHash>
#include <algorithm>
#include <utility>

#include "TarnHost/camera_address.h"
#include "accounts/account_repository.h"
#include "store/plan_catalog.h"
#include "store/plan_repository.h"
#include "store/text_rules.h"

namespace TarnHost::Store {
namespace {

const char kPlanColumns[] =
    "code, parent_code, family, owner_id, name, split_type, page_count, auto_run, begin_time, end_time, cameras,"
    " creator, creation_time, revision, changed_by, changed_at, checksum, pages";

constexpr int kMarked = 50, kMarkLength = 32;

// One statement for any number of values: the rest are zeros, which are no one's number.
QString InSoMany() {
  return QStringLiteral(" IN (?") + QStringLiteral(", ?").repeated(CCopySource::kMostAtOnce - 1) + ')';
}

QVariantList Padded(const std::vector<int32_t>& numbers) {
  QVariantList values;
  for (const int32_t number : numbers) {
    values.append(number);
  }
  while (values.size() < CCopySource::kMostAtOnce) {
    values.append(0);
  }
  return values;
}

bool HasPassword(const QString& url) {
  CameraAddress address;
  QString why;
  const bool is_read = url.startsWith(QLatin1String("http")) ? ReadDeviceAddress(url, &address, &why)
                                                             : ReadCameraAddress(url, &address, &why);
  return !is_read || !address.user.empty() || MayHoldPassword(url.toStdString());
}

// Of rows that begin with the camera and end with an address: those in which a password may stand lose it.
void Withhold(TableRows* rows, std::set<int32_t>* withheld) {
  for (QVariantList& row : rows->rows) {
    if (HasPassword(row.last().toString())) {
      withheld->insert(row.first().toInt());
      row.last() = QString();
    }
  }
}

bool IsSeen(int32_t parent, int32_t family, int32_t owner, int32_t user, const std::set<int32_t>& groups) {
  if (family == OwnFamily) {
    return owner == user;
  }
  return family != PublicFamily || IsRootCode(parent) || groups.count(parent) != 0;
}

}  // namespace

TableRows CCopySource::ReadAs(const char* table, const char* columns, const QString& selected, const QString& rest,
                              const QVariantList& values) {
  TableRows rows{QLatin1String(table), QLatin1String(columns), {}};
  const int count = rows.columns.count(',') + 1;
  store_.ForEach("SELECT " + selected + " FROM " + rows.table + rest, values, [&](const QSqlQuery& query) {
    QVariantList row;
    for (int column = 0; column < count; ++column) {
      row.append(query.value(column));
    }
    rows.rows.push_back(std::move(row));
  });
  return rows;
}

TableRows CCopySource::Read(const char* table, const char* columns, const QString& rest, const QVariantList& values) {
  return ReadAs(table, columns, QLatin1String(columns), rest, values);
}

// Entries are numbered without holes: where one is missing, it may have been about anything. So may all of them where
// the log goes on from an earlier one than the copy knows: a standby that lagged became the server, or a backup was put
// back, and numbers were given once more.
CopyNews CCopySource::News(int64_t known, const QString& mark) {
  CTransaction one_state(store_, CTransaction::kRead);
  CPlanRepository repository(store_);
  CopyNews news;
  CPlanRepository::News log;
  if (known < 0) {
    log.newest = repository.NewestChange();
  } else {
    log = repository.NewsAfter(known);
  }
  news.change = log.newest;
  const std::vector<ChangeEntry>& entries = log.entries;
  news.is_whole = known < 0 || static_cast<int64_t>(entries.size()) != news.change - known || MarkOf(known) != mark;
  news.mark = MarkOf(news.change);
  news.has_groups = news.has_cameras = news.is_whole;
  for (const ChangeEntry& entry : entries) {
    const bool is_plan = entry.kind == ChangeEntry::kPlanSaved || entry.kind == ChangeEntry::kPlanRemoved;
    if (is_plan && entry.code > 0) {
      news.changed_plans.insert(entry.code);
    }
    news.has_cameras = news.has_cameras || entry.kind == ChangeEntry::kCamerasSaved;
    news.has_groups = news.has_groups || entry.kind == ChangeEntry::kGroupSaved ||
                      entry.kind == ChangeEntry::kGroupRemoved || entry.kind == ChangeEntry::kAudiencesSaved ||
                      entry.kind == ChangeEntry::kUsersSaved;
  }
  AddSite(&news);
  if (news.has_cameras) {
    AddCameras(&news);
  }
  if (news.has_groups) {
    AddGroups(&news);
  }
  one_state.Commit();
  return news;
}

// The last entries up to this one: a desk that goes on after its server was put back may write the very one again.
QString CCopySource::MarkOf(int64_t change) {
  QCryptographicHash hash(QCryptographicHash::Sha256);
  store_.ForEach("SELECT seq, origin, kind, code FROM change_log WHERE seq > ? AND seq <= ? ORDER BY seq",
                 {qint64(change - kMarked), qint64(change)}, [&hash](const QSqlQuery& query) {
                   for (int column = 0; column < 4; ++column) {
                     hash.addData(query.value(column).toString().toUtf8() + '\n');
                   }
                 });
  return QString::fromLatin1(hash.result().toHex().left(kMarkLength));
}

// Of other users their names alone, which every user sees.
void CCopySource::AddSite(CopyNews* news) {
  news->tables.push_back(
      Read("store_info", "name, value", " WHERE name IN ('station_id', 'root_name', 'pretended', 'camera_authority')"));
  for (const QVariantList& row : news->tables.back().rows) {
    if (row.front().toString() == QLatin1String("station_id")) {
      news->station = row.back().toString();
    }
  }
  news->tables.push_back(Read("feature_switch", "name, value"));
  news->tables.push_back(ReadAs("app_user", "id, name, role_name",
                                QStringLiteral("id, name, CASE WHEN id = %1 THEN role_name ELSE '' END").arg(user_)));
  for (const QVariantList& row : news->tables.back().rows) {
    news->users.push_back(row[1].toString().toStdString());
  }
  const QString of_user = QStringLiteral(" WHERE user_id = ?");
  news->tables.push_back(Read("user_right", "user_id, code", of_user, {user_}));
  news->tables.push_back(Read("default_view", "user_id, code, type", of_user, {user_}));
  news->tables.push_back(Read("favorite_camera", "user_id, camera_id", of_user, {user_}));
  if (!store_.BoundUser()) {
    const auto account = CAccountRepository(store_).Find(user_);
    news->hash = account ? account->hash : QString();
  }
}

void CCopySource::AddCameras(CopyNews* news) {
  news->tables.push_back(Read("region", "id, parent_id, name"));
  news->tables.push_back(Read("camera", "id, region_id, name, online"));
  news->tables.push_back(Read("camera_preset", "camera_id, preset_no, name"));
  news->tables.push_back(Read("camera_stream", "camera_id, stream_type, url"));
  Withhold(&news->tables.back(), &news->withheld);
  news->tables.push_back(
      ReadAs("camera_access", "camera_id, login, secret, device_url", "camera_id, '', '', device_url"));
  Withhold(&news->tables.back(), &news->withheld);
  store_.ForEach("SELECT camera_id FROM camera_access WHERE login <> '' OR secret <> ''", {},
                 [news](const QSqlQuery& query) { news->withheld.insert(query.value(0).toInt()); });
}

// By the same rule as the trees, also where the database hides nothing from this account.
void CCopySource::AddGroups(CopyNews* news) {
  CPlanRepository repository(store_);
  const std::vector<GroupRow> groups = repository.AllGroups();
  CPlanCatalog catalog(&FoldedName);
  catalog.SetAudiences(repository.Audiences().All(), user_);
  catalog.Replace(groups, {});
  TableRows rows{"plan_group", "code, parent_code, family, owner_id, name", {}};
  for (const GroupRow& group : groups) {
    if (catalog.FindGroup(group.code, user_)) {
      rows.rows.push_back({group.code, group.parent, group.family, group.owner, ToQt(group.name)});
    }
  }
  news->tables.push_back(std::move(rows));
}

std::vector<PlanVersion> CCopySource::VersionsOf(const QString& condition, const QVariantList& values,
                                                 const std::set<int32_t>& groups) {
  std::vector<PlanVersion> plans;
  store_.ForEach(
      "SELECT code, parent_code, revision, checksum, family, owner_id FROM plan" + condition, values,
      [&](const QSqlQuery& query) {
        const int32_t parent = query.value(1).toInt();
        if (IsSeen(parent, query.value(4).toInt(), query.value(5).toInt(), user_, groups)) {
          plans.push_back({query.value(0).toInt(), parent, query.value(2).toLongLong(), query.value(3).toString()});
        }
      });
  return plans;
}

std::vector<PlanVersion> CCopySource::Plans(const std::set<int32_t>& groups) {
  return VersionsOf(QString(), {}, groups);
}

std::vector<PlanVersion> CCopySource::PlansIn(const std::vector<int32_t>& parents, const std::set<int32_t>& groups) {
  return VersionsOf(" WHERE parent_code" + InSoMany(), Padded(parents), groups);
}

TableRows CCopySource::PlanRows(const std::vector<int32_t>& codes, const std::set<int32_t>& groups) {
  TableRows rows =
      ReadAs("plan", kPlanColumns, "plan." + QLatin1String(kPlanColumns),
             " LEFT JOIN plan_content content ON content.code = plan.code WHERE plan.code" + InSoMany(), Padded(codes));
  const auto is_hidden = [&](const QVariantList& row) {
    return !IsSeen(row[1].toInt(), row[2].toInt(), row[3].toInt(), user_, groups);
  };
  rows.rows.erase(std::remove_if(rows.rows.begin(), rows.rows.end(), is_hidden), rows.rows.end());
  return rows;
}

TableRows CCopySource::CameraNames(const std::vector<int32_t>& numbers) {
  return Read("camera_name", "number, code, name", " WHERE number" + InSoMany(), Padded(numbers));
}

}  // namespace TarnHost::Store
