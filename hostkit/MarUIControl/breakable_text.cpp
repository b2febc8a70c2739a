#include "MarUIControl/breakable_text.h"

#include <QTextBoundaryFinder>

namespace MarUIControl {

namespace {

constexpr int kLongWord = 24;
const QChar kBreak(0x200b);  // takes no room

QString Breakable(const QString& word) {
  QString broken;
  QTextBoundaryFinder letters(QTextBoundaryFinder::Grapheme, word);
  for (int from = 0, to = letters.toNextBoundary(); to > 0; from = to, to = letters.toNextBoundary()) {
    if (from > 0) {
      broken += kBreak;
    }
    broken += word.mid(from, to - from);
  }
  return broken;
}

}  // namespace

QString BreakableText(const QString& text) {
  QString result;
  int word = 0;
  for (int at = 0; at <= text.size(); ++at) {
    if (at < text.size() && !text[at].isSpace() && text[at] != kBreak) {
      continue;
    }
    const QString letters = text.mid(word, at - word);
    result += letters.size() > kLongWord ? Breakable(letters) : letters;
    result += text.mid(at, 1);
    word = at + 1;
  }
  return result;
}

}  // namespace MarUIControl
