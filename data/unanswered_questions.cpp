#include "unanswered_questions.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "LyraPluginManager/error_kind.h"

namespace TarnPlanView {

namespace {

constexpr int kFirstPauseMs = 1000;
constexpr int kLongestPauseMs = 30000;
constexpr int kFewRepeats = 5, kForEver = std::numeric_limits<int>::max();

}  // namespace

int RepeatsAfter(bool ok, int32_t error_kind) {
  if (ok) {
    return 0;
  }
  switch (error_kind) {
    case view_plugin_protocol::Unavailable:
      return kForEver;
    case view_plugin_protocol::UnknownFailure:
      return kFewRepeats;
    default:
      return 0;
  }
}

bool MayRepeat(int& asked, int repeats) {
  if (repeats == kForEver) {
    asked = 0;
  }
  return asked < repeats;
}

CUnansweredQuestions::CUnansweredQuestions() {
  timer_.setSingleShot(true);
  timer_.setInterval(kFirstPauseMs);
  connect(&timer_, &QTimer::timeout, this, &CUnansweredQuestions::askAgain);
}

void CUnansweredQuestions::Add(const QString& name, int repeats, const std::function<void()>& ask) {
  if (repeats == 0 || !MayRepeat(asked_[name], repeats)) {
    return;
  }
  questions_.insert(name, ask);
  if (!timer_.isActive()) {
    timer_.start();
  }
}

void CUnansweredQuestions::Clear() {
  questions_.clear();
  asked_.clear();
  timer_.stop();
  timer_.setInterval(kFirstPauseMs);
}

void CUnansweredQuestions::askAgain() {
  const int next_pause = std::min(2 * timer_.interval(), kLongestPauseMs);
  const auto questions = std::exchange(questions_, {});
  for (auto question = questions.cbegin(); question != questions.cend(); ++question) {
    ++asked_[question.key()];
    question.value()();
    if (!questions_.contains(question.key())) {
      asked_.remove(question.key());
    }
  }
  timer_.setInterval(questions_.isEmpty() ? kFirstPauseMs : next_pause);
}

}  // namespace TarnPlanView
