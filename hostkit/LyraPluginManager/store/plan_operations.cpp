#include "store/plan_operations.h"

#include <QDateTime>
#include <QThread>
#include <utility>

#include "MarUIControl/moment_text.h"
#include "qt/filled_list.h"
#include "store/store_texts.h"
#include "store/text_rules.h"

namespace TarnHost::Store {
namespace {

namespace view = view_plugin_protocol;

const char kRoot[] = "root";
constexpr int32_t kAutomaticPlan = 1;  // a kind of query
constexpr int32_t kOwnScope = 1;       // of a search
const char kNoAutomaticPlan[] = "NoAutoRunPlan";

// Lists may be long: the rows' texts are copied once, into the record where it stands.
void Fill(view::PlanGroup* group, const GroupRow& row, const std::string& parent) {
  group->name = row.name;
  group->parent_index_code = parent;
  SetCode(&group->index_code, row.code);
  group->type = row.family;
}

void Fill(view::PlanBasicInfo* plan, const PlanRow& row, const std::string& group) {
  SetCode(&plan->index_code, row.code);
  plan->name = row.name;
  plan->group_index_code = group;
  plan->type = row.family;
  plan->split_type = row.split_type;
  plan->page_count = row.page_count;
  plan->auto_run = row.auto_run;
}

template <class Record, class Row>
void FillAll(QList<Record>* records, const std::vector<Row>& rows, const std::string& parent) {
  TarnQt::AppendFilled(records, rows, [&parent](Record* record, const Row& row) { Fill(record, row, parent); });
}

bool IsNoAnswer(const CStoreError& error) {
  return error.GetKind() == CStoreError::kNotAnswering || error.GetKind() == CStoreError::kConnectionLost;
}

std::pair<std::optional<StoredPlan>, std::optional<CKeptDeletions::Deletion>> PlanOrDeletion(
    CPlanRepository& repository, int32_t code, int32_t user) {
  auto plan = repository.WholePlan(code, user);
  if (plan) {
    return {std::move(plan), std::nullopt};
  }
  try {
    return {std::nullopt, repository.DeletionOf(code, user)};
  } catch (const CStoreError&) {
    return {};  // that it is gone is known
  }
}

}  // namespace

void CPlanOperations::GetPlanGroups(const view::GetPlanGroupsRequest& request, view::GetPlanGroupsResponse* response) {
  const int32_t user = runner_.RequireUser();
  runner_.RequireDownloaded();
  const std::string& parent = request.parent_index_code;
  if (parent == kRoot) {
    response->groups.append({runner_.Site().RootName(), {}, kRoot, PublicFamily});
    return;
  }
  const auto take = [&](const std::vector<GroupRow>& rows) { FillAll(&response->groups, rows, parent); };
  if (!runner_.Catalog().VisitGroups(ParseCode(parent), user, take)) {
    throw CStoreError(CStoreError::kGone, kGroupGone);
  }
}

void CPlanOperations::GetPlansInGroup(const view::GetPlansInGroupRequest& request,
                                      view::GetPlansInGroupResponse* response) {
  const int32_t user = runner_.RequireUser();
  runner_.RequireDownloaded();
  const std::string& group = request.group_index_code;
  const auto take = [&](const std::vector<PlanRow>& rows) { FillAll(&response->plans, rows, group); };
  if (!runner_.Catalog().VisitPlans(ParseCode(group), user, take)) {
    throw CStoreError(CStoreError::kGone, kGroupGone);
  }
}

void CPlanOperations::AddPlanGroup(const view::AddPlanGroupRequest& request, view::AddPlanGroupResponse* response) {
  const int32_t user = runner_.RequireUser();
  const auto add = [request, user](CPlanWriter& writer) { return writer.AddGroup(request, user); };
  response->index_code = std::to_string(runner_.Write(add));
}

void CPlanOperations::UpdatePlanGroup(const view::UpdatePlanGroupRequest& request, view::UpdatePlanGroupResponse*) {
  const int32_t user = runner_.RequireUser();
  runner_.Write([request, user](CPlanWriter& writer) { writer.RenameGroup(request, user); });
}

void CPlanOperations::DeletePlanGroup(const view::DeletePlanGroupRequest& request,
                                      view::DeletePlanGroupResponse* response) {
  const int32_t user = runner_.RequireUser();
  const auto deleted =
      runner_.Write([code = request.index_code, user](CPlanWriter& writer) { return writer.DeleteGroup(code, user); });
  response->restorable_seconds = deleted.restorable_seconds;
  response->deleted_groups = deleted.below.groups;
  response->deleted_plans = deleted.below.plans;
}

void CPlanOperations::CountBelowGroup(const view::CountBelowGroupRequest& request,
                                      view::CountBelowGroupResponse* response) {
  const int32_t user = runner_.RequireUser();
  runner_.RequireDownloaded();
  const auto counts = runner_.Catalog().CountBelow(ParseCode(request.index_code), user);
  if (!counts) {
    throw CStoreError(CStoreError::kGone, kGroupGone);
  }
  response->groups = counts->groups;
  response->plans = counts->plans;
}

void CPlanOperations::AddPlan(const view::AddPlanRequest& request, view::AddPlanResponse* response) {
  const int32_t user = runner_.RequireUser();
  const auto add = [request, user](CPlanWriter& writer) { return writer.AddPlan(request, user); };
  response->index_code = std::to_string(runner_.Write(add));
}

void CPlanOperations::UpdatePlan(const view::UpdatePlanRequest& request, view::UpdatePlanResponse*) {
  const int32_t user = runner_.RequireUser();
  runner_.Write([request, user](CPlanWriter& writer) { writer.UpdatePlan(request, user); });
}

void CPlanOperations::DeletePlan(const view::DeletePlanResquest& request, view::DeletePlanResponse* response) {
  const int32_t user = runner_.RequireUser();
  response->restorable_seconds = runner_.Write(
      [code = request.plan_index_code, user](CPlanWriter& writer) { return writer.DeletePlan(code, user); });
}

void CPlanOperations::RestoreDeleted(const view::RestoreDeletedRequest& request,
                                     view::RestoreDeletedResponse* response) {
  const int32_t user = runner_.RequireUser();
  const auto restore = [request, user](CPlanWriter& writer) { return writer.RestoreDeleted(request, user); };
  response->index_code = std::to_string(runner_.Write(restore));
}

void CPlanOperations::ViewShareUsers(const view::ViewShareResquestInfo& request, view::ShareViewResponseInfo*) {
  const int32_t user = runner_.RequireUser();
  runner_.Write([request, user](CPlanWriter& writer) { writer.Share(request, user); });
}

int32_t CPlanOperations::RequestedPlan(const view::GetPlanDetailRequest& request, int32_t user) const {
  if (request.query_kind != kAutomaticPlan) {
    return ParseCode(request.plan_index_code);
  }
  const int32_t second = runner_.Now().time().msecsSinceStartOfDay() / 1000;
  const int32_t code = runner_.Catalog().AutomaticPlan(second, user);
  if (code == 0) {
    throw CStoreError(CStoreError::kGone, QString(kNoAutomaticPlan));
  }
  return code;
}

// From the database, unless nothing may wait for it: a plan that was just deleted elsewhere is gone, whatever the
// catalog has heard by then. What the desk's copy has is asked for first where the database would answer nothing, and
// again once it has not.
StoredPlan CPlanOperations::ReadPlan(int32_t code, int32_t user) {
  const auto remembered = runner_.AsksMemory() ? runner_.Memory().Find(code) : nullptr;
  if (remembered && runner_.Catalog().FindPlan(code, user)) {
    return *remembered;
  }
  if (auto kept = KeptPlan(code, user)) {
    return std::move(*kept);
  }
  try {
    return StoredPlanOf(code, user);
  } catch (const CStoreError& error) {
    auto kept = IsNoAnswer(error) ? KeptPlan(code, user) : std::nullopt;
    if (!kept) {
      throw;
    }
    return std::move(*kept);
  }
}

// As the trees show it, or not at all: the copy may be a minute older than they are.
std::optional<StoredPlan> CPlanOperations::KeptPlan(int32_t code, int32_t user) {
  const auto copy = runner_.StandIn();
  if (!copy) {
    return std::nullopt;
  }
  const auto hit = runner_.Catalog().FindPlan(code, user);
  if (!hit) {
    return std::nullopt;
  }
  try {
    auto plan = copy->Reader().Read([code](CPlanRepository& repository) { return repository.WholePlan(code); },
                                    CDatabaseThread::kShort);
    if (!plan || !plan->damage.IsEmpty() || plan->revision != hit->plan.revision) {
      return std::nullopt;
    }
    plan->row = hit->plan;
    return plan;
  } catch (const CStoreError&) {
    return std::nullopt;
  }
}

// In one call, for each may keep the caller waiting.
StoredPlan CPlanOperations::StoredPlanOf(int32_t code, int32_t user) {
  auto read = runner_.Read([code, user](CPlanRepository& repository) { return PlanOrDeletion(repository, code, user); },
                           CDatabaseThread::kShort);
  auto& [plan, deletion] = read;
  if (!plan) {
    throw CStoreError(CStoreError::kGone, WhyPlanIsGone(deletion));
  }
  if (!plan->damage.IsEmpty()) {
    throw CStoreError(CStoreError::kDamaged, plan->damage);
  }
  runner_.Memory().Renew(*plan);
  return std::move(*plan);
}

// Who has it open in an editor wants to know whom to ask.
CStoreText CPlanOperations::WhyPlanIsGone(const std::optional<CKeptDeletions::Deletion>& deletion) const {
  if (!deletion) {
    return kPlanGone;
  }
  const auto who = runner_.Site().FindUser(deletion->user);
  if (who == nullptr) {
    return kPlanGone;
  }
  const QDateTime at = QDateTime::fromSecsSinceEpoch(deletion->at);
  return {QT_TRANSLATE_NOOP("TarnHost::Store", "The plan was deleted by %1 at %2."),
          {ToQt(who->name), MarUIControl::MomentText(at, runner_.Now())}};
}

// A tree that reads a plan because it has changed does not ask a second time by itself.
StoredPlan CPlanOperations::ReadPlanForTree(int32_t code, int32_t user) {
  try {
    return ReadPlan(code, user);
  } catch (const CStoreError& error) {
    if (IsNoAnswer(error) && runner_.Hub().thread() == QThread::currentThread()) {
      runner_.NoteUnread(code);
    }
    throw;
  }
}

std::string CPlanOperations::ParentName(int32_t parent, int32_t user) const {
  const auto group = runner_.Catalog().FindGroup(parent, user);
  return group ? group->name : runner_.Site().RootName();
}

void CPlanOperations::GetPlanDetail(const view::GetPlanDetailRequest& request, view::GetPlanDetailResponse* response) {
  const int32_t user = runner_.RequireUser();
  runner_.RequireDownloaded();
  StoredPlan plan = ReadPlanForTree(RequestedPlan(request, user), user);
  response->index_code = std::to_string(plan.row.code);
  response->name = plan.row.name;
  response->group_index_code = std::to_string(plan.row.parent);
  response->group_name = ParentName(plan.row.parent, user);
  response->type = plan.row.family;
  response->auto_run = plan.row.auto_run;
  response->start_time = plan.begin_time.toStdString();
  response->end_time = plan.end_time.toStdString();
  response->pages = std::move(plan.pages);
  response->creator = plan.creator.toStdString();
  response->creation_time = plan.creation_time.toStdString();
  response->thumbnail = plan.thumbnail.toStdString();
  response->revision = plan.revision;
  response->changed_by = plan.changed_by.toStdString();
  response->changed_at = plan.changed_at.toStdString();
}

void CPlanOperations::AddPlanLog(const view::AddPlanLogRequestParam& request, view::AddPlanLogResponseParam*) {
  const int32_t user = runner_.RequireUser();
  runner_.WriteUncopied([request, user](CPlanWriter& writer) { writer.LogPlay(request, user); });
}

void CPlanOperations::SearchPlan(const view::SearchPlanRequest& request, view::SearchPlanResponse* response) {
  const int32_t user = runner_.RequireUser();
  runner_.RequireDownloaded();
  const std::string folded = Folded(ToQt(request.text));
  if (folded.empty()) {
    return;
  }
  const int32_t family = request.scope == kOwnScope ? OwnFamily : PublicFamily;
  for (CPlanCatalog::Hit& hit : runner_.Catalog().Search(folded, family, user)) {
    const std::string parent_name = hit.groups_above.empty() ? runner_.Site().RootName() : hit.groups_above.back();
    response->plans.push_back({std::to_string(hit.plan.code), std::move(hit.plan.name), std::to_string(hit.plan.parent),
                               parent_name, hit.plan.family, std::move(hit.groups_above), std::move(hit.shown_camera),
                               hit.plan.page_count, hit.plan.auto_run});
  }
}

std::pair<int32_t, int32_t> CPlanOperations::ReadDefaultView(int32_t user) {
  if (runner_.AsksMemory()) {
    return runner_.Memory().DefaultViewOf(user);
  }
  return runner_.Read([user](CPlanRepository& repository) { return repository.DefaultView(user); });
}

// What became invisible, for instance a plan that its owner took back from the public ones, is no default view.
void CPlanOperations::GetClientViewConfig(const view::GetClientDefaultViewConfigRequest&,
                                          view::GetClientDefaultViewConfigResponse* response) {
  const int32_t user = runner_.RequireUser();
  runner_.RequireDownloaded();
  const auto [code, type] = ReadDefaultView(user);
  *response = {};
  if (runner_.Catalog().FindPlan(code, user) || runner_.Catalog().FindGroup(code, user)) {
    response->index_code = std::to_string(code);
    response->type = type;
  }
}

void CPlanOperations::SetClientViewConfig(const view::ClienDefaultViewConfigRequest& request,
                                          view::ClienDefaultViewConfigReponse*) {
  const int32_t user = runner_.RequireUser();
  runner_.Write([request, user](CPlanWriter& writer) { writer.SetDefaultView(request, user); });
}

}  // namespace TarnHost::Store
