#include "store/feature_switches.h"

#include <vector>

namespace TarnHost::Store {
namespace {

using Config = view_plugin_protocol::GetPlanConfigResponse;

struct Switch {
  const char* name;
  void (*set)(Config&, int);
  int (*get)(const Config&);
};

template <bool Config::*Member>
constexpr Switch Flag(const char* name) {
  return {name, [](Config& config, int value) { config.*Member = value != 0; },
          [](const Config& config) { return config.*Member ? 1 : 0; }};
}

const std::vector<Switch>& Switches() {
  static const std::vector<Switch> all = {
      Flag<&Config::load_all>("load_all"),
      Flag<&Config::create_under_root>("create_under_root"),
      Flag<&Config::enable_search>("enable_search"),
      Flag<&Config::enable_drag>("enable_drag"),
      Flag<&Config::delete_with_children>("delete_with_children"),
      {"show_mode", [](Config& config, int value) { config.show_mode = value; },
       [](const Config& config) { return config.show_mode; }},
      Flag<&Config::timed_play>("timed_play"),
      Flag<&Config::only_camera>("only_camera"),
      Flag<&Config::move_public_private>("move_public_private"),
      Flag<&Config::add_from_favorite>("add_from_favorite"),
      Flag<&Config::smooth_stream>("smooth_stream"),
      Flag<&Config::creation_info>("creation_info"),
      Flag<&Config::save_single_cycle>("save_single_cycle"),
      Flag<&Config::thumbnail>("thumbnail"),
      Flag<&Config::group_cycle>("group_cycle"),
  };
  return all;
}

}  // namespace

QStringList FeatureSwitchNames() {
  QStringList names;
  for (const Switch& one : Switches()) {
    names.append(one.name);
  }
  return names;
}

bool SetFeatureSwitch(Config* config, const QString& name, int value) {
  for (const Switch& one : Switches()) {
    if (name == one.name) {
      one.set(*config, value);
      return true;
    }
  }
  return false;
}

int FeatureSwitch(const Config& config, const QString& name) {
  for (const Switch& one : Switches()) {
    if (name == one.name) {
      return one.get(config);
    }
  }
  return 0;
}

}  // namespace TarnHost::Store
