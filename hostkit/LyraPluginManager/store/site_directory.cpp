#include "store/site_directory.h"

#include <algorithm>
#include <map>
#include <utility>

#include "accounts/account_repository.h"
#include "store/feature_switches.h"

namespace TarnHost::Store {

void CSiteDirectory::Read(CSqlEngine& engine, const QMap<QString, int>& switch_overrides) {
  const auto info = [&engine](const char* name) {
    return engine.Value("SELECT value FROM store_info WHERE name = ?", {name}).toString().toStdString();
  };
  station_id_ = info("station_id");
  root_name_ = info("root_name");
  ReadUsers(engine);
  ReadSwitches(engine, switch_overrides);
}

void CSiteDirectory::ReadUsers(CSqlEngine& engine) {
  std::map<int32_t, std::set<int>> rights;
  engine.ForEach("SELECT user_id, code FROM user_right", {},
                 [&](const QSqlQuery& query) { rights[query.value(0).toInt()].insert(query.value(1).toInt()); });
  const std::set<int32_t> with_password = CAccountRepository(engine).UsersWithPassword();
  auto users = std::make_shared<Users>();
  engine.ForEach("SELECT id, name, role_name FROM app_user ORDER BY id", {}, [&](const QSqlQuery& query) {
    const int32_t id = query.value(0).toInt();
    users->push_back({id, query.value(1).toString().toStdString(), rights[id], with_password.count(id) != 0,
                      query.value(2).toString()});
  });
  std::atomic_store(&users_, std::shared_ptr<const Users>(std::move(users)));
}

void CSiteDirectory::Remove(int32_t user) {
  auto users = std::make_shared<Users>(AllUsers());
  users->erase(std::remove_if(users->begin(), users->end(), [user](const User& one) { return one.id == user; }),
               users->end());
  std::atomic_store(&users_, std::shared_ptr<const Users>(std::move(users)));
}

void CSiteDirectory::ReadSwitches(CSqlEngine& engine, const QMap<QString, int>& overrides) {
  engine.ForEach("SELECT name, value FROM feature_switch", {}, [&](const QSqlQuery& query) {
    SetFeatureSwitch(&config_, query.value(0).toString(), query.value(1).toInt());
  });
  for (auto it = overrides.begin(); it != overrides.end(); ++it) {
    SetFeatureSwitch(&config_, it.key(), it.value());
  }
}

// What is found keeps the users it is one of.
template <class Matches>
std::shared_ptr<const CSiteDirectory::User> CSiteDirectory::Find(const Matches& matches) const {
  const std::shared_ptr<const Users> users = std::atomic_load(&users_);
  const auto found = std::find_if(users->begin(), users->end(), matches);
  return found == users->end() ? nullptr : std::shared_ptr<const User>(users, &*found);
}

std::shared_ptr<const CSiteDirectory::User> CSiteDirectory::FindUser(int32_t id) const {
  return Find([id](const User& user) { return user.id == id; });
}

std::shared_ptr<const CSiteDirectory::User> CSiteDirectory::FindUser(const std::string& name) const {
  return Find([&name](const User& user) { return user.name == name; });
}

}  // namespace TarnHost::Store
