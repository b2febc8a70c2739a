#pragma once

#include <QString>
#include <vector>

#include "MarUIControl/collation_key.h"

namespace MarUIControl {

/// Collation keys by the address of a text's characters: open addressing in one block, because sorting a long list
/// takes a few million look-ups, and chained hashes spend most of them waiting for memory. It grows; single texts are
/// never removed.
class CollationKeyTable {
 public:
  /// Null when the text is not held. The pointer is good until the next Insert() or Clear().
  const CollationKey* Find(const QString& text) const {
    for (size_t at = SlotOf(text); !slots_[at].text.isNull(); at = (at + 1) & mask_) {
      if (slots_[at].text.isSharedWith(text)) {
        return &slots_[at].key;
      }
    }
    return nullptr;
  }

  /// Holds `text`, which must own its characters and not be held yet, so that its address cannot come to mean another.
  void Insert(const QString& text, const CollationKey& key);
  void Clear();
  void Swap(CollationKeyTable& other);
  size_t Size() const { return size_; }

 private:
  static constexpr size_t kFirstSlots = 1024;

  struct alignas(32) Slot {  // never across two cache lines
    QString text;            // null in an empty slot
    CollationKey key;
  };

  size_t SlotOf(const QString& text) const {
    // Addresses of blocks share their low bits; the product spreads them over the high ones.
    const auto address = reinterpret_cast<quint64>(text.constData());
    return static_cast<size_t>((address * 0x9E3779B97F4A7C15ULL) >> 32) & mask_;
  }
  void Place(const QString& text, const CollationKey& key);
  void Grow();

  std::vector<Slot> slots_ = std::vector<Slot>(kFirstSlots);
  size_t mask_ = kFirstSlots - 1;
  size_t size_ = 0;
};

}  // namespace MarUIControl
