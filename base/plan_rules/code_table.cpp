#include "plan_rules/code_table.h"

#include <QHash>
#include <functional>
#include <limits>
#include <optional>

namespace view_plugin_protocol {

namespace {

/// The value of a decimal as a number is usually written, when one bit more has room for it.
template <class Unit>
std::optional<quint64> PlainDecimal(const Unit* code, size_t size) {
  constexpr quint64 kMost = std::numeric_limits<quint64>::max() >> 1;
  if (size == 0 || (size > 1 && code[0] == '0')) {
    return std::nullopt;
  }
  quint64 value = 0;
  for (size_t at = 0; at < size; ++at) {
    const auto digit = static_cast<uint>(code[at]) - '0';
    if (digit > 9 || value > (kMost - digit) / 10) {
      return std::nullopt;
    }
    value = 10 * value + digit;
  }
  return value;
}

}  // namespace

CodeNumber NumberOfCode(const QString& code) {
  if (const auto value = PlainDecimal(code.utf16(), static_cast<size_t>(code.size()))) {
    return {*value << 1};
  }
  // As many bits as Qt 5 has: codes of one hash are as rare on Qt 6, and kept apart there in the same way.
  return {(static_cast<quint64>(static_cast<quint32>(qHash(code))) << 1) | 1};
}

CodeNumber NumberOfCode(const std::string& code) {
  if (const auto value = PlainDecimal(code.data(), code.size())) {
    return {*value << 1};
  }
  return {(static_cast<quint64>(std::hash<std::string>()(code)) << 1) | 1};
}

}  // namespace view_plugin_protocol
