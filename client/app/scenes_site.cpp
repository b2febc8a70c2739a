#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QTreeView>

#include "TarnHost/camera_access.h"
#include "TarnHost/host_services.h"
#include "app/scenes.h"
#include "settings/settings_dialog.h"
#include "site/site_page.h"
#include "window/main_window.h"

// Scenes of the page on which a site's cameras are kept.
namespace TarnClient {

namespace {

// So that the page shows addresses.
void GiveAddresses() {
  TarnHost::CameraChanges changes;
  for (int code = 1001; code <= 1040; ++code) {
    const std::string at = "rtsp://10.0.7." + std::to_string(code - 990);
    TarnHost::CameraChanges::Camera camera;
    camera.index_code = std::to_string(code);
    camera.streams = {{0, at + "/main"}, {1, at + "/sub"}};
    camera.user = "viewer";
    camera.secret = TarnHost::CSecret("not shown");
    changes.cameras.push_back(camera);
  }
  TarnHost::CameraChangesMade made;
  std::string error;
  TarnHost::InstalledHostServices()->ChangeCameras(changes, made, &error);
}

}  // namespace

template <class Widget>
Widget* CScene::InSettings(const char* name) const {
  return window_->Settings() ? window_->Settings()->findChild<Widget*>(name) : nullptr;
}

void CScene::SiteCameras() {
  Browse();
  Add([this] {
    GiveAddresses();
    window_->OpenSettings();
    window_->Settings()->OpenCameras();
    return true;
  });
  Add([this] {
    auto* list = InSettings<QTreeView>("site_list");
    if (!list || !list->model()->hasChildren(list->model()->index(0, 0))) {
      return false;
    }
    list->expandToDepth(1);
    const auto found = list->model()->match(list->model()->index(0, 0), Qt::DisplayRole, QStringLiteral("CAM 001"), 1,
                                            Qt::MatchStartsWith | Qt::MatchRecursive);
    list->setCurrentIndex(found.value(0));
    return !found.isEmpty();
  });
}

void CScene::CameraForm() {
  SiteCameras();
  AddSettingsClick("site_edit_btn");
  Add([this] {
    auto* main = InSettings<QLineEdit>("camera_main");
    if (!main) {
      return false;
    }
    main->setText(QStringLiteral("rtsp://10.0.7.11:99999/main"));
    return true;
  });
  AddSettingsClick("camera_form_confirm_btn");
}

void CScene::CameraRemoval() {
  SiteCameras();
  AddSettingsClick("site_remove_btn");
}

void CScene::CameraImport() {
  SiteCameras();
  Add([this] {
    const QString path = QDir::temp().filePath(QStringLiteral("cameras.csv"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
      return false;
    }
    file.write(
        "name,region,main\nCAM 001 Gate,Site/North gate,rtsp://10.0.7.90/main\n"
        "Platform 1,Site/Station,rtsp://10.0.8.1/main\nPlatform 2,Site/Station,http://10.0.8.2\n");
    InSettings<CSitePage>("site_page")->SetChooseFile([path](QWidget*, bool) { return path; });
    return true;
  });
  AddSettingsClick("site_import_btn");
}

void CScene::CameraExport() {
  SiteCameras();
  AddSettingsClick("site_export_btn");
}

void CScene::AddSettingsClick(const char* button) {
  Add([this, button] {
    auto* found = InSettings<QAbstractButton>(button);
    if (!found) {
      return false;
    }
    found->click();
    return true;
  });
}

}  // namespace TarnClient
