#pragma once

#include <QtGlobal>
#include <optional>

namespace TarnClient {

/// How many streams show key frames only, so that the machine decodes the others in time.
class CLoadShedding {
 public:
  /// Looked at every half second or so. `behind`: pictures wait for being decoded. `load`: the part of the decoding
  /// threads' time that they worked. `sheddable`: how many streams may be limited at all. Answers how many are to be.
  int Take(qint64 now_ms, bool behind, double load, int sheddable);

 private:
  static int Step(int count);

  int count_ = 0;
  std::optional<qint64> behind_since_, calm_since_;
};

}  // namespace TarnClient
