#include "MarUIControl/collation_key_cache.h"

#include <QLocale>

namespace MarUIControl {

namespace {

// Characters that the string does not own (raw data, literals) could change or be unloaded under the key.
bool OwnsCharacters(const QString& text) {
  return text.capacity() > 0;
}

}  // namespace

CollationKeyCache& CollationKeyCache::OfThisThread() {
  thread_local CollationKeyCache cache;
  return cache;
}

// The locale is named: with the C locale of a bare machine the collator would compare numbers digit by digit.
CollationKeyCache::CollationKeyCache() : collator_(QLocale(QLocale::English, QLocale::UnitedStates)) {
  collator_.setNumericMode(true);
  collator_.setCaseSensitivity(Qt::CaseInsensitive);
}

// Keys on both sides in every case: mixing them with direct comparisons could break the strict weak order.
int CollationKeyCache::Compare(const QString& left, const QString& right) {
  // By value (shared data, no text is copied): the second look-up may turn the generations over.
  const QCollatorSortKey left_key = KeyOf(left);
  return left_key.compare(KeyOf(right));
}

QCollatorSortKey CollationKeyCache::KeyOf(const QString& text) {
  return OwnsCharacters(text) ? EntryOf(text).key : collator_.sortKey(text);
}

const CollationKeyCache::Entry& CollationKeyCache::EntryOf(const QString& text) {
  const QChar* address = text.constData();
  const auto young = young_.find(address);
  if (young != young_.end()) {
    return young->second;
  }
  const auto old = old_.find(address);
  if (old == old_.end()) {
    return Insert({text, collator_.sortKey(text)});
  }
  Entry entry = std::move(old->second);
  old_.erase(old);
  return Insert(std::move(entry));
}

const CollationKeyCache::Entry& CollationKeyCache::Insert(Entry entry) {
  if (young_.size() >= kGenerationSize) {
    old_.swap(young_);
    young_.clear();
  }
  const QChar* address = entry.text.constData();
  return young_.emplace(address, std::move(entry)).first->second;
}

}  // namespace MarUIControl
