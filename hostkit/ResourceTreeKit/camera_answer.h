#pragma once

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
  bool keeps_favorites = false;  // whether the host has a place for them

  void SetFavorite(const QString& code, bool favorite) {
    favorites.removeAll(code);
    if (favorite) {
      favorites.append(code);
    }
  }
};

}  // namespace ResourceTreeKit
