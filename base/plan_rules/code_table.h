#pragma once

#include <QString>
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace view_plugin_protocol {

/// A code as a number. Nearly all codes are plain decimals, which stand for themselves; of any other the number is a
/// hash of its text, which other codes may share.
struct CodeNumber {
  quint64 value = 0;

  /// Whether no other code has this number.
  bool IsExact() const { return (value & 1) == 0; }
  /// Of the decimal that is so much higher.
  CodeNumber Later(int by) const { return {value + 2 * static_cast<quint64>(by)}; }
};
CodeNumber NumberOfCode(const QString& code);
/// As of the other; where it is a hash it need not be the same one.
CodeNumber NumberOfCode(const std::string& code);

/// What stands for codes, by their numbers, in one block without any text: a look-up takes one step into cold memory,
/// where a chained hash takes three. Several may have one number. `Held` is false where nothing is held. Thread: one at
/// a time.
template <class Held>
class CCodeTable {
 public:
  void Insert(CodeNumber number, Held held);
  /// Before so many are put in.
  void Reserve(size_t more);
  /// Lets the memory come that a look-up of `number` will need, while other things are done.
  void Fetch(CodeNumber number) const {
    if (!slots_.empty()) {
      __builtin_prefetch(&slots_[Home(number.value)]);
    }
  }
  /// Takes out the first of this number that `is_it` is true of, and hands it back.
  template <class IsIt>
  Held Take(CodeNumber number, IsIt is_it);
  void Clear() { *this = CCodeTable(); }

  /// Calls `take` with each of this number, in the order in which they were put in.
  template <class Taker>
  void ForEach(CodeNumber number, Taker take) {
    Walk(*this, number, take);
  }
  template <class Taker>
  void ForEach(CodeNumber number, Taker take) const {
    Walk(*this, number, take);
  }
  /// With each that there is.
  template <class Taker>
  void ForAll(Taker take) {
    for (Slot& slot : slots_) {
      if (slot.held) {
        take(slot.held);
      }
    }
  }

 private:
  static constexpr size_t kSlotBytes = sizeof(Held) > sizeof(quint64) ? 32 : 16;
  struct alignas(kSlotBytes) Slot {  // never across two cache lines
    quint64 number = 0;
    Held held = Held();
  };
  static constexpr size_t kFirstSlots = 16;

  // Codes are often given out one after the other; the product spreads them over the high bits.
  size_t Home(quint64 number) const { return static_cast<size_t>((number * 0x9E3779B97F4A7C15ULL) >> shift_); }
  size_t Next(size_t at) const { return (at + 1) & (slots_.size() - 1); }
  template <class Table, class Taker>
  static void Walk(Table& table, CodeNumber number, Taker& take);
  void Place(Slot slot);
  void GrowTo(size_t slots);
  void CloseGap(size_t gap);

  std::vector<Slot> slots_;  // as many as a power of two, some of them empty
  int shift_ = 64;
  size_t size_ = 0;
};

template <class Held>
template <class Table, class Taker>
void CCodeTable<Held>::Walk(Table& table, CodeNumber number, Taker& take) {
  if (table.slots_.empty()) {
    return;
  }
  for (size_t at = table.Home(number.value); table.slots_[at].held; at = table.Next(at)) {
    if (table.slots_[at].number == number.value) {
      take(table.slots_[at].held);
    }
  }
}

template <class Held>
void CCodeTable<Held>::Insert(CodeNumber number, Held held) {
  Reserve(1);
  Place({number.value, std::move(held)});
  ++size_;
}

template <class Held>
void CCodeTable<Held>::Place(Slot slot) {
  size_t at = Home(slot.number);
  while (slots_[at].held) {
    at = Next(at);
  }
  slots_[at] = std::move(slot);
}

template <class Held>
void CCodeTable<Held>::Reserve(size_t more) {
  size_t slots = slots_.size();
  while (5 * (size_ + more) > 4 * slots) {
    slots = std::max(2 * slots, kFirstSlots);
  }
  if (slots > slots_.size()) {
    GrowTo(slots);
  }
}

template <class Held>
void CCodeTable<Held>::GrowTo(size_t slots) {
  std::vector<Slot> old(slots);
  old.swap(slots_);
  shift_ = 64 - __builtin_ctzll(slots);
  // From an empty one on: what was put in first must not come behind what stands past the end of the block.
  size_t at = 0;
  while (at < old.size() && old[at].held) {
    ++at;
  }
  for (size_t count = 0; count < old.size(); ++count) {
    Slot& slot = old[(at + count) & (old.size() - 1)];
    if (slot.held) {
      Place(std::move(slot));
    }
  }
}

template <class Held>
template <class IsIt>
Held CCodeTable<Held>::Take(CodeNumber number, IsIt is_it) {
  if (slots_.empty()) {
    return Held();
  }
  size_t at = Home(number.value);
  while (slots_[at].held && !(slots_[at].number == number.value && is_it(slots_[at].held))) {
    at = Next(at);
  }
  Held taken = std::move(slots_[at].held);
  if (taken) {
    CloseGap(at);
    --size_;
  }
  return taken;
}

// What stands behind the gap moves up, unless that would put it before the place where its search begins.
template <class Held>
void CCodeTable<Held>::CloseGap(size_t gap) {
  const size_t mask = slots_.size() - 1;
  for (size_t at = Next(gap); slots_[at].held; at = Next(at)) {
    const size_t from_home = (at - Home(slots_[at].number)) & mask;
    if (from_home >= ((at - gap) & mask)) {
      slots_[gap] = std::move(slots_[at]);
      gap = at;
    }
  }
  slots_[gap] = Slot();
}

}  // namespace view_plugin_protocol
