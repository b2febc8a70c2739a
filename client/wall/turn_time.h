#pragma once

#include <QVector>

namespace TarnClient {

/// How long a plan stays on the wall when it is one turn of a group cycle. A plain value.
class CTurnTime {
 public:
  CTurnTime() = default;
  /// Each page gets its time once. A plan that needs less than `least_seconds` for that goes around until they are
  /// over.
  CTurnTime(int least_seconds, const QVector<int>& page_seconds);

  int Seconds() const;
  /// What is left of the turn when the user goes to `page`, with `left` seconds before: the pages from there on still
  /// get their time. Going on shortens the turn of a plan that shows its pages once.
  int SecondsLeftFrom(int page, int left) const;
  /// Whether another page may begin: not one that would be gone in a moment.
  static bool HasTimeForAPage(int left_ms);

 private:
  int SecondsFrom(int page) const;

  int least_ = 0;
  QVector<int> pages_;
};

}  // namespace TarnClient
