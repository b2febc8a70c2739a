#include "log_in/log_in_pool.h"

#include <QThreadPool>

namespace TarnClient {

namespace {

constexpr int kThreads = 2;  // one that was cancelled may still wait for the store

}  // namespace

QThreadPool& LogInPool() {
  static QThreadPool pool;
  pool.setMaxThreadCount(kThreads);
  return pool;
}

}  // namespace TarnClient
