#include "store/unread_plans.h"

namespace TarnHost::Store {
namespace {

using std::chrono::steady_clock;

constexpr std::chrono::seconds kBetweenReports{1};

}  // namespace

void CUnreadPlans::Note(int32_t code) {
  const std::lock_guard<std::mutex> lock(mutex_);
  codes_.insert(code);
}

std::set<int32_t> CUnreadPlans::TakeDue() {
  const std::lock_guard<std::mutex> lock(mutex_);
  std::set<int32_t> due;
  if (!codes_.empty() && steady_clock::now() >= next_) {
    due.swap(codes_);
    next_ = steady_clock::now() + kBetweenReports;
  }
  return due;
}

}  // namespace TarnHost::Store
