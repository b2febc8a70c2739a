#include "store/store_functions.h"

#include <QJsonArray>
#include <QJsonDocument>

#include "store/camera_dictionary.h"
#include "store/text_rules.h"

namespace TarnHost::Store {

int64_t CStoreFunctions::Advance(const char* counter, int64_t count) {
  return engine_.Value("SELECT tarn_advance(?, ?)", {counter, qint64(count)}).toLongLong();
}

int64_t CStoreFunctions::LogChange(const ChangeEntry& entry) {
  return engine_.Value("SELECT tarn_log_change(?, ?, ?)", {ToQt(entry.origin), entry.kind, entry.code}).toLongLong();
}

std::vector<uint32_t> CStoreFunctions::NumbersOf(const std::vector<NamedCamera>& cameras) {
  QJsonArray asked;
  for (const NamedCamera& camera : cameras) {
    asked.append(QJsonArray{ToQt(camera.code), ToQt(camera.name)});
  }
  const QString text = QString::fromUtf8(QJsonDocument(asked).toJson(QJsonDocument::Compact));
  const std::vector<uint32_t> numbers =
      NumbersFromText(engine_.Value("SELECT tarn_camera_numbers(?)", {text}).toString().toStdString());
  if (numbers.size() != cameras.size()) {
    throw CStoreError(CStoreError::kFailed, QStringLiteral("The plan store numbers cameras wrongly."));
  }
  return numbers;
}

std::vector<NumberedCamera> CStoreFunctions::CamerasOf(int32_t plan) {
  std::vector<NumberedCamera> cameras;
  engine_.ForEach("SELECT number, code, name FROM tarn_cameras_of(?)", {plan},
                  [&cameras](const QSqlQuery& query) { cameras.push_back(NumberedCameraFrom(query)); });
  return cameras;
}

int CStoreFunctions::CountHiddenPlansShowing(const QStringList& cameras) {
  return engine_.Value("SELECT tarn_hidden_plans_showing(?)", {cameras.join(' ')}).toInt();
}

bool CStoreFunctions::IsOpenBelow(int32_t group) {
  return engine_.Value("SELECT tarn_is_open_below(?)", {group}).toBool();
}

CKeptDeletions::Below CStoreFunctions::Keep(int32_t code, bool is_group, int32_t user, int64_t at) {
  CKeptDeletions::Below below;
  engine_.ForEach("SELECT groups_below, plans_below FROM tarn_keep(?, ?, ?, ?)", {code, is_group, user, qint64(at)},
                  [&below](const QSqlQuery& query) {
                    below = {query.value(0).toInt(), query.value(1).toInt()};
                  });
  return below;
}

void CStoreFunctions::Delete(int32_t code, bool is_group) {
  engine_.Execute("SELECT tarn_delete(?, ?)", {code, is_group});
}

void CStoreFunctions::PutBack(int32_t deletion) {
  engine_.Execute("SELECT tarn_put_back(?)", {deletion});
}

void CStoreFunctions::Forget(int32_t deletion, int most) {
  engine_.Execute("SELECT tarn_forget(?, ?)", {deletion, most});
}

bool CStoreFunctions::ForgetOldPlays(int days, int most) {
  return engine_.Value("SELECT tarn_forget_plays(?, ?)", {days, most}).toInt() < most;
}

std::optional<int32_t> CStoreFunctions::SharedGroup(int32_t user) {
  const QVariant group = engine_.Value("SELECT tarn_shared_group(?)", {user});
  return group.isNull() ? std::nullopt : std::make_optional(group.toInt());
}

void CStoreFunctions::ShareGroup(const GroupRow& group) {
  engine_.Execute("SELECT tarn_share_group(?, ?)", {group.code, group.owner});
}

void CStoreFunctions::SharePlan(const StoredPlan& plan, const QString& pages, const QString& checksum) {
  engine_.Execute("SELECT tarn_share_plan(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
                  {plan.row.code, plan.row.owner, plan.name, plan.row.split_type, plan.row.page_count, plan.begin_time,
                   plan.end_time, ToQt(NumbersToText(plan.row.cameras)), plan.creator, plan.creation_time, checksum,
                   pages, plan.thumbnail});
}

}  // namespace TarnHost::Store
