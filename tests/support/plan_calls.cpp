#include "plan_calls.h"

#include <QtTest>
#include <future>

namespace TarnTest {

namespace view = view_plugin_protocol;

namespace {

constexpr int kReadyMs = 30000;

struct LogInWatch : ResourceData::IResourceObserver {
  void OnResourceUpdate(const Param&) override { passed = true; }
  bool passed = false;
};

template <class Response>
QString Failure(bool done, const Response& response) {
  if (done) {
    return {};
  }
  return response.error_info.empty() ? QStringLiteral("(blank)") : QString::fromStdString(response.error_info);
}

template <class Rows, class Place>
QStringList NamesAndPlaces(const Rows& rows, Place place) {
  QStringList names;
  for (const auto& row : rows) {
    names.append(QString::fromStdString(row.name + "@" + row.*place));
  }
  return names;
}

}  // namespace

bool LogIn(TarnHost::CPlanStore& store, const QString& user, QString* error) {
  LogInWatch watch;
  store.ViewRegisterResourceUpdate(&watch, {ResourceData::RT_VIEW_GROUP, "root", 1});
  const auto is_ready = [&] { return watch.passed && store.IsViewResourceDownFinish(); };
  const TarnHost::LogInAnswer answer = store.LogIn({user});
  *error = answer.line;
  const bool done = answer.IsDone() && QTest::qWaitFor(is_ready, kReadyMs);
  store.ViewRegisterResourceUpdate(&watch, {ResourceData::RT_VIEW_GROUP, "root", 0});
  return done;
}

QStringList CPlanCalls::Groups(const Text& parent) const {
  view::GetPlanGroupsResponse response;
  if (!Host().GetPlanGroups({parent, 0}, response)) {
    return {"!" + Failure(false, response)};
  }
  return NamesAndPlaces(response.groups, &PlanGroup::parent_index_code);
}

QStringList CPlanCalls::Plans(const Text& group) const {
  view::GetPlansInGroupResponse response;
  if (!Host().GetPlansInGroup({group, 0}, response)) {
    return {"!" + Failure(false, response)};
  }
  return NamesAndPlaces(response.plans, &PlanBasicInfo::group_index_code);
}

std::string CPlanCalls::Group(const Text& parent, const std::string& name) const {
  view::GetPlanGroupsResponse response;
  Host().GetPlanGroups({parent, 0}, response);
  for (const view::PlanGroup& group : response.groups) {
    if (group.name == name) {
      return group.index_code;
    }
  }
  return {};
}

view::GetPlanDetailResponse CPlanCalls::Detail(const Text& plan, int kind) const {
  Host();  // opened on this thread
  return std::async(std::launch::async, [&] { return DetailAtOnce(plan, kind); }).get();
}

view::GetPlanDetailResponse CPlanCalls::DetailAtOnce(const Text& plan, int kind) const {
  view::GetPlanDetailResponse response;
  const bool done = Host().GetPlanDetail({plan, kind, false}, response);
  response.error_info = Failure(done, response).toStdString();
  return response;
}

QStringList CPlanCalls::Search(const char* text, int scope) const {
  view::SearchPlanResponse response;
  if (!Host().SearchPlan({text, scope}, response)) {
    return {"!" + Failure(false, response)};
  }
  return NamesAndPlaces(response.plans, &view::SearchedPlan::group_name);
}

QStringList CPlanCalls::Found(const char* text, int scope) const {
  view::SearchPlanResponse response;
  if (!Host().SearchPlan({text, scope}, response)) {
    return {"!" + Failure(false, response)};
  }
  QStringList hits;
  for (const view::SearchedPlan& plan : response.plans) {
    std::string hit;
    for (const std::string& group : plan.groups_above) {
      hit += group + "/";
    }
    hit += plan.name;
    hit += plan.shown_camera.empty() ? std::string() : " (" + plan.shown_camera + ")";
    hits.append(QString::fromStdString(hit));
  }
  return hits;
}

std::string CPlanCalls::DefaultView() const {
  view::GetClientDefaultViewConfigResponse response;
  return Host().GetClientViewConfig({}, response) ? response.index_code : "!" + response.error_info;
}

QString CPlanCalls::AddGroup(const Text& parent, const Text& name, std::string* code) const {
  view::AddPlanGroupResponse response;
  const bool done = Host().AddPlanGroup({name, parent, 0, false}, response);
  if (code != nullptr) {
    *code = response.index_code;
  }
  return Failure(done, response);
}

QString CPlanCalls::AddPlan(const AddPlanRequest& request, std::string* code) const {
  view::AddPlanResponse response;
  const bool done = Host().AddPlan(request, response);
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
  return Failure(Host().UpdatePlanGroup({code, name, false}, response), response);
}

QString CPlanCalls::DeleteGroup(const Text& code) const {
  view::DeletePlanGroupResponse response;
  return Failure(Host().DeletePlanGroup({code, {}, 0}, response), response);
}

QString CPlanCalls::DeletePlan(const Text& code) const {
  view::DeletePlanResponse response;
  return Failure(Host().DeletePlan({code, {}, {}, {}, {}}, response), response);
}

QString CPlanCalls::RestorePlan(const Text& code, int32_t* kind) const {
  return Restore({code, false}, kind);
}

QString CPlanCalls::RestoreGroup(const Text& code, int32_t* kind) const {
  return Restore({code, true}, kind);
}

QString CPlanCalls::Restore(const view::RestoreDeletedRequest& request, int32_t* kind) const {
  view::RestoreDeletedResponse response;
  const bool done = Host().RestoreDeleted(request, response);
  if (kind != nullptr) {
    *kind = response.error_kind;
  }
  return Failure(done, response);
}

QString CPlanCalls::Update(const view::UpdatePlanRequest& request) const {
  view::UpdatePlanResponse response;
  return Failure(Host().UpdatePlan(request, response), response);
}

QString CPlanCalls::Share(const Text& plan, const Text& users) const {
  view::ShareViewResponseInfo response;
  return Failure(Host().ViewShareUsers({users, plan}, response), response);
}

QString CPlanCalls::SetDefaultView(const Text& code, int type) const {
  view::ClienDefaultViewConfigReponse response;
  return Failure(Host().SetClientViewConfig({code, type}, response), response);
}

}  // namespace TarnTest
