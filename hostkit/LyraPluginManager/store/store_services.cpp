#include "store/store_services.h"

#include <utility>

#include "store/call_answer.h"
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
    : runner_(std::make_shared<CStoreRunner>(std::move(options))), plans_(*runner_), site_(*runner_) {}

// The threads hold what they run on, so their end cannot wait for its destructor.
CStoreServices::~CStoreServices() {
  runner_->Close();
}

bool CStoreServices::LogIn(const QString& user, QString* error) {
  const CSiteDirectory::User* found = runner_->Site().FindUser(user.toStdString());
  if (found == nullptr) {
    *error = CStoreText(QT_TRANSLATE_NOOP("TarnHost::Store", "There is no user \"%1\"."), {user}).Shown();
    return false;
  }
  runner_->SetUser(found->id);
  // Who registers after the log-in reads as this user anyway and has no reason to load twice.
  const auto event = WholeTreeEvent();
  if (runner_->Hub().IsObserved(event.key)) {
    runner_->Hub().Post({event});
  }
  return true;
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
  if (is_group && runner_->Site().Config().load_all) {
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
