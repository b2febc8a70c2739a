#pragma once

#include <array>
#include <optional>

#include "pictures/access_unit.h"

namespace TarnClient {

/// Sees that a camera goes on sending the same coded picture. A scene in which nothing moves is another matter: what is
/// coded of it differs by the noise of the camera, in key frames at least.
class CRepeatWatch {
 public:
  explicit CRepeatWatch(qint64 limit_ms) : limit_ms_(limit_ms) {}

  void Take(const AccessUnit& unit);
  /// Whether nothing new came for that long.
  bool Repeats() const { return again_ >= kLeastAgain && last_ms_ - new_ms_ >= limit_ms_; }

 private:
  // Coders count key frames in turns of two, which makes two codings of the same picture.
  struct Seen {
    std::array<quint64, 2> marks{};
    bool Has(quint64 mark) const { return mark == marks[0] || mark == marks[1]; }
    void Add(quint64 mark) { marks = {mark, marks[0]}; }
  };

  static constexpr int kLeastAgain = 2;

  const qint64 limit_ms_;
  Seen keys_, others_;
  int key_size_ = 0, again_ = 0;
  std::optional<qint64> first_ms_;
  qint64 new_ms_ = 0, last_ms_ = 0;
};

}  // namespace TarnClient
