#pragma once

#include <QCache>
#include <QDateTime>
#include <QImage>
#include <QString>

namespace TarnClient {

/// A picture and when it was taken.
struct TakenPicture {
  QImage picture;
  QDateTime taken;

  bool IsNull() const { return picture.isNull() || !taken.isValid(); }
};

/// The last pictures of cameras that have left the wall, so that one that comes back is not black until its stream is.
/// Small copies, of the cameras that were kept last. Thread: any one.
class CPictureMemory {
 public:
  static constexpr int kMostCameras = 96;
  static constexpr int kMostWidth = 480;

  CPictureMemory() : pictures_(kMostCameras) {}

  void Keep(const QString& camera_code, const TakenPicture& picture);
  /// A null one for a camera that has none.
  TakenPicture Of(const QString& camera_code) const;
  void Clear() { pictures_.clear(); }

 private:
  QCache<QString, TakenPicture> pictures_;
};

}  // namespace TarnClient
