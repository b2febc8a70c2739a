#include "WidgetKit/typed_search.h"

#include <QChar>
#include <QVector>
#include <utility>

namespace WidgetKit {

namespace {

constexpr int kLeastCharacters = 2;

}  // namespace

bool TypedSearch::IsEnough(const QString& text) {
  const QVector<uint> characters = text.trimmed().toUcs4();
  if (characters.size() != 1) {
    return characters.size() >= kLeastCharacters;
  }
  switch (QChar::script(characters.front())) {
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
    case QChar::Script_Hangul:
      return true;
    default:
      return false;
  }
}

TypedSearch::Step TypedSearch::OnText(const QString& text, bool typed) {
  const QString trimmed = text.trimmed();
  if (trimmed == text_) {
    return Step::Nothing;
  }
  text_ = trimmed;
  if (text_.isEmpty()) {
    searched_.clear();  // its answer was dropped with the text
  }
  awaits_pause_ = typed && IsEnough(text_) && text_ != searched_;
  return awaits_pause_ ? Step::Await : Step::DropWait;
}

TypedSearch::Step TypedSearch::OnPause() {
  if (!std::exchange(awaits_pause_, false)) {
    return Step::Nothing;
  }
  searched_ = text_;
  return Step::Search;
}

TypedSearch::Step TypedSearch::OnRequest() {
  awaits_pause_ = false;
  searched_ = text_;
  return Step::Search;
}

}  // namespace WidgetKit
