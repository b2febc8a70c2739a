#include "host_calls/question_pool.h"

#include <QThreadPool>
#include <memory>

namespace HostCalls {

namespace {

constexpr int kThreads = 2;

std::unique_ptr<QThreadPool>& Pool() {
  static std::unique_ptr<QThreadPool> pool;
  return pool;
}

}  // namespace

QThreadPool& QuestionPool() {
  if (!Pool()) {
    Pool() = std::make_unique<QThreadPool>();
    Pool()->setMaxThreadCount(kThreads);
  }
  return *Pool();
}

void ReleaseQuestionPool() {
  if (Pool()) {
    Pool()->clear();
  }
  Pool().reset();
}

}  // namespace HostCalls
