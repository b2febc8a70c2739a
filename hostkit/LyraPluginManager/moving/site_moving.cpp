#include "moving/site_moving.h"

#include <QFileInfo>
#include <QSaveFile>

#include "moving/import_writer.h"
#include "moving/site_file_writer.h"
#include "moving/site_reader.h"
#include "store/migrations.h"

namespace TarnHost::Moving {
namespace {

using Store::CStoreError;
using Store::CTransaction;

// What is worked out while others may write has to be worked out again when they did; at the last they wait.
constexpr int kAttempts = 3;

[[noreturn]] void Refuse(const QString& text) {
  throw CStoreError(CStoreError::kRefused, text);
}

int32_t Counter(Store::CSqlEngine& engine, const char* name) {
  return engine.Value("SELECT value FROM counter WHERE name = ?", {name}).toInt();
}

StandingSite ReadStanding(Store::CSqlEngine& engine) {
  CSiteReader reader(engine);
  StandingSite here;
  here.records = reader.Read();
  reader.ForEachPlan([&here](PlanRecord plan, const QString&) {
    plan.digest = DigestOf(plan);
    plan.pages.clear();
    plan.thumbnail.clear();
    here.records.plans.push_back(std::move(plan));
  });
  for (const char* table : {"kept_plan", "kept_plan_group", "plan_content"}) {
    engine.ForEach(QStringLiteral("SELECT code FROM %1").arg(QLatin1String(table)), {},
                   [&here](const QSqlQuery& query) { here.kept_codes.insert(query.value(0).toInt()); });
  }
  here.last = {Counter(engine, "code"), Counter(engine, "region"), Counter(engine, "camera"), Counter(engine, "user")};
  here.newest_change = Store::CPlanRepository(engine).NewestChange();
  return here;
}

StandingSite ReadOneState(Store::CSqlEngine& engine) {
  CTransaction transaction(engine, CTransaction::kRead);
  Store::RequireNewest(engine);
  StandingSite here = ReadStanding(engine);
  transaction.Commit();
  return here;
}

bool WriteUnlessChanged(Store::CSqlEngine& engine, ImportPlan* plan, const StandingSite& here) {
  CTransaction transaction(engine, CTransaction::kWrite);
  if (Store::CPlanRepository(engine).NewestChange() != here.newest_change) {
    return false;
  }
  CImportWriter(engine).Write(plan, here.records);
  transaction.Commit();
  return true;
}

ExportReport WriteSite(Store::CSqlEngine& engine, QIODevice& device) {
  CSiteReader reader(engine);
  const SiteRecords site = reader.Read();
  CSiteFileWriter writer(device);
  ExportReport report;
  writer.Begin(site, engine.Value("SELECT value FROM store_info WHERE name = 'root_name'").toString());
  reader.ForEachPlan([&](const PlanRecord& plan, const QString& damage) {
    if (damage.isEmpty()) {
      writer.Write(plan);
      ++report.plans;
    } else {
      report.left_out.append(Named("Plan", plan.name, plan.code) + QStringLiteral(": ") + damage);
    }
  });
  writer.End();
  for (const QString& camera : writer.Withheld()) {
    report.left_out.append(camera + QStringLiteral(": an address of it, since a password may stand in it"));
  }
  report.users = static_cast<int>(site.users.size());
  report.cameras = static_cast<int>(site.cameras.size());
  report.groups = static_cast<int>(site.groups.size());
  return report;
}

}  // namespace

ExportReport ExportSite(Store::CSqlEngine& engine, const QString& path) {
  if (QFileInfo::exists(path) || QFileInfo(path).isSymLink()) {
    Refuse(QStringLiteral("%1 exists already; nothing was written.").arg(path));
  }
  const CTransaction one_state(engine, CTransaction::kRead);
  Store::RequireNewest(engine);
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) {
    Refuse(QStringLiteral("%1 cannot be written: %2.").arg(path, file.errorString()));
  }
  file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
  ExportReport report = WriteSite(engine, file);
  if (!file.commit()) {
    Refuse(QStringLiteral("%1 cannot be written: %2.").arg(path, file.errorString()));
  }
  return report;
}

ImportPlan ImportSite(Store::CSqlEngine& engine, const std::function<SiteFile()>& read, bool dry_run) {
  for (int attempt = 1; attempt < kAttempts; ++attempt) {
    SiteFile file = read();
    const StandingSite here = ReadOneState(engine);
    ImportPlan plan = PlanImport(std::move(file), here);
    if (dry_run || WriteUnlessChanged(engine, &plan, here)) {
      return plan;
    }
  }
  SiteFile file = read();
  CTransaction transaction(engine, CTransaction::kWrite);
  const StandingSite here = ReadStanding(engine);
  ImportPlan plan = PlanImport(std::move(file), here);
  CImportWriter(engine).Write(&plan, here.records);
  transaction.Commit();
  return plan;
}

}  // namespace TarnHost::Moving
