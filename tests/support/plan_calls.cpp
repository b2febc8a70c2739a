#include "plan_calls.h"

namespace TarnTest {

namespace view = view_plugin_protocol;

namespace {

template <class Response>
QString Failure(bool done, const Response& response) {
  if (done) {
    return {};
  }
  return response.error_info.empty() ? QStringLiteral("(blank)") : QString::fromStdString(response.error_info);
}

}  // namespace

QStringList CPlanCalls::Groups(const Text& parent) const {
  view::GetPlanGroupsResponse response;
  if (!host_->GetPlanGroups({parent, 0}, response)) {
    return {"!" + Failure(false, response)};
  }
  QStringList names;
  for (const view::PlanGroup& group : response.groups) {
    names.append(QString::fromStdString(group.name + "@" + group.parent_index_code));
  }
  return names;
}

QStringList CPlanCalls::Plans(const Text& group) const {
  view::GetPlansInGroupResponse response;
  if (!host_->GetPlansInGroup({group, 0}, response)) {
    return {"!" + Failure(false, response)};
  }
  QStringList names;
  for (const view::PlanBasicInfo& plan : response.plans) {
    names.append(QString::fromStdString(plan.name + "@" + plan.group_index_code));
  }
  return names;
}

std::string CPlanCalls::Group(const Text& parent, const std::string& name) const {
  view::GetPlanGroupsResponse response;
  host_->GetPlanGroups({parent, 0}, response);
  for (const view::PlanGroup& group : response.groups) {
    if (group.name == name) {
      return group.index_code;
    }
  }
  return {};
}

view::GetPlanDetailResponse CPlanCalls::Detail(const Text& plan, int kind) const {
  view::GetPlanDetailResponse response;
  const bool done = host_->GetPlanDetail({plan, kind, false}, response);
  response.error_info = Failure(done, response).toStdString();
  return response;
}

QStringList CPlanCalls::Search(const char* text, int scope) const {
  view::SearchPlanResponse response;
  QStringList hits;
  if (!host_->SearchPlan({text, scope}, response)) {
    return {"!" + Failure(false, response)};
  }
  for (const view::SearchedPlan& plan : response.plans) {
    hits.append(QString::fromStdString(plan.name + "@" + plan.group_name));
  }
  return hits;
}

std::string CPlanCalls::DefaultView() const {
  view::GetClientDefaultViewConfigResponse response;
  return host_->GetClientViewConfig({}, response) ? response.index_code : "!" + response.error_info;
}

QString CPlanCalls::AddGroup(const Text& parent, const Text& name, std::string* code) const {
  view::AddPlanGroupResponse response;
  const bool done = host_->AddPlanGroup({name, parent, 0, false}, response);
  if (code != nullptr) {
    *code = response.index_code;
  }
  return Failure(done, response);
}

QString CPlanCalls::AddPlan(const AddPlanRequest& request, std::string* code) const {
  view::AddPlanResponse response;
  const bool done = host_->AddPlan(request, response);
  if (code != nullptr) {
    *code = response.index_code;
  }
  return Failure(done, response);
}

QString CPlanCalls::AddPlan(const Text& parent, const Text& name, std::string* code) const {
  return AddPlan(NewPlan(name, parent, {CameraPage(1, 1, {"1001"})}), code);
}

QString CPlanCalls::RenameGroup(const Text& code, const Text& name) const {
  view::UpdatePlanGroupResponse response;
  return Failure(host_->UpdatePlanGroup({code, name, false}, response), response);
}

QString CPlanCalls::DeleteGroup(const Text& code) const {
  view::DeletePlanGroupResponse response;
  return Failure(host_->DeletePlanGroup({code, {}, 0}, response), response);
}

QString CPlanCalls::DeletePlan(const Text& code) const {
  view::DeletePlanResponse response;
  return Failure(host_->DeletePlan({code, {}, {}, {}, {}}, response), response);
}

QString CPlanCalls::Update(const view::UpdatePlanRequest& request) const {
  view::UpdatePlanResponse response;
  return Failure(host_->UpdatePlan(request, response), response);
}

QString CPlanCalls::Share(const Text& plan, const Text& users) const {
  view::ShareViewResponseInfo response;
  return Failure(host_->ViewShareUsers({users, plan}, response), response);
}

QString CPlanCalls::SetDefaultView(const Text& code, int type) const {
  view::ClienDefaultViewConfigReponse response;
  return Failure(host_->SetClientViewConfig({code, type}, response), response);
}

}  // namespace TarnTest
