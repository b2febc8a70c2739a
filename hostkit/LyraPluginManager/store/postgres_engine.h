#pragma once

#include <memory>
#include <optional>

#include "TarnHost/secret.h"
#include "store/postgres_address.h"
#include "store/sql_engine.h"

namespace TarnHost::Store {

struct NewStore;

/// A store in a PostgreSQL database that several workstations share.
class CPostgresEngine : public CSqlEngine {
 public:
  enum Use { kFollowsChanges, kReadsOnly };
  CPostgresEngine(const PostgresAddress& address, Use use);
  ~CPostgresEngine() override;

  void Open() override;
  void Reopen() override;
  CStoreFunctions* Functions() override { return functions_.get(); }
  std::optional<int32_t> BoundUser() const override { return bound_user_; }
  CUserRoles* Roles() override { return roles_.get(); }
  void MakeRights() override;
  /// Refuses a role of which the store could not say what it may do; finds out which user's it is. With a layout that
  /// has rights, again after one was made.
  void TakeRole();
  void SetAddress(const QString& url) override { address_ = PostgresAddress::FromText(url); }
  void BeginWrite() override;
  void BeginRead() override;
  bool MayHaveChanged() override;
  std::chrono::milliseconds BetweenLooks() const override { return std::chrono::milliseconds(500); }
  int NewsSocket() const override;
  bool HasNews() override;
  void Announce() override;
  bool HasTable(const char* name) override;
  bool IsEmpty() override;
  QString BytesType() const override { return QStringLiteral("BYTEA"); }
  bool DropsColumnsAtOnce() const override { return true; }
  void SetPatience(int milliseconds) override;

 private:
  void Configure(QSqlDatabase* database) const override;
  CStoreError::Kind KindOf(const QSqlError& error) const override;
  void Connect();
  QByteArray Verifier(const QString& role, const CSecret& password) const;
  void Listen();
  void TakeNews();
  void AskForASignOfLife();

  PostgresAddress address_;
  const Use use_;
  std::unique_ptr<CStoreFunctions> functions_;
  const std::unique_ptr<CUserRoles> roles_;
  std::optional<int32_t> bound_user_;
  bool listens_ = false, has_news_ = false;
  std::chrono::steady_clock::time_point next_look_;
  int patience_ = kPatience;
};

/// Opens the store at `address`, making tables and content in a database that is still empty.
std::unique_ptr<CSqlEngine> OpenPostgresStore(const PostgresAddress& address, const NewStore& fresh,
                                              std::shared_ptr<CConnectionWatch> watch);

}  // namespace TarnHost::Store
