#include "store/feature_switches.h"

#include <utility>
#include <vector>

namespace TarnHost::Store {
namespace {

using Config = view_plugin_protocol::GetPlanConfigResponse;
using Setter = void (*)(Config&, int);

template <bool Config::*Member>
void SetFlag(Config& config, int value) {
  config.*Member = value != 0;
}

const std::vector<std::pair<const char*, Setter>>& Switches() {
  static const std::vector<std::pair<const char*, Setter>> all = {
      {"load_all", &SetFlag<&Config::load_all>},
      {"create_under_root", &SetFlag<&Config::create_under_root>},
      {"enable_search", &SetFlag<&Config::enable_search>},
      {"enable_drag", &SetFlag<&Config::enable_drag>},
      {"delete_with_children", &SetFlag<&Config::delete_with_children>},
      {"show_mode", [](Config& config, int value) { config.show_mode = value; }},
      {"timed_play", &SetFlag<&Config::timed_play>},
      {"only_camera", &SetFlag<&Config::only_camera>},
      {"move_public_private", &SetFlag<&Config::move_public_private>},
      {"add_from_favorite", &SetFlag<&Config::add_from_favorite>},
      {"smooth_stream", &SetFlag<&Config::smooth_stream>},
      {"creation_info", &SetFlag<&Config::creation_info>},
      {"save_single_cycle", &SetFlag<&Config::save_single_cycle>},
      {"thumbnail", &SetFlag<&Config::thumbnail>},
      {"group_cycle", &SetFlag<&Config::group_cycle>},
  };
  return all;
}

}  // namespace

QStringList FeatureSwitchNames() {
  QStringList names;
  for (const auto& [name, set] : Switches()) {
    names.append(name);
  }
  return names;
}

bool SetFeatureSwitch(Config* config, const QString& name, int value) {
  for (const auto& [known, set] : Switches()) {
    if (name == known) {
      set(*config, value);
      return true;
    }
  }
  return false;
}

}  // namespace TarnHost::Store
