#include "store/content_split.h"

#include <QStringList>
#include <QVariantList>
#include <limits>
#include <utility>
#include <vector>

#include "store/camera_dictionary.h"
#include "store/page_codec.h"
#include "store/plan_records.h"
#include "store/text_rules.h"

namespace TarnHost::Store {
namespace {

constexpr int kPlansAtOnce = 200;
const char kLightColumns[] =
    "code, parent_code, family, owner_id, name, split_type, page_count, auto_run, begin_time, end_time, creator,"
    " creation_time, revision, changed_by, changed_at, checksum";

QString MakeTable(const char* name, const char* first_column) {
  return QStringLiteral(
             "CREATE TABLE %1 (%2code INTEGER PRIMARY KEY, parent_code INTEGER NOT NULL, family INTEGER NOT NULL,"
             " owner_id INTEGER NOT NULL, name TEXT NOT NULL, split_type INTEGER NOT NULL,"
             " page_count INTEGER NOT NULL, auto_run INTEGER NOT NULL, begin_time TEXT NOT NULL,"
             " end_time TEXT NOT NULL, cameras TEXT NOT NULL, creator TEXT NOT NULL, creation_time TEXT NOT NULL,"
             " revision BIGINT NOT NULL, changed_by TEXT NOT NULL, changed_at TEXT NOT NULL, checksum TEXT NOT NULL)")
      .arg(QLatin1String(name), QLatin1String(first_column));
}

class CContentSplit {
 public:
  explicit CContentSplit(CSqlEngine& engine) : engine_(engine), dictionary_(engine) {}

  void Run() {
    engine_.RunOnce("CREATE TABLE camera_name (number INTEGER PRIMARY KEY, code TEXT NOT NULL, name TEXT NOT NULL)");
    engine_.RunOnce("DROP INDEX plan_parent");
    if (engine_.DropsColumnsAtOnce()) {
      LeaveContentWhereItIs();
    } else {
      MoveContentOut();
    }
    engine_.RunOnce("CREATE INDEX plan_parent ON plan (parent_code)");
    engine_.RunOnce("ALTER TABLE kept_plan RENAME TO old_kept_plan");
    if (engine_.DropsColumnsAtOnce()) {
      engine_.RunOnce("ALTER INDEX IF EXISTS kept_plan_pkey RENAME TO old_kept_plan_pkey");
    }
    engine_.RunOnce(MakeTable("kept_plan", "deletion INTEGER NOT NULL, "));
    Move("old_kept_plan", "kept_plan", "deletion, ", true);
    engine_.RunOnce("DROP TABLE old_kept_plan");
  }

 private:
  using Part = std::vector<std::pair<int32_t, std::vector<NamedCamera>>>;  // codes of plans, and their cameras

  // The old table goes on as that of the contents.
  void LeaveContentWhereItIs() {
    engine_.RunOnce("ALTER TABLE plan RENAME TO plan_content");
    engine_.RunOnce("ALTER INDEX IF EXISTS plan_pkey RENAME TO plan_content_pkey");
    engine_.RunOnce(MakeTable("plan", ""));
    Move("plan_content", "plan", "", false);
    QStringList columns = QString::fromLatin1(kLightColumns).split(", ");
    columns.removeOne("code");
    engine_.RunOnce("ALTER TABLE plan_content DROP COLUMN " + columns.join(", DROP COLUMN "));
  }

  void MoveContentOut() {
    engine_.RunOnce("ALTER TABLE plan RENAME TO old_plan");
    engine_.RunOnce(MakeTable("plan", ""));
    engine_.RunOnce("CREATE TABLE plan_content (code INTEGER PRIMARY KEY, pages TEXT NOT NULL, thumbnail " +
                    engine_.BytesType() + ")");
    Move("old_plan", "plan", "", true);
    engine_.RunOnce("DROP TABLE old_plan");
  }

  // With their content the old rows go part by part, so that a file uses their room again instead of growing.
  void Move(const char* from, const char* to, const char* first_column, bool with_content) {
    qint64 last = std::numeric_limits<qint64>::min();
    for (Part part = After(from, last); !part.empty(); part = After(from, last)) {
      InsertRows(from, to, first_column, part);
      const qint64 end = part.back().first;
      if (with_content) {
        engine_.Execute(QStringLiteral("INSERT INTO plan_content (code, pages, thumbnail) SELECT code, pages, thumbnail"
                                       " FROM %1 WHERE code <= ?"
                                       " AND code NOT IN (SELECT code FROM plan_content)")
                            .arg(QLatin1String(from)),
                        {end});
        engine_.Execute(QStringLiteral("DELETE FROM %1 WHERE code <= ?").arg(QLatin1String(from)), {end});
      }
      last = end;
    }
  }

  Part After(const char* table, qint64 last) {
    Part part;
    engine_.ForEach(QStringLiteral("SELECT code, pages FROM %1 WHERE code > CAST(? AS BIGINT) ORDER BY code LIMIT %2")
                        .arg(QLatin1String(table))
                        .arg(kPlansAtOnce),
                    {last}, [&part](const QSqlQuery& query) {
                      part.emplace_back(query.value(0).toInt(), CamerasInText(query.value(1).toString()));
                    });
    return part;
  }

  void InsertRows(const char* from, const char* to, const char* first_column, const Part& part) {
    QStringList rows;
    QVariantList values;
    for (const auto& [code, cameras] : part) {
      rows << QStringLiteral("(CAST(? AS INTEGER), CAST(? AS TEXT))");
      values << code << ToQt(NumbersToText(dictionary_.NumbersOf(cameras)));
    }
    const QString columns = QLatin1String(first_column) + QLatin1String(kLightColumns);
    engine_.Execute(QStringLiteral("INSERT INTO %1 (%2, cameras) SELECT %2, column2 FROM %3"
                                   " JOIN (VALUES %4) AS found ON code = column1")
                        .arg(QLatin1String(to), columns, QLatin1String(from), rows.join(", ")),
                    values);
  }

  CSqlEngine& engine_;
  CCameraDictionary dictionary_;
};

}  // namespace

void SplitContentOff(CSqlEngine& engine) {
  CContentSplit(engine).Run();
}

}  // namespace TarnHost::Store
