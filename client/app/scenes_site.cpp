#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QNetworkDatagram>
#include <QPlainTextEdit>
#include <QTreeView>
#include <QUdpSocket>

#include "TarnHost/camera_access.h"
#include "TarnHost/host_services.h"
#include "app/scenes.h"
#include "devices/xml_node.h"
#include "settings/settings_dialog.h"
#include "site/device_form.h"
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

constexpr char kProbeAddressing[] = "http://schemas.xmlsoap.org/ws/2004/08/addressing";

QByteArray FoundDevice(const char* address, const char* name, const char* model, const char* place) {
  const QByteArray scope = "onvif://www.onvif.org/";
  return "<d:ProbeMatch><d:Scopes>" + scope + "name/" + name + ' ' + scope + "hardware/" + model + ' ' + scope +
         "location/" + place + "</d:Scopes><d:XAddrs>http://" + address +
         "/onvif/device_service</d:XAddrs></d:ProbeMatch>";
}

/// What two cameras of the network answer to a search.
QByteArray FoundDevices(const QByteArray& search) {
  const std::optional<XmlNode> root = ReadXml(search);
  if (!root) {
    return QByteArray();
  }
  const QString question = root->Child("", "Header").Child(kProbeAddressing, "MessageID").text;
  return "<s:Envelope xmlns:s=\"http://www.w3.org/2003/05/soap-envelope\" xmlns:a=\"" + QByteArray(kProbeAddressing) +
         "\" xmlns:d=\"http://schemas.xmlsoap.org/ws/2005/04/discovery\"><s:Header><a:RelatesTo>" + question.toUtf8() +
         "</a:RelatesTo></s:Header><s:Body><d:ProbeMatches>" +
         FoundDevice("10.0.7.90", "Platform%201", "D-210", "Station") +
         FoundDevice("10.0.7.91", "Platform%202", "D-210", "Station") + "</d:ProbeMatches></s:Body></s:Envelope>";
}

/// A place of this machine where the cameras of a made-up network answer, as long as `parent` lives; 0 without one.
quint16 OpenNetwork(QObject* parent) {
  auto* socket = new QUdpSocket(parent);
  QObject::connect(socket, &QUdpSocket::readyRead, socket, [socket] {
    while (socket->hasPendingDatagrams()) {
      const QNetworkDatagram search = socket->receiveDatagram();
      socket->writeDatagram(search.makeReply(FoundDevices(search.data())));
    }
  });
  return socket->bind(QHostAddress::LocalHost) ? socket->localPort() : 0;
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

void CScene::RegionForm() {
  SiteCameras();
  AddSettingsClick("site_add_region_btn");
  Add([this] {
    auto* name = InSettings<QLineEdit>("region_name");
    if (!name) {
      return false;
    }
    name->setText(QStringLiteral("Platforms"));
    return true;
  });
}

void CScene::DeviceForm() {
  SiteCameras();
  AddSettingsClick("site_find_btn");
  Add([this] {
    auto* form = InSettings<CDeviceForm>("device_form");
    if (!form) {
      return false;
    }
    form->SearchAt(QHostAddress(QHostAddress::LocalHost), OpenNetwork(form));
    return true;
  });
  Add([this] {
    auto* form = InSettings<CDeviceForm>("device_form");
    const bool is_over = InSettings<QAbstractButton>("device_search_btn")->isEnabled();
    const bool are_found = InSettings<QAbstractItemView>("device_list")->model()->rowCount() > 1;
    if (is_over && !are_found) {
      form->SearchAt(QHostAddress(QHostAddress::LocalHost), OpenNetwork(form));
    }
    return are_found;
  });
}

void CScene::AuthorityForm() {
  SiteCameras();
  AddSettingsClick("site_authority_btn");
  Add([this] {
    auto* text = InSettings<QPlainTextEdit>("authority_text");
    if (!text) {
      return false;
    }
    const QString line = QStringLiteral("MIIBszCCAVmgAwIBAgIUSite00CamerasOfTheSite0000wCgYIKoZIzj0EAwIw\n");
    text->setPlainText(QStringLiteral("-----BEGIN CERTIFICATE-----\n") + line.repeated(6) +
                       QStringLiteral("-----END CERTIFICATE-----\n"));
    return true;
  });
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
