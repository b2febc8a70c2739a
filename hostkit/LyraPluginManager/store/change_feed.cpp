#include "store/change_feed.h"

#include <utility>

namespace TarnHost::Store {

CChangeFeed::CChangeFeed(std::string own_origin) : own_origin_(std::move(own_origin)) {}

bool CChangeFeed::Take(const std::vector<ChangeEntry>& entries, int64_t newest) {
  int64_t expected = last_;
  for (const ChangeEntry& entry : entries) {
    if (entry.seq != ++expected) {
      return false;
    }
  }
  if (expected != newest) {
    return false;
  }
  last_ = newest;
  return true;
}

}  // namespace TarnHost::Store
