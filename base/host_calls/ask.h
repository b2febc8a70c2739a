#pragma once

#include <QFutureInterface>
#include <QFutureWatcher>
#include <QObject>
#include <QThreadPool>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "host_calls/call_order.h"
#include "host_calls/call_pool.h"
#include "host_calls/call_scope.h"
#include "host_calls/result.h"
#include "host_calls/user_check.h"

namespace HostCalls {

/// A question to the host, asked on a thread of the pool; made by Ask(), sent by Then().
///
/// `task` carries plain values only. Thread: that of the context, which is the one that sends it.
template <class Task>
class CQuestion {
 public:
  using Answer = decltype(std::declval<Task&>()());

  explicit CQuestion(Task task) : task_(std::move(task)) {}

  /// Instead of CallPool().
  CQuestion& On(QThreadPool& pool) {
    pool_ = &pool;
    return *this;
  }
  /// Not answered when the scope is dropped or destroyed before.
  CQuestion& Within(CCallScope& scope) {
    scope_ = &scope;
    return *this;
  }
  /// The same, and the scope's calls before this one are not answered any more.
  CQuestion& Replacing(CCallScope& scope) {
    scope.Drop();
    return Within(scope);
  }
  /// Runs after the earlier calls of this order and key; the answers keep that order, too.
  CQuestion& InOrder(CCallOrder& order, const std::string& key) {
    order_ = &order;
    key_ = key;
    return *this;
  }
  /// For tasks that answer a Result. When the user is switched before the call has its turn, the host is not called,
  /// and the answer says so.
  CQuestion& AsCurrentUser() {
    Task task = std::move(task_);
    guarded_ = [task = std::move(task), check = CheckOfUser()]() mutable {
      const std::optional<view_plugin_protocol::ResponseHeader> refusal = check();
      if (!refusal) {
        return task();
      }
      Answer refused;
      static_cast<view_plugin_protocol::ResponseHeader&>(refused.response) = *refusal;
      return refused;
    };
    return *this;
  }

  /// Sends the question and calls `done` with the answer, later and on the thread of `context`. When the context is
  /// destroyed before, `done` is not called; the task runs all the same.
  template <class Done>
  void Then(QObject* context, Done done) {
    auto* watcher = new QFutureWatcher<Answer>(context);
    QObject::connect(watcher, &QFutureWatcherBase::finished, context,
                     [watcher, ticket = Ticket(), done = std::move(done)]() mutable {
                       watcher->deleteLater();
                       if (!ticket || CCallScope::Leave(*ticket)) {
                         done(watcher->result());
                       }
                     });
    QFutureInterface<Answer> promise;
    promise.reportStarted();
    watcher->setFuture(promise.future());
    Start([promise, task = TaskToRun()]() mutable {
      const Answer answer = task();
      promise.reportFinished(&answer);
    });
  }

 private:
  std::optional<CCallScope::Ticket> Ticket() {
    if (!scope_) {
      return std::nullopt;
    }
    return scope_->Enter();
  }
  std::function<Answer()> TaskToRun() {
    if (guarded_) {
      return std::move(guarded_);
    }
    return std::move(task_);
  }
  void Start(std::function<void()> run) {
    if (order_) {
      order_->Run(pool_, key_, std::move(run));
    } else {
      pool_->start(std::move(run));
    }
  }

  Task task_;
  std::function<Answer()> guarded_;
  QThreadPool* pool_ = &CallPool();
  CCallScope* scope_ = nullptr;
  CCallOrder* order_ = nullptr;
  std::string key_;
};

/// A question that takes several calls, or something to be worked out off the GUI thread.
template <class Task>
CQuestion<Task> Ask(Task task) {
  return CQuestion<Task>(std::move(task));
}

/// One call of the host, answered by a Result.
template <class Host, class Request, class Response>
auto Ask(bool (Host::*method)(const Request&, Response&), const Request& request) {
  return Ask([method, request] { return CallNow(method, request); });
}

}  // namespace HostCalls
