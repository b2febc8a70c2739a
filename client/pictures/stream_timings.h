#pragma once

#include <QtGlobal>

namespace TarnClient {

/// How long is waited for what, in milliseconds.
struct StreamTimings {
  qint64 open = 8000;      // from connecting to the answer that it plays
  qint64 read = 5000;      // between two pictures
  qint64 late = 3000;      // age of a picture that is live no more
  qint64 repeats = 60000;  // that the same coded picture comes
  qint64 linger = 10000;   // that a stream no one shows any more is kept
  qint64 retry = 1000;     // before the second attempt
  qint64 spread = 5000;    // over which 64 cameras that were lost at once come back
  qint64 goodbye = 1000;   // for the answer to the last request
  qint64 key = 6000;       // that a key frame is waited for
};

/// Milliseconds of a clock that no one sets. Thread: any.
qint64 SteadyMs();

}  // namespace TarnClient
