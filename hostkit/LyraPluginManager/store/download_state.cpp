#include "store/download_state.h"

namespace TarnHost::Store {

using std::chrono::steady_clock;

void CDownloadState::Want(std::chrono::milliseconds delay) {
  end_ = (steady_clock::now() + delay).time_since_epoch().count();
  ++wanted_;
}

bool CDownloadState::IsReady() const {
  const int wanted = wanted_;
  if (ready_ == wanted) {
    return true;  // asked with every read, so without looking at the clock
  }
  if (!IsDone(wanted) || steady_clock::now().time_since_epoch().count() < end_) {
    return false;
  }
  ready_ = wanted;
  return true;
}

}  // namespace TarnHost::Store
