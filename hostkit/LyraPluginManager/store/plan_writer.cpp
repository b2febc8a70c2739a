#include "store/plan_writer.h"

#include <QLocale>
#include <QStringList>
#include <algorithm>
#include <utility>

#include "plan_rules/default_view.h"
#include "plan_rules/plan_limits.h"
#include "store/plan_soundness.h"
#include "store/store_texts.h"
#include "store/text_rules.h"
#include "store/thumbnail_rules.h"

namespace TarnHost::Store {
namespace {

using view_plugin_protocol::AddRight;
using view_plugin_protocol::DeleteRight;
using view_plugin_protocol::EditRight;
using view_plugin_protocol::kDeepestLevel;
using view_plugin_protocol::Right;

constexpr int kNoDefaultView = -3;
// What the user is offered, and what comes on top of it: the offer's time stands still while the mouse is over it, and
// the last click may have to wait for the service.
constexpr int32_t kRestorableSeconds = 10;
constexpr std::chrono::seconds kLate{50};
const char kDateTimeFormat[] = "yyyy-MM-dd HH:mm:ss";

// Of public plans and groups: what stands among a user's own takes no right.
const char* RefusalWithout(Right right) {
  switch (right) {
    case AddRight:
      return QT_TRANSLATE_NOOP("TarnHost::Store", "You have no right to add public plans and groups.");
    case EditRight:
      return QT_TRANSLATE_NOOP("TarnHost::Store", "You have no right to change public plans and groups.");
    case DeleteRight:
      break;
  }
  return QT_TRANSLATE_NOOP("TarnHost::Store", "You have no right to delete public plans and groups.");
}

}  // namespace

CPlanWriter::CPlanWriter(CStoreSession& session, const CSiteDirectory& site, std::function<QDateTime()> now,
                         std::function<SteadyClock::time_point()> steady_now)
    : session_(session),
      repository_(session.Repository()),
      site_(site),
      cameras_(session, site),
      play_log_(session.Engine()),
      now_(std::move(now)),
      steady_now_(std::move(steady_now)) {}

// Also what a client left behind that has ended. Later than need be: who deleted may still be waiting for an answer.
void CPlanWriter::PurgeDeletions() {
  constexpr std::chrono::minutes kForgottenAfter{10};
  session_.Deletions().Purge(steady_now_(), kForgottenAfter);
}

QString CPlanWriter::Now() const {
  return QLocale::c().toString(now_(), kDateTimeFormat);  // other locales have other digits
}

CSiteDirectory::User CPlanWriter::User(int32_t id) const {
  const auto user = site_.FindUser(id);
  if (user == nullptr) {
    throw CStoreError(CStoreError::kNotPermitted, kNoUserLoggedIn);
  }
  return *user;
}

void CPlanWriter::RequireRight(int32_t family, Right right, int32_t user) const {
  if (User(user).rights.count(right) == 0 && family != OwnFamily) {
    throw CStoreError(CStoreError::kNotPermitted, RefusalWithout(right));
  }
}

CPlanWriter::Parent CPlanWriter::ParentOf(const std::string& index_code, int32_t user) {
  const int32_t code = ParseCode(index_code);
  if (code == OwnRoot) {
    return {code, OwnFamily, User(user).id};
  }
  if (IsRootCode(code)) {
    return {code, FamilyOfRoot(code), 0};
  }
  const GroupRow group = GroupOf(index_code, user);
  return {group.code, group.family, group.owner};
}

GroupRow CPlanWriter::GroupOf(const std::string& index_code, int32_t user) {
  const auto group = repository_.Group(ParseCode(index_code));
  if (!group || !repository_.Audiences().IsVisible(*group, user)) {
    throw CStoreError(CStoreError::kGone, kGroupGone);
  }
  return *group;
}

StoredPlan CPlanWriter::PlanOf(const std::string& index_code, int32_t user) {
  auto plan = repository_.WholePlan(ParseCode(index_code), user);
  if (!plan) {
    throw CStoreError(CStoreError::kGone, kPlanGone);
  }
  if (!plan->damage.IsEmpty()) {
    throw CStoreError(CStoreError::kDamaged, plan->damage);  // what is left of it must not become all that is stored
  }
  return std::move(*plan);
}

PlanRow CPlanWriter::PlanRowOf(const std::string& index_code, int32_t user) {
  const auto row = repository_.Plan(ParseCode(index_code));
  if (!row || !repository_.Audiences().IsVisible(*row, user)) {
    throw CStoreError(CStoreError::kGone, kPlanGone);
  }
  return *row;
}

int32_t CPlanWriter::AddGroup(const view_plugin_protocol::AddPlanGroupRequest& request, int32_t user) {
  return Change([&] {
    const QString name = CheckedName(request.name);
    const Parent parent = ParentOf(request.parent_index_code, user);
    RequireRight(parent.family, AddRight, user);
    if (repository_.LevelOf(parent.code) >= kDeepestLevel) {
      throw CStoreError(CStoreError::kRefused,
                        {QT_TRANSLATE_NOOP("TarnHost::Store", "Groups can be nested %1 levels deep at most."),
                         {QString::number(kDeepestLevel)}});
    }
    const int32_t code = repository_.NewCode();
    session_.SaveNew(GroupRow{code, parent.code, parent.family, parent.owner, name.toStdString()});
    return code;
  });
}

void CPlanWriter::RenameGroup(const view_plugin_protocol::UpdatePlanGroupRequest& request, int32_t user) {
  Change([&] {
    const QString name = CheckedName(request.name);
    const GroupRow group = GroupOf(request.index_code, user);
    RequireRight(group.family, EditRight, user);
    if (group.name != request.name) {
      session_.SaveName(group, name.toStdString());
    }
    return true;
  });
}

CPlanWriter::DeletedGroup CPlanWriter::DeleteGroup(const std::string& index_code, int32_t user) {
  return Change([&] {
    const GroupRow group = GroupOf(index_code, user);
    RequireRight(group.family, DeleteRight, user);
    // First: a group may look empty to the user who reads the other reason.
    if (group.family == PublicFamily && !repository_.Audiences().IsOpenBelow(group.code, user)) {
      throw CStoreError(
          CStoreError::kNotPermitted,
          QT_TRANSLATE_NOOP("TarnHost::Store", "The group cannot be deleted: there is more in it than you may see."));
    }
    if (!site_.Config().delete_with_children && repository_.HasChildren(group.code)) {
      throw CStoreError(CStoreError::kRefused,
                        QT_TRANSLATE_NOOP("TarnHost::Store", "The group is not empty. Delete what is in it first."));
    }
    const CKeptDeletions::Below below = session_.Deletions().KeepGroup(group.code, user, Time());
    session_.RemoveGroup(group.code);
    return DeletedGroup{kRestorableSeconds, below};
  });
}

void CPlanWriter::TakeRequest(StoredPlan* plan, const view_plugin_protocol::AddPlanRequest& request,
                              const QByteArray& thumbnail) const {
  plan->name = CheckedName(request.plan_name);
  plan->row.auto_run = request.auto_play;
  // Times that are not used are kept for the next time the plan is made automatic, if they are times.
  const auto time = request.auto_play ? CheckedTime : TimeOrNothing;
  plan->begin_time = time(request.begin_time);
  plan->end_time = time(request.end_time);
  plan->pages = request.pages;
  const CStoreText fault = FaultOf(plan->pages);
  if (!fault.IsEmpty()) {
    throw CStoreError(
        CStoreError::kRefused,
        {QT_TRANSLATE_NOOP("TarnHost::Store", "The plan \"%1\" cannot be saved: %2."), {plan->name, fault}});
  }
  if (!thumbnail.isEmpty()) {
    plan->thumbnail = thumbnail;
  }
  plan->Complete();
}

void CPlanWriter::MarkMade(StoredPlan* plan, int32_t user) const {
  plan->creator = plan->changed_by = ToQt(User(user).name);
  plan->creation_time = plan->changed_at = Now();
  plan->revision = 1;
}

int32_t CPlanWriter::AddPlan(const view_plugin_protocol::AddPlanRequest& request, int32_t user) {
  const QByteArray thumbnail = BoundedThumbnail(request.thumbnail);  // before other writers have to wait
  return Change([&] {
    StoredPlan plan;
    TakeRequest(&plan, request, thumbnail);
    const Parent parent = ParentOf(request.parent_index_code, user);
    RequireRight(parent.family, AddRight, user);
    plan.row.parent = parent.code;
    plan.row.family = parent.family;
    plan.row.owner = parent.owner;
    plan.row.code = repository_.NewCode();
    MarkMade(&plan, user);
    session_.SaveNew(plan);
    return plan.row.code;
  });
}

void CPlanWriter::UpdatePlan(const view_plugin_protocol::UpdatePlanRequest& request, int32_t user) {
  const QByteArray thumbnail = BoundedThumbnail(request.thumbnail);
  Change([&] {
    StoredPlan plan = PlanOf(request.plan_index_code, user);
    RequireRight(plan.row.family, EditRight, user);
    CheckRevision(plan, request.revision);
    TakeRequest(&plan, request, thumbnail);
    MovePlan(&plan, request.parent_index_code, user);
    plan.revision += 1;
    plan.changed_by = ToQt(User(user).name);
    plan.changed_at = Now();
    session_.SaveChanged(plan);
    return true;
  });
}

void CPlanWriter::CheckRevision(const StoredPlan& plan, int64_t revision) const {
  if (revision != 0 && revision < plan.revision) {
    throw CStoreError(
        CStoreError::kChanged,
        {QT_TRANSLATE_NOOP("TarnHost::Store", "The plan was changed by %1 on %2. Open it again before you change it."),
         {plan.changed_by, plan.changed_at}});
  }
}

// A request without a group leaves the plan where it is.
void CPlanWriter::MovePlan(StoredPlan* plan, const std::string& parent_code, int32_t user) {
  if (parent_code.empty()) {
    return;
  }
  const Parent parent = ParentOf(parent_code, user);
  if (parent.family != plan->row.family) {
    if (!site_.Config().move_public_private) {
      throw CStoreError(CStoreError::kRefused,
                        QT_TRANSLATE_NOOP("TarnHost::Store", "A plan cannot be moved between public and own plans."));
    }
    RequireRight(plan->row.family, DeleteRight, user);
    RequireRight(parent.family, AddRight, user);
  }
  plan->row.parent = parent.code;
  plan->row.family = parent.family;
  plan->row.owner = parent.owner;
}

int32_t CPlanWriter::DeletePlan(const std::string& index_code, int32_t user) {
  return Change([&] {
    const PlanRow plan = PlanRowOf(index_code, user);
    RequireRight(plan.family, DeleteRight, user);
    session_.Deletions().KeepPlan(plan.code, user, Time());
    session_.RemovePlan(plan.code);
    return kRestorableSeconds;
  });
}

// A request that is sent again because its answer was lost finds the row there.
int32_t CPlanWriter::RestoreDeleted(const view_plugin_protocol::RestoreDeletedRequest& request, int32_t user) {
  return Change([&] {
    const int32_t code = ParseCode(request.index_code);
    if (IsThere(code, request.is_group, user)) {
      return code;
    }
    const CKeptDeletions::Deletion deletion = KeptDeletion(code, request.is_group, user);
    RequireRight(deletion.family, DeleteRight, user);
    RequirePlaceOf(deletion, user);
    return PutBack(deletion);
  });
}

bool CPlanWriter::IsThere(int32_t code, bool is_group, int32_t user) {
  if (is_group) {
    const auto group = repository_.Group(code);
    return group && repository_.Audiences().IsVisible(*group, user);
  }
  const auto plan = repository_.Plan(code);
  return plan && repository_.Audiences().IsVisible(*plan, user);
}

CKeptDeletions::Deletion CPlanWriter::KeptDeletion(int32_t code, bool is_group, int32_t user) {
  auto deletion = session_.Deletions().Find(code, is_group);
  if (deletion && !repository_.Audiences().IsVisible(*deletion, user)) {
    deletion.reset();
  }
  if (deletion && deletion->user != user) {
    throw CStoreError(
        CStoreError::kNotPermitted,
        {QT_TRANSLATE_NOOP("TarnHost::Store", "\"%1\" was deleted by another user. Only that user can undo it."),
         {deletion->name}});
  }
  const std::chrono::seconds limit = std::chrono::seconds(kRestorableSeconds) + kLate;
  if (!deletion || session_.Deletions().AgeOf(*deletion, Time()) > limit) {
    throw CStoreError(CStoreError::kGone, kTooLateToUndo);
  }
  return *deletion;
}

void CPlanWriter::RequirePlaceOf(const CKeptDeletions::Deletion& deletion, int32_t user) {
  if (!IsRootCode(deletion.parent) && !IsThere(deletion.parent, true, user)) {
    throw CStoreError(
        CStoreError::kGone,
        {QT_TRANSLATE_NOOP("TarnHost::Store", "\"%1\" cannot come back: its group was deleted in the meantime."),
         {deletion.name}});
  }
}

// Names may stand twice in a group, but undoing a deletion does not make it so. The group of shared plans is made again
// when somebody shares: then both are one.
int32_t CPlanWriter::PutBack(const CKeptDeletions::Deletion& deletion) {
  const int32_t namesakes = session_.Deletions().NamesakesOf(deletion);
  if (namesakes <= deletion.namesakes) {
    if (namesakes < deletion.namesakes) {
      session_.Deletions().CountWithKept(deletion);
    }
    session_.PutBack(deletion);
    return deletion.code;
  }
  if (deletion.is_group && deletion.parent == OwnRoot && deletion.name == kSharedGroupName) {
    const int32_t group = repository_.OwnTopGroup(deletion.owner, deletion.name)->code;
    session_.PutBackInto(group, deletion);
    return group;
  }
  throw CStoreError(
      CStoreError::kRefused,
      {QT_TRANSLATE_NOOP("TarnHost::Store", "\"%1\" cannot come back: its name was given to another in the meantime."),
       {deletion.name}});
}

std::vector<int32_t> CPlanWriter::Recipients(const std::string& user_ids, int32_t sharer) const {
  std::vector<int32_t> recipients;
  for (const QString& text : ToQt(user_ids).split(',', Qt::SkipEmptyParts)) {
    const auto user = site_.FindUser(ParseCode(text.trimmed().toStdString()));
    if (user == nullptr) {
      throw CStoreError(
          CStoreError::kGone,
          {QT_TRANSLATE_NOOP("TarnHost::Store", "There is no user with the number %1."), {text.trimmed()}});
    }
    if (user->id == sharer) {
      throw CStoreError(CStoreError::kRefused,
                        QT_TRANSLATE_NOOP("TarnHost::Store", "A plan cannot be shared with yourself."));
    }
    if (std::find(recipients.begin(), recipients.end(), user->id) == recipients.end()) {
      recipients.push_back(user->id);
    }
  }
  if (recipients.empty()) {
    throw CStoreError(CStoreError::kRefused, QT_TRANSLATE_NOOP("TarnHost::Store", "No recipients were named."));
  }
  return recipients;
}

int32_t CPlanWriter::SharedGroupOf(int32_t user) {
  if (const auto group = repository_.SharedGroup(user)) {
    return *group;
  }
  const GroupRow group{repository_.NewCode(), OwnRoot, OwnFamily, user, kSharedGroupName};
  session_.SaveShared(group);
  return group.code;
}

// What is shared comes into trees that are not the sharer's, also when it is an own plan: so it takes the right to add.
// A copy does not start by itself: what runs on the recipient's screen is the recipient's to decide.
void CPlanWriter::Share(const view_plugin_protocol::ViewShareResquestInfo& request, int32_t user) {
  Change([&] {
    if (User(user).rights.count(AddRight) == 0) {
      throw CStoreError(CStoreError::kNotPermitted,
                        QT_TRANSLATE_NOOP("TarnHost::Store", "You have no right to share plans."));
    }
    const std::vector<int32_t> recipients = Recipients(request.user_ids, User(user).id);
    StoredPlan copy = PlanOf(request.plan_index_code, user);
    copy.row.auto_run = false;
    copy.row.family = OwnFamily;
    MarkMade(&copy, user);
    for (const int32_t recipient : recipients) {
      copy.row.owner = recipient;
      copy.row.parent = SharedGroupOf(recipient);
      copy.row.code = repository_.NewCode();
      session_.SaveShared(copy);
    }
    return true;
  });
}

void CPlanWriter::SetDefaultView(const view_plugin_protocol::ClienDefaultViewConfigRequest& request, int32_t user) {
  Change([&] {
    const int32_t code = DefaultViewOf(request, user);
    session_.Deletions().ForgetDefaultView(User(user).id);
    session_.Engine().Execute("DELETE FROM default_view WHERE user_id = ?", {User(user).id});
    if (code != kNoDefaultView) {
      session_.Engine().Execute("INSERT INTO default_view (user_id, code, type) VALUES (?, ?, ?)",
                                {user, code, request.type});
    }
    session_.DefaultViewsChanged();
    return true;
  });
}

int32_t CPlanWriter::DefaultViewOf(const view_plugin_protocol::ClienDefaultViewConfigRequest& request, int32_t user) {
  if (request.index_code == view_plugin_protocol::kNoDefaultViewCode) {
    return kNoDefaultView;
  }
  if (request.type == ResourceData::RT_VIEW_GROUP) {
    return GroupOf(request.index_code, user).code;
  }
  return PlanRowOf(request.index_code, user).code;
}

void CPlanWriter::SetFavoriteCamera(const std::string& index_code, bool favorite, int32_t user) {
  Change([&] {
    if (!repository_.Cameras().SetFavorite(User(user).id, ParseCode(index_code), favorite)) {
      throw CStoreError(CStoreError::kGone, kNoCamera);
    }
    return true;
  });
}

void CPlanWriter::LogPlay(const view_plugin_protocol::AddPlanLogRequestParam& request, int32_t user) {
  Change([&] {
    play_log_.Add({User(user).id, ToQt(request.name), request.automatic, request.from_history}, now_());
    return true;
  });
}

}  // namespace TarnHost::Store
