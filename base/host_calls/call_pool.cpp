#include "host_calls/call_pool.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThread>
#include <QThreadPool>
#include <mutex>

namespace HostCalls {

namespace {

constexpr int kLeastThreads = 4;

/// What another library of the process has made already, or a new one. Every library has these functions to itself, so
/// they find the pool by its name.
QThreadPool* FindOrMake() {
  const QString name = QStringLiteral("tarn_call_pool");
  QCoreApplication* application = QCoreApplication::instance();
  Q_ASSERT(application);
  if (auto* made = application->findChild<QThreadPool*>(name, Qt::FindDirectChildrenOnly)) {
    return made;
  }
  auto* pool = new QThreadPool(application);
  pool->setObjectName(name);
  pool->setMaxThreadCount(qMax(kLeastThreads, QThread::idealThreadCount()));
  return pool;
}

}  // namespace

QThreadPool& CallPool() {
  static std::mutex mutex;
  static QPointer<QThreadPool> pool;
  const std::lock_guard<std::mutex> lock(mutex);
  if (!pool) {
    pool = FindOrMake();
  }
  return *pool;
}

void AwaitCalls() {
  if (QCoreApplication::instance()) {
    CallPool().waitForDone();
  }
}

}  // namespace HostCalls
