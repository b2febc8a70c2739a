#include "moving/store_copier.h"

#include <QStringList>

#include "store/migrations.h"

namespace TarnHost::Moving {
namespace {

using Store::CSqlEngine;
using Store::CTransaction;

QStringList Texts(CSqlEngine& engine, const QString& statement, const QVariantList& values = {}) {
  QStringList texts;
  engine.ForEach(statement, values, [&texts](const QSqlQuery& query) { texts.append(query.value(0).toString()); });
  return texts;
}

QStringList ColumnsOf(CSqlEngine& from, CSqlEngine& to, const QString& table) {
  const QStringList known = Texts(
      from,
      "SELECT column_name FROM information_schema.columns WHERE table_schema = current_schema() AND table_name = ?",
      {table});
  QStringList columns;
  for (const QString& column : Texts(to, "SELECT name FROM pragma_table_info(?) ORDER BY cid", {table})) {
    if (known.contains(column)) {
      columns.append(column);
    }
  }
  return columns;
}

void CopyTable(CSqlEngine& from, CSqlEngine& to, const QString& table) {
  const QStringList columns = ColumnsOf(from, to, table);
  to.Execute("DELETE FROM " + table);
  if (columns.isEmpty()) {
    return;
  }
  const QString list = columns.join(QStringLiteral(", "));
  QStringList places;
  for (int column = 0; column < columns.size(); ++column) {
    places.append(QStringLiteral("?"));
  }
  const QString insert = QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)").arg(table, list, places.join(", "));
  from.ForEach(QStringLiteral("SELECT %1 FROM %2").arg(list, table), {}, [&](const QSqlQuery& query) {
    QVariantList values;
    for (int column = 0; column < columns.size(); ++column) {
      values.append(query.value(column));
    }
    to.Execute(insert, values);
  });
}

}  // namespace

void CopyRows(CSqlEngine& from, CSqlEngine& to) {
  const CTransaction one_state(from, CTransaction::kRead);
  Store::RequireNewest(from);
  for (const QString& table :
       Texts(to, "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite%'")) {
    CopyTable(from, to, table);
  }
}

}  // namespace TarnHost::Moving
