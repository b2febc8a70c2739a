#include "MarUIControl/collation_key_table.h"

#include <QtEndian>
#include <algorithm>
#include <cstring>
#include <utility>

namespace MarUIControl {

CollationKey CollationKey::FromBytes(const QByteArray& bytes) {
  CollationKey key;
  std::array<quint64, 2> raw{};
  if (static_cast<size_t>(bytes.size()) > sizeof(raw)) {
    key.bytes = bytes;
  }
  std::memcpy(raw.data(), bytes.constData(), std::min(static_cast<size_t>(bytes.size()), sizeof(raw)));
  key.head = {qFromBigEndian(raw[0]), qFromBigEndian(raw[1])};
  return key;
}

void CollationKeyTable::Insert(const QString& text, const CollationKey& key) {
  if (2 * (size_ + 1) > slots_.size()) {
    Grow();
  }
  Place(text, key);
  ++size_;
}

void CollationKeyTable::Place(const QString& text, const CollationKey& key) {
  size_t at = SlotOf(text);
  while (!slots_[at].text.isNull()) {
    at = (at + 1) & mask_;
  }
  slots_[at] = {text, key};
}

void CollationKeyTable::Grow() {
  std::vector<Slot> old(2 * slots_.size());
  old.swap(slots_);
  mask_ = slots_.size() - 1;
  for (const Slot& slot : old) {
    if (!slot.text.isNull()) {
      Place(slot.text, slot.key);
    }
  }
}

void CollationKeyTable::Clear() {
  *this = CollationKeyTable();
}

void CollationKeyTable::Swap(CollationKeyTable& other) {
  std::swap(*this, other);
}

}  // namespace MarUIControl
