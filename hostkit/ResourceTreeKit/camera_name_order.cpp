#include "ResourceTreeKit/camera_name_order.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <string>
#include <utility>

#include "MarUIControl/standard_item_model.h"

namespace ResourceTreeKit {

namespace {

using Nodes = std::vector<CCameraContent::Node>;

constexpr int kNaturalOrder = 2;
constexpr int kLongestNumber = 100;
// What stands before the digits, and they before the letters, in a collator's order, too.
constexpr char kMarks[] = " _-.";
constexpr char kNumber = 16;

bool IsDigit(QChar letter) {
  return letter >= QLatin1Char('0') && letter <= QLatin1Char('9');
}

// A number as its length and its digits; answers where it ends, or -1 when it is too long.
int AppendNumber(const QString& text, int at, std::string* key) {
  int end = at;
  while (end < text.size() && IsDigit(text[end])) {
    ++end;
  }
  while (at < end - 1 && text[at] == QLatin1Char('0')) {
    ++at;
  }
  if (end - at > kLongestNumber) {
    return -1;
  }
  key->push_back(kNumber);
  key->push_back(static_cast<char>(end - at));
  for (; at < end; ++at) {
    key->push_back(text[at].toLatin1());
  }
  return end;
}

bool AppendLetter(QChar letter, std::string* key) {
  const auto* mark = letter.unicode() != 0 && letter.unicode() < 128
                         ? std::find(std::begin(kMarks), std::end(kMarks) - 1, letter.toLatin1())
                         : std::end(kMarks) - 1;
  if (mark != std::end(kMarks) - 1) {
    key->push_back(static_cast<char>(1 + (mark - kMarks)));
    return true;
  }
  key->push_back(letter.toLatin1());
  return letter >= QLatin1Char('a') && letter <= QLatin1Char('z');
}

// The key of a folded name; false for a name that takes a collator.
bool PlainKey(const QString& folded, std::string* key) {
  key->reserve(static_cast<size_t>(folded.size()) + 4);
  for (int at = 0; at < folded.size();) {
    if (IsDigit(folded[at])) {
      at = AppendNumber(folded, at, key);
      if (at < 0) {
        return false;
      }
    } else if (!AppendLetter(folded[at++], key)) {
      return false;
    }
  }
  return true;
}

bool PlainKeys(const Nodes& nodes, std::vector<std::string>* keys) {
  keys->resize(nodes.size());
  for (size_t at = 0; at < nodes.size(); ++at) {
    if (!PlainKey(nodes[at].folded, &(*keys)[at])) {
      return false;
    }
  }
  return true;
}

bool Collates(const QString& left, const QString& right) {
  return MarUIControl::CStandardItemModel::CustomStringCompare(left, right, kNaturalOrder);
}

}  // namespace

void SortByName(Nodes* nodes) {
  std::vector<std::string> keys;
  const bool plain = PlainKeys(*nodes, &keys);
  const auto before = [&](size_t left, size_t right) {
    const CCameraContent::Node &first = (*nodes)[left], &second = (*nodes)[right];
    if (plain) {
      const int order = keys[left].compare(keys[right]);
      return order < 0 || (order == 0 && first.code < second.code);
    }
    return Collates(first.name, second.name) || (!Collates(second.name, first.name) && first.code < second.code);
  };
  std::vector<size_t> order(nodes->size());
  std::iota(order.begin(), order.end(), size_t(0));
  if (std::is_sorted(order.begin(), order.end(), before)) {
    return;
  }
  std::sort(order.begin(), order.end(), before);
  Nodes sorted;
  sorted.reserve(nodes->size());
  for (const size_t at : order) {
    sorted.push_back(std::move((*nodes)[at]));
  }
  *nodes = std::move(sorted);
}

}  // namespace ResourceTreeKit
