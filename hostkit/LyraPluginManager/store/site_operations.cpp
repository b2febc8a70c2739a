#include "store/site_operations.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include "plan_rules/rights.h"
#include "store/store_texts.h"
#include "store/text_rules.h"

namespace TarnHost::Store {
namespace {

namespace view = view_plugin_protocol;

bool HasAllRights(const CSiteDirectory::User& user) {
  return std::all_of(std::begin(view::kRights), std::end(view::kRights),
                     [&user](view::Right right) { return user.rights.count(right) != 0; });
}

template <class Ability>
Ability Existing(std::optional<Ability> of_camera) {
  if (!of_camera) {
    throw CStoreError(CStoreError::kGone, kNoCamera);
  }
  return std::move(*of_camera);
}

}  // namespace

void CSiteOperations::GetPlanConfig(const view::GetPlanConfigRequest&, view::GetPlanConfigResponse* response) {
  runner_.RequireOpen();
  *response = runner_.Site().Config();
}

void CSiteOperations::GetCurrentUser(const view::GetCurrentUserRequest&, view::GetCurrentUserResponse* response) {
  const CSiteDirectory::User* user = runner_.Site().FindUser(runner_.RequireUser());
  response->user = {user->id, user->name};
}

void CSiteOperations::GetAllUserInfo(const view::UserRequestInfo&, view::UserResponseInfo* response) {
  runner_.RequireOpen();
  for (const CSiteDirectory::User& user : runner_.Site().Users()) {
    response->users.push_back({user.id, user.name});
  }
}

QString CSiteOperations::DefaultUser() const {
  const auto& users = runner_.Site().Users();
  if (users.empty()) {
    return QString();
  }
  const auto found = std::find_if(users.begin(), users.end(), HasAllRights);
  return ToQt((found == users.end() ? users.front() : *found).name);
}

bool CSiteOperations::HasRight(int code) const {
  const CSiteDirectory::User* user = runner_.Site().FindUser(runner_.User());
  return !runner_.IsClosed() && user != nullptr && user->rights.count(code) != 0;
}

void CSiteOperations::GetPresets(const ptz_plugin_protocol::GetPresetRequest& request,
                                 ptz_plugin_protocol::GetPresetResponse* response) {
  runner_.RequireOpen();
  const int32_t camera = ParseCode(request.camera_index_code);
  response->presets =
      Existing(runner_.Read([camera](CPlanRepository& repository) { return repository.Presets(camera); }));
}

void CSiteOperations::GetStreamAbility(const play_plugin_protocol::GetStreamAbiRequest& request,
                                       play_plugin_protocol::GetStreamAbiResponse* response) {
  runner_.RequireOpen();
  const int32_t camera = ParseCode(request.camera_index_code);
  response->stream_types =
      Existing(runner_.Read([camera](CPlanRepository& repository) { return repository.StreamTypes(camera); }));
}

void CSiteOperations::GetCameraTree(std::vector<ResourceTreeKit::CRegionItemInfo>* regions,
                                    std::vector<ResourceTreeKit::CCameraItemInfo>* cameras) {
  runner_.RequireOpen();
  CameraList list = runner_.Read([](CPlanRepository& repository) { return repository.Cameras(); });
  *regions = std::move(list.regions);
  *cameras = std::move(list.cameras);
}

void CSiteOperations::GetFavoriteCameras(std::vector<std::string>* index_codes) {
  const int32_t user = runner_.RequireUser();
  *index_codes = runner_.Read([user](CPlanRepository& repository) { return repository.FavoriteCameras(user); });
}

void CSiteOperations::SetFavoriteCamera(const std::string& index_code, bool favorite) {
  const int32_t user = runner_.RequireUser();
  runner_.Write(
      [index_code, favorite, user](CPlanWriter& writer) { writer.SetFavoriteCamera(index_code, favorite, user); });
}

}  // namespace TarnHost::Store
