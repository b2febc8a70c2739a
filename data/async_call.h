#pragma once

#include <QFutureInterface>
#include <QFutureWatcher>
#include <QObject>
#include <QThreadPool>
#include <QtConcurrent>
#include <string>
#include <utility>

#include "call_order.h"

namespace TarnPlanView {

/// A child of `receiver` that hands the result of its future to `done` and ends.
template <class Result, class Done>
QFutureWatcher<Result>* NewWatcher(QObject* receiver, Done done) {
  auto* watcher = new QFutureWatcher<Result>(receiver);
  QObject::connect(watcher, &QFutureWatcherBase::finished, receiver, [watcher, done = std::move(done)] {
    watcher->deleteLater();
    done(watcher->result());
  });
  return watcher;
}

/// Runs `task` on `pool` and hands its result to `done` on the thread of `receiver`.
///
/// `task` must carry plain values only. A receiver that dies in the meantime gets no answer; nobody waits for the
/// task. Answers of several calls may come in any order. Thread: that of `receiver`.
template <class Task, class Done>
void CallAsync(QThreadPool* pool, QObject* receiver, Task task, Done done) {
  auto* watcher = NewWatcher<decltype(task())>(receiver, std::move(done));
  watcher->setFuture(QtConcurrent::run(pool, std::move(task)));
}

/// The same on the global thread pool, after the calls that were ordered before under this key: for changes of one
/// node, whose last must be the last to reach the host. Their answers keep that order, too.
template <class Task, class Done>
void CallInOrder(CCallOrder& order, const std::string& key, QObject* receiver, Task task, Done done) {
  using Result = decltype(task());
  auto* watcher = NewWatcher<Result>(receiver, std::move(done));
  QFutureInterface<Result> promise;
  promise.reportStarted();
  watcher->setFuture(promise.future());
  order.Run(QThreadPool::globalInstance(), key, [promise, task = std::move(task)]() mutable {
    const Result result = task();
    promise.reportFinished(&result);
  });
}

/// CallAsync() on the global thread pool.
template <class Task, class Done>
void CallAsync(QObject* receiver, Task task, Done done) {
  CallAsync(QThreadPool::globalInstance(), receiver, std::move(task), std::move(done));
}

}  // namespace TarnPlanView
