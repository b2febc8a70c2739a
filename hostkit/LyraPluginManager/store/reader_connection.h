#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "store/connection_watch.h"
#include "store/plan_repository.h"
#include "store/sql_engine.h"

namespace TarnHost::Store {

/// A store's further connection, opened for the first read and again after it was lost. Throws CStoreError. Thread:
/// one, the same for all calls.
class CReaderConnection {
 public:
  using Opener = std::function<std::unique_ptr<CSqlEngine>(std::shared_ptr<CConnectionWatch>)>;

  CReaderConnection(Opener open, std::shared_ptr<CConnectionWatch> watch);

  /// Answers work(repository).
  template <class Work>
  auto Read(const Work& work) {
    last_read_ = std::chrono::steady_clock::now();
    const bool was_idle = engine_ != nullptr;
    Connect();
    try {
      return work(*repository_);
    } catch (const CStoreError& error) {
      if (!was_idle || !IsDead(error)) {
        DisconnectAfter(error);
        throw;
      }
    }
    Disconnect();
    return Read(work);  // once: the connection is a new one
  }
  /// Whether the store answers a short question.
  bool Answers();
  /// Disconnects when nothing was read for a while.
  void Rest();
  void Disconnect();

 private:
  void Connect();
  void DisconnectAfter(const CStoreError& error);
  bool IsDead(const CStoreError& error) const;

  const Opener open_;
  const std::shared_ptr<CConnectionWatch> watch_;
  std::unique_ptr<CSqlEngine> engine_;
  std::unique_ptr<CPlanRepository> repository_;
  std::chrono::steady_clock::time_point last_read_;
};

}  // namespace TarnHost::Store
