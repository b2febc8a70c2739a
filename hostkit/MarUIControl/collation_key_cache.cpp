#include "MarUIControl/collation_key_cache.h"

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

// The locale is named: the order must not depend on the machine's settings.
CollationKeyCache::CollationKeyCache() {
  UErrorCode status = U_ZERO_ERROR;
  collator_.reset(ucol_open("en_US", &status));
  if (collator_) {
    ucol_setAttribute(collator_.get(), UCOL_NORMALIZATION_MODE, UCOL_ON, &status);
    ucol_setAttribute(collator_.get(), UCOL_NUMERIC_COLLATION, UCOL_ON, &status);
    ucol_setStrength(collator_.get(), UCOL_SECONDARY);
  }
  if (!collator_ || U_FAILURE(status)) {
    qWarning("no collation for names: %s; they sort by folded code points", u_errorName(status));
    collator_.reset();
  }
}

CollationKey CollationKeyCache::MakeKey(const QString& text) const {
  if (!collator_) {
    return CollationKey::FromBytes(text.toCaseFolded().toUtf8());
  }
  // Not utf16(): for text that is not owned it reallocates the string it is called on.
  const auto* units = reinterpret_cast<const UChar*>(text.constData());
  QByteArray bytes(2 * text.size() + 16, Qt::Uninitialized);
  for (;;) {
    const int needed =
        ucol_getSortKey(collator_.get(), units, text.size(), reinterpret_cast<uint8_t*>(bytes.data()), bytes.size());
    const bool fits = needed <= bytes.size();
    bytes.resize(needed);
    if (fits) {
      bytes.chop(1);  // the zero at the end, which the array has itself
      return CollationKey::FromBytes(bytes);
    }
  }
}

CollationKey MakeCollationKey(const QString& text) {
  return CollationKeyCache::OfThisThread().MakeKey(text);
}

CollationKey RecentCollationKey(const QString& text) {
  return CollationKeyCache::OfThisThread().KeyOf(text);
}

// Keys on both sides in every case: mixing them with direct comparisons could break the strict weak order.
int CollationKeyCache::Compare(const QString& left, const QString& right) {
  const CollationKey* left_key = young_.Find(left);
  const CollationKey* right_key = young_.Find(right);
  if (left_key && right_key) {
    return left_key->Compare(*right_key);
  }
  // By value: the second look-up may turn the generations over.
  const CollationKey kept = KeyOf(left);
  return kept.Compare(KeyOf(right));
}

CollationKey CollationKeyCache::KeyOf(const QString& text) {
  if (!OwnsCharacters(text)) {
    return MakeKey(text);
  }
  if (const CollationKey* young = young_.Find(text)) {
    return *young;
  }
  const CollationKey key = OldOrNewKey(text);
  Insert(text, key);
  return key;
}

CollationKey CollationKeyCache::OldOrNewKey(const QString& text) const {
  if (const CollationKey* old = old_.Find(text)) {
    return *old;
  }
  return MakeKey(text);
}

void CollationKeyCache::Insert(const QString& text, const CollationKey& key) {
  if (young_.Size() >= kGenerationSize) {
    old_.Swap(young_);
    young_.Clear();
  }
  young_.Insert(text, key);
}

}  // namespace MarUIControl
