#include "store/plan_records.h"

#include <algorithm>
#include <charconv>

namespace TarnHost::Store {

int32_t ParseCode(const std::string& text) {
  int32_t code = 0;
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, code);
  // "007" and "-0" read as numbers but are no codes.
  const bool plain = result.ec == std::errc() && result.ptr == end && std::to_string(code) == text;
  return plain ? code : 0;
}

std::string NumbersToText(const std::vector<uint32_t>& numbers) {
  std::string text;
  for (const uint32_t number : numbers) {
    if (!text.empty()) {
      text += ' ';
    }
    text += std::to_string(number);
  }
  return text;
}

std::vector<uint32_t> NumbersFromText(const std::string& text) {
  std::vector<uint32_t> numbers;
  numbers.reserve(static_cast<size_t>(std::count(text.begin(), text.end(), ' ')) + 1);
  const char* const end = text.data() + text.size();
  for (const char* at = text.data(); at < end; ++at) {
    uint32_t number = 0;
    const auto result = std::from_chars(at, end, number);
    if (result.ec == std::errc()) {
      numbers.push_back(number);
    }
    at = std::max(at, result.ptr);
  }
  return numbers;
}

}  // namespace TarnHost::Store
