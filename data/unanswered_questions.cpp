#include "unanswered_questions.h"

#include <algorithm>
#include <utility>

namespace TarnPlanView {

namespace {

constexpr int kFirstPauseMs = 1000;
constexpr int kLongestPauseMs = 30000;

}  // namespace

CUnansweredQuestions::CUnansweredQuestions() {
  timer_.setSingleShot(true);
  timer_.setInterval(kFirstPauseMs);
  connect(&timer_, &QTimer::timeout, this, &CUnansweredQuestions::askAgain);
}

void CUnansweredQuestions::Add(const QString& name, const std::function<void()>& ask) {
  questions_.insert(name, ask);
  if (!timer_.isActive()) {
    timer_.start();
  }
}

void CUnansweredQuestions::Clear() {
  questions_.clear();
  timer_.stop();
  timer_.setInterval(kFirstPauseMs);
}

void CUnansweredQuestions::askAgain() {
  const int next_pause = std::min(2 * timer_.interval(), kLongestPauseMs);
  const auto questions = std::exchange(questions_, {});
  for (const auto& ask : questions) {
    ask();
  }
  timer_.setInterval(questions_.isEmpty() ? kFirstPauseMs : next_pause);
}

}  // namespace TarnPlanView
