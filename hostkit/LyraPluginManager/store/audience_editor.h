#pragma once

#include <QStringList>
#include <optional>

#include "store/plan_repository.h"

namespace TarnHost::Store {

/// Sets who sees which group of public plans, past any client, and says what is set now. What it is given is named as
/// somebody types it: a group by its code or its path, "Perimeter/Gates". The clients on the store follow. Throws
/// CStoreError, with nothing changed. Thread: the engine's.
class CAudienceEditor {
 public:
  explicit CAudienceEditor(CSqlEngine& engine) : engine_(engine), repository_(engine) {}

  /// Limits a group to these user groups, none opens it to all; without a list it stays as it is.
  QString SetLimit(const QString& group, const std::optional<QStringList>& user_groups);
  /// Puts these users, and no others, into a user group, which is made if need be; likewise.
  QString SetMembers(const QString& user_group, const std::optional<QStringList>& users);

 private:
  GroupRow FindGroup(const QString& name);
  std::vector<GroupRow> GroupsAt(const QString& path);
  int32_t UserGroup(const QString& name);
  int32_t User(const QString& name);
  QString UserGroupsOf(int32_t group);
  QString MembersOf(int32_t user_group);
  QString Listed(const QString& statement, int32_t value);
  void LogChange(int32_t group);

  CSqlEngine& engine_;
  CPlanRepository repository_;
};

}  // namespace TarnHost::Store
