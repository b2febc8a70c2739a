#include "ResourceTreeKit/camera_loader.h"

#include <QCoreApplication>
#include <utility>

#include "TarnHost/host_services.h"
#include "host_calls/ask.h"

namespace ResourceTreeKit {

namespace {

using Services = std::shared_ptr<TarnHost::IHostServices>;

QString Stopped() {
  return QCoreApplication::translate("ResourceTreeKit", "The camera service has been stopped.");
}

QString TextOf(const std::string& error) {
  const QString text = QString::fromStdString(error).trimmed();
  if (text.isEmpty()) {
    return QCoreApplication::translate("ResourceTreeKit", "The camera service gave no reason.");
  }
  return text;
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

// Empty for success.
QString Save(const Services& services, const QString& code, bool favorite) {
  std::string error;
  if (!services) {
    return Stopped();
  }
  if (!services->SetFavoriteCamera(code.toStdString(), favorite, &error)) {
    return TextOf(error);
  }
  return {};
}

}  // namespace

void CCameraLoader::Load(const LogicNodeParam& param, std::shared_ptr<const CCameraContent> known, Done done) {
  saved_.clear();
  HostCalls::Ask([services = TarnHost::InstalledHostServices(), param, known = std::move(known)] {
    return Read(services, param, known);
  })
      .Replacing(loads_)
      .Then(this, [this, done = std::move(done)](CameraAnswer answer) {
        for (auto change = saved_.cbegin(); change != saved_.cend(); ++change) {
          answer.SetFavorite(change.key(), change.value());
        }
        done(answer);
      });
}

void CCameraLoader::SaveFavorite(const QString& code, bool favorite) {
  HostCalls::Ask([services = TarnHost::InstalledHostServices(), code, favorite] {
    return Save(services, code, favorite);
  }).Then(this, [this, code, favorite](const QString& error) {
    if (!error.isEmpty()) {
      Q_EMIT FavoriteRefused(error);
      return;
    }
    saved_.insert(code, favorite);
    Q_EMIT FavoriteSaved(code, favorite);
  });
}

}  // namespace ResourceTreeKit
