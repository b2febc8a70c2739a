#include "store/plan_records.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <limits>

namespace TarnHost::Store {

int32_t ParseCode(const std::string& text) {
  int32_t code = 0;
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, code);
  // "007" and "-0" read as numbers but are no codes.
  std::string plain;
  SetCode(&plain, code);
  return result.ec == std::errc() && result.ptr == end && plain == text ? code : 0;
}

void SetCode(std::string* text, int32_t code) {
  char digits[std::numeric_limits<int32_t>::digits10 + 2];
  text->assign(digits, std::to_chars(std::begin(digits), std::end(digits), code).ptr);
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
