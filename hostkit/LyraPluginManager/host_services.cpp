#include "TarnHost/host_services.h"

#include <QCoreApplication>
#include <mutex>
#include <utility>

namespace TarnHost {
namespace {

std::string NoCameras() {
  return QCoreApplication::translate("TarnHost::Store", "This site keeps no list of cameras.").toStdString();
}

std::string NoUsers() {
  return QCoreApplication::translate("TarnHost::Store", "This site keeps no list of users.").toStdString();
}

struct Installed {
  std::mutex mutex;
  std::shared_ptr<IHostServices> services;
};

Installed& TheInstalled() {
  static Installed installed;
  return installed;
}

}  // namespace

bool IHostServices::CountBelowGroup(const view_plugin_protocol::CountBelowGroupRequest&,
                                    view_plugin_protocol::CountBelowGroupResponse& response) {
  response.error_info =
      QCoreApplication::translate("TarnHost::Store", "This site does not count what is in a group.").toStdString();
  return false;
}

bool IHostServices::GotoPreset(const ptz_plugin_protocol::GotoPresetRequest&,
                               ptz_plugin_protocol::GotoPresetResponse& response) {
  response.error_info = NoCameras();
  return false;
}

bool IHostServices::GetCameraTree(std::vector<ResourceTreeKit::CRegionItemInfo>&,
                                  std::vector<ResourceTreeKit::CCameraItemInfo>&, std::string* error) {
  *error = NoCameras();
  return false;
}

bool IHostServices::GetFavoriteCameras(std::vector<std::string>&, std::string* error) {
  *error = NoCameras();
  return false;
}

bool IHostServices::SetFavoriteCamera(const std::string&, bool, std::string* error) {
  *error = NoCameras();
  return false;
}

bool IHostServices::GetCameraAccess(const std::vector<std::string>&, CameraAccessList&, std::string* error) {
  *error = NoCameras();
  return false;
}

bool IHostServices::ChangeCameras(const CameraChanges&, CameraChangesMade&, std::string* error) {
  *error = NoCameras();
  return false;
}

bool IHostServices::SetCameraAuthority(const std::string&, std::string* error) {
  *error = NoCameras();
  return false;
}

bool IHostServices::GetSiteUsers(SiteUsers&, std::string* error) {
  *error = NoUsers();
  return false;
}

bool IHostServices::ChangeSiteUsers(const SiteUserChanges&, std::string* error) {
  *error = NoUsers();
  return false;
}

bool IHostServices::GetPlansShowing(const std::vector<std::string>&, PlansShowing&, std::string* error) {
  *error = NoCameras();
  return false;
}

void InstallHostServices(std::shared_ptr<IHostServices> services) {
  {
    const std::lock_guard<std::mutex> lock(TheInstalled().mutex);
    TheInstalled().services.swap(services);
  }
  // What was installed before dies here, outside the lock: its end may wait for calls that ask for the services.
}

std::shared_ptr<IHostServices> InstalledHostServices() {
  const std::lock_guard<std::mutex> lock(TheInstalled().mutex);
  return TheInstalled().services;
}

}  // namespace TarnHost
