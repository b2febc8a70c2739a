#pragma once

#include <QFuture>
#include <QStringList>
#include <memory>

#include "ResourceTreeKit/camera_content.h"
#include "ResourceTreeKit/camera_rows.h"

namespace ResourceTreeKit {

/// What the host answered about its cameras, ready to be shown.
struct CameraAnswer {
  QString error;  // empty when the content is there
  std::shared_ptr<const CCameraContent> content;
  CCameraRows rows;  // all of the content's
  QStringList favorites;
  bool keeps_favorites = false;

  void SetFavorite(const QString& code, bool favorite);
};

/// Asks the installed host services on a thread of the pool. When nothing has changed since `known` the answer's
/// content is that very one. Thread: any.
QFuture<CameraAnswer> LoadCameras(const LogicNodeParam& param, std::shared_ptr<const CCameraContent> known);

/// Makes a camera a favourite of the current user, or ends that; the answer is the host's error, empty for success.
QFuture<QString> SaveFavorite(const QString& code, bool favorite);

}  // namespace ResourceTreeKit
