#pragma once

#include <QFutureWatcher>
#include <QObject>
#include <QtConcurrent>
#include <utility>

namespace TarnClient {

/// Runs `task`, which makes blocking calls, on the thread pool and hands its result to `done` on the thread of
/// `receiver`. A receiver that dies before gets none; nobody waits for the task, so it carries plain values only.
template <class Task, class Done>
void RunOffThread(QObject* receiver, Task task, Done done) {
  using Result = decltype(task());
  auto* watcher = new QFutureWatcher<Result>(receiver);
  QObject::connect(watcher, &QFutureWatcherBase::finished, receiver, [watcher, done = std::move(done)] {
    watcher->deleteLater();
    done(watcher->result());
  });
  watcher->setFuture(QtConcurrent::run(std::move(task)));
}

}  // namespace TarnClient
