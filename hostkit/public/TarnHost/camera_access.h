#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "LyraPluginManager/ptz_plugin_protocol.h"
#include "TarnHost/secret.h"

namespace TarnHost {

/// The type by which IHostServices::ViewRegisterResourceUpdate() is asked for the site's regions and cameras as a
/// whole, with kCameraResourceCode as the code. Such an observer hears RE_TREE_CHANGED after every change of them, also
/// one of this process.
constexpr int32_t kCameraResource = 16002;
/// The code that goes with kCameraResource.
constexpr char kCameraResourceCode[] = "cameras";

/// One stream of a camera, and where it is found.
struct CameraStream {
  int32_t type = 0;  ///< 0 main, 1 sub, 2 smooth; up to 15.
  std::string url;   ///< Of rtsp or rtsps, without user and password; empty: the stream has none. UTF-8.
};

/// How to get a camera's pictures. Texts are UTF-8.
struct CameraAccess {
  std::string index_code;             ///< Code of the camera.
  std::vector<CameraStream> streams;  ///< By type.
  std::string user;                   ///< Who signs in there, for all streams and the device; empty: no one has to.
  CSecret secret;                     ///< The user's password; empty for none.
  std::string device_url;             ///< Of http or https: where the camera is asked for its presets; empty for none.
  bool needs_store = false;           ///< Only the store, which does not answer, has its password or its whole address.
};

/// How to get the pictures of some cameras, and what is true of all of them.
struct CameraAccessList {
  std::vector<CameraAccess> cameras;  ///< Those of the codes asked for that are there, each once, in no order.
  std::string authority;  ///< Certificates (PEM) that vouch for rtsps and https; empty: those that the system trusts.
  bool is_pretended = false;  ///< It is the demo site: a camera without an address has pictures that are made up.
};

/// Changes of regions and cameras, of which all are made or none. What is not set stays as it is. A region that the
/// same changes add is named "#" and its place in `regions`, from 0. Texts are UTF-8.
struct CameraChanges {
  /// A region that is made or changed. At most 16 levels of them stand below each other, none below itself.
  struct Region {
    std::string index_code;             ///< Its code; empty: a new one.
    std::optional<std::string> name;    ///< As WhyNoRegionName() allows, and no other's beside it. A new one needs it.
    std::optional<std::string> parent;  ///< Code of the region that it stands in; empty: at the top, as one not set.
  };
  /// A camera that is made or changed; none stands twice in the changes.
  struct Camera {
    std::string index_code;             ///< Its code; empty: a new one.
    std::optional<std::string> name;    ///< As WhyNoCameraName() allows; others may have the same. A new one needs it.
    std::optional<std::string> region;  ///< Code of the region that it stands in; empty: at the top.
    /// Each type once. A stream with an empty address goes; what is not named stays. Who signs in may stand in the
    /// address, as ReadCameraAddress() has it; of two addresses the same, or none.
    std::vector<CameraStream> streams;
    std::optional<std::string> user;        ///< Counts before what stands in the addresses; empty takes it away.
    std::optional<CSecret> secret;          ///< Likewise.
    std::optional<std::string> device_url;  ///< As ReadDeviceAddress() has it; empty takes it away.
    /// All of them: others go. Numbers from 1 to 65535, each once; names as a camera's.
    std::optional<std::vector<ptz_plugin_protocol::PresetInfo>> presets;
  };
  std::vector<Region> regions;               ///< Made and changed first.
  std::vector<Camera> cameras;               ///< Then these.
  std::vector<std::string> removed_cameras;  ///< Codes; one that is not there any more is as it was to be.
  std::vector<std::string> removed_regions;  ///< Codes, likewise; each has to be empty once all else is done.
};

/// What has come of CameraChanges.
struct CameraChangesMade {
  std::vector<std::string> regions;  ///< Their codes, in the order of the changes.
  std::vector<std::string> cameras;  ///< Likewise.
  int changed = 0;                   ///< Regions and cameras that are not as they were before; 0: nothing was written.
};

/// The plans that show one of some cameras.
struct PlansShowing {
  /// One of them. Texts are UTF-8.
  struct Plan {
    std::string index_code;  ///< Its code.
    std::string name;        ///< Its name.
    std::string group_name;  ///< Name of the group that it stands in; right below a root the site's.
  };
  std::vector<Plan> plans;  ///< Those that the current user sees, by code.
  int others = 0;           ///< How many there are that this user does not see.
};

}  // namespace TarnHost
