#pragma once

#include <QtGlobal>
#include <optional>

namespace TarnClient {

/// Says when pictures were taken by the stream's own clock: of the shortest way that one took lately it is assumed that
/// it took no time, so pictures that come late, behind others that wait on the line, are known as old. Cameras whose
/// clock says less time than passes, because they send fewer pictures than they say, are known by pictures that come
/// as evenly as ever.
class CStreamClock {
 public:
  /// `rate`: ticks a second.
  explicit CStreamClock(int rate) : rate_(rate) {}

  /// By the clock of `arrived_ms`, and never after it. A stream that jumps in time begins again with this picture.
  qint64 TakenAt(quint32 stamp, qint64 arrived_ms);

 private:
  /// While pictures come without a pause that could have held some back.
  struct Even {
    qint64 lasted_ms = 0;   // of our time
    qint64 missing_ms = 0;  // of the stream's
  };

  bool HasJumped(qint64 moved_ms, qint64 passed_ms) const;
  void Follow(qint64 moved_ms, qint64 passed_ms);

  const int rate_;
  std::optional<quint32> stamp_;
  qint64 ticks_ = 0, arrived_ms_ = 0;
  double shortest_way_ = 0;  // between the two clocks
  double drift_ = kUsualDrift;
  double usual_pause_ms_ = 0;  // between two pictures
  Even even_;

  // How much faster or slower than ours a camera's clock may go.
  static constexpr double kUsualDrift = 0.02;
};

}  // namespace TarnClient
