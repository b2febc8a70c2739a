#pragma once

#include <QIcon>
#include <QVariant>
#include <optional>

#include "ResourceTreeKit/camera_content.h"

namespace ResourceTreeKit {

/// What the rows of a camera model show, by role. Thread: GUI.
class CCameraRowLook {
 public:
  CCameraRowLook();

  QVariant OfFavorites(int role) const;
  QVariant OfRegion(const CCameraContent::Node& node, int role) const;
  /// `favorite`: unset while favourites are not shown.
  QVariant OfCamera(const CCameraContent::Node& node, const CCameraItemInfo& camera, std::optional<bool> favorite,
                    int role) const;

 private:
  QIcon CameraIcon(const CCameraItemInfo& camera) const;

  const QIcon online_, offline_, region_, favorites_;
};

}  // namespace ResourceTreeKit
