#pragma once

#include <QStringList>
#include <functional>
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

/// A task that asks the host services installed now. When nothing has changed since `known` the answer's content is
/// that very one. Thread: any; the task blocks.
std::function<CameraAnswer()> LoadCameras(const LogicNodeParam& param, std::shared_ptr<const CCameraContent> known);

/// A task that makes a camera a favourite of the current user, or ends that; the answer is the host's error, empty for
/// success.
std::function<QString()> SaveFavorite(const QString& code, bool favorite);

}  // namespace ResourceTreeKit
