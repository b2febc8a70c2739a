#include "MarUIControl/typed_time.h"

#include <QRegularExpression>
#include <array>

namespace MarUIControl {

namespace {

using Parts = std::array<int, TypedTime::kSections>;

constexpr Parts kLimits = {24, 60, 60};

Parts PartsOf(const QTime& time) {
  return {time.hour(), time.minute(), time.second()};
}

QString WithLatinDigits(QString text) {
  for (QChar& character : text) {
    if (character.isDigit()) {
      character = QLatin1Char(static_cast<char>('0' + character.digitValue()));
    }
  }
  return text;
}

}  // namespace

TypedTime WithDigit(const TypedTime& before, int digit) {
  Parts parts = PartsOf(before.time);
  const int limit = kLimits[before.section];
  int& part = parts[before.section];
  const bool is_second = before.state == TypedTime::State::Half;
  part = (is_second ? 10 * part : 0) + digit;
  if (part >= limit) {
    return before;
  }
  TypedTime after = before;
  after.time = QTime(parts[0], parts[1], parts[2]);
  if (!is_second && 10 * digit < limit) {
    after.state = TypedTime::State::Half;
    return after;
  }
  after.state = TypedTime::State::HandedOn;
  after.section = qMin(before.section + 1, TypedTime::kSections - 1);
  return after;
}

std::optional<QTime> TimeFromText(const QString& text) {
  static const QRegularExpression form(
      QStringLiteral("^(?:(\\d{1,2})[:.](\\d{2})(?:[:.](\\d{2}))?|(\\d{2})(\\d{2})(\\d{2})?)$"));
  const QRegularExpressionMatch match = form.match(WithLatinDigits(text.trimmed()));
  if (!match.hasMatch()) {
    return std::nullopt;
  }
  const int first = match.captured(1).isEmpty() ? 4 : 1;
  const QTime time(match.captured(first).toInt(), match.captured(first + 1).toInt(), match.captured(first + 2).toInt());
  if (!time.isValid()) {
    return std::nullopt;
  }
  return time;
}

}  // namespace MarUIControl
