#include "search_course.h"

#include <utility>

namespace TarnPlanView {

bool SearchCourse::Ask(const QString& text, bool typed) {
  if (asked_ && asked_->text == text) {
    asked_->typed = asked_->typed && typed;
    return false;
  }
  asked_ = Question{text, typed};
  failed_ = false;
  return true;
}

void SearchCourse::AskAgain(const QString& text) {
  const bool typed = !asked_ || asked_->typed;
  asked_ = Question{text, typed};
  failed_ = false;
}

void SearchCourse::OnFailed() {
  failed_ = failed_ || IsUnderWay();
}

std::optional<SearchCourse::Question> SearchCourse::OnAnswer() {
  return std::exchange(asked_, std::nullopt);
}

void SearchCourse::Leave() {
  asked_.reset();
  failed_ = false;
}

}  // namespace TarnPlanView
