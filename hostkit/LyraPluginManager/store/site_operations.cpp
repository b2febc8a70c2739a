#include "store/site_operations.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <set>
#include <tuple>
#include <utility>

#include "accounts/user_editor.h"
#include "plan_rules/rights.h"
#include "store/camera_writer.h"
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
  const auto user = runner_.Site().FindUser(runner_.RequireLogIn());
  if (!user) {
    throw CStoreError(CStoreError::kGone, kUserGone);
  }
  response->user = {user->id, user->name};
}

void CSiteOperations::GetAllUserInfo(const view::UserRequestInfo&, view::UserResponseInfo* response) {
  runner_.RequireOpen();
  for (const CSiteDirectory::User& user : runner_.Site().AllUsers()) {
    response->users.push_back({user.id, user.name});
  }
}

QString CSiteOperations::DefaultUser() const {
  const CSiteDirectory::Users users = runner_.Site().AllUsers();
  if (users.empty()) {
    return QString();
  }
  const auto found = std::find_if(users.begin(), users.end(), HasAllRights);
  return ToQt((found == users.end() ? users.front() : *found).name);
}

bool CSiteOperations::HasRight(int code) const {
  const auto user = runner_.Site().FindUser(runner_.User());
  return !runner_.IsClosed() && user != nullptr && user->rights.count(code) != 0;
}

void CSiteOperations::GetPresets(const ptz_plugin_protocol::GetPresetRequest& request,
                                 ptz_plugin_protocol::GetPresetResponse* response) {
  runner_.RequireOpen();
  response->presets = PresetsOf(request.camera_index_code);
}

std::list<ptz_plugin_protocol::PresetInfo> CSiteOperations::PresetsOf(const std::string& camera_code) {
  const auto read = [camera = ParseCode(camera_code)](CPlanRepository& repository) {
    return repository.Cameras().Presets(camera);
  };
  return Existing(runner_.ReadOfCameras(read, [](const auto& presets) { return presets.has_value(); }).first);
}

// A camera that the site has nothing but pictures of has no motor to wait for.
void CSiteOperations::GotoPreset(const ptz_plugin_protocol::GotoPresetRequest& request,
                                 ptz_plugin_protocol::GotoPresetResponse*) {
  runner_.RequireUser();
  const auto presets = PresetsOf(request.camera_index_code);
  const auto is_asked_for = [&request](const auto& preset) { return preset.preset_no == request.preset_no; };
  if (std::none_of(presets.begin(), presets.end(), is_asked_for)) {
    throw CStoreError(CStoreError::kGone, QT_TRANSLATE_NOOP("TarnHost::Store", "The camera has no such preset."));
  }
}

void CSiteOperations::GetStreamAbility(const play_plugin_protocol::GetStreamAbiRequest& request,
                                       play_plugin_protocol::GetStreamAbiResponse* response) {
  runner_.RequireOpen();
  const int32_t camera = ParseCode(request.camera_index_code);
  response->stream_types = Existing(
      runner_.Read([camera](CPlanRepository& repository) { return repository.Cameras().StreamTypes(camera); }));
}

void CSiteOperations::GetCameraTree(std::vector<ResourceTreeKit::CRegionItemInfo>* regions,
                                    std::vector<ResourceTreeKit::CCameraItemInfo>* cameras) {
  runner_.RequireOpen();
  CameraList list = runner_.Read([](CPlanRepository& repository) { return repository.Cameras().List(); });
  *regions = std::move(list.regions);
  *cameras = std::move(list.cameras);
}

void CSiteOperations::GetFavoriteCameras(std::vector<std::string>* index_codes) {
  const int32_t user = runner_.RequireUser();
  *index_codes = runner_.Read([user](CPlanRepository& repository) { return repository.Cameras().Favorites(user); });
}

void CSiteOperations::SetFavoriteCamera(const std::string& index_code, bool favorite) {
  const int32_t user = runner_.RequireUser();
  runner_.Write(
      [index_code, favorite, user](CPlanWriter& writer) { writer.SetFavoriteCamera(index_code, favorite, user); });
}

void CSiteOperations::GetCameraAccess(const std::vector<std::string>& index_codes, CameraAccessList* access) {
  runner_.RequireUser();
  std::vector<int32_t> cameras;
  std::transform(index_codes.begin(), index_codes.end(), std::back_inserter(cameras), &ParseCode);
  const auto read = [cameras](CPlanRepository& repository) { return repository.Cameras().Access(cameras); };
  const std::set<int32_t> wanted(cameras.begin(), cameras.end());
  const auto has_all = [&wanted](const CameraAccessList& list) { return list.cameras.size() == wanted.size(); };
  std::shared_ptr<CShownCopy> copy;
  std::tie(*access, copy) = runner_.ReadOfCameras(read, has_all);
  if (copy) {
    copy->MarkWithheld(access);
  }
  const std::string below = runner_.CamerasAt();
  if (below.empty()) {
    return;
  }
  for (CameraAccess& camera : access->cameras) {
    const auto has_address = [](const CameraStream& stream) { return !stream.url.empty(); };
    if (!camera.needs_store && std::none_of(camera.streams.begin(), camera.streams.end(), has_address)) {
      const std::string url = below + '/' + camera.index_code;
      camera.streams = {{0, url + "/main"}, {1, url + "/sub"}};
      if (camera.device_url.empty()) {
        camera.device_url = runner_.DevicesAt();
      }
    }
  }
}

CameraChangesMade CSiteOperations::ChangeCameras(const CameraChanges& changes) {
  const int32_t user = runner_.RequireUser();
  return runner_.Write([changes, user](CPlanWriter& writer) { return writer.Cameras().Change(changes, user); });
}

void CSiteOperations::SetCameraAuthority(const std::string& pem) {
  const int32_t user = runner_.RequireUser();
  runner_.Write([pem, user](CPlanWriter& writer) { writer.Cameras().SetAuthority(pem, user); });
}

SiteUsers CSiteOperations::GetSiteUsers() {
  RequireRightToConfigure(runner_.Site(), runner_.RequireUser());
  return runner_.OnDatabase([](CSqlEngine& engine) { return CUserEditor(engine).Read(); });
}

void CSiteOperations::ChangeSiteUsers(const SiteUserChanges& changes) {
  const int32_t user = runner_.RequireUser();
  RequireRightToConfigure(runner_.Site(), user);
  const QStringList hashes = CUserEditor::HashesOf(changes);  // here, for the database's thread has others to serve
  runner_.ChangeOnDatabase(
      [changes, hashes, user](CSqlEngine& engine) { CUserEditor(engine).Change(changes, hashes, user); });
}

void CSiteOperations::GetPlansShowing(const std::vector<std::string>& camera_codes, PlansShowing* showing) {
  const int32_t user = runner_.RequireUser();
  RequireRightToConfigure(runner_.Site(), user);
  runner_.RequireDownloaded();
  const auto found = runner_.Catalog().PlansShowing({camera_codes.begin(), camera_codes.end()}, user);
  showing->others = found.others;
  if (runner_.HidesRows()) {
    QStringList cameras;
    std::transform(camera_codes.begin(), camera_codes.end(), std::back_inserter(cameras), &ToQt);
    showing->others +=
        runner_.Read([cameras](CPlanRepository& plans) { return plans.CountHiddenPlansShowing(cameras); });
  }
  for (const CPlanCatalog::Hit& hit : found.plans) {
    const std::string group = hit.groups_above.empty() ? runner_.Site().RootName() : hit.groups_above.back();
    showing->plans.push_back({std::to_string(hit.plan.code), hit.plan.name, group});
  }
}

}  // namespace TarnHost::Store
