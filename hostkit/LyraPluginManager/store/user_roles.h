#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>

#include "TarnHost/secret.h"
#include "store/sql_engine.h"

namespace TarnHost::Store {

/// The roles under which users log in at the server of a store, for the account that owns the tables. All of them are
/// members of one, which has the grants on the store's tables. Everything runs in the caller's transaction; what the
/// account may not do is refused with a line that says what the database's administrator can do instead. Throws
/// CStoreError. Thread: the engine's.
class CUserRoles {
 public:
  /// What a server stores of a role's password, made here, so that neither its log nor the line ever has the password.
  using Verifier = std::function<QByteArray(const QString& role, const CSecret& password)>;
  CUserRoles(CSqlEngine& engine, Verifier verifier) : engine_(engine), verifier_(std::move(verifier)) {}

  /// Whether users of this store have roles.
  bool AreUsed();
  /// From now on they have: grants and roles are made as far as they are missing, and the account may. Answers the
  /// roles that were made, which have no password yet.
  QStringList Use();
  /// The role that has the grants; empty where none is used.
  QString DeskRole();
  /// After a change of the layout.
  void RenewGrants();

  /// These do nothing where no roles are used; those that make or remove neither where the account may make none, for
  /// then others make them. A role that is there already, made by the database's administrator or for another store,
  /// only becomes one of this store's; its password is left to who made it.
  void Make(const QString& role);
  /// Answers the role's name afterwards.
  QString Rename(const QString& role, const QString& name);
  void SetPassword(const QString& role, const CSecret& password);
  /// Who is logged in under it can do nothing more.
  void Remove(const QString& role);
  /// Of users: those that the server does not know, or not as this store's.
  QStringList Missing();
  /// Makes these as far as the account may. Answers the roles that are new, which have no password yet.
  QStringList MakeMissing();

 private:
  bool MayMake();
  bool Exists(const QString& role);
  bool IsOrdinary(const QString& role);
  bool IsMember(const QString& role);
  bool IsMemberElsewhere(const QString& role);
  void RequireName(const QString& role) const;
  void Grant();
  void MakeMember(const QString& role);
  void Run(const QString& statement, const QString& instead);

  CSqlEngine& engine_;
  const Verifier verifier_;
};

}  // namespace TarnHost::Store
