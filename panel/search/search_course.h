#pragma once

#include <QString>
#include <optional>

namespace TarnPlanView {

/// Where the search of a panel stands, and what follows from what happens to it. It keeps no time and asks no one
/// itself. Thread: that of its owner.
class SearchCourse {
 public:
  struct Question {
    QString text;
    bool typed = false;  // asked while the user types on, so that the hits do not take the keyboard
  };

  /// False when the same is being asked already.
  bool Ask(const QString& text, bool typed);
  /// What was asked may have another answer by now. As typed, unless the user waits for the answer.
  void AskAgain(const QString& text);
  /// A part of the answer, or all of it, will be missing.
  void OnFailed();
  /// What was answered; none when it does not count, for the search was left meanwhile or was none of these.
  std::optional<Question> OnAnswer();
  /// Of the search that is under way or was answered last.
  bool HasFailed() const { return failed_; }
  void Leave();
  bool IsUnderWay() const { return asked_.has_value(); }

 private:
  std::optional<Question> asked_;
  bool failed_ = false;
};

}  // namespace TarnPlanView
