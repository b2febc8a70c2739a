#pragma once

#include <QMap>
#include <QString>
#include <set>
#include <string>
#include <vector>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "store/sql_engine.h"

namespace TarnHost::Store {

/// What a client reads of its site once, when it opens the store: users, rights and switches.
/// Thread: any; nothing changes after Read().
class CSiteDirectory {
 public:
  struct User {
    int32_t id = 0;
    std::string name;
    std::set<int> rights;
  };

  static CSiteDirectory Read(CSqlEngine& engine, const QMap<QString, int>& switch_overrides);

  const std::string& StationId() const { return station_id_; }
  const std::string& RootName() const { return root_name_; }
  const std::vector<User>& Users() const { return users_; }
  /// Null for an unknown one.
  const User* FindUser(int32_t id) const;
  const User* FindUser(const std::string& name) const;
  /// The configuration record, with the overrides of this process.
  const view_plugin_protocol::GetPlanConfigResponse& Config() const { return config_; }

 private:
  void ReadUsers(CSqlEngine& engine);
  void ReadSwitches(CSqlEngine& engine, const QMap<QString, int>& overrides);

  std::string station_id_, root_name_;
  std::vector<User> users_;
  view_plugin_protocol::GetPlanConfigResponse config_;
};

}  // namespace TarnHost::Store
