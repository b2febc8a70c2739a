#pragma once

#include <QHash>
#include <QObject>
#include <QTimer>
#include <functional>

#include "pictures/connect_gate.h"
#include "pictures/stream_connection.h"

namespace TarnClient {

/// All connections to cameras. Thread: the network's.
class CConnectionDesk : public QObject {
  Q_OBJECT
 public:
  explicit CConnectionDesk(const StreamTimings& timings);

  /// Once that one has said goodbye, if `after` is still there: a camera serves but one viewer or two.
  void Open(int id, const StreamAccess& access, StreamReceivers receivers, int after = 0);
  void Close(int id);
  /// Closes all; `done` is called when every camera has been said goodbye to.
  void CloseAll(std::function<void()> done);

 private:
  struct Waiting {
    int after = 0;
    StreamAccess access;
    StreamReceivers receivers;
    bool is_wanted = true;
  };

  void Connect(int id, const StreamAccess& access, StreamReceivers receivers);
  void Forget(int id);
  void Admit();

  const StreamTimings timings_;
  CConnectGate gate_;
  QTimer gate_timer_{this};
  QHash<int, CStreamConnection*> connections_;
  QHash<int, Waiting> waiting_;
  std::function<void()> all_closed_;
};

}  // namespace TarnClient
