#pragma once

#include <QHash>
#include <QObject>
#include <functional>
#include <memory>

#include "ResourceTreeKit/camera_answer.h"
#include "host_calls/call_scope.h"

namespace ResourceTreeKit {

/// Asks the host services installed at the time for the cameras and favourites of the current user. Thread: GUI; the
/// calls run on the pool.
class CCameraLoader : public QObject {
  Q_OBJECT
 public:
  using Done = std::function<void(const CameraAnswer&)>;

  using QObject::QObject;

  /// Only the last load is answered. When nothing has changed since `known` the answer's content is that very one.
  void Load(const LogicNodeParam& param, std::shared_ptr<const CCameraContent> known, Done done);
  bool IsLoading() const { return loads_.IsUnderWay(); }
  /// Makes a camera a favourite of the current user, or ends that.
  void SaveFavorite(const QString& code, bool favorite);

 Q_SIGNALS:
  void FavoriteSaved(const QString& code, bool favorite);
  void FavoriteRefused(const QString& error);

 private:
  HostCalls::CCallScope loads_;
  QHash<QString, bool> saved_;  // favourites changed since the load began, which may not know of them
};

}  // namespace ResourceTreeKit
