#pragma once

#include "store/postgres_address.h"
#include "store/sql_engine.h"

namespace TarnHost::Store {

struct NewStore;

/// A store in a PostgreSQL database that several workstations share.
class CPostgresEngine : public CSqlEngine {
 public:
  explicit CPostgresEngine(const PostgresAddress& address);

  void Open() override;
  void Reopen() override;
  void BeginWrite() override;
  void BeginRead() override;
  bool MayHaveChanged() override { return true; }
  bool HasTable(const char* name) override;
  bool IsEmpty() override;
  QString BytesType() const override { return QStringLiteral("BYTEA"); }
  bool DropsColumnsAtOnce() const override { return true; }
  void SetPatience(int milliseconds) override;

 private:
  void Configure(QSqlDatabase* database) const override;
  CStoreError::Kind KindOf(const QSqlError& error) const override;
  void Connect();
  void LimitAbsence();

  const PostgresAddress address_;
  int patience_ = 5000;  // ms
};

/// Opens the store at `address`, making tables and content in a database that is still empty.
std::unique_ptr<CSqlEngine> OpenPostgresStore(const PostgresAddress& address, const NewStore& fresh,
                                              std::shared_ptr<CConnectionWatch> watch);

}  // namespace TarnHost::Store
