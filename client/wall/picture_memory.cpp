#include "wall/picture_memory.h"

#include <memory>

namespace TarnClient {

void CPictureMemory::Keep(const QString& camera_code, const TakenPicture& picture) {
  if (picture.IsNull()) {
    return;
  }
  auto kept = std::make_unique<TakenPicture>(picture);
  if (kept->picture.width() > kMostWidth) {
    kept->picture = kept->picture.scaledToWidth(kMostWidth, Qt::FastTransformation);
  }
  pictures_.insert(camera_code, kept.release());
}

TakenPicture CPictureMemory::Of(const QString& camera_code) const {
  const TakenPicture* kept = pictures_.object(camera_code);
  if (!kept) {
    return TakenPicture();
  }
  return *kept;
}

}  // namespace TarnClient
