#include "figure.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <limits>
#include <vector>

double TimeMs(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

namespace {

// The second number that Linux keeps of a thread's turns, in nanoseconds; 0 where it keeps none.
double WaitedForProcessorMs() {
  std::ifstream turns("/proc/thread-self/schedstat");
  double ran = 0;
  double waited = 0;
  turns >> ran >> waited;
  return waited / 1e6;
}

}  // namespace

double HeldMs(const std::function<void()>& work) {
  const double waited = WaitedForProcessorMs();
  const double taken = TimeMs(work);
  return taken - (WaitedForProcessorMs() - waited);
}

QString Sides::Note() const {
  return QStringLiteral("%1 ms against %2 ms").arg(ours, 0, 'f', 2).arg(plain, 0, 'f', 2);
}

// The sides of one round ran one right after the other, at one speed of the machine.
Sides MeasureManyByTurns(int rounds, const std::function<double()>& ours, const std::function<double()>& plain) {
  std::vector<Sides> measured;
  for (int round = 0; round < rounds; ++round) {
    const double plain_ms = plain();
    measured.push_back({ours(), plain_ms});
  }
  const auto middle = measured.begin() + rounds / 2;
  std::nth_element(measured.begin(), middle, measured.end(),
                   [](const Sides& left, const Sides& right) { return left.Ratio() < right.Ratio(); });
  return *middle;
}

Sides MeasureByTurns(int rounds, const std::function<double()>& ours, const std::function<double()>& plain) {
  Sides best{std::numeric_limits<double>::max(), std::numeric_limits<double>::max()};
  for (int round = 0; round < rounds; ++round) {
    best.plain = std::min(best.plain, plain());
    best.ours = std::min(best.ours, ours());
  }
  return best;
}
