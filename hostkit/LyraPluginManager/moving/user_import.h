#pragma once

#include "moving/import_codes.h"
#include "moving/import_plan.h"

namespace TarnHost::Moving {

/// Which users and user groups come along. Rights of users and members of user groups are a site's own matter: those
/// who are there already in another site keep theirs. Pure. Thread: any.
class CUserImport {
 public:
  CUserImport(const StandingSite& here, bool is_same_site, ImportPlan* plan);

  void TakeUsers(const std::vector<UserRecord>& users);
  void TakeUserGroups(std::vector<UserGroupRecord> groups);
  /// What users have chosen is among cameras, groups and plans, so it is known last; then users are complete.
  void TakeChoices(const std::vector<UserRecord>& users, const Codes& cameras, const Codes& groups, const Codes& plans);

  /// Whether there is one of this name afterwards.
  bool HasUser(const QString& name) const { return users_.count(name) != 0; }
  bool HasUserGroup(const QString& name) const { return user_group_names_.count(name) != 0; }

 private:
  void TakeUserGroup(UserGroupRecord group);
  void DropUnknownMembers(UserGroupRecord* group);
  void Settle(const UserRecord& file, Saved<UserRecord> user);

  const StandingSite& here_;
  const bool is_same_site_;
  ImportPlan* const plan_;
  std::map<QString, Saved<UserRecord>> users_;
  std::map<QString, const UserGroupRecord*> user_groups_;  // that were there before
  std::set<QString> user_group_names_;
  int32_t last_user_group_ = 0;
};

}  // namespace TarnHost::Moving
