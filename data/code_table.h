#pragma once

#include <QString>
#include <vector>

class QStandardItem;

namespace TarnPlanView {

/// A code as a number. Nearly all codes are plain decimals, which stand for themselves; of any other the number is a
/// hash of its text, which other codes may share.
struct CodeNumber {
  quint64 value = 0;

  /// Whether no other code has this number.
  bool IsExact() const { return (value & 1) == 0; }
};
CodeNumber NumberOfCode(const QString& code);

/// A row, and where it stood when the rows of its model had moved so many times.
struct CodedRow {
  QStandardItem* row = nullptr;
  QStandardItem* parent = nullptr;
  int position = 0;
  uint moves = 0;
};

/// Rows by the number of their code, in one block without any text: a look-up takes one step into cold memory, where a
/// chained hash takes three, and the way from a row to its place some more. Several rows may have one number.
class CCodeTable {
 public:
  void Insert(CodeNumber number, const CodedRow& row);
  /// Does nothing when the row is not held under this number.
  void Remove(CodeNumber number, const QStandardItem* row);
  void Clear() { *this = CCodeTable(); }

  /// Calls `take` with each row of this number, in no particular order.
  template <class Take>
  void ForEach(CodeNumber number, Take take) {
    if (slots_.empty()) {
      return;
    }
    for (size_t at = Home(number.value); slots_[at].held.row; at = Next(at)) {
      if (slots_[at].number == number.value) {
        take(slots_[at].held);
      }
    }
  }

 private:
  struct alignas(32) Slot {  // never across two cache lines
    quint64 number = 0;
    CodedRow held;  // of no row in an empty slot
  };

  // Codes are often given out one after the other; the product spreads them over the high bits.
  size_t Home(quint64 number) const { return static_cast<size_t>((number * 0x9E3779B97F4A7C15ULL) >> shift_); }
  size_t Next(size_t at) const { return (at + 1) & (slots_.size() - 1); }
  void Place(const Slot& slot);
  void Grow();
  void CloseGap(size_t gap);

  std::vector<Slot> slots_;  // as many as a power of two
  int shift_ = 64;
  size_t size_ = 0;
};

}  // namespace TarnPlanView
