#include "store/change_feed.h"

#include <utility>

namespace TarnHost::Store {

CChangeFeed::CChangeFeed(std::string own_origin) : own_origin_(std::move(own_origin)) {}

std::optional<std::vector<ChangeEntry>> CChangeFeed::Take(const std::vector<ChangeEntry>& entries, int64_t newest) {
  std::vector<ChangeEntry> foreign;
  int64_t expected = last_;
  for (const ChangeEntry& entry : entries) {
    if (entry.seq != ++expected) {
      return std::nullopt;
    }
    if (entry.origin != own_origin_) {
      foreign.push_back(entry);
    }
  }
  if (expected != newest) {
    return std::nullopt;
  }
  last_ = newest;
  return foreign;
}

}  // namespace TarnHost::Store
