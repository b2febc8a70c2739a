#include "store/node_observers.h"

#include <algorithm>

namespace TarnHost::Store {

using view_plugin_protocol::CodeNumber;
using view_plugin_protocol::NumberOfCode;

namespace {

// Who registers many mostly does so in the order of their codes, which were given out one after the other.
constexpr int kFetchedAhead = 8;

}  // namespace

void CNodeObservers::Add(Observer* observer, const Key& key) {
  const CodeNumber number = NumberOfCode(key.second);
  if (!number.IsExact()) {
    auto& list = others_[key];
    if (std::find(list.begin(), list.end(), observer) == list.end()) {
      list.push_back(observer);
    }
    return;
  }
  auto& table = numbered_[key.first];
  table.Fetch(number.Later(kFetchedAhead));
  bool is_known = false;
  table.ForEach(number, [&](const Observer* known) { is_known |= known == observer; });
  if (!is_known) {
    table.Insert(number, observer);
  }
}

void CNodeObservers::Remove(Observer* observer, const Key& key) {
  const CodeNumber number = NumberOfCode(key.second);
  if (number.IsExact()) {
    numbered_[key.first].Take(number, [observer](const Observer* known) { return known == observer; });
    return;
  }
  const auto found = others_.find(key);
  if (found != others_.end()) {
    auto& list = found->second;
    list.erase(std::remove(list.begin(), list.end(), observer), list.end());
  }
}

std::vector<CNodeObservers::Observer*> CNodeObservers::Of(const Key& key) const {
  std::vector<Observer*> found;
  if (const auto table = numbered_.find(key.first); table != numbered_.end()) {
    table->second.ForEach(NumberOfCode(key.second), [&found](Observer* observer) { found.push_back(observer); });
  }
  if (const auto others = others_.find(key); others != others_.end()) {
    found = others->second;
  }
  return found;
}

void CNodeObservers::Clear() {
  numbered_.clear();
  others_.clear();
}

}  // namespace TarnHost::Store
