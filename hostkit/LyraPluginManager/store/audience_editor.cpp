#include "store/audience_editor.h"

#include <algorithm>
#include <iterator>

#include "store/migrations.h"
#include "store/text_rules.h"

namespace TarnHost::Store {
namespace {

constexpr char kOrigin[] = "maintenance";

[[noreturn]] void Refuse(const QString& text) {
  throw CStoreError(CStoreError::kRefused, text);
}

// Who only asks keeps no one from writing.
CTransaction::Mode TurnFor(bool changes) {
  return changes ? CTransaction::kWrite : CTransaction::kRead;
}

// Lists of user groups are typed with these between the names.
QString CheckedUserGroup(const QString& name) {
  if (name.contains(QLatin1Char(',')) || name.contains(QLatin1Char('='))) {
    Refuse(QStringLiteral("The name of a user group cannot have a comma or an equals sign: \"%1\".").arg(name));
  }
  return CheckedName(name.toStdString());
}

}  // namespace

QString CAudienceEditor::SetLimit(const QString& group, const std::optional<QStringList>& user_groups) {
  CTransaction transaction(engine_, TurnFor(user_groups.has_value()));
  RequireNewest(engine_);
  const GroupRow row = FindGroup(group);
  if (user_groups) {
    Audience audience;
    for (const QString& name : *user_groups) {
      audience.insert(UserGroup(name));
    }
    if (repository_.Audiences().SetAudience(row.code, audience)) {
      LogChange(row.code);
    }
  }
  const QString now = UserGroupsOf(row.code);
  transaction.Commit();
  const QString what = QStringLiteral("Group \"%1\" (%2) is ").arg(ToQt(row.name)).arg(row.code);
  if (now.isEmpty()) {
    return what + QStringLiteral("open to all users.");
  }
  return what + QStringLiteral("limited to: %1.").arg(now);
}

QString CAudienceEditor::SetMembers(const QString& user_group, const std::optional<QStringList>& users) {
  CTransaction transaction(engine_, TurnFor(users.has_value()));
  RequireNewest(engine_);
  if (users) {
    std::set<int32_t> members;
    for (const QString& name : *users) {
      members.insert(User(name));
    }
    const QString checked = CheckedUserGroup(user_group);
    if (repository_.Audiences().SetMembers(repository_.Audiences().UserGroupToFill(checked), members)) {
      LogChange(0);
    }
  }
  const QString now = MembersOf(UserGroup(user_group));
  transaction.Commit();
  if (now.isEmpty()) {
    return QStringLiteral("User group \"%1\" has no members.").arg(user_group);
  }
  return QStringLiteral("User group \"%1\" has: %2.").arg(user_group, now);
}

void CAudienceEditor::LogChange(int32_t group) {
  repository_.LogChange({0, kOrigin, ChangeEntry::kAudiencesSaved, group});
}

GroupRow CAudienceEditor::FindGroup(const QString& name) {
  const auto by_code = repository_.Group(ParseCode(name.toStdString()));
  if (by_code && by_code->family == PublicFamily) {
    return *by_code;
  }
  const std::vector<GroupRow> found = GroupsAt(name);
  if (found.empty()) {
    Refuse(QStringLiteral("There is no public group \"%1\".").arg(name));
  }
  if (found.size() > 1) {
    QStringList codes;
    for (const GroupRow& group : found) {
      codes.append(QString::number(group.code));
    }
    Refuse(QStringLiteral("There are several groups \"%1\"; name one by its code: %2.")
               .arg(name, codes.join(QStringLiteral(", "))));
  }
  return found.front();
}

std::vector<GroupRow> CAudienceEditor::GroupsAt(const QString& path) {
  const std::vector<GroupRow> all = repository_.AllGroups();
  std::vector<GroupRow> found;
  std::set<int32_t> parents = {PublicRoot};
  for (const QString& name : path.split(QLatin1Char('/'))) {
    found.clear();
    std::copy_if(all.begin(), all.end(), std::back_inserter(found),
                 [&](const GroupRow& group) { return parents.count(group.parent) != 0 && ToQt(group.name) == name; });
    parents.clear();
    std::transform(found.begin(), found.end(), std::inserter(parents, parents.end()),
                   [](const GroupRow& group) { return group.code; });
  }
  return found;
}

int32_t CAudienceEditor::UserGroup(const QString& name) {
  const auto id = repository_.Audiences().UserGroup(name);
  if (!id) {
    Refuse(QStringLiteral("There is no user group \"%1\".").arg(name));
  }
  return *id;
}

int32_t CAudienceEditor::User(const QString& name) {
  const QVariant id = engine_.Value("SELECT id FROM app_user WHERE name = ?", {name});
  if (!id.isValid()) {
    Refuse(QStringLiteral("There is no user \"%1\".").arg(name));
  }
  return id.toInt();
}

// A limit that names a user group which is not there is one all the same.
QString CAudienceEditor::UserGroupsOf(int32_t group) {
  return Listed(
      "SELECT coalesce(name, '?') FROM group_audience LEFT JOIN user_group ON id = user_group_id WHERE group_code = ?"
      " ORDER BY name",
      group);
}

QString CAudienceEditor::MembersOf(int32_t user_group) {
  return Listed(
      "SELECT app_user.name FROM user_group_member JOIN app_user ON app_user.id = user_id WHERE user_group_id = ?"
      " ORDER BY app_user.name",
      user_group);
}

QString CAudienceEditor::Listed(const QString& statement, int32_t value) {
  QStringList names;
  engine_.ForEach(statement, {value}, [&names](const QSqlQuery& query) { names.append(query.value(0).toString()); });
  return names.join(QStringLiteral(", "));
}

}  // namespace TarnHost::Store
