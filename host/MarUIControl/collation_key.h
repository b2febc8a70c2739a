#pragma once

#include <QByteArray>
#include <QString>
#include <array>

#include "host_export.h"

namespace MarUIControl {

/// What a name is compared by, ready made: names order as their keys do, and those of equal keys by their texts. The
/// first bytes stand apart, so that most comparisons need no further memory.
struct CollationKey {
  std::array<quint64, 2> head{};  // the first 16 bytes, most significant first, padded with zeros
  QByteArray bytes;               // all of them, when they are more

  static TARN_HOST_EXPORT CollationKey FromBytes(const QByteArray& bytes);
  int Compare(const CollationKey& other) const {
    if (head != other.head) {
      return head < other.head ? -1 : 1;
    }
    return qstrcmp(bytes, other.bytes);
  }
};

/// Makes the key of `text`, for one that is kept with it. Thread: any.
TARN_HOST_EXPORT CollationKey MakeCollationKey(const QString& text);
/// The key of `text`; those of recent texts are kept per thread. Thread: any.
TARN_HOST_EXPORT CollationKey RecentCollationKey(const QString& text);

}  // namespace MarUIControl
