#include "pictures/stream_timings.h"

#include <chrono>

namespace TarnClient {

qint64 SteadyMs() {
  using namespace std::chrono;
  return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

}  // namespace TarnClient
