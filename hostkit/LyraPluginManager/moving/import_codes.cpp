#include "moving/import_codes.h"

#include <algorithm>
#include <limits>

#include "store/store_error.h"
#include "store/store_texts.h"

namespace TarnHost::Moving {
namespace {

constexpr int32_t kMostAhead = 1000000;  // of a code that is kept, so that a single entry does not use up all
constexpr int kMostLevels = 64;          // rows changed past the program may stand below themselves

}  // namespace

void CGivenNumbers::Note(int32_t code) {
  used_.insert(code);
  last_ = std::max(last_, code);
}

int32_t CGivenNumbers::New(int32_t code) {
  const bool is_kept = keeps_ && code - kMostAhead <= last_ && used_.count(code) == 0;
  if (!is_kept && last_ == std::numeric_limits<int32_t>::max()) {
    throw Store::CStoreError(Store::CStoreError::kRefused, Store::kNoMoreCodes);
  }
  const int32_t number = is_kept ? code : last_ + 1;
  Note(number);
  return number;
}

int LevelOf(const std::map<int32_t, int32_t>& parents, int32_t code) {
  int level = 0;
  for (auto found = parents.find(code); found != parents.end() && level < kMostLevels;
       found = parents.find(found->second)) {
    ++level;
  }
  return level;
}

}  // namespace TarnHost::Moving
