#pragma once

#include <QByteArray>
#include <QStringList>
#include <functional>
#include <list>
#include <map>
#include <optional>
#include <vector>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "store/audience_repository.h"
#include "store/camera_repository.h"
#include "store/change_feed.h"
#include "store/kept_deletions.h"
#include "store/plan_records.h"
#include "store/sql_engine.h"

namespace TarnHost::Store {

enum class Vouched;

/// A plan with all that is stored of it. The row's fields that follow from others are filled by Complete(), its cameras
/// by who saves it.
struct StoredPlan {
  PlanRow row;
  QString name, begin_time, end_time;
  std::list<view_plugin_protocol::PlanPage> pages;
  QByteArray thumbnail;
  QString creator, creation_time, changed_by, changed_at;
  int64_t revision = 1;
  /// A sentence that names the plan when its row cannot be right; such a plan is neither played nor changed.
  CStoreText damage;
  bool has_checksum = true;  // false for a row of before there were any

  /// Fills the row's name, split, page count and times from the rest.
  void Complete();
};

/// The split that the tree shows for a plan with these pages.
int32_t SplitOf(const std::list<view_plugin_protocol::PlanPage>& pages);

/// The group in which a user finds what others have shared.
extern const char kSharedGroupName[];

/// Begins a statement that takes a group's code: 'tree' has the codes of the group and of all groups below it.
extern const char kGroupTree[];

/// The statements on groups, plans and the change log. Throws CStoreError. Thread: the engine's.
class CPlanRepository {
 public:
  explicit CPlanRepository(CSqlEngine& engine) : engine_(engine), audiences_(engine), cameras_(engine) {}

  /// Who is let into which group.
  CAudienceRepository& Audiences() { return audiences_; }
  /// The site's regions and cameras.
  CCameraRepository& Cameras() { return cameras_; }

  /// All rows of all users, in the order of their codes.
  std::vector<GroupRow> AllGroups();
  std::vector<PlanRow> AllPlans();
  /// The row of the group or plan with this code, visible or not; none when it is not there.
  std::optional<GroupRow> Group(int32_t code);
  /// The group with this name directly under a user's own root.
  std::optional<GroupRow> OwnTopGroup(int32_t owner, const QString& name);
  std::optional<PlanRow> Plan(int32_t code);
  /// The same with all that is stored of it; look at `damage` first.
  std::optional<StoredPlan> WholePlan(int32_t code);
  /// The same of a plan that `user` sees.
  std::optional<StoredPlan> WholePlan(int32_t code, int32_t user);
  /// Of a plan that `user` saw and that is no longer there: the deletion that took it along, while that is kept.
  std::optional<CKeptDeletions::Deletion> DeletionOf(int32_t plan, int32_t user);
  /// Calls visit(plan, what its checksum says of it) with each plan, in the order of the codes.
  void ForEachPlan(const std::function<void(const StoredPlan&, Vouched)>& visit);
  /// Code and type of the user's default view; zeros when there is none.
  std::pair<int32_t, int32_t> DefaultView(int32_t user);
  /// The same of all users, as far as this one may read them.
  std::map<int32_t, std::pair<int32_t, int32_t>> DefaultViews();
  /// Of plans that show one of these cameras: those of which the database gives this connection no row.
  int CountHiddenPlansShowing(const QStringList& cameras);
  bool HasChildren(int32_t group);
  /// A group and all below it, in the order of the codes; nothing when it is not there.
  std::pair<std::vector<GroupRow>, std::vector<PlanRow>> Subtree(int32_t group);
  /// Groups and plans directly in it, of all users.
  int CountChildren(int32_t group);
  /// Rows from the group up to the root, both counted; a root has 1. Counts no further than the tree shows.
  int LevelOf(int32_t group);

  /// The next code; never given again, whatever becomes of what carries it.
  int32_t NewCode();
  /// Makes `count` codes at once and answers the first.
  int32_t NewCodes(int32_t count);

  void InsertGroup(const GroupRow& group);
  void RenameGroup(int32_t code, const std::string& name);
  /// Deletes the group with all below it, and the default views that point there. The content of plans stays, as with
  /// DeletePlan(), until the deletion is forgotten.
  void DeleteGroup(int32_t code);
  /// Moves all that is in the group into the other one and deletes it.
  void MergeGroup(int32_t code, int32_t into);
  /// A recipient's own group of shared plans.
  std::optional<int32_t> SharedGroup(int32_t user);
  /// These two put a row among the own ones of another user.
  void ShareGroup(const GroupRow& group);
  void SharePlan(const StoredPlan& plan);
  void InsertPlan(const StoredPlan& plan);
  void UpdatePlan(const StoredPlan& plan);
  void DeletePlan(int32_t code);

  /// The number of the last change written; 0 when there was none.
  int64_t NewestChange();
  /// The same, with the entries after `seq` in their order; those that were forgotten by now are missing.
  struct News {
    int64_t newest = 0;
    std::vector<ChangeEntry> entries;
  };
  News NewsAfter(int64_t seq);
  /// Who wrote the change with this number; none when it is not there, or not any more.
  std::optional<std::string> OriginOf(int64_t seq);
  /// Writes the entry under the next number, which it answers, and forgets the oldest entries.
  int64_t LogChange(const ChangeEntry& entry);

 private:
  void SetContent(const StoredPlan& plan, const QString& pages);
  int64_t Advance(const char* counter, int64_t count);

  CSqlEngine& engine_;
  CAudienceRepository audiences_;
  CCameraRepository cameras_;
};

}  // namespace TarnHost::Store
