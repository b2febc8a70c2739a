#pragma once

#include <QFutureWatcher>
#include <QObject>
#include <QThreadPool>
#include <QtConcurrent>
#include <utility>

namespace TarnPlanView {

/// Runs `task` on `pool` and hands its result to `done` on the thread of `receiver`.
///
/// `task` must carry plain values only. A receiver that dies in the meantime gets no answer; nobody waits for the
/// task. Answers of several calls may come in any order. Thread: that of `receiver`.
template <class Task, class Done>
void CallAsync(QThreadPool* pool, QObject* receiver, Task task, Done done) {
  using Result = decltype(task());
  auto* watcher = new QFutureWatcher<Result>(receiver);
  QObject::connect(watcher, &QFutureWatcherBase::finished, receiver, [watcher, done = std::move(done)] {
    watcher->deleteLater();
    done(watcher->result());
  });
  watcher->setFuture(QtConcurrent::run(pool, std::move(task)));
}

/// The same on the global thread pool.
template <class Task, class Done>
void CallAsync(QObject* receiver, Task task, Done done) {
  CallAsync(QThreadPool::globalInstance(), receiver, std::move(task), std::move(done));
}

}  // namespace TarnPlanView
