#include "pictures/connect_gate.h"

#include <algorithm>

namespace TarnClient {

void CConnectGate::Ask(int id, ConnectRank rank) {
  Leave(id);
  Waiting(rank).append(id);
}

void CConnectGate::Leave(int id) {
  for (QVector<int>& list : waiting_) {
    list.removeAll(id);
  }
  const auto is_it = [id](const Guest& guest) { return guest.id == id; };
  inside_.erase(std::remove_if(inside_.begin(), inside_.end(), is_it), inside_.end());
}

void CConnectGate::DropSlow(qint64 now_ms) {
  while (!inside_.isEmpty() && now_ms - inside_.first().since_ms >= kHoldMs) {
    inside_.removeFirst();
  }
}

void CConnectGate::Let(int id, bool comes_back, qint64 now_ms, QVector<int>* admitted) {
  inside_.append({id, now_ms, comes_back});
  admitted->append(id);
}

// The rest is kept for those whom a user waits for.
bool CConnectGate::HasRoomForReturns() const {
  const auto returned =
      std::count_if(inside_.begin(), inside_.end(), [](const Guest& guest) { return guest.comes_back; });
  return HasRoom() && returned < kReturnsAtOnce;
}

QVector<int> CConnectGate::Admit(qint64 now_ms) {
  DropSlow(now_ms);
  QVector<int> admitted;
  QVector<int>& first = Waiting(ConnectRank::First);
  while (!first.isEmpty() && HasRoom()) {
    Let(first.takeFirst(), false, now_ms, &admitted);
  }
  if (IsReturnWaiting() && HasRoomForReturns() && now_ms >= next_return_ms_.value_or(now_ms)) {
    ConnectRank rank = ConnectRank::JustLost;
    if (Waiting(rank).isEmpty()) {
      rank = ConnectRank::Failing;
    }
    Let(Waiting(rank).takeFirst(), true, now_ms, &admitted);
    next_return_ms_ = now_ms + pause_ms_;
  }
  return admitted;
}

std::optional<qint64> CConnectGate::NextLook() const {
  if (IsReturnWaiting() && HasRoomForReturns()) {
    return next_return_ms_;
  }
  const bool waits = IsReturnWaiting() || !Waiting(ConnectRank::First).isEmpty();
  if (!waits || inside_.isEmpty()) {
    return std::nullopt;
  }
  return inside_.first().since_ms + kHoldMs;
}

}  // namespace TarnClient
