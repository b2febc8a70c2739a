#pragma once

#include <QByteArray>
#include <QString>
#include <array>

#include "host_export.h"

namespace MarUIControl {

/// What a name is compared by, ready made: names order as their keys do, and those of equal keys by their texts. The
/// first bytes stand apart, so that most comparisons need no further memory. A plain value. Thread: any.
struct CollationKey {
  std::array<quint64, 2> head{};  ///< The first 16 bytes, most significant first, padded with zeros.
  QByteArray bytes;               ///< All of them, when they are more; else empty.

  /// The key of these bytes, which compare as memcmp() has them.
  static TARN_HOST_EXPORT CollationKey FromBytes(const QByteArray& bytes);
  /// Below 0, 0 or above 0, as this one stands before, with or behind the other.
  int Compare(const CollationKey& other) const {
    if (head != other.head) {
      return head < other.head ? -1 : 1;
    }
    return qstrcmp(bytes, other.bytes);
  }
};

/// Makes the key of `text`, for one that is kept with it. Keys order as CustomStringCompare() in mode 2 does, but for
/// its ties. Thread: any.
TARN_HOST_EXPORT CollationKey MakeCollationKey(const QString& text);
/// The key of `text`; those of recent texts are kept per thread. Thread: any.
TARN_HOST_EXPORT CollationKey RecentCollationKey(const QString& text);

}  // namespace MarUIControl
