#pragma once

#include <QString>

namespace WidgetKit {

/// When a field that searches as one types has its search done: once typing pauses, or at once by Return. It keeps no
/// time itself. Thread: that of its owner.
class TypedSearch {
 public:
  enum class Step {
    Nothing,   // what runs goes on
    Await,     // the pause begins again
    DropWait,  // no pause is awaited any more
    Search,
  };

  /// The field holds another text, by the user's typing or by the program.
  Step OnText(const QString& text, bool typed);
  /// Typing has paused.
  Step OnPause();
  /// The user wants it now.
  Step OnRequest();
  /// What was searched last is not on show (any more), so that it may be searched for again.
  void ForgetSearched() { searched_.clear(); }
  /// What was typed so far is left to Return.
  void DropWait() { awaits_pause_ = false; }

  /// Two characters; of scripts with a sign for a word or syllable one says enough.
  static bool IsEnough(const QString& text);

 private:
  QString text_, searched_;
  bool awaits_pause_ = false;
};

}  // namespace WidgetKit
