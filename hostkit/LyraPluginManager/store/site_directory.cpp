#include "store/site_directory.h"

#include <algorithm>
#include <map>

#include "store/feature_switches.h"

namespace TarnHost::Store {

CSiteDirectory CSiteDirectory::Read(CSqlEngine& engine, const QMap<QString, int>& switch_overrides) {
  const auto info = [&engine](const char* name) {
    return engine.Value("SELECT value FROM store_info WHERE name = ?", {name}).toString().toStdString();
  };
  CSiteDirectory site;
  site.station_id_ = info("station_id");
  site.root_name_ = info("root_name");
  site.ReadUsers(engine);
  site.ReadSwitches(engine, switch_overrides);
  return site;
}

void CSiteDirectory::ReadUsers(CSqlEngine& engine) {
  std::map<int32_t, std::set<int>> rights;
  engine.ForEach("SELECT user_id, code FROM user_right", {},
                 [&](const QSqlQuery& query) { rights[query.value(0).toInt()].insert(query.value(1).toInt()); });
  engine.ForEach("SELECT id, name FROM app_user ORDER BY id", {}, [&](const QSqlQuery& query) {
    const int32_t id = query.value(0).toInt();
    users_.push_back({id, query.value(1).toString().toStdString(), rights[id]});
  });
}

void CSiteDirectory::ReadSwitches(CSqlEngine& engine, const QMap<QString, int>& overrides) {
  engine.ForEach("SELECT name, value FROM feature_switch", {}, [&](const QSqlQuery& query) {
    SetFeatureSwitch(&config_, query.value(0).toString(), query.value(1).toInt());
  });
  for (auto it = overrides.begin(); it != overrides.end(); ++it) {
    SetFeatureSwitch(&config_, it.key(), it.value());
  }
}

const CSiteDirectory::User* CSiteDirectory::FindUser(int32_t id) const {
  const auto found = std::find_if(users_.begin(), users_.end(), [&](const User& user) { return user.id == id; });
  return found == users_.end() ? nullptr : &*found;
}

const CSiteDirectory::User* CSiteDirectory::FindUser(const std::string& name) const {
  const auto found = std::find_if(users_.begin(), users_.end(), [&](const User& user) { return user.name == name; });
  return found == users_.end() ? nullptr : &*found;
}

}  // namespace TarnHost::Store
