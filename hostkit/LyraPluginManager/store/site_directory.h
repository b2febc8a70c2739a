#pragma once

#include <QMap>
#include <QString>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "store/sql_engine.h"

namespace TarnHost::Store {

/// What a client knows of its site: users, who may change, and what it reads once, when it opens the store. Thread:
/// any.
class CSiteDirectory {
 public:
  struct User {
    int32_t id = 0;
    std::string name;
    std::set<int> rights;
    bool has_password = false;  // kept in the store itself
    QString role;               // of the server; empty for none
  };
  using Users = std::vector<User>;

  /// Reads everything. Before the first use.
  void Read(CSqlEngine& engine, const QMap<QString, int>& switch_overrides);
  /// This user is none of the site's any more, as far as is known.
  void Remove(int32_t user);
  /// Reads the users again.
  void ReadUsers(CSqlEngine& engine);

  const std::string& StationId() const { return station_id_; }
  const std::string& RootName() const { return root_name_; }
  /// As they are now.
  Users AllUsers() const { return *std::atomic_load(&users_); }
  /// Null for an unknown one.
  std::shared_ptr<const User> FindUser(int32_t id) const;
  std::shared_ptr<const User> FindUser(const std::string& name) const;
  /// The configuration record, with the overrides of this process.
  const view_plugin_protocol::GetPlanConfigResponse& Config() const { return config_; }

 private:
  template <class Matches>
  std::shared_ptr<const User> Find(const Matches& matches) const;
  void ReadSwitches(CSqlEngine& engine, const QMap<QString, int>& overrides);

  std::string station_id_, root_name_;
  std::shared_ptr<const Users> users_ = std::make_shared<const Users>();
  view_plugin_protocol::GetPlanConfigResponse config_;
};

}  // namespace TarnHost::Store
