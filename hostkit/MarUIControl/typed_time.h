#pragma once

#include <QString>
#include <QTime>
#include <optional>

namespace MarUIControl {

/// A time of day while digits are typed into it, one section after the other.
struct TypedTime {
  static constexpr int kSections = 3;  // hours, minutes, seconds

  enum class State {
    Chosen,    // the user went to the section
    Half,      // it holds one digit that a second one may follow
    HandedOn,  // the section before it is complete
  };

  QTime time{0, 0};
  int section = 0;
  State state = State::Chosen;
};

/// A digit more. The first one in a section takes the place of what stands there; a section that can take no second one
/// hands on to the next. What would be no time changes nothing.
TypedTime WithDigit(const TypedTime& before, int digit);

/// The time with nothing but zeros in the section.
QTime WithoutSection(const QTime& time, int section);

/// "21:05", "21:05:30", "2105" and the like, also with points and with blanks around; nothing for what is no time.
std::optional<QTime> TimeFromText(const QString& text);

}  // namespace MarUIControl
