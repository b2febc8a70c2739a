#include "store/store_opener.h"

#include "store/migrations.h"
#include "store/site_importer.h"
#include "store/sqlite_store_file.h"

namespace TarnHost::Store {

std::unique_ptr<CSqlEngine> OpenStore(const QString& url, const NewStore& fresh) {
  const QString sqlite = QStringLiteral("sqlite:");
  if (url == sqlite + ":memory:") {
    return MakeMemoryStore(fresh);
  }
  if (url.startsWith(sqlite) && url.size() > sqlite.size()) {
    return OpenStoreFile(url.mid(sqlite.size()), fresh);
  }
  throw CStoreError(QStringLiteral("\"%1\" does not name a plan store (sqlite:FILE).").arg(url));
}

void FillNewStore(CSqlEngine& engine, const QString& place, const NewStore& fresh) {
  engine.RunOnce("CREATE TABLE IF NOT EXISTS store_info (name TEXT PRIMARY KEY, value TEXT NOT NULL)");
  Migrate(engine, place);
  CTransaction transaction(engine, CTransaction::kWrite);
  CSiteImporter(engine, fresh.content(), fresh.now).Run();
  transaction.Commit();
}

}  // namespace TarnHost::Store
