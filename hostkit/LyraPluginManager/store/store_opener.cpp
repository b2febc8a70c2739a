#include "store/store_opener.h"

#include <utility>

#include "store/migrations.h"
#include "store/postgres_engine.h"
#include "store/site_importer.h"
#include "store/sqlite_engine.h"
#include "store/sqlite_store_file.h"

namespace TarnHost::Store {

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

bool HasReaders(const QString& url) {
  return url != QLatin1String("sqlite::memory:");
}

std::unique_ptr<CSqlEngine> OpenReader(const QString& url, std::shared_ptr<CConnectionWatch> watch) {
  const QString sqlite = QStringLiteral("sqlite:");
  std::unique_ptr<CSqlEngine> engine;
  if (url.startsWith(sqlite)) {
    engine = std::make_unique<CSqliteEngine>(url.mid(sqlite.size()));
  } else {
    engine = std::make_unique<CPostgresEngine>(PostgresAddress::FromText(url));
  }
  engine->SetWatch(std::move(watch));
  engine->Open();
  return engine;
}

void FillNewStore(CSqlEngine& engine, const NewStore& fresh) {
  CTransaction transaction(engine, CTransaction::kWrite);
  if (!engine.IsFilled()) {
    MakeLayout(engine);
    CSiteImporter(engine, fresh.content(), fresh.now).Run();
    transaction.Commit();
  }
}

}  // namespace TarnHost::Store
