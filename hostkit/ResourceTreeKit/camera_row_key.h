#pragma once

#include <QHash>
#include <QString>

namespace ResourceTreeKit {

/// What a row is: it stays the same when the rows around it are made again.
struct CameraRowKey {
  enum Kind { kNone, kFavorites, kFavorite, kRegion, kCamera };

  static CameraRowKey Favorites() { return {kFavorites, {}}; }
  static CameraRowKey Region(const QString& code) { return {kRegion, code}; }

  bool operator==(const CameraRowKey& other) const { return kind == other.kind && code == other.code; }

  Kind kind = kNone;
  QString code;
};

inline size_t qHash(const CameraRowKey& key, size_t seed = 0) {
  return ::qHash(key.code, seed) ^ static_cast<size_t>(key.kind);
}

}  // namespace ResourceTreeKit
