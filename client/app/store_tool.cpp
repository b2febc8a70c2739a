#include "app/store_tool.h"

#include <cstdio>
#include <optional>

#include "TarnHost/site_moving.h"
#include "TarnHost/store_care.h"
#include "app/admin_tool.h"
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

int Say(const TarnHost::SiteMoving::Moved& moved) {
  for (const QString& line : moved.lines + QStringList{moved.summary}) {
    std::fprintf(stdout, "%s\n", qUtf8Printable(line));
  }
  return moved.is_whole ? kWell : kFindings;
}

int Export(const QString& url, const QString& file) {
  TarnHost::SiteMoving::Moved moved;
  QString error;
  return TarnHost::SiteMoving::Export(url, file, &moved, &error) ? Say(moved) : Refuse(error);
}

int Import(const QString& url, const QString& file, bool dry_run) {
  TarnHost::SiteMoving::Moved moved;
  QString error;
  return TarnHost::SiteMoving::Import(url, file, dry_run, &moved, &error) ? Say(moved) : Refuse(error);
}

/// "NAME=ITEM,..." or "NAME" alone.
struct Assignment {
  explicit Assignment(const QString& text) : name(text.section(QLatin1Char('='), 0, 0).trimmed()) {
    if (!text.contains(QLatin1Char('='))) {
      return;
    }
    items.emplace();
    const QString list = text.section(QLatin1Char('='), 1).trimmed();
    if (list.isEmpty()) {
      return;
    }
    for (const QString& item : list.split(QLatin1Char(','))) {
      items->append(item.trimmed());
    }
  }
  /// A list that is nothing but commas would open to everybody what was to be limited.
  bool LacksAName() const { return name.isEmpty() || (items && items->contains(QString())); }

  QString name;
  std::optional<QStringList> items;
};

template <class Set>
int Assign(const Set& set, const QString& url, const QString& text) {
  const Assignment assignment(text);
  if (assignment.LacksAName()) {
    return Refuse(QStringLiteral("a name is missing in \"%1\"").arg(text));
  }
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
  if (!options.admin.isEmpty()) {
    return RunAdminTool(options);
  }
  if (options.check) {
    return Check(url);
  }
  if (!options.export_file.isEmpty()) {
    return Export(url, options.export_file);
  }
  if (!options.import_file.isEmpty()) {
    return Import(url, options.import_file, options.dry_run);
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
