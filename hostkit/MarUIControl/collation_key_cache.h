#pragma once

#include <unicode/ucol.h>

#include <QString>
#include <memory>

#include "MarUIControl/collation_key_table.h"

namespace MarUIControl {

/// Collation keys of recent texts, found by the address of the text's characters. Two generations: when the young one
/// is full the old one is dropped, so texts in use stay and memory is bounded. Thread: one cache a thread.
///
/// Asks ICU itself, which Qt's collator stands on, because Qt hides the bytes of its keys.
class CollationKeyCache {
 public:
  static constexpr size_t kGenerationSize = 131072;

  static CollationKeyCache& OfThisThread();

  /// Below 0, 0 or above 0 as `left` sorts before, with or after `right`: numbers by value, case ignored.
  int Compare(const QString& left, const QString& right);

  /// Not held afterwards.
  CollationKey MakeKey(const QString& text) const;
  CollationKey KeyOf(const QString& text);

  /// Keys that are held at present.
  size_t Size() const { return young_.Size() + old_.Size(); }

 private:
  struct Closer {
    void operator()(UCollator* collator) const { ucol_close(collator); }
  };

  CollationKeyCache();
  CollationKey OldOrNewKey(const QString& text) const;
  void Insert(const QString& text, const CollationKey& key);

  std::unique_ptr<UCollator, Closer> collator_;
  CollationKeyTable young_, old_;
};

}  // namespace MarUIControl
