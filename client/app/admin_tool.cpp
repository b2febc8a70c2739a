#include "app/admin_tool.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <utility>
#include <vector>

#include "TarnHost/store_care.h"
#include "app/data_file.h"
#include "plan_rules/rights.h"

namespace TarnClient {

using TarnHost::SiteLimit;
using TarnHost::SiteUser;
using TarnHost::SiteUserChanges;
using TarnHost::SiteUserGroup;
using TarnHost::SiteUsers;

namespace {

enum ExitCode { kWell = 0, kCannotDo = 2 };

struct Right {
  const char* name;
  int code;
};
constexpr Right kRights[] = {{"add", view_plugin_protocol::AddRight},
                             {"edit", view_plugin_protocol::EditRight},
                             {"delete", view_plugin_protocol::DeleteRight},
                             {"configure", view_plugin_protocol::kConfigureRight}};

/// What keeps a command from being done, as the one line the user reads.
struct Refusal {
  QString line;
};

QString NamesOf(const std::set<int>& rights) {
  QStringList names;
  for (const Right& right : kRights) {
    if (rights.count(right.code) != 0) {
      names << QLatin1String(right.name);
    }
  }
  return names.join(QLatin1Char(','));
}

QStringList ListOf(const QString& text) {
  QStringList list;
  for (const QString& item : text.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
    list << item.trimmed();
  }
  list.sort();
  return list;
}

std::set<int> RightsOf(const QString& text) {
  std::set<int> rights;
  for (const QString& name : ListOf(text)) {
    const auto known = std::find_if(std::begin(kRights), std::end(kRights),
                                    [&name](const Right& right) { return name == QLatin1String(right.name); });
    if (known == std::end(kRights)) {
      throw Refusal{QStringLiteral("there is no right \"%1\"; there are add, edit, delete, configure").arg(name)};
    }
    rights.insert(known->code);
  }
  return rights;
}

template <class Record>
Record Named(const std::vector<Record>& records, const QString& name, const char* what) {
  const auto found =
      std::find_if(records.begin(), records.end(), [&name](const Record& record) { return record.name == name; });
  if (found == records.end()) {
    throw Refusal{QStringLiteral("there is no %1 \"%2\"").arg(QLatin1String(what), name)};
  }
  return *found;
}

SiteUser UserNamed(const SiteUsers& site, const QString& name) {
  return Named(site.users, name, "user");
}

SiteUserGroup UserGroupNamed(const SiteUsers& site, const QString& name) {
  return Named(site.user_groups, name, "user group");
}

struct Order {
  const SiteUsers& site;
  QStringList words;  // behind the command
  const ClientOptions& options;
};

TarnHost::CSecret Password(const ClientOptions& options) {
  if (!options.password) {
    throw Refusal{QStringLiteral("the password is read from --password-fd (0: standard input) or TARN_PASSWORD")};
  }
  if (options.password->IsEmpty()) {
    throw Refusal{QStringLiteral("the password is empty; clear-password takes one away")};
  }
  return *options.password;
}

SiteUserChanges OneUser(std::optional<SiteUser> before, std::optional<SiteUser> after,
                        std::optional<TarnHost::CSecret> password = std::nullopt) {
  SiteUserChanges changes;
  changes.users.push_back({{std::move(before), std::move(after)}, std::move(password)});
  return changes;
}

SiteUserChanges OneUserGroup(std::optional<SiteUserGroup> before, std::optional<SiteUserGroup> after) {
  SiteUserChanges changes;
  changes.user_groups.push_back({{std::move(before), std::move(after)}});
  return changes;
}

SiteUserChanges AddUser(const Order& order) {
  SiteUser user;
  user.name = order.words[0];
  user.rights = RightsOf(order.words.value(1));
  return OneUser(std::nullopt, user, order.options.password);
}

SiteUserChanges RenameUser(const Order& order) {
  SiteUser user = UserNamed(order.site, order.words[0]);
  user.name = order.words[1];
  return OneUser(UserNamed(order.site, order.words[0]), user);
}

SiteUserChanges DeleteUser(const Order& order) {
  return OneUser(UserNamed(order.site, order.words[0]), std::nullopt);
}

SiteUserChanges SetRights(const Order& order) {
  SiteUser user = UserNamed(order.site, order.words[0]);
  user.rights = RightsOf(order.words.value(1));
  return OneUser(UserNamed(order.site, order.words[0]), user);
}

SiteUserChanges SetPassword(const Order& order) {
  const SiteUser user = UserNamed(order.site, order.words[0]);
  return OneUser(user, user, Password(order.options));
}

SiteUserChanges ClearPassword(const Order& order) {
  const SiteUser user = UserNamed(order.site, order.words[0]);
  return OneUser(user, user, TarnHost::CSecret());
}

SiteUserChanges AddUserGroup(const Order& order) {
  return OneUserGroup(std::nullopt, SiteUserGroup{0, order.words[0]});
}

SiteUserChanges RenameUserGroup(const Order& order) {
  const SiteUserGroup group = UserGroupNamed(order.site, order.words[0]);
  return OneUserGroup(group, SiteUserGroup{group.id, order.words[1]});
}

SiteUserChanges DeleteUserGroup(const Order& order) {
  return OneUserGroup(UserGroupNamed(order.site, order.words[0]), std::nullopt);
}

SiteUserChanges SetMembers(const Order& order) {
  const QString group = UserGroupNamed(order.site, order.words[0]).name;
  const QStringList members = ListOf(order.words.value(1));
  for (const QString& name : members) {
    UserNamed(order.site, name);
  }
  SiteUserChanges changes;
  for (const SiteUser& user : order.site.users) {
    SiteUser after = user;
    after.user_groups.removeAll(group);
    if (members.contains(user.name)) {
      after.user_groups << group;
    }
    after.user_groups.sort();
    if (!(after == user)) {
      changes.users.push_back({{user, after}, std::nullopt});
    }
  }
  return changes;
}

SiteUserChanges Limit(const Order& order) {
  SiteUserChanges changes;
  for (const SiteLimit& group : order.site.groups) {
    if (group.path == order.words[0] || QString::number(group.group) == order.words[0]) {
      SiteLimit after = group;
      after.user_groups = ListOf(order.words.value(1));
      changes.limits.push_back({group, after});
    }
  }
  if (changes.limits.size() != 1) {
    throw Refusal{
        QStringLiteral("there is no one public group \"%1\"; name it by its path or number").arg(order.words[0])};
  }
  return changes;
}

QStringList ListUsers(const SiteUsers& site) {
  QStringList lines;
  for (const SiteUser& user : site.users) {
    QString password = QStringLiteral("no password");
    if (user.has_password) {
      password = QStringLiteral("password");
    }
    lines << QStringLiteral("%1\t%2\t%3\t%4")
                 .arg(user.name, NamesOf(user.rights), password, user.user_groups.join(QLatin1Char(',')));
    if (user.lacks_role) {
      lines.last() += QStringLiteral("\tno role at the server");
    }
  }
  return lines;
}

QStringList ListUserGroups(const SiteUsers& site) {
  QStringList lines;
  for (const SiteUserGroup& group : site.user_groups) {
    QStringList members;
    for (const SiteUser& user : site.users) {
      if (user.user_groups.contains(group.name)) {
        members << user.name;
      }
    }
    lines << group.name + QLatin1Char('\t') + members.join(QLatin1Char(','));
  }
  return lines;
}

QStringList ListLimits(const SiteUsers& site) {
  QStringList lines;
  for (const SiteLimit& group : site.groups) {
    if (!group.user_groups.isEmpty()) {
      lines << QStringLiteral("%1\t%2\t%3")
                   .arg(group.path, QString::number(group.group), group.user_groups.join(QLatin1Char(',')));
    }
  }
  return lines;
}

constexpr char kUseRoles[] = "use-roles";

struct Command {
  const char* name;
  const char* words;  // as the help shows them; those in brackets may be left out
  SiteUserChanges (*change)(const Order&);
  QStringList (*list)(const SiteUsers&);
};

constexpr Command kCommands[] = {
    {"users", "", nullptr, ListUsers},
    {"add-user", "NAME [RIGHT,...]", AddUser, nullptr},
    {"rename-user", "NAME NEW", RenameUser, nullptr},
    {"delete-user", "NAME", DeleteUser, nullptr},
    {"set-rights", "NAME [RIGHT,...]", SetRights, nullptr},
    {"set-password", "NAME", SetPassword, nullptr},
    {"clear-password", "NAME", ClearPassword, nullptr},
    {"user-groups", "", nullptr, ListUserGroups},
    {"add-user-group", "NAME", AddUserGroup, nullptr},
    {"rename-user-group", "NAME NEW", RenameUserGroup, nullptr},
    {"delete-user-group", "NAME", DeleteUserGroup, nullptr},
    {"set-members", "USERGROUP [USER,...]", SetMembers, nullptr},
    {"limits", "", nullptr, ListLimits},
    {"limit", "GROUP [USERGROUP,...]", Limit, nullptr},
    {kUseRoles, "", nullptr, nullptr},
};

void RequireWords(const Command& command, int given) {
  const QStringList words = QString::fromLatin1(command.words).split(QLatin1Char(' '), Qt::SkipEmptyParts);
  const auto needed =
      std::count_if(words.begin(), words.end(), [](const QString& word) { return !word.startsWith(QLatin1Char('[')); });
  if (given < needed || given > words.size()) {
    throw Refusal{QStringLiteral("as in --admin %1 %2").arg(QLatin1String(command.name), QLatin1String(command.words))};
  }
}

void Print(const QStringList& lines) {
  for (const QString& line : lines) {
    std::fprintf(stdout, "%s\n", qUtf8Printable(line));
  }
}

QStringList Help() {
  QStringList lines;
  for (const Command& command : kCommands) {
    lines << QStringLiteral("--admin %1 %2").arg(QLatin1String(command.name), QLatin1String(command.words));
  }
  return lines << QStringLiteral("Rights: add edit delete configure. Lists have tabs between their columns.");
}

void UseRoles(const QString& url) {
  QString said, error;
  if (!TarnHost::StoreCare::UseRoles(url, &said, &error)) {
    throw Refusal{error};
  }
  Print({said});
}

void Run(const Command& command, const ClientOptions& options) {
  const QString url = StoreUrlOf(options);
  SiteUsers site;
  QString error;
  RequireWords(command, options.admin.size() - 1);
  if (command.name == kUseRoles) {
    return UseRoles(url);
  }
  if (!TarnHost::StoreCare::ReadUsers(url, &site, &error)) {
    throw Refusal{error};
  }
  if (command.list != nullptr) {
    return Print(command.list(site));
  }
  const SiteUserChanges changes = command.change({site, options.admin.mid(1), options});
  if (!TarnHost::StoreCare::ChangeUsers(url, changes, &error)) {
    throw Refusal{error};
  }
}

}  // namespace

int RunAdminTool(const ClientOptions& options) {
  const QString name = options.admin.constFirst();
  if (name == QLatin1String("help")) {
    Print(Help());
    return kWell;
  }
  const auto command = std::find_if(std::begin(kCommands), std::end(kCommands),
                                    [&name](const Command& one) { return name == QLatin1String(one.name); });
  try {
    if (command == std::end(kCommands)) {
      throw Refusal{QStringLiteral("--admin %1 is unknown; --admin help names the commands").arg(name)};
    }
    Run(*command, options);
    return kWell;
  } catch (const Refusal& refusal) {
    std::fprintf(stderr, "tarn-client: %s\n",
                 qUtf8Printable(QString(refusal.line).replace(QLatin1Char('\n'), QLatin1Char(' '))));
    return kCannotDo;
  }
}

}  // namespace TarnClient
