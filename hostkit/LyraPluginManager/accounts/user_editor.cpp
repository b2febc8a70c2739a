#include "accounts/user_editor.h"

#include <QSet>
#include <algorithm>
#include <map>

#include "accounts/administrators.h"
#include "accounts/password_hash.h"
#include "plan_rules/plan_limits.h"
#include "plan_rules/rights.h"
#include "store/migrations.h"
#include "store/store_texts.h"
#include "store/text_rules.h"
#include "store/user_roles.h"

namespace TarnHost::Store {
namespace {

using view_plugin_protocol::kConfigureRight;

constexpr char kOrigin[] = "maintenance";
constexpr char kUserName[] = QT_TRANSLATE_NOOP("TarnHost::Store", "There is already a user \"%1\".");
constexpr char kGroupName[] = QT_TRANSLATE_NOOP("TarnHost::Store", "There is already a user group \"%1\".");

[[noreturn]] void Refuse(const CStoreText& text, CStoreError::Kind kind = CStoreError::kRefused) {
  throw CStoreError(kind, text);
}

// Lists of names are typed with these between them, and a name begins no option.
QString CheckedListName(const QString& name) {
  const QString checked = CheckedName(name.trimmed().toStdString());
  if (checked.contains(QLatin1Char(',')) || checked.contains(QLatin1Char('='))) {
    Refuse(
        {QT_TRANSLATE_NOOP("TarnHost::Store", "The name cannot have a comma or an equals sign: \"%1\"."), {checked}});
  }
  return checked;
}

template <class Record>
void RequireAsBefore(const std::vector<Record>& now, const Record& before) {
  if (std::find(now.begin(), now.end(), before) == now.end()) {
    Refuse(
        {QT_TRANSLATE_NOOP("TarnHost::Store",
                           "\"%1\" was changed by somebody else in the meantime. Nothing was saved; look at it again."),
         {before.name}},
        CStoreError::kChanged);
  }
}

bool IsKnownRight(int code) {
  return view_plugin_protocol::IsRight(code) || code == kConfigureRight;
}

}  // namespace

SiteUsers CUserEditor::Read() {
  CTransaction transaction(engine_, CTransaction::kRead);
  RequireNewest(engine_);
  SiteUsers users = ReadAll();
  transaction.Commit();
  return users;
}

SiteUsers CUserEditor::ReadAll() {
  return {ReadUsers(), ReadUserGroups(), ReadGroups()};
}

std::vector<SiteUser> CUserEditor::ReadUsers() {
  std::map<int32_t, SiteUser> users;
  const std::set<int32_t> with_password = accounts_.UsersWithPassword();
  QStringList missing;
  ForRoles([&missing](CUserRoles& roles) { missing = roles.AreUsed() ? roles.Missing() : QStringList(); });
  engine_.ForEach("SELECT id, name, role_name FROM app_user", {}, [&](const QSqlQuery& query) {
    const int32_t id = query.value(0).toInt();
    const QString role = query.value(2).toString();
    users[id] = {id, query.value(1).toString(), {}, {}, with_password.count(id) != 0, missing.contains(role)};
  });
  engine_.ForEach("SELECT user_id, code FROM user_right", {}, [&](const QSqlQuery& query) {
    const auto user = users.find(query.value(0).toInt());
    if (user != users.end()) {
      user->second.rights.insert(query.value(1).toInt());
    }
  });
  engine_.ForEach("SELECT user_id, name FROM user_group_member JOIN user_group ON id = user_group_id ORDER BY name", {},
                  [&](const QSqlQuery& query) {
                    const auto user = users.find(query.value(0).toInt());
                    if (user != users.end()) {
                      user->second.user_groups.append(query.value(1).toString());
                    }
                  });
  std::vector<SiteUser> list;
  for (auto& [id, user] : users) {
    user.user_groups.sort();
    list.push_back(std::move(user));
  }
  std::stable_sort(list.begin(), list.end(), [](const SiteUser& left, const SiteUser& right) {
    return QString::compare(left.name, right.name, Qt::CaseInsensitive) < 0;
  });
  return list;
}

std::vector<SiteUserGroup> CUserEditor::ReadUserGroups() {
  std::vector<SiteUserGroup> list;
  engine_.ForEach("SELECT id, name FROM user_group ORDER BY name", {}, [&list](const QSqlQuery& query) {
    list.push_back({query.value(0).toInt(), query.value(1).toString()});
  });
  return list;
}

std::vector<SiteLimit> CUserEditor::ReadGroups() {
  std::map<int32_t, QStringList> limits;
  engine_.ForEach(
      "SELECT group_code, coalesce(name, '?') FROM group_audience LEFT JOIN user_group ON id = user_group_id"
      " ORDER BY name",
      {}, [&limits](const QSqlQuery& query) { limits[query.value(0).toInt()].append(query.value(1).toString()); });
  std::map<int32_t, GroupRow> groups;
  for (GroupRow& group : repository_.AllGroups()) {
    groups[group.code] = std::move(group);
  }
  std::vector<SiteLimit> list;
  for (const auto& [code, group] : groups) {
    if (group.family != PublicFamily) {
      continue;
    }
    QStringList path{ToQt(group.name)};
    for (auto above = groups.find(group.parent);
         above != groups.end() && path.size() < view_plugin_protocol::kDeepestLevel;
         above = groups.find(above->second.parent)) {
      path.prepend(ToQt(above->second.name));
    }
    QStringList user_groups = limits[code];
    user_groups.sort();
    list.push_back({code, path.join(QLatin1Char('/')), std::move(user_groups)});
  }
  std::stable_sort(list.begin(), list.end(),
                   [](const SiteLimit& left, const SiteLimit& right) { return left.path < right.path; });
  return list;
}

// Empty for one that is taken away or stays.
QStringList CUserEditor::HashesOf(const SiteUserChanges& changes) {
  QStringList hashes;
  for (const SiteUserChanges::User& change : changes.users) {
    QString hash;
    if (change.password && !change.password->IsEmpty()) {
      hash = PasswordHash::Of(*change.password);
    }
    hashes.append(hash);
  }
  return hashes;
}

void CUserEditor::Change(const SiteUserChanges& changes, const QStringList& hashes, int32_t by) {
  if (engine_.BoundUser()) {
    Refuse({QT_TRANSLATE_NOOP("TarnHost::Store", "Users are changed by the account that owns the plan store %1 alone."),
            {engine_.Place()}},
           CStoreError::kNotPermitted);
  }
  CTransaction transaction(engine_, CTransaction::kWrite);
  RequireNewest(engine_);
  now_ = ReadAll();
  CAdministrators administrators(engine_);
  Apply(changes, hashes, by);
  administrators.RequireKept();
  repository_.LogChange({0, kOrigin, ChangeEntry::kUsersSaved, 0});
  repository_.LogChange({0, kOrigin, ChangeEntry::kAudiencesSaved, 0});  // members and limits, for programs of before
  transaction.Commit();
}

void CUserEditor::Apply(const SiteUserChanges& changes, const QStringList& hashes, int32_t by) {
  for (const SiteUserChanges::UserGroup& change : changes.user_groups) {
    SaveUserGroup(change);
  }
  for (size_t place = 0; place < changes.users.size(); ++place) {
    const SiteUserChanges::User& change = changes.users[place];
    if (change.before && !change.after && change.before->id == by) {
      Refuse(QT_TRANSLATE_NOOP("TarnHost::Store", "You cannot delete the user that you are logged in as."));
    }
    SaveUser(change, hashes[static_cast<int>(place)]);
  }
  for (const SiteUserChanges::Limit& change : changes.limits) {
    SaveLimit(change);
  }
}

void CUserEditor::SaveUserGroup(const SiteUserChanges::UserGroup& change) {
  if (change.before) {
    RequireAsBefore(now_.user_groups, *change.before);
  }
  if (!change.after) {
    return RemoveUserGroup(*change.before);
  }
  const QString name = CheckedListName(change.after->name);
  const int32_t id = change.before ? change.before->id : 0;
  RequireFreeName("user_group", name, id);
  if (id != 0) {
    engine_.Execute("UPDATE user_group SET name = ? WHERE id = ?", {name, id});
  } else {
    repository_.Audiences().UserGroupToFill(name);
  }
}

// A limit to no one left would open the group to all.
void CUserEditor::RemoveUserGroup(const SiteUserGroup& group) {
  for (const SiteLimit& limit : now_.groups) {
    if (limit.user_groups.contains(group.name)) {
      Refuse({QT_TRANSLATE_NOOP("TarnHost::Store",
                                "The user group \"%1\" still limits who sees \"%2\". Change that first."),
              {group.name, limit.path}});
    }
  }
  engine_.Execute("DELETE FROM group_audience WHERE user_group_id = ?", {group.id});  // of groups that are deleted
  engine_.Execute("DELETE FROM user_group_member WHERE user_group_id = ?", {group.id});
  engine_.Execute("DELETE FROM user_group WHERE id = ?", {group.id});
}

void CUserEditor::SaveUser(const SiteUserChanges::User& change, const QString& hash) {
  if (change.before) {
    RequireAsBefore(now_.users, *change.before);
  }
  if (!change.after) {
    return RemoveUser(change.before->id);
  }
  const QString name = CheckedListName(change.after->name);
  int32_t id = change.before ? change.before->id : 0;
  RequireFreeName("app_user", name, id);
  if (id != 0) {
    Rename(id, change.before->name, name);
  } else {
    id = NewUserNumber();
    engine_.Execute("INSERT INTO app_user (id, name, role_name) VALUES (?, ?, ?)", {id, name, name});
    ForRoles([&name](CUserRoles& roles) { roles.Make(name); });
  }
  engine_.Execute("DELETE FROM user_right WHERE user_id = ?", {id});
  for (const int right : change.after->rights) {
    if (!IsKnownRight(right)) {
      Refuse(QStringLiteral("There is no right %1.").arg(right));
    }
    engine_.Execute("INSERT INTO user_right (user_id, code) VALUES (?, ?)", {id, right});
  }
  SetMembership(id, change.after->user_groups);
  if (change.password) {
    SetPassword(id, hash);
    ForRoles([&](CUserRoles& roles) { roles.SetPassword(RoleOf(id), *change.password); });
  }
}

void CUserEditor::ForRoles(const std::function<void(CUserRoles&)>& change) {
  if (CUserRoles* const roles = engine_.Roles()) {
    change(*roles);
  }
}

QString CUserEditor::RoleOf(int32_t user) {
  return engine_.Value("SELECT role_name FROM app_user WHERE id = ?", {user}).toString();
}

// A role that was given another name than the user's keeps it.
void CUserEditor::Rename(int32_t user, const QString& before, const QString& name) {
  const QString role = RoleOf(user);
  if (role == before) {
    QString renamed = name;
    ForRoles([&](CUserRoles& roles) { renamed = roles.Rename(role, name); });
    engine_.Execute("UPDATE app_user SET role_name = ? WHERE id = ?", {renamed, user});
  }
  engine_.Execute("UPDATE app_user SET name = ? WHERE id = ?", {name, user});
}

void CUserEditor::SetMembership(int32_t user, const QStringList& user_groups) {
  engine_.Execute("DELETE FROM user_group_member WHERE user_id = ?", {user});
  for (const QString& name : QSet<QString>(user_groups.begin(), user_groups.end())) {
    engine_.Execute("INSERT INTO user_group_member (user_group_id, user_id) VALUES (?, ?)", {UserGroup(name), user});
  }
}

void CUserEditor::SetPassword(int32_t user, const QString& hash) {
  if (hash.isEmpty()) {
    accounts_.Remove(user);
  } else {
    accounts_.SetHash(user, hash);
  }
}

// With all that is the user's alone. His number is not given again, or the next one would find it.
void CUserEditor::RemoveUser(int32_t user) {
  for (const char* table :
       {"user_right", "user_group_member", "default_view", "favorite_camera", "kept_default_view"}) {
    engine_.Execute(QStringLiteral("DELETE FROM %1 WHERE user_id = ?").arg(QLatin1String(table)), {user});
  }
  accounts_.Remove(user);
  ForRoles([this, user](CUserRoles& roles) { roles.Remove(RoleOf(user)); });
  const QVariantList own{user, OwnFamily};
  engine_.Execute("DELETE FROM plan_content WHERE code IN (SELECT code FROM plan WHERE owner_id = ? AND family = ?)",
                  own);
  engine_.Execute("DELETE FROM plan WHERE owner_id = ? AND family = ?", own);
  engine_.Execute("DELETE FROM plan_group WHERE owner_id = ? AND family = ?", own);
  engine_.Execute("UPDATE counter SET value = ? WHERE name = 'user' AND value < ?", {user, user});
  engine_.Execute("DELETE FROM app_user WHERE id = ?", {user});
}

void CUserEditor::SaveLimit(const SiteUserChanges::Limit& change) {
  const auto group = std::find_if(now_.groups.begin(), now_.groups.end(),
                                  [&change](const SiteLimit& one) { return one.group == change.before.group; });
  if (group == now_.groups.end()) {
    Refuse(kGroupGone, CStoreError::kGone);
  }
  if (group->user_groups != change.before.user_groups) {
    Refuse(
        {QT_TRANSLATE_NOOP("TarnHost::Store",
                           "\"%1\" was changed by somebody else in the meantime. Nothing was saved; look at it again."),
         {group->path}},
        CStoreError::kChanged);
  }
  Audience audience;
  for (const QString& name : change.after.user_groups) {
    audience.insert(UserGroup(name));
  }
  repository_.Audiences().SetAudience(group->group, audience);
}

int32_t CUserEditor::UserGroup(const QString& name) {
  const auto id = repository_.Audiences().UserGroup(name);
  if (!id) {
    Refuse({QT_TRANSLATE_NOOP("TarnHost::Store", "There is no user group \"%1\"."), {name}}, CStoreError::kGone);
  }
  return *id;
}

int32_t CUserEditor::NewUserNumber() {
  const int32_t last = std::max(engine_.Value("SELECT value FROM counter WHERE name = 'user'").toInt(),
                                engine_.Value("SELECT max(id) FROM app_user").toInt());
  engine_.Execute("UPDATE counter SET value = ? WHERE name = 'user'", {last + 1});
  return last + 1;
}

void CUserEditor::RequireFreeName(const char* table, const QString& name, int32_t id) {
  const bool is_user = qstrcmp(table, "app_user") == 0;
  const QString statement = QStringLiteral("SELECT 1 FROM %1 WHERE name = ? AND id <> ?").arg(QLatin1String(table));
  if (engine_.Value(statement, {name, id}).isValid()) {
    Refuse({is_user ? kUserName : kGroupName, {name}});
  }
}

}  // namespace TarnHost::Store
