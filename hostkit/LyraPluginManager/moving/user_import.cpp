#include "moving/user_import.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace TarnHost::Moving {
namespace {

const char kTwice[] = "the name stands twice in the file";

void ChooseAgain(const UserRecord& file, const Codes& cameras, const Codes& groups, const Codes& plans,
                 UserRecord* user) {
  const int32_t* plan = Find(plans, file.default_plan);
  const int32_t* group = Find(groups, file.default_group);
  if (plan && file.default_plan != 0) {
    user->default_plan = *plan;
    user->default_group = 0;
  } else if (group && file.default_group != 0) {
    user->default_group = *group;
    user->default_plan = 0;
  }
  for (const int32_t camera : file.favorite_cameras) {
    if (const int32_t* code = Find(cameras, camera)) {
      user->favorite_cameras.insert(*code);
    }
  }
}

}  // namespace

CUserImport::CUserImport(const StandingSite& here, bool is_same_site, ImportPlan* plan)
    : here_(here), is_same_site_(is_same_site), plan_(plan) {
  plan_->last.user = here.last.user;
  for (const UserRecord& user : here.records.users) {
    users_[user.name] = {user, false};
    plan_->last.user = std::max(plan_->last.user, user.id);
  }
  for (const UserGroupRecord& group : here.records.user_groups) {
    user_groups_[group.name] = &group;
    user_group_names_.insert(group.name);
    last_user_group_ = std::max(last_user_group_, group.id);
  }
}

void CUserImport::TakeUsers(const std::vector<UserRecord>& users) {
  std::set<QString> seen;
  for (const UserRecord& user : users) {
    if (!seen.insert(user.name).second) {
      plan_->report.LeaveOut(Named("User", user.name), QLatin1String(kTwice));
    } else if (!HasUser(user.name)) {
      UserRecord added;
      added.id = ++plan_->last.user;
      added.name = user.name;
      users_[user.name] = {added, true};
    }
  }
}

void CUserImport::TakeUserGroups(std::vector<UserGroupRecord> groups) {
  std::set<QString> seen;
  for (UserGroupRecord& group : groups) {
    if (seen.insert(group.name).second) {
      TakeUserGroup(std::move(group));
    } else {
      plan_->report.LeaveOut(Named("User group", group.name), QLatin1String(kTwice));
    }
  }
}

void CUserImport::TakeUserGroup(UserGroupRecord group) {
  DropUnknownMembers(&group);
  user_group_names_.insert(group.name);
  const auto known = user_groups_.find(group.name);
  if (known == user_groups_.end()) {
    group.id = ++last_user_group_;
    plan_->report.taken.append(Named("User group", group.name));
    plan_->user_groups.push_back({std::move(group), true});
    return;
  }
  QStringList what;
  AddIf(is_same_site_ && known->second->members != group.members, "members", &what);
  group.id = known->second->id;
  if (plan_->report.NoteChanged(Named("User group", group.name), what)) {
    plan_->user_groups.push_back({std::move(group), false});
  }
}

void CUserImport::DropUnknownMembers(UserGroupRecord* group) {
  std::set<QString> members;
  for (const QString& member : group->members) {
    if (HasUser(member)) {
      members.insert(member);
    } else {
      plan_->report.LeaveOut(Named("Member", member),
                             QStringLiteral("of user group \"%1\": there is no such user").arg(group->name));
    }
  }
  group->members = std::move(members);
}

void CUserImport::TakeChoices(const std::vector<UserRecord>& users, const Codes& cameras, const Codes& groups,
                              const Codes& plans) {
  std::set<QString> seen;
  for (const UserRecord& file : users) {
    if (!seen.insert(file.name).second) {
      continue;
    }
    Saved<UserRecord> user = users_.at(file.name);
    if (is_same_site_ || user.is_new) {
      user.record.rights = file.rights;
      ChooseAgain(file, cameras, groups, plans, &user.record);
    }
    Settle(file, std::move(user));
  }
}

void CUserImport::Settle(const UserRecord& file, Saved<UserRecord> user) {
  if (user.is_new) {
    plan_->report.taken.append(Named("User", file.name) + QStringLiteral(", without a password"));
    plan_->users.push_back(std::move(user));
    return;
  }
  const UserRecord& before = users_.at(file.name).record;
  QStringList what;
  AddIf(user.record.rights != before.rights, "rights", &what);
  AddIf(std::tie(user.record.default_plan, user.record.default_group) !=
            std::tie(before.default_plan, before.default_group),
        "default view", &what);
  AddIf(user.record.favorite_cameras != before.favorite_cameras, "favorite cameras", &what);
  if (plan_->report.NoteChanged(Named("User", file.name), what)) {
    plan_->users.push_back(std::move(user));
  }
}

}  // namespace TarnHost::Moving
