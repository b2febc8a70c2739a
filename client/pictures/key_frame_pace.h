#pragma once

#include <QtGlobal>
#include <array>
#include <optional>

namespace TarnClient {

/// Measures how far apart a stream's key frames come.
class CKeyFramePace {
 public:
  void Take(qint64 arrived_ms);
  /// Nothing is known of the time before the next one; what was measured stays.
  void Pause() { last_ms_.reset(); }
  /// The longest of the last few; empty until three have come.
  std::optional<qint64> IntervalMs() const;

 private:
  // Some cameras send more of them while something moves.
  static constexpr size_t kKept = 4;

  std::array<qint64, kKept> intervals_{};
  size_t measured_ = 0;
  std::optional<qint64> last_ms_;
  bool is_first_ = true;  // of a connection: most cameras send it at once, before its time
};

}  // namespace TarnClient
