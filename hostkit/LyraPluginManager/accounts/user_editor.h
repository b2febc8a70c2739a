#pragma once

#include <functional>

#include "TarnHost/site_users.h"
#include "accounts/account_repository.h"
#include "store/plan_repository.h"

namespace TarnHost::Store {

/// Reads and changes who may log in, what each may do, and which groups of plans are limited to whom. The clients on
/// the store follow. Every refusal is a CStoreError with a text for the user and leaves nothing behind. Thread: the
/// engine's.
class CUserEditor {
 public:
  explicit CUserEditor(CSqlEngine& engine) : engine_(engine), repository_(engine), accounts_(engine) {}

  SiteUsers Read();
  /// What is kept of the new passwords, for Change(): takes a part of a second each, and needs no engine. Thread: any.
  static QStringList HashesOf(const SiteUserChanges& changes);
  /// In one transaction. `by`: the user who changes it, who keeps his own account; 0 for none.
  void Change(const SiteUserChanges& changes, const QStringList& hashes, int32_t by);

 private:
  SiteUsers ReadAll();
  std::vector<SiteUser> ReadUsers();
  std::vector<SiteUserGroup> ReadUserGroups();
  std::vector<SiteLimit> ReadGroups();
  void Apply(const SiteUserChanges& changes, const QStringList& hashes, int32_t by);
  void SaveUserGroup(const SiteUserChanges::UserGroup& change);
  void RemoveUserGroup(const SiteUserGroup& group);
  void SaveUser(const SiteUserChanges::User& change, const QString& hash);
  void ForRoles(const std::function<void(CUserRoles&)>& change);
  QString RoleOf(int32_t user);
  void Rename(int32_t user, const QString& before, const QString& name);
  void SetMembership(int32_t user, const QStringList& user_groups);
  void SetPassword(int32_t user, const QString& hash);
  void RemoveUser(int32_t user);
  void SaveLimit(const SiteUserChanges::Limit& change);
  int32_t UserGroup(const QString& name);
  int32_t NewUserNumber();
  void RequireFreeName(const char* table, const QString& name, int32_t id);

  CSqlEngine& engine_;
  CPlanRepository repository_;
  CAccountRepository accounts_;
  SiteUsers now_;  // while it changes
};

}  // namespace TarnHost::Store
