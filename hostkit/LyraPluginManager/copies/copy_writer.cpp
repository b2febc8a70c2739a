#include "copies/copy_writer.h"

#include <algorithm>
#include <iterator>

namespace TarnHost::Store {
namespace {

QString InsertOf(const TableRows& rows) {
  const int count = rows.columns.count(',') + 1;
  return QStringLiteral("INSERT OR REPLACE INTO %1 (%2) VALUES (?%3)")
      .arg(rows.table, rows.columns, QStringLiteral(", ?").repeated(count - 1));
}

}  // namespace

void CCopyWriter::Replace(const TableRows& rows) {
  // What makes the copy one, and its layout, stand among the facts of the site.
  const QString kept = rows.table == QLatin1String("store_info")
                           ? QStringLiteral(" WHERE name <> 'version' AND name NOT LIKE 'copy%'")
                           : QString();
  copy_.Execute("DELETE FROM " + rows.table + kept);
  Put(rows);
}

void CCopyWriter::Put(const TableRows& rows) {
  const QString insert = InsertOf(rows);
  for (const QVariantList& row : rows.rows) {
    copy_.Execute(insert, row);
  }
}

// The pages are the last column; a thumbnail would be most of the bytes, and what a plan shows can be drawn without.
void CCopyWriter::PutPlans(const TableRows& rows) {
  TableRows light{rows.table, rows.columns.section(',', 0, -2), {}};
  TableRows contents{"plan_content", "code, pages", {}};
  for (QVariantList row : rows.rows) {
    contents.rows.push_back({row.first(), row.takeLast()});
    light.rows.push_back(std::move(row));
  }
  Put(light);
  Put(contents);
}

void CCopyWriter::RemoveAll(const char* statement, const std::vector<int32_t>& numbers) {
  for (const int32_t number : numbers) {
    copy_.Execute(QLatin1String(statement), {number});
  }
}

void CCopyWriter::RemovePlans(const std::vector<int32_t>& codes) {
  RemoveAll("DELETE FROM plan_content WHERE code = ?", codes);
  RemoveAll("DELETE FROM plan WHERE code = ?", codes);
}

void CCopyWriter::RemovePlansIn(const std::vector<int32_t>& groups) {
  RemoveAll("DELETE FROM plan_content WHERE code IN (SELECT code FROM plan WHERE parent_code = ?)", groups);
  RemoveAll("DELETE FROM plan WHERE parent_code = ?", groups);
}

std::set<int32_t> CCopyWriter::Numbers(const char* statement) {
  std::set<int32_t> numbers;
  copy_.ForEach(QLatin1String(statement), {},
                [&numbers](const QSqlQuery& query) { numbers.insert(numbers.end(), query.value(0).toInt()); });
  return numbers;
}

std::set<int32_t> CCopyWriter::Groups() {
  return Numbers("SELECT code FROM plan_group ORDER BY code");
}

std::map<int32_t, PlanVersion> CCopyWriter::Plans() {
  std::map<int32_t, PlanVersion> plans;
  copy_.ForEach(
      "SELECT code, parent_code, revision, checksum FROM plan ORDER BY code", {}, [&plans](const QSqlQuery& query) {
        const int32_t code = query.value(0).toInt();
        plans.emplace_hint(
            plans.end(), code,
            PlanVersion{code, query.value(1).toInt(), query.value(2).toLongLong(), query.value(3).toString()});
      });
  return plans;
}

std::set<int32_t> CCopyWriter::NamedCameras() {
  std::set<int32_t> named;
  copy_.ForEach("SELECT DISTINCT cameras FROM plan", {}, [&named](const QSqlQuery& query) {
    for (const uint32_t number : NumbersFromText(query.value(0).toString().toStdString())) {
      named.insert(static_cast<int32_t>(number));
    }
  });
  return named;
}

std::vector<int32_t> CCopyWriter::MissingCameras() {
  const std::set<int32_t> named = NamedCameras(), known = Numbers("SELECT number FROM camera_name ORDER BY number");
  std::vector<int32_t> missing;
  std::set_difference(named.begin(), named.end(), known.begin(), known.end(), std::back_inserter(missing));
  return missing;
}

void CCopyWriter::RemoveCameras() {
  copy_.Execute("DELETE FROM camera_name");
}

void CCopyWriter::RemoveUnnamedCameras() {
  const std::set<int32_t> named = NamedCameras(), known = Numbers("SELECT number FROM camera_name ORDER BY number");
  std::vector<int32_t> unnamed;
  std::set_difference(known.begin(), known.end(), named.begin(), named.end(), std::back_inserter(unnamed));
  RemoveAll("DELETE FROM camera_name WHERE number = ?", unnamed);
}

}  // namespace TarnHost::Store
