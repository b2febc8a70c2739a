#pragma once

#include <QStringList>
#include <optional>

#include "store/camera_names.h"
#include "store/change_feed.h"
#include "store/kept_deletions.h"
#include "store/plan_repository.h"
#include "store/sql_engine.h"

namespace TarnHost::Store {

/// Functions of a database that guards its rows against its own users: what reaches beyond a user's own rows goes
/// through these, which check who asks. Throws CStoreError, kNoRight for who may not. Thread: the engine's.
class CStoreFunctions {
 public:
  explicit CStoreFunctions(CSqlEngine& engine) : engine_(engine) {}

  int64_t Advance(const char* counter, int64_t count);
  int64_t LogChange(const ChangeEntry& entry);
  /// The numbers of cameras, in their order; those that the store does not have yet get the next. The user of this
  /// connection may write them into plans, in the same transaction.
  std::vector<uint32_t> NumbersOf(const std::vector<NamedCamera>& cameras);
  /// What this plan's row calls its cameras by number; nothing of one that the user of this connection does not see.
  std::vector<NumberedCamera> CamerasOf(int32_t plan);

  /// Plans that show one of these cameras and that the role of this connection does not see.
  int CountHiddenPlansShowing(const QStringList& cameras);
  /// Whether the role of this connection sees all that is below the group.
  bool IsOpenBelow(int32_t group);
  CKeptDeletions::Below Keep(int32_t code, bool is_group, int32_t user, int64_t at);
  /// With all below it, and the default views that point there.
  void Delete(int32_t code, bool is_group);
  void PutBack(int32_t deletion);
  void Forget(int32_t deletion, int most);

  /// Of all users, so many entries of the play log at once; answers whether these were all that are older.
  bool ForgetOldPlays(int days, int most);

  /// A recipient's own group of shared plans, which the sharer does not see.
  std::optional<int32_t> SharedGroup(int32_t user);
  void ShareGroup(const GroupRow& group);
  void SharePlan(const StoredPlan& plan, const QString& pages, const QString& checksum);

 private:
  CSqlEngine& engine_;
};

}  // namespace TarnHost::Store
