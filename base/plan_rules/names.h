#pragma once

#include <QString>

// The rule for names of plans and groups. Thread: any.
namespace view_plugin_protocol {

/// What no name may contain.
constexpr char kForbiddenInNames[] = "\\/:*?\"<>|";
/// What cannot be typed into a name. Apostrophe and percent are no more than that: names made elsewhere have them.
constexpr char kNotTypedInNames[] = "\\/:*?\"<|'%>";

enum class NameFault { None, Empty, ForbiddenCharacter, TooLong, ControlCharacter };

/// The first fault of a name, in the order above: it has 1 to kLongestName characters, not blanks alone, and none of
/// kForbiddenInNames.
NameFault FaultOfName(const QString& name);

/// The pattern of what a field for names takes while it is typed.
QString TypedNamePattern();

/// A user's text that asks for a name, with its three places filled: least and most characters, and what not to type.
QString NamingRule(const QString& text);

/// The name that a new plan or group has until the user gives it one: its kind, and the time of day right behind.
QString NameWithTime(const QString& kind);

}  // namespace view_plugin_protocol
