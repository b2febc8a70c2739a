#include "ResourceTreeKit/camera_loader.h"

#include <QCoreApplication>

#include "TarnHost/host_services.h"

namespace ResourceTreeKit {

namespace {

using Services = std::shared_ptr<TarnHost::IHostServices>;

QString Stopped() {
  return QCoreApplication::translate("ResourceTreeKit", "The camera service has been stopped.");
}

QString TextOf(const std::string& error) {
  const QString text = QString::fromStdString(error).trimmed();
  return text.isEmpty() ? QCoreApplication::translate("ResourceTreeKit", "The camera service gave no reason.") : text;
}

void ReadFavorites(TarnHost::IHostServices& services, CameraAnswer* answer) {
  std::vector<std::string> codes;
  std::string ignored;
  answer->keeps_favorites = services.GetFavoriteCameras(codes, &ignored);
  for (const std::string& code : codes) {
    answer->favorites.append(QString::fromStdString(code));
  }
}

CameraAnswer Read(const Services& services, const LogicNodeParam& param,
                  const std::shared_ptr<const CCameraContent>& known) {
  CameraAnswer answer;
  std::vector<CRegionItemInfo> regions;
  std::vector<CCameraItemInfo> cameras;
  std::string error;
  if (!services) {
    answer.error = Stopped();
  } else if (!services->GetCameraTree(regions, cameras, &error)) {
    answer.error = TextOf(error);
  } else {
    ReadFavorites(*services, &answer);
    answer.content = CCameraContent::Build(regions, std::move(cameras), param);
    if (known && known->IsSame(*answer.content)) {
      answer.content = known;
    }
    answer.rows = CCameraRows::All(*answer.content);
  }
  return answer;
}

QString Save(const Services& services, const QString& code, bool favorite) {
  std::string error;
  if (!services) {
    return Stopped();
  }
  return services->SetFavoriteCamera(code.toStdString(), favorite, &error) ? QString() : TextOf(error);
}

}  // namespace

void CameraAnswer::SetFavorite(const QString& code, bool favorite) {
  favorites.removeAll(code);
  if (favorite) {
    favorites.append(code);
  }
}

std::function<CameraAnswer()> LoadCameras(const LogicNodeParam& param, std::shared_ptr<const CCameraContent> known) {
  return [services = TarnHost::InstalledHostServices(), param, known = std::move(known)] {
    return Read(services, param, known);
  };
}

std::function<QString()> SaveFavorite(const QString& code, bool favorite) {
  return [services = TarnHost::InstalledHostServices(), code, favorite] { return Save(services, code, favorite); };
}

}  // namespace ResourceTreeKit
