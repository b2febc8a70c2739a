#pragma once

#include <QCollator>
#include <QString>
#include <unordered_map>

namespace MarUIControl {

/// Collation keys of recent texts. A key is found by the address of the text's characters; the entry holds the text,
/// so that the address cannot come to mean another one. Two generations: when the young one is full the old one is
/// dropped, so texts in use stay and memory is bounded. Thread: one cache a thread.
class CollationKeyCache {
 public:
  static constexpr size_t kGenerationSize = 131072;

  static CollationKeyCache& OfThisThread();

  /// Below 0, 0 or above 0 as `left` sorts before, with or after `right`: numbers by value, case ignored.
  int Compare(const QString& left, const QString& right);

  /// Texts whose keys are held at present.
  size_t Size() const { return young_.size() + old_.size(); }

 private:
  struct Entry {
    QString text;
    QCollatorSortKey key;
  };
  using Generation = std::unordered_map<const QChar*, Entry>;

  CollationKeyCache();
  QCollatorSortKey KeyOf(const QString& text);
  const Entry& EntryOf(const QString& text);
  const Entry& Insert(Entry entry);

  QCollator collator_;
  Generation young_, old_;
};

}  // namespace MarUIControl
