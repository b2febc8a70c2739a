#include "store/store_opener.h"

#include <utility>

#include "moving/store_copier.h"
#include "store/migrations.h"
#include "store/postgres_engine.h"
#include "store/site_importer.h"
#include "store/sqlite_engine.h"
#include "store/sqlite_store_file.h"
#include "store/store_texts.h"

namespace TarnHost::Store {
namespace {

QString FileOf(const QString& url) {
  const QString sqlite = QStringLiteral("sqlite:");
  return url.startsWith(sqlite) ? url.mid(sqlite.size()) : QString();
}

// To an account that does not own the tables a server may show some of the rows.
void RequireAllRows(CSqlEngine& server) {
  if (server.Value("SELECT row_security_active(to_regclass('plan'))").toBool()) {
    throw CStoreError(CStoreError::kNoRight, QStringLiteral("Only the account that owns the tables of the plan store %1"
                                                            " sees all of it.")
                                                 .arg(server.Place()));
  }
}

}  // namespace

std::unique_ptr<CSqlEngine> OpenStore(const QString& url, const NewStore& fresh,
                                      std::shared_ptr<CConnectionWatch> watch) {
  const QString sqlite = QStringLiteral("sqlite:");
  if (url == sqlite + ":memory:") {
    return MakeMemoryStore(fresh);
  }
  if (url.startsWith(sqlite) && url.size() > sqlite.size()) {
    return OpenStoreFile(url.mid(sqlite.size()), fresh);
  }
  return OpenPostgresStore(PostgresAddress::FromText(url), fresh, std::move(watch));
}

std::unique_ptr<CSqlEngine> StoreToReach(const QString& url, std::shared_ptr<CConnectionWatch> watch) {
  auto engine = std::make_unique<CPostgresEngine>(PostgresAddress::FromText(url), CPostgresEngine::kFollowsChanges);
  engine->SetWatch(std::move(watch));
  return engine;
}

bool HasReaders(const QString& url) {
  return url != QLatin1String("sqlite::memory:");
}

std::unique_ptr<CSqlEngine> OpenReader(const QString& url, std::shared_ptr<CConnectionWatch> watch,
                                       std::shared_ptr<const CSharedFileState> files) {
  const QString sqlite = QStringLiteral("sqlite:");
  std::unique_ptr<CSqlEngine> engine;
  if (url.startsWith(sqlite)) {
    engine = std::make_unique<CSqliteEngine>(url.mid(sqlite.size()), std::move(files));
  } else {
    engine = std::make_unique<CPostgresEngine>(PostgresAddress::FromText(url), CPostgresEngine::kReadsOnly);
  }
  engine->SetWatch(std::move(watch));
  engine->Open();
  return engine;
}

std::unique_ptr<CSqlEngine> OpenStoreAsItIs(const QString& url) {
  const QString file = FileOf(url);
  if (!file.isEmpty()) {
    return OpenStoreFileAsItIs(file);
  }
  auto engine = OpenReader(url, std::make_shared<CConnectionWatch>(), nullptr);
  RequireAllRows(*engine);
  return engine;
}

void BackUpStore(const QString& url, const QString& copy) {
  const QString file = FileOf(url);
  if (!file.isEmpty()) {
    BackUpStoreFile(file, copy);
    return;
  }
  const auto engine = OpenStoreAsItIs(url);
  BackUpInto(copy, [&engine](CSqlEngine& to) { Moving::CopyRows(*engine, to); });
}

void FillNewStore(CSqlEngine& engine, const NewStore& fresh) {
  CTransaction transaction(engine, CTransaction::kWrite);
  if (!engine.HasTable("store_info")) {
    if (!engine.IsEmpty()) {
      throw CStoreError(CStoreError::kRefused, {kNotAPlanStore, {engine.Place()}});
    }
    MakeLayout(engine);
    CSiteImporter(engine, fresh.content(), fresh.now).Run();
    transaction.Commit();
  }
}

}  // namespace TarnHost::Store
