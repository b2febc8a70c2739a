#include "pictures/connection_desk.h"

#include <utility>

namespace TarnClient {

CConnectionDesk::CConnectionDesk(const StreamTimings& timings) : timings_(timings), gate_(timings.spread) {
  gate_timer_.setSingleShot(true);
  connect(&gate_timer_, &QTimer::timeout, this, &CConnectionDesk::Admit);
}

// What is closed before it was its turn has the one that comes after it wait for the same.
void CConnectionDesk::Open(int id, const StreamAccess& access, StreamReceivers receivers, int after) {
  if (waiting_.contains(after)) {
    after = waiting_[after].after;
  }
  if (connections_.contains(after)) {
    waiting_.insert(id, {after, access, std::move(receivers)});
  } else {
    Connect(id, access, std::move(receivers));
  }
}

void CConnectionDesk::Connect(int id, const StreamAccess& access, StreamReceivers receivers) {
  auto* connection = new CStreamConnection(access, timings_, std::move(receivers), this);
  connections_.insert(id, connection);
  connect(connection, &CStreamConnection::SignalAsksTurn, this, [this, id](ConnectRank rank) {
    gate_.Ask(id, rank);
    Admit();
  });
  connect(connection, &CStreamConnection::SignalTurnOver, this, [this, id] {
    gate_.Leave(id);
    Admit();
  });
  connect(connection, &CStreamConnection::SignalClosed, this, [this, id] { Forget(id); });
  connection->Open();
}

// Later: who leaves the gate may still be in the middle of something.
void CConnectionDesk::Admit() {
  for (const int id : gate_.Admit(SteadyMs())) {
    if (CStreamConnection* const connection = connections_.value(id)) {
      QMetaObject::invokeMethod(connection, &CStreamConnection::Begin, Qt::QueuedConnection);
    }
  }
  if (const std::optional<qint64> next = gate_.NextLook()) {
    gate_timer_.start(static_cast<int>(qMax<qint64>(1, *next - SteadyMs())));
  }
}

void CConnectionDesk::Close(int id) {
  if (waiting_.contains(id)) {
    waiting_[id].is_wanted = false;
  }
  if (CStreamConnection* const connection = connections_.value(id)) {
    connection->Close();
  }
}

void CConnectionDesk::CloseAll(std::function<void()> done) {
  all_closed_ = std::move(done);
  waiting_.clear();
  const QList<CStreamConnection*> connections = connections_.values();
  for (CStreamConnection* connection : connections) {
    connection->Close();
  }
  if (connections_.isEmpty() && all_closed_) {
    std::exchange(all_closed_, nullptr)();
  }
}

void CConnectionDesk::Forget(int id) {
  if (CStreamConnection* const connection = connections_.take(id)) {
    connection->deleteLater();
  }
  const QHash<int, Waiting> waiting = waiting_;
  for (auto next = waiting.begin(); next != waiting.end(); ++next) {
    if (next->after != id) {
      continue;
    }
    waiting_.remove(next.key());
    if (next->is_wanted) {
      Connect(next.key(), next->access, next->receivers);
    }
  }
  if (connections_.isEmpty() && all_closed_) {
    std::exchange(all_closed_, nullptr)();
  }
}

}  // namespace TarnClient
