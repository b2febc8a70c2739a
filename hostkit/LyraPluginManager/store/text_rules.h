#pragma once

#include <QString>
#include <optional>
#include <string>

namespace TarnHost::Store {

inline QString ToQt(const std::string& text) {
  return QString::fromStdString(text);
}

/// The text that these bytes are, if they are one.
std::optional<QString> TextOfBytes(const std::string& bytes);
/// The same, or throws CStoreError.
QString CheckedText(const std::string& bytes);

/// The name of a plan or group as it is stored. Throws CStoreError with a text for the user when it breaks the
/// rule for names.
QString CheckedName(const std::string& name);

/// A time of day as it is stored, "HH:mm:ss"; throws CStoreError when it is none.
QString CheckedTime(const std::string& time);

/// As CheckedTime(), but empty for what is no time of day.
QString TimeOrNothing(const std::string& time);

/// Seconds since midnight of a stored time; -1 for anything else.
int32_t SecondOfDay(const QString& time);

/// The form in which names are compared when searching: without case, composed.
std::string Folded(const QString& text);
std::string FoldedName(const std::string& name);

}  // namespace TarnHost::Store
