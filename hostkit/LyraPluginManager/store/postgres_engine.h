#pragma once

#include <QUrl>

#include "store/sql_engine.h"

namespace TarnHost::Store {

struct NewStore;

/// A store in a PostgreSQL database that several workstations share.
class CPostgresEngine : public CSqlEngine {
 public:
  explicit CPostgresEngine(const QUrl& url);

  void Open() override;
  void BeginWrite() override;
  void BeginRead() override;
  bool MayHaveChanged() override { return true; }
  bool IsFilled() override;
  QString BytesType() const override { return QStringLiteral("BYTEA"); }
  void SetPatience(int milliseconds) override;

 private:
  void Configure(QSqlDatabase* database) const override;
  CStoreError::Kind KindOf(const QSqlError& error) const override;
  void LimitAbsence();

  const QUrl url_;
};

/// Opens the store at `url`, making tables and content in a database that is still empty.
std::unique_ptr<CSqlEngine> OpenPostgresStore(const QUrl& url, const NewStore& fresh,
                                              std::shared_ptr<CConnectionWatch> watch);

}  // namespace TarnHost::Store
