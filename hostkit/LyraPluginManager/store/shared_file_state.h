#pragma once

#include <mutex>

#include "store/sqlite_file_state.h"

namespace TarnHost::Store {

/// The file and log that a connection has found to be its store's, for the store's further connections. Thread: any.
class CSharedFileState {
 public:
  SqliteFileState Get() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return state_;
  }
  void Set(const SqliteFileState& state) {
    const std::lock_guard<std::mutex> lock(mutex_);
    state_ = state;
  }

 private:
  mutable std::mutex mutex_;
  SqliteFileState state_;
};

}  // namespace TarnHost::Store
