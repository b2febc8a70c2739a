#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "LyraPluginManager/ptz_plugin_protocol.h"
#include "TarnHost/secret.h"

namespace TarnHost {

/// What IHostServices::ViewRegisterResourceUpdate() takes to observe the site's regions and cameras as a whole. Such an
/// observer hears RE_TREE_CHANGED after every change of them, also one of this process.
constexpr int32_t kCameraResource = 16002;
constexpr char kCameraResourceCode[] = "cameras";

struct CameraStream {
  int32_t type = 0;  // 0 main, 1 sub
  std::string url;   // of rtsp or rtsps, without user and password; empty: the stream has none
};

/// How to get a camera's pictures.
struct CameraAccess {
  std::string index_code;
  std::vector<CameraStream> streams;  // by type
  std::string user;
  CSecret secret;
  std::string device_url;    // where the camera is asked for its presets; empty for none
  bool needs_store = false;  // only the store, which does not answer, has its password or whole address
};

struct CameraAccessList {
  std::vector<CameraAccess> cameras;  // those of the codes asked for that are there, in no particular order
  std::string authority;              // certificates (PEM) that vouch for rtsps; empty: those the system trusts
  bool is_pretended = false;          // it is the demo site: a camera without an address has pictures that are made up
};

/// Changes of regions and cameras, of which all are made or none. What is not set stays as it is. A region that the
/// same changes add is named "#" and its place in `regions`, from 0.
struct CameraChanges {
  struct Region {
    std::string index_code;  // empty: a new one
    std::optional<std::string> name;
    std::optional<std::string> parent;  // code of a region; empty: at the top
  };
  struct Camera {
    std::string index_code;  // empty: a new one
    std::optional<std::string> name;
    std::optional<std::string> region;
    std::vector<CameraStream> streams;  // a stream with an empty address goes; what is not named stays
    std::optional<std::string> user;
    std::optional<CSecret> secret;
    std::optional<std::string> device_url;
    std::optional<std::vector<ptz_plugin_protocol::PresetInfo>> presets;  // all of them
  };
  std::vector<Region> regions;
  std::vector<Camera> cameras;
  std::vector<std::string> removed_cameras;
  std::vector<std::string> removed_regions;  // each empty once all else is done
};

struct CameraChangesMade {
  std::vector<std::string> regions, cameras;  // codes, in the order of the changes
  int changed = 0;                            // rows that are not as they were before; 0: nothing was written
};

/// The plans that show one of some cameras.
struct PlansShowing {
  struct Plan {
    std::string index_code, name, group_name;
  };
  std::vector<Plan> plans;  // those that the current user sees
  int others = 0;           // those he does not
};

}  // namespace TarnHost
