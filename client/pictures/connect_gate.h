#pragma once

#include <QVector>
#include <array>
#include <optional>

namespace TarnClient {

/// What a camera's last attempts to connect were; those that are likely to have pictures come before the others.
enum class ConnectRank { First, JustLost, Failing };

/// Who may connect when: so many at once and no more, those whom a user waits for first. Cameras that come back after
/// a loss do so one by one, or a site that had no power would be asked for everything in one moment.
class CConnectGate {
 public:
  /// `spread_ms`: over which 64 that come back connect.
  explicit CConnectGate(qint64 spread_ms) : pause_ms_(spread_ms / 64) {}

  void Ask(int id, ConnectRank rank);
  /// It has connected, has failed, or does not want to any more.
  void Leave(int id);
  /// Who may begin now, in the order of their ranks and their asking.
  QVector<int> Admit(qint64 now_ms);
  /// When Admit() is to be asked again though no one asks or leaves; empty: not before.
  std::optional<qint64> NextLook() const;

  /// A camera that has not answered by then may never do, and keeps no place from the others.
  static constexpr qint64 kHoldMs = 1000;

 private:
  struct Guest {
    int id = 0;
    qint64 since_ms = 0;
    bool comes_back = false;
  };

  void DropSlow(qint64 now_ms);
  void Let(int id, bool comes_back, qint64 now_ms, QVector<int>* admitted);
  QVector<int>& Waiting(ConnectRank rank) { return waiting_[static_cast<size_t>(rank)]; }
  const QVector<int>& Waiting(ConnectRank rank) const { return waiting_[static_cast<size_t>(rank)]; }
  bool IsReturnWaiting() const {
    return !Waiting(ConnectRank::JustLost).isEmpty() || !Waiting(ConnectRank::Failing).isEmpty();
  }
  bool HasRoom() const { return inside_.size() < kAtOnce; }
  bool HasRoomForReturns() const;

  static constexpr int kAtOnce = 24, kReturnsAtOnce = 12;

  const qint64 pause_ms_;
  std::array<QVector<int>, 3> waiting_;  // by ConnectRank
  QVector<Guest> inside_;                // in the order in which they were let in
  std::optional<qint64> next_return_ms_;
};

}  // namespace TarnClient
