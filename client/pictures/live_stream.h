#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "pictures/stream_access.h"
#include "pictures/stream_connection.h"

namespace TarnClient {

class CStreamLease;
class CStreamNetwork;

/// One stream that is connected, and who uses it. Thread: GUI.
class CLiveStream {
 public:
  CLiveStream(std::weak_ptr<CStreamNetwork> network, std::weak_ptr<CDecodingPool> pool, StreamAccess access,
              const StreamTimings& timings);
  /// Closes the connection, without waiting.
  ~CLiveStream();
  CLiveStream(const CLiveStream&) = delete;
  CLiveStream& operator=(const CLiveStream&) = delete;

  CStreamBoard& Board() { return *receivers_.board; }
  const StreamAccess& Access() const { return access_; }
  /// Nothing is kept of what it showed: it may be another camera now.
  void Reopen(const StreamAccess& access);

  void Add(CStreamLease* lease);
  void Remove(CStreamLease* lease, qint64 now_ms);
  /// Since when no one has used it; empty while someone does.
  std::optional<qint64> UnusedSince() const { return unused_since_; }
  /// Whether someone looks at it.
  bool IsShown(qint64 now_ms) const;
  bool IsInFocus() const;
  /// Of those who use it, the first one's place in the order in which all came.
  int Order() const;
  /// How long its next picture has been waiting to be decoded; nothing for one that is not shown in full.
  qint64 WaitMs(qint64 now_ms) const;
  void SetShed(bool shed) { shed_ = shed; }
  /// Decodes what is needed for those who use it.
  void ChooseMode(qint64 now_ms);

 private:
  void Open(qint64 number);
  void Close();

  const std::weak_ptr<CStreamNetwork> network_;
  const std::weak_ptr<CDecodingPool> pool_;
  const StreamTimings timings_;
  StreamAccess access_;
  StreamReceivers receivers_;
  int connection_ = 0;
  std::vector<CStreamLease*> leases_;
  std::optional<qint64> unused_since_;
  bool shed_ = false;
  DecodingMode mode_ = DecodingMode::KeyFrames;
};

}  // namespace TarnClient
