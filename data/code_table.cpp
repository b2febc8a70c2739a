#include "code_table.h"

#include <QHash>
#include <limits>
#include <optional>

namespace TarnPlanView {

namespace {

constexpr size_t kFirstSlots = 16;
constexpr int kFirstShift = 60;

/// The value of a decimal as a number is usually written, when one bit more has room for it.
std::optional<quint64> PlainDecimal(const QString& code) {
  constexpr quint64 kMost = std::numeric_limits<quint64>::max() >> 1;
  if (code.isEmpty() || (code.size() > 1 && code.at(0) == QLatin1Char('0'))) {
    return std::nullopt;
  }
  quint64 value = 0;
  for (const QChar unit : code) {
    const uint digit = unit.unicode() - u'0';
    if (digit > 9 || value > (kMost - digit) / 10) {
      return std::nullopt;
    }
    value = 10 * value + digit;
  }
  return value;
}

}  // namespace

CodeNumber NumberOfCode(const QString& code) {
  if (const auto value = PlainDecimal(code)) {
    return {*value << 1};
  }
  return {(static_cast<quint64>(qHash(code)) << 1) | 1};
}

void CCodeTable::Insert(CodeNumber number, const CodedRow& row) {
  if (5 * (size_ + 1) > 4 * slots_.size()) {
    Grow();
  }
  Place({number.value, row});
  ++size_;
}

void CCodeTable::Place(const Slot& slot) {
  size_t at = Home(slot.number);
  while (slots_[at].held.row) {
    at = Next(at);
  }
  slots_[at] = slot;
}

void CCodeTable::Grow() {
  const bool first = slots_.empty();
  std::vector<Slot> old(first ? kFirstSlots : 2 * slots_.size());
  old.swap(slots_);
  shift_ = first ? kFirstShift : shift_ - 1;
  for (const Slot& slot : old) {
    if (slot.held.row) {
      Place(slot);
    }
  }
}

void CCodeTable::Remove(CodeNumber number, const QStandardItem* row) {
  if (slots_.empty()) {
    return;
  }
  size_t at = Home(number.value);
  while (slots_[at].held.row && (slots_[at].number != number.value || slots_[at].held.row != row)) {
    at = Next(at);
  }
  if (slots_[at].held.row) {
    CloseGap(at);
    --size_;
  }
}

// What stands behind the gap moves up, unless that would put it before the place where its search begins.
void CCodeTable::CloseGap(size_t gap) {
  const size_t mask = slots_.size() - 1;
  for (size_t at = Next(gap); slots_[at].held.row; at = Next(at)) {
    const size_t from_home = (at - Home(slots_[at].number)) & mask;
    if (from_home >= ((at - gap) & mask)) {
      slots_[gap] = slots_[at];
      gap = at;
    }
  }
  slots_[gap] = Slot();
}

}  // namespace TarnPlanView
