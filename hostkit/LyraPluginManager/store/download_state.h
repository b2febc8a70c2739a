#pragma once

#include <atomic>
#include <chrono>

namespace TarnHost::Store {

/// How far the download of the plan tree into memory is. Downloads are numbered, so that one that is asked for while
/// another runs is not taken for done. Thread: any.
class CDownloadState {
 public:
  /// A new download is wanted, which counts as ready after `delay` at the earliest.
  void Want(std::chrono::milliseconds delay);
  int Wanted() const { return wanted_; }
  bool IsDone(int download) const { return done_ == download; }
  void SetDone(int download) { done_ = download; }
  /// Whether the one that is wanted is done, and its time is over.
  bool IsReady() const;

 private:
  std::atomic<int> wanted_{0}, done_{0};
  mutable std::atomic<int> ready_{0};
  std::atomic<std::chrono::steady_clock::rep> end_{0};
};

}  // namespace TarnHost::Store
