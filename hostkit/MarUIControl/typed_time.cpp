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

QTime TimeOf(const Parts& parts) {
  return QTime(parts[0], parts[1], parts[2]);
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
  if (is_second) {
    digit += 10 * part;
  }
  if (digit >= limit) {
    return before;
  }
  part = digit;
  TypedTime after = before;
  after.time = TimeOf(parts);
  if (!is_second && 10 * digit < limit) {
    after.state = TypedTime::State::Half;
    return after;
  }
  after.state = TypedTime::State::HandedOn;
  after.section = qMin(before.section + 1, TypedTime::kSections - 1);
  return after;
}

QTime WithoutSection(const QTime& time, int section) {
  Parts parts = PartsOf(time);
  parts[section] = 0;
  return TimeOf(parts);
}

std::optional<QTime> TimeFromText(const QString& text) {
  static const QRegularExpression with_marks(QStringLiteral(R"(^(\d{1,2})[:.](\d{2})([:.](\d{2}))?$)"));
  static const QRegularExpression digits_alone(QStringLiteral(R"(^(\d{2})(\d{2})((\d{2}))?$)"));
  const QString typed = WithLatinDigits(text.trimmed());
  QRegularExpressionMatch match = with_marks.match(typed);
  if (!match.hasMatch()) {
    match = digits_alone.match(typed);
  }
  if (!match.hasMatch()) {
    return std::nullopt;
  }
  const QTime time(match.captured(1).toInt(), match.captured(2).toInt(), match.captured(4).toInt());
  if (!time.isValid()) {
    return std::nullopt;
  }
  return time;
}

}  // namespace MarUIControl
