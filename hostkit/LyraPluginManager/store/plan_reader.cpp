#include "store/plan_reader.h"

#include <utility>

#include "store/store_error.h"

namespace TarnHost::Store {

CPlanReader::CPlanReader(Opener open) : open_(std::move(open)) {}

CPlanReader::~CPlanReader() {
  Stop();
}

void CPlanReader::Stop() {
  thread_.Stop([this] { Disconnect(); });
}

std::optional<StoredPlan> CPlanReader::WholePlan(int32_t code) {
  return thread_.Call([this, code] { return Read(code); });
}

std::optional<StoredPlan> CPlanReader::Read(int32_t code) {
  if (!engine_) {
    engine_ = open_();
    repository_ = std::make_unique<CPlanRepository>(*engine_);
  }
  try {
    return repository_->WholePlan(code);
  } catch (const CStoreError& error) {
    if (error.GetKind() == CStoreError::kConnectionLost) {
      Disconnect();
    }
    throw;
  }
}

void CPlanReader::Disconnect() {
  repository_.reset();
  engine_.reset();
}

}  // namespace TarnHost::Store
