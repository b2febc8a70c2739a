#include "store/plan_records.h"

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

}  // namespace TarnHost::Store
