#include "store/reader_connection.h"

#include <utility>

namespace TarnHost::Store {
namespace {

// A server takes so many sessions and no more: a desk at which nothing plays has one.
constexpr std::chrono::seconds kKeptIdle{10};

}  // namespace

CReaderConnection::CReaderConnection(Opener open, std::shared_ptr<CConnectionWatch> watch)
    : open_(std::move(open)), watch_(std::move(watch)) {}

bool CReaderConnection::Answers() {
  try {
    Read([](CPlanRepository& plans) { return plans.NewestChange(); });
    return true;
  } catch (const CStoreError& error) {
    return !error.IsOfConnection();
  }
}

void CReaderConnection::Rest() {
  if (engine_ && std::chrono::steady_clock::now() - last_read_ >= kKeptIdle) {
    Disconnect();
  }
}

void CReaderConnection::Connect() {
  if (!engine_) {
    engine_ = open_(watch_);
    repository_ = std::make_unique<CPlanRepository>(*engine_);
  }
  try {
    engine_->RequireInPlace();
  } catch (const CStoreError&) {
    Disconnect();
    throw;
  }
}

void CReaderConnection::Disconnect() {
  repository_.reset();
  engine_.reset();
}

void CReaderConnection::DisconnectAfter(const CStoreError& error) {
  if (error.GetKind() == CStoreError::kConnectionLost) {
    Disconnect();
  }
}

// A connection that lay idle may have died long ago, for instance because the server was started again: that shows with
// the next read. One that was cut because its server hangs would hang again.
bool CReaderConnection::IsDead(const CStoreError& error) const {
  return error.GetKind() == CStoreError::kConnectionLost && !watch_->WasCut();
}

}  // namespace TarnHost::Store
