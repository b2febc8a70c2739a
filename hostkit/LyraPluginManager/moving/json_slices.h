#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <optional>

namespace TarnHost::Moving {

/// What is wrong with a text, and where.
struct JsonFault {
  QString text;
  qint64 at = 0;  // byte, from 0
};

/// A value of the object that a file is, or of a list in it.
struct JsonSlice {
  QString key;       // of the object
  int place = -1;    // in the list; -1 for a value that is no list
  QByteArray bytes;  // not a copy: valid for as long as the text
  qint64 at = 0;     // where they begin
};

/// Goes through the text of one JSON object without making values of all of it: calls take(slice) for each of its
/// members, and for each element of those that are lists. `take` answers what is wrong with the slice. Ends at the
/// first fault. A slice is not yet known to be JSON inside; one of more than kLargestSlice is a fault. Thread: any.
std::optional<JsonFault> ForEachSlice(const char* text, qint64 size,
                                      const std::function<std::optional<JsonFault>(const JsonSlice&)>& take);

constexpr qint64 kLargestSlice = 16 * 1024 * 1024;

/// The line, from 1, that this byte stands in.
qint64 LineAt(const char* text, qint64 at);

}  // namespace TarnHost::Moving
