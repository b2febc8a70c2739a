#include "pictures/repeat_watch.h"

#include "pictures/unit_mark.h"

namespace TarnClient {

namespace {

// "As before" takes next to nothing, but it carries a number and so differs every time.
constexpr int kAsBeforePart = 20;

}  // namespace

void CRepeatWatch::Take(const AccessUnit& unit) {
  if (!first_ms_) {
    first_ms_ = new_ms_ = unit.arrived_ms;
  }
  last_ms_ = unit.arrived_ms;
  Seen& seen = unit.is_key ? keys_ : others_;
  if (unit.is_key) {
    key_size_ = unit.bytes.size();
  }
  const quint64 mark = MarkOf(unit);
  if (seen.Has(mark)) {
    ++again_;
    return;
  }
  seen.Add(mark);
  if (unit.is_key || unit.bytes.size() * kAsBeforePart > key_size_) {
    new_ms_ = unit.arrived_ms;
    again_ = 0;
  }
}

}  // namespace TarnClient
