#pragma once

#include <QThread>

#include "pictures/connection_desk.h"

namespace TarnClient {

/// The thread that all connections to cameras run in. Thread: GUI; no call waits but the destructor.
class CStreamNetwork {
 public:
  explicit CStreamNetwork(const StreamTimings& timings);
  /// Says goodbye to all cameras, and waits for their answers a moment longer than each may take.
  ~CStreamNetwork();
  CStreamNetwork(const CStreamNetwork&) = delete;
  CStreamNetwork& operator=(const CStreamNetwork&) = delete;

  /// The number to close it by. It waits for the goodbye of the one that it comes `after`.
  int Open(const StreamAccess& access, const StreamReceivers& receivers, int after = 0);
  void Close(int id);

 private:
  const StreamTimings timings_;
  QThread thread_;
  CConnectionDesk* desk_;
  int last_id_ = 0;
};

}  // namespace TarnClient
