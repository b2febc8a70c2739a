#include "TarnHost/site_moving.h"
#include "moving/site_file_reader.h"
#include "moving/site_moving.h"
#include "store/store_opener.h"

namespace TarnHost {
namespace {

template <class Work>
bool Succeeds(const QString& url, QString* error, const Work& work) {
  try {
    const auto engine = Store::OpenStoreAsItIs(url);
    work(*engine);
    return true;
  } catch (const Store::CStoreError& failure) {
    *error = failure.Text().Shown();
    return false;
  }
}

void AddLines(const char* what, const QStringList& things, SiteMoving::Moved* moved) {
  for (const QString& thing : things) {
    moved->lines.append(QStringLiteral("%1: %2").arg(QLatin1String(what), thing));
  }
}

}  // namespace

bool SiteMoving::Export(const QString& url, const QString& file, Moved* moved, QString* error) {
  return Succeeds(url, error, [&](Store::CSqlEngine& engine) {
    const Moving::ExportReport report = Moving::ExportSite(engine, file);
    AddLines("Left out", report.left_out, moved);
    moved->is_whole = report.left_out.isEmpty();
    moved->summary = QStringLiteral("%1 users, %2 cameras, %3 groups and %4 plans were written to %5.")
                         .arg(report.users)
                         .arg(report.cameras)
                         .arg(report.groups)
                         .arg(report.plans)
                         .arg(file);
  });
}

bool SiteMoving::Import(const QString& url, const QString& file, bool dry_run, Moved* moved, QString* error) {
  return Succeeds(url, error, [&](Store::CSqlEngine& engine) {
    const auto read = [&file] { return Moving::ReadSiteFile(file); };
    const Moving::CImportReport report = Moving::ImportSite(engine, read, dry_run).report;
    AddLines("Taken", report.taken, moved);
    AddLines("Changed", report.changed, moved);
    AddLines("Left out", report.left_out, moved);
    AddLines("Remark", report.remarks, moved);
    moved->is_whole = report.left_out.isEmpty();
    moved->summary = QStringLiteral("Taken: %1, changed: %2, as they are already: %3, left out: %4.")
                         .arg(report.taken.size())
                         .arg(report.changed.size())
                         .arg(report.same)
                         .arg(report.left_out.size());
    if (dry_run) {
      moved->summary += QStringLiteral(" Nothing was changed: this was a dry run.");
    }
  });
}

}  // namespace TarnHost
