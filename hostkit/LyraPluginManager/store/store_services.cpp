#include "store/store_services.h"

#include <algorithm>
#include <utility>

#include "store/call_answer.h"
#include "store/store_texts.h"
#include "store/tree_events.h"

namespace TarnHost::Store {
namespace {

namespace view = view_plugin_protocol;

const char kRoot[] = "root";

template <class Operations, class Request, class Response>
bool Answer(Operations& operations, void (Operations::*operation)(const Request&, Response*), const Request& request,
            Response* response) {
  return AnswerCall(response, [&] { (operations.*operation)(request, response); });
}

}  // namespace

CStoreServices::CStoreServices(PlanStoreOptions options)
    : runner_(std::make_shared<CStoreRunner>(std::move(options))),
      plans_(*runner_),
      site_(*runner_),
      accounts_(*runner_) {}

// The threads hold what they run on, so their end cannot wait for its destructor.
CStoreServices::~CStoreServices() {
  runner_->Close();
}

LogInAnswer CStoreServices::LogIn(const LogInRequest& request, const LogInSteps& steps) {
  const LogInAnswer answer = LogInAnywhere(request, steps);
  if (answer.IsDone()) {
    runner_->OnPasswordGiven();
  }
  return answer;
}

LogInAnswer CStoreServices::LogInAnywhere(const LogInRequest& request, const LogInSteps& steps) {
  if (AsksCopy()) {
    return LogInAtCopy(request, steps);
  }
  if (runner_->HidesRows()) {
    return LogInAtServer(request, steps);
  }
  const CAccountCheck::Answer answer = accounts_.Check(request);
  if (!answer.user) {
    return answer.said;
  }
  if (steps.is_wanted && !steps.is_wanted()) {
    return {LogInOutcome::kRefused};
  }
  accounts_.OnLoggedIn(answer);
  runner_->SetUser(answer.user->id);
  RaiseTreeEvent(steps.before_trees);
  return answer.said;
}

// Which knows of its own user alone whether he has a password: who has another copy is asked for that one's.
bool CStoreServices::AsksCopy() const {
  const auto copy = runner_->Copy();
  return copy && copy->Why() != CShownCopy::kPasswordRefused;
}

// Asked first, over a connection for that alone: the store's own are given away only for another that comes about.
LogInAnswer CStoreServices::LogInAtServer(const LogInRequest& request, const LogInSteps& steps) {
  const LogInAnswer answer = runner_->AskServer(request);
  if (!answer.IsDone()) {
    return answer;
  }
  if (steps.is_wanted && !steps.is_wanted()) {
    return {LogInOutcome::kRefused};
  }
  try {
    runner_->GoOverTo(request);
  } catch (const CStoreError& error) {
    const bool is_refused = error.GetKind() == CStoreError::kRefused;
    return {is_refused ? LogInOutcome::kRefused : LogInOutcome::kUnavailable, 0, error.Text().Shown()};
  }
  RaiseTreeEvent(steps.before_trees);
  return answer;
}

// Who was let in by a password that has changed since is asked for it when the store answers.
LogInAnswer CStoreServices::LogInAtCopy(const LogInRequest& request, const LogInSteps& steps) {
  const LogInAnswer answer = runner_->AskCopy(request);
  if (!answer.IsDone()) {
    return answer;
  }
  if (steps.is_wanted && !steps.is_wanted()) {
    return {LogInOutcome::kRefused};
  }
  try {
    runner_->LogInAtCopy(request);
  } catch (const CStoreError& error) {
    return {LogInOutcome::kUnavailable, 0, error.Text().Shown()};
  }
  const auto copy = runner_->Copy();
  const auto user = runner_->Site().FindUser(request.user.toStdString());
  if (copy && user) {
    accounts_.OnLoggedIn({answer, user, copy->Facts().hash});
  }
  RaiseTreeEvent(steps.before_trees);
  return answer;
}

QDateTime CStoreServices::CopyMoment() const {
  const auto copy = runner_->Copy();
  return copy ? copy->Facts().at : QDateTime();
}

LogInAnswer CStoreServices::CheckPassword(const LogInRequest& request) {
  const LogInAnswer answer = CheckAnywhere(request);
  const auto user = runner_->Site().FindUser(request.user.toStdString());
  if (answer.IsDone() && user && user->id == runner_->User()) {
    runner_->OnPasswordGiven();
  }
  return answer;
}

LogInAnswer CStoreServices::CheckAnywhere(const LogInRequest& request) {
  if (AsksCopy()) {
    return runner_->AskCopy(request);
  }
  return runner_->HidesRows() ? CheckAtServer(request) : accounts_.Check(request).said;
}

// A server may let in who is no user here.
LogInAnswer CStoreServices::CheckAtServer(const LogInRequest& request) {
  const LogInAnswer answer = runner_->AskServer(request);
  if (answer.outcome == LogInOutcome::kUnavailable) {
    return CheckWithoutServer(request, answer);
  }
  if (answer.IsDone() && !IsSomeUser(request.user)) {
    return {LogInOutcome::kUnknownUser, 0, CStoreText(kWrongPassword).Shown()};
  }
  if (answer.IsDone()) {
    tries_.Forget(request.user);
    KeepPassword(request);
  }
  return answer;
}

LogInAnswer CStoreServices::CheckWithoutServer(const LogInRequest& request, const LogInAnswer& unavailable) {
  const std::optional<CSecret> known = runner_->PasswordOf(request.user);
  if (!known) {
    return unavailable;
  }
  return tries_.Check(request.user, runner_->Now().toSecsSinceEpoch(), [&] { return *known == request.password; });
}

// That of the current user may be a new one, with which the store connects from now on.
void CStoreServices::KeepPassword(const LogInRequest& request) {
  const auto user = runner_->Site().FindUser(request.user.toStdString());
  if (!user || user->id != runner_->User() || runner_->PasswordOf(request.user) == request.password) {
    return;
  }
  try {
    runner_->GoOverTo(request);
  } catch (const CStoreError&) {  // at the next time
  }
}

bool CStoreServices::IsSomeUser(const QString& name) const {
  const CSiteDirectory::Users users = runner_->Site().AllUsers();
  return std::any_of(users.begin(), users.end(), [&name](const CSiteDirectory::User& user) {
    return user.role == name || QString::fromStdString(user.name) == name;
  });
}

bool CStoreServices::HasPassword(const QString& user) const {
  if (const auto copy = runner_->Copy()) {
    return user != copy->Facts().user || !copy->Facts().hash.isEmpty();
  }
  const auto found = runner_->Site().FindUser(user.toStdString());
  return runner_->HidesRows() || (found && found->has_password);
}

bool CStoreServices::AsksForPasswords() const {
  const CSiteDirectory::Users users = runner_->Site().AllUsers();
  return (runner_->HidesRows() && !runner_->Copy()) ||
         std::any_of(users.begin(), users.end(), [](const auto& user) { return user.has_password; });
}

void CStoreServices::RaiseTreeEvent(const std::function<void()>& before_trees) {
  const auto raise = [self = runner_] {
    // Who registers after the log-in reads as this user anyway and has no reason to load twice.
    const auto event = WholeTreeEvent();
    if (self->Hub().IsObserved(event.key)) {
      self->Hub().Post({event});
    }
  };
  if (!before_trees) {
    return raise();
  }
  const auto in_order = [before_trees, raise] {
    before_trees();
    raise();
  };
  QMetaObject::invokeMethod(&runner_->Hub(), in_order, Qt::QueuedConnection);
}

std::string CStoreServices::FindPlanByName(const QString& name) const {
  const int32_t code = runner_->Catalog().FindByName(name.toStdString(), runner_->User());
  return code == 0 ? std::string() : std::to_string(code);
}

bool CStoreServices::GetPlanGroups(const view::GetPlanGroupsRequest& request, view::GetPlanGroupsResponse& response) {
  return Answer(plans_, &CPlanOperations::GetPlanGroups, request, &response);
}

bool CStoreServices::GetPlansInGroup(const view::GetPlansInGroupRequest& request,
                                     view::GetPlansInGroupResponse& response) {
  return Answer(plans_, &CPlanOperations::GetPlansInGroup, request, &response);
}

bool CStoreServices::AddPlanGroup(const view::AddPlanGroupRequest& request, view::AddPlanGroupResponse& response) {
  return Answer(plans_, &CPlanOperations::AddPlanGroup, request, &response);
}

bool CStoreServices::UpdatePlanGroup(const view::UpdatePlanGroupRequest& request,
                                     view::UpdatePlanGroupResponse& response) {
  return Answer(plans_, &CPlanOperations::UpdatePlanGroup, request, &response);
}

bool CStoreServices::DeletePlanGroup(const view::DeletePlanGroupRequest& request,
                                     view::DeletePlanGroupResponse& response) {
  return Answer(plans_, &CPlanOperations::DeletePlanGroup, request, &response);
}

bool CStoreServices::CountBelowGroup(const view::CountBelowGroupRequest& request,
                                     view::CountBelowGroupResponse& response) {
  return Answer(plans_, &CPlanOperations::CountBelowGroup, request, &response);
}

bool CStoreServices::AddPlan(const view::AddPlanRequest& request, view::AddPlanResponse& response) {
  return Answer(plans_, &CPlanOperations::AddPlan, request, &response);
}

bool CStoreServices::UpdatePlan(const view::UpdatePlanRequest& request, view::UpdatePlanResponse& response) {
  return Answer(plans_, &CPlanOperations::UpdatePlan, request, &response);
}

bool CStoreServices::DeletePlan(const view::DeletePlanResquest& request, view::DeletePlanResponse& response) {
  return Answer(plans_, &CPlanOperations::DeletePlan, request, &response);
}

bool CStoreServices::RestoreDeleted(const view::RestoreDeletedRequest& request,
                                    view::RestoreDeletedResponse& response) {
  return Answer(plans_, &CPlanOperations::RestoreDeleted, request, &response);
}

bool CStoreServices::GetPlanDetail(const view::GetPlanDetailRequest& request, view::GetPlanDetailResponse& response) {
  return Answer(plans_, &CPlanOperations::GetPlanDetail, request, &response);
}

bool CStoreServices::AddPlanLog(const view::AddPlanLogRequestParam& request, view::AddPlanLogResponseParam& response) {
  return Answer(plans_, &CPlanOperations::AddPlanLog, request, &response);
}

bool CStoreServices::SearchPlan(const view::SearchPlanRequest& request, view::SearchPlanResponse& response) {
  return Answer(plans_, &CPlanOperations::SearchPlan, request, &response);
}

bool CStoreServices::GetClientViewConfig(const view::GetClientDefaultViewConfigRequest& request,
                                         view::GetClientDefaultViewConfigResponse& response) {
  return Answer(plans_, &CPlanOperations::GetClientViewConfig, request, &response);
}

bool CStoreServices::SetClientViewConfig(const view::ClienDefaultViewConfigRequest& request,
                                         view::ClienDefaultViewConfigReponse& response) {
  return Answer(plans_, &CPlanOperations::SetClientViewConfig, request, &response);
}

bool CStoreServices::ViewShareUsers(const view::ViewShareResquestInfo& request, view::ShareViewResponseInfo& response) {
  const bool shared = Answer(plans_, &CPlanOperations::ViewShareUsers, request, &response);
  if (!shared) {
    response.error_model = response.error_code = 1;
  }
  return shared;
}

bool CStoreServices::GetPlanConfig(const view::GetPlanConfigRequest& request, view::GetPlanConfigResponse& response) {
  return Answer(site_, &CSiteOperations::GetPlanConfig, request, &response);
}

bool CStoreServices::GetCurrentUser(const view::GetCurrentUserRequest& request,
                                    view::GetCurrentUserResponse& response) {
  return Answer(site_, &CSiteOperations::GetCurrentUser, request, &response);
}

bool CStoreServices::GetAllUserInfo(const view::UserRequestInfo& request, view::UserResponseInfo& response) {
  return Answer(site_, &CSiteOperations::GetAllUserInfo, request, &response);
}

bool CStoreServices::GetPresets(const ptz_plugin_protocol::GetPresetRequest& request,
                                ptz_plugin_protocol::GetPresetResponse& response) {
  return Answer(site_, &CSiteOperations::GetPresets, request, &response);
}

bool CStoreServices::GetStreamAbility(const play_plugin_protocol::GetStreamAbiRequest& request,
                                      play_plugin_protocol::GetStreamAbiResponse& response) {
  return Answer(site_, &CSiteOperations::GetStreamAbility, request, &response);
}

bool CStoreServices::GetCameraTree(std::vector<ResourceTreeKit::CRegionItemInfo>& regions,
                                   std::vector<ResourceTreeKit::CCameraItemInfo>& cameras, std::string* error) {
  return AnswerCall(error, [&] { site_.GetCameraTree(&regions, &cameras); });
}

bool CStoreServices::GetFavoriteCameras(std::vector<std::string>& index_codes, std::string* error) {
  return AnswerCall(error, [&] { site_.GetFavoriteCameras(&index_codes); });
}

bool CStoreServices::SetFavoriteCamera(const std::string& index_code, bool favorite, std::string* error) {
  return AnswerCall(error, [&] { site_.SetFavoriteCamera(index_code, favorite); });
}

bool CStoreServices::GotoPreset(const ptz_plugin_protocol::GotoPresetRequest& request,
                                ptz_plugin_protocol::GotoPresetResponse& response) {
  return Answer(site_, &CSiteOperations::GotoPreset, request, &response);
}

bool CStoreServices::GetCameraAccess(const std::vector<std::string>& index_codes, CameraAccessList& access,
                                     std::string* error) {
  return AnswerCall(error, [&] { site_.GetCameraAccess(index_codes, &access); });
}

bool CStoreServices::ChangeCameras(const CameraChanges& changes, CameraChangesMade& made, std::string* error) {
  return AnswerCall(error, [&] { made = site_.ChangeCameras(changes); });
}

bool CStoreServices::SetCameraAuthority(const std::string& pem, std::string* error) {
  return AnswerCall(error, [&] { site_.SetCameraAuthority(pem); });
}

bool CStoreServices::GetPlansShowing(const std::vector<std::string>& camera_codes, PlansShowing& showing,
                                     std::string* error) {
  return AnswerCall(error, [&] { site_.GetPlansShowing(camera_codes, &showing); });
}

bool CStoreServices::GetSiteUsers(SiteUsers& users, std::string* error) {
  return AnswerCall(error, [&] { users = site_.GetSiteUsers(); });
}

bool CStoreServices::ChangeSiteUsers(const SiteUserChanges& changes, std::string* error) {
  return AnswerCall(error, [&] { site_.ChangeSiteUsers(changes); });
}

bool CStoreServices::IsInitViewGroupFinish(const view::ClienInitViewDataRequest&,
                                           view::ClienInitViewDataResponse& response) {
  return AnswerCall(&response, [this] { runner_->RequireDownloaded(); });
}

bool CStoreServices::IsInitViewFinish(const view::ClienInitViewDataRequest&,
                                      view::ClienInitViewDataResponse& response) {
  return AnswerCall(&response, [this] { runner_->RequireDownloaded(); });
}

void CStoreServices::ViewRegisterResourceUpdate(ResourceData::IResourceObserver* observer,
                                                const view::ViewObserverInfo& info) {
  const CObserverHub::Key key(info.resource_type, info.index_code);
  if (info.action == 0) {
    runner_->Hub().Unregister(observer, key);
    return;
  }
  runner_->Hub().Register(observer, key);
  const bool is_group = info.resource_type == ResourceData::RT_VIEW_GROUP && info.index_code != kRoot;
  if (is_group && !info.reads_content && runner_->Site().Config().load_all) {
    PostChildrenOf(info.index_code);
  }
}

// With everything loaded at the start a tree learns of a group's content only from notices.
void CStoreServices::PostChildrenOf(const std::string& group_code) {
  const int32_t group = ParseCode(group_code);
  const auto [first_group, first_plan] = runner_->Catalog().FirstChildren(group, runner_->User());
  std::vector<CObserverHub::Event> events;
  if (first_group != 0) {
    events.push_back(ChildEvent(group, ResourceData::RE_CHILD_ADDED, first_group, ResourceData::RT_VIEW_GROUP));
  }
  if (first_plan != 0) {
    events.push_back(ChildEvent(group, ResourceData::RE_CHILD_ADDED, first_plan, ResourceData::RT_VIEW));
  }
  runner_->Hub().Post(std::move(events));
}

}  // namespace TarnHost::Store
