#include "window/leaving.h"

#include <algorithm>
#include <utility>

#include "window/wall_desk.h"

namespace TarnClient {

bool CLeaving::MayLeave(const QVector<CWallDesk*>& desks, std::function<void()> again) {
  again_ = std::move(again);
  const bool may_leave = std::all_of(desks.begin(), desks.end(), [](CWallDesk* desk) { return desk->MayLeave(); });
  if (may_leave) {
    again_ = nullptr;
  }
  return may_leave;
}

void CLeaving::OnSaved() {
  if (again_) {
    std::exchange(again_, nullptr)();
  }
}

}  // namespace TarnClient
