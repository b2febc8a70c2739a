#include "TarnUIDataController/tip_queue.h"

#include <algorithm>

#include "TarnUIDataController/tip_kind.h"

namespace tarn_ui_data_controller {

namespace {

constexpr int kMostWaiting = 3;

struct Stay {
  int alone_ms, before_others_ms;
};
constexpr Stay kLightStay{4000, 2000}, kGraveStay{10000, 5000};

bool IsLightKind(int kind) {
  return kind == kSuccessTip || kind == kHintTip;
}

// What does no harm to miss.
bool IsLight(const Tip& tip) {
  return IsLightKind(tip.kind);
}

}  // namespace

void TipQueue::Add(const Tip& tip) {
  const auto same =
      std::find_if(waiting_.begin(), waiting_.end(), [&tip](const Tip& one) { return one.SaysTheSame(tip); });
  if (same != waiting_.end()) {
    same->count += tip.count;
    return;
  }
  auto place = waiting_.end();
  if (!IsLight(tip)) {
    place = std::find_if(waiting_.begin(), waiting_.end(), IsLight);
  }
  waiting_.insert(place, tip);
  if (waiting_.size() > kMostWaiting) {
    auto least = std::find_if(waiting_.begin(), waiting_.end(), IsLight);
    if (least == waiting_.end()) {
      least = waiting_.begin();
    }
    waiting_.erase(least);
  }
}

int TipQueue::StayMs(int kind, bool others_wait) {
  const Stay stay = IsLightKind(kind) ? kLightStay : kGraveStay;
  return others_wait ? stay.before_others_ms : stay.alone_ms;
}

}  // namespace tarn_ui_data_controller
