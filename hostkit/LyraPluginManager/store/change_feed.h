#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

namespace TarnHost::Store {

/// One entry of the store's change log. The entry names what changed; the content is read from the store.
struct ChangeEntry {
  // kAudiencesSaved: who is let into which group. kCamerasSaved: something of the site's regions and cameras.
  // kUsersSaved: of its users. kDefaultViewsSaved: what opens for whom at the start. For programs of before they are
  // entries about a plan that never was.
  enum Kind : int32_t {
    kGroupSaved = 1,
    kGroupRemoved = 2,
    kPlanSaved = 3,
    kPlanRemoved = 4,
    kAudiencesSaved = 5,
    kCamerasSaved = 6,
    kUsersSaved = 7,
    kDefaultViewsSaved = 8
  };
  int64_t seq = 0;
  std::string origin;  // the process that made the change
  int32_t kind = 0;
  int32_t code = 0;
};

/// Follows the change log: knows how far it was read and whether entries are missing.
///
/// Entries are numbered without holes, so a hole means that the log was cut before it was read. Thread: one that
/// reads the log; Last() from any.
class CChangeFeed {
 public:
  explicit CChangeFeed(std::string own_origin);

  const std::string& OwnOrigin() const { return own_origin_; }
  int64_t Last() const { return last_; }
  /// The content was read whole, as of entry `last`.
  void Restart(int64_t last) { last_ = last; }

  /// Takes the entries after Last(), oldest first, and the number of the newest in the store. False when entries are
  /// missing: then the whole content must be read again. Own entries are taken like others: what was made here and
  /// answered is never read, for the log counts as read up to there; what is read was made by a call that went wrong
  /// for its caller.
  bool Take(const std::vector<ChangeEntry>& entries, int64_t newest);

 private:
  const std::string own_origin_;
  std::atomic<int64_t> last_{0};
};

}  // namespace TarnHost::Store
