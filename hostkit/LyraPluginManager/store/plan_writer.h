#pragma once

#include <QDateTime>
#include <chrono>
#include <functional>

#include "plan_rules/rights.h"
#include "store/camera_writer.h"
#include "store/play_log.h"
#include "store/site_directory.h"
#include "store/store_session.h"

namespace TarnHost::Store {

/// The calls that change the store, with the rules they obey. Every refusal is a CStoreError with a text for the user
/// and leaves nothing behind. `user` is the one on whose behalf it is done: what that user does not see is gone.
/// Thread: the database thread.
class CPlanWriter {
 public:
  struct DeletedGroup {
    int32_t restorable_seconds = 0;  // for how long RestoreDeleted() takes it back
    CKeptDeletions::Below below;
  };

  using SteadyClock = std::chrono::steady_clock;

  CPlanWriter(CStoreSession& session, const CSiteDirectory& site, std::function<QDateTime()> now,
              std::function<SteadyClock::time_point()> steady_now);

  /// Answers the new code, as does AddPlan().
  int32_t AddGroup(const view_plugin_protocol::AddPlanGroupRequest& request, int32_t user);
  void RenameGroup(const view_plugin_protocol::UpdatePlanGroupRequest& request, int32_t user);
  /// With all below it, of which the user must see everything.
  DeletedGroup DeleteGroup(const std::string& index_code, int32_t user);
  int32_t AddPlan(const view_plugin_protocol::AddPlanRequest& request, int32_t user);
  /// Stores all that the request says; an empty group leaves the plan where it is, an empty thumbnail keeps the old
  /// one.
  void UpdatePlan(const view_plugin_protocol::UpdatePlanRequest& request, int32_t user);
  /// Answers for how many seconds RestoreDeleted() takes it back.
  int32_t DeletePlan(const std::string& index_code, int32_t user);
  /// Only for who has deleted it, and once more than needed does no harm.
  /// Answers the code that it has now: of a group that was merged into another one, that one's.
  int32_t RestoreDeleted(const view_plugin_protocol::RestoreDeletedRequest& request, int32_t user);
  /// Gives each of the named users a copy.
  void Share(const view_plugin_protocol::ViewShareResquestInfo& request, int32_t user);
  void SetDefaultView(const view_plugin_protocol::ClienDefaultViewConfigRequest& request, int32_t user);
  /// The calls that change regions and cameras.
  CCameraWriter& Cameras() { return cameras_; }
  void SetFavoriteCamera(const std::string& index_code, bool favorite, int32_t user);
  /// Notes that a plan was played; no one is notified.
  void LogPlay(const view_plugin_protocol::AddPlanLogRequestParam& request, int32_t user);

 private:
  struct Parent {
    int32_t code, family, owner;
  };

  template <class Work>
  auto Change(Work work) {
    return session_.Write([&] {
      PurgeDeletions();
      return work();
    });
  }
  void PurgeDeletions();
  CSiteDirectory::User User(int32_t id) const;
  void RequireRight(int32_t family, view_plugin_protocol::Right right, int32_t user) const;
  Parent ParentOf(const std::string& index_code, int32_t user);
  GroupRow GroupOf(const std::string& index_code, int32_t user);
  StoredPlan PlanOf(const std::string& index_code, int32_t user);  // refuses a damaged one
  PlanRow PlanRowOf(const std::string& index_code, int32_t user);
  void TakeRequest(StoredPlan* plan, const view_plugin_protocol::AddPlanRequest& request,
                   const QByteArray& thumbnail) const;
  void MovePlan(StoredPlan* plan, const std::string& parent_code, int32_t user);
  void CheckRevision(const StoredPlan& plan, int64_t revision) const;
  std::vector<int32_t> Recipients(const std::string& user_ids, int32_t sharer) const;
  int32_t DefaultViewOf(const view_plugin_protocol::ClienDefaultViewConfigRequest& request, int32_t user);
  int32_t SharedGroupOf(int32_t user);
  void MarkMade(StoredPlan* plan, int32_t user) const;
  bool IsThere(int32_t code, bool is_group, int32_t user);
  CKeptDeletions::Deletion KeptDeletion(int32_t code, bool is_group, int32_t user);
  void RequirePlaceOf(const CKeptDeletions::Deletion& deletion, int32_t user);
  int32_t PutBack(const CKeptDeletions::Deletion& deletion);
  CKeptDeletions::Moment Time() const { return {now_().toSecsSinceEpoch(), steady_now_()}; }
  QString Now() const;

  CStoreSession& session_;
  CPlanRepository& repository_;
  const CSiteDirectory& site_;
  CCameraWriter cameras_;
  CPlayLog play_log_;
  const std::function<QDateTime()> now_;
  const std::function<SteadyClock::time_point()> steady_now_;
};

}  // namespace TarnHost::Store
