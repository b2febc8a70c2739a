#include "app/store_tool.h"

#include <cstdio>
#include <optional>

#include "TarnHost/store_care.h"
#include "app/data_file.h"

namespace TarnClient {

namespace {

enum ExitCode { kWell = 0, kFindings = 1, kCannotDo = 2 };

int Refuse(const QString& line) {
  std::fprintf(stderr, "tarn-client: %s\n", qUtf8Printable(line));
  return kCannotDo;
}

int Check(const QString& url) {
  QStringList findings;
  QString summary, error;
  if (!TarnHost::StoreCare::Check(url, &findings, &summary, &error)) {
    return Refuse(error);
  }
  for (const QString& line : findings + QStringList{summary}) {
    std::fprintf(stdout, "%s\n", qUtf8Printable(line));
  }
  return findings.isEmpty() ? kWell : kFindings;
}

int BackUp(const QString& url, const QString& copy) {
  QString error;
  if (!TarnHost::StoreCare::BackUp(url, copy, &error)) {
    return Refuse(error);
  }
  std::fprintf(stdout, "%s\n", qUtf8Printable(QStringLiteral("The store was copied to %1.").arg(copy)));
  return kWell;
}

/// "NAME=ITEM,..." or "NAME" alone.
struct Assignment {
  explicit Assignment(const QString& text) : name(text.section(QLatin1Char('='), 0, 0).trimmed()) {
    if (!text.contains(QLatin1Char('='))) {
      return;
    }
    items.emplace();
    for (const QString& item : text.section(QLatin1Char('='), 1).split(QLatin1Char(','), Qt::SkipEmptyParts)) {
      items->append(item.trimmed());
    }
  }

  QString name;
  std::optional<QStringList> items;
};

template <class Set>
int Assign(const Set& set, const QString& url, const QString& text) {
  const Assignment assignment(text);
  QString said, error;
  if (!set(url, assignment.name, assignment.items, &said, &error)) {
    return Refuse(error);
  }
  std::fprintf(stdout, "%s\n", qUtf8Printable(said));
  return kWell;
}

}  // namespace

int RunStoreTool(const ClientOptions& options) {
  const QString url = StoreUrlOf(options);
  if (options.check) {
    return Check(url);
  }
  if (!options.limit.isEmpty()) {
    return Assign(TarnHost::StoreCare::LimitGroup, url, options.limit);
  }
  if (!options.user_group.isEmpty()) {
    return Assign(TarnHost::StoreCare::FillUserGroup, url, options.user_group);
  }
  return BackUp(url, options.backup_file);
}

}  // namespace TarnClient
