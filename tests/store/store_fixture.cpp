#include "store_fixture.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUrl>
#include <QtTest>

namespace StoreTest {
namespace {

using TarnHost::PlanSite;

template <class Response>
QString Text(bool done, const Response& response) {
  return done ? QString() : response.error_info.empty() ? "(blank)" : QString::fromStdString(response.error_info);
}

QString RunStatement(const QUrl& url, const QString& statement) {
  QString value;
  {
    const bool file = url.scheme() == "sqlite";
    QSqlDatabase admin = QSqlDatabase::addDatabase(file ? "QSQLITE" : "QPSQL", "admin");
    admin.setHostName(url.host());
    admin.setPort(url.port());
    admin.setUserName(url.userName());
    admin.setDatabaseName(file ? url.path() : url.path().mid(1));
    QSqlQuery query(admin.open() ? admin : QSqlDatabase());
    if (!query.exec(statement)) {
      qFatal("%s fails: %s", qPrintable(statement), qPrintable(query.lastError().text()));
    }
    value = query.next() ? query.value(0).toString() : QString();
  }
  QSqlDatabase::removeDatabase("admin");
  return value;
}

// A database of its own in the server that the environment names.
QString NewPostgresDatabase() {
  static int number = 0;
  QUrl url(QString::fromLocal8Bit(qgetenv("TARN_TEST_POSTGRES")));
  const QString name = QStringLiteral("store_%1_%2").arg(QCoreApplication::applicationPid()).arg(++number);
  url.setPath("/postgres");
  RunStatement(url, "CREATE DATABASE " + name);
  url.setPath("/" + name);
  return url.toString();
}

/// Sees the tree event of a log-in pass, so that it turns up in no test's record.
struct LogInWatch : ResourceData::IResourceObserver {
  void OnResourceUpdate(const Param&) override { passed = true; }
  bool passed = false;
};

}  // namespace

view::PlanPage Page(int page_no, int split_type, std::vector<std::string> cameras) {
  view::PlanPage page;
  page.page_no = page_no;
  page.split_type = split_type;
  for (const std::string& camera : cameras) {
    view::PlanWindow window;
    window.window_no = static_cast<int>(page.windows.size()) + 1;
    window.content_kind = 1;
    window.resource_code = camera;
    page.windows.push_back(window);
  }
  return page;
}

PlanSite SmallSite() {
  PlanSite site;
  site.root_name = "All plans";
  site.users = {{"ann", {5, 6, 7}}, {"bob", {5, 6}}, {"cid", {}}, {"dora", {7}}, {"eve", {5}}, {"fred", {6}}};
  site.regions = {{"Yard", -1}};
  site.cameras = {{"Gate camera", 0, true, {"Wide", "Close"}, {0, 1}}, {"Yard camera", 0, false, {}, {0}}};
  site.groups = {
      {"Gates", -1, 0, -1}, {"North", 0, 0, -1}, {"Ann's", -1, 1, 0}, {"Bob's", -1, 1, 1}, {"Common", -1, 2, -1}};
  const auto add = [&site](const char* name, int group, int family, int owner) {
    PlanSite::Plan plan;
    plan.name = name;
    plan.group = group;
    plan.family = family;
    plan.owner = owner;
    plan.pages = {Page(1, 2, {"#0", "#1"}), Page(2, 1)};
    site.plans.push_back(plan);
  };
  add("Gate A", 0, 0, -1);
  add("Gate B", 1, 0, -1);
  add("Ann's gate", 2, 1, 0);
  add("Bob's gate", 3, 1, 1);
  add("Top", -1, 0, -1);
  return site;
}

bool CStoreFixture::OnPostgres() {
  return qEnvironmentVariableIsSet("TARN_TEST_POSTGRES");
}

CStoreFixture::CStoreFixture() {
  options.url = OnPostgres() ? NewPostgresDatabase() : "sqlite:" + folder_.filePath("plans.db");
  options.first_content = SmallSite;
}

QString CStoreFixture::ReadPastTheStore(const QString& statement) const {
  return RunStatement(QUrl(options.url), statement);
}

QString CStoreFixture::File() const {
  return options.url.mid(7);
}

std::shared_ptr<TarnHost::CPlanStore> CStoreFixture::Open(const QString& user) const {
  QString error;
  auto store = TarnHost::CPlanStore::Open(options, &error);
  if (!store) {
    qFatal("%s", qPrintable(error));
  }
  LogInWatch watch;
  store->ViewRegisterResourceUpdate(&watch, {ResourceData::RT_VIEW_GROUP, "root", 1});
  const bool ready = store->LogIn(user, &error) &&
                     QTest::qWaitFor([&] { return watch.passed && store->IsViewResourceDownFinish(); }, 10000);
  store->ViewRegisterResourceUpdate(&watch, {ResourceData::RT_VIEW_GROUP, "root", 0});
  if (!ready) {
    qFatal("the store does not get ready: %s", qPrintable(error));
  }
  return store;
}

QStringList CClient::Groups(const std::string& parent) const {
  view::GetPlanGroupsResponse response;
  if (!store_->GetPlanGroups({parent, 0}, response)) {
    return {"!" + Text(false, response)};
  }
  QStringList names;
  for (const view::PlanGroup& group : response.groups) {
    names.append(QString::fromStdString(group.name + "@" + group.parent_index_code));
  }
  return names;
}

QStringList CClient::Plans(const std::string& group) const {
  view::GetPlansInGroupResponse response;
  if (!store_->GetPlansInGroup({group, 0}, response)) {
    return {"!" + Text(false, response)};
  }
  QStringList names;
  for (const view::PlanBasicInfo& plan : response.plans) {
    names.append(QString::fromStdString(plan.name + "@" + plan.group_index_code));
  }
  return names;
}

std::string CClient::Group(const std::string& parent, const std::string& name) const {
  view::GetPlanGroupsResponse response;
  store_->GetPlanGroups({parent, 0}, response);
  for (const view::PlanGroup& group : response.groups) {
    if (group.name == name) {
      return group.index_code;
    }
  }
  return {};
}

view::GetPlanDetailResponse CClient::Detail(const std::string& plan, int kind) const {
  view::GetPlanDetailResponse response;
  const bool done = store_->GetPlanDetail({plan, kind, false}, response);
  response.error_info = Text(done, response).toStdString();
  return response;
}

QStringList CClient::Search(const char* text, int scope) const {
  view::SearchPlanResponse response;
  QStringList hits;
  if (!store_->SearchPlan({text, scope}, response)) {
    return {"!" + Text(false, response)};
  }
  for (const view::SearchedPlan& plan : response.plans) {
    hits.append(QString::fromStdString(plan.name + "@" + plan.group_name));
  }
  return hits;
}

std::string CClient::DefaultView() const {
  view::GetClientDefaultViewConfigResponse response;
  return store_->GetClientViewConfig({}, response) ? response.index_code : "!" + response.error_info;
}

QString CClient::AddGroup(const std::string& parent, const std::string& name, std::string* code) const {
  view::AddPlanGroupResponse response;
  const bool done = store_->AddPlanGroup({name, parent, 0, false}, response);
  if (code != nullptr) {
    *code = response.index_code;
  }
  return Text(done, response);
}

QString CClient::AddPlan(const std::string& parent, const std::string& name, std::string* code) const {
  view::AddPlanRequest request;
  request.plan_name = name;
  request.parent_index_code = parent;
  request.pages = {Page(1, 1, {"1001"})};
  view::AddPlanResponse response;
  const bool done = store_->AddPlan(request, response);
  if (code != nullptr) {
    *code = response.index_code;
  }
  return Text(done, response);
}

QString CClient::RenameGroup(const std::string& code, const std::string& name) const {
  view::UpdatePlanGroupResponse response;
  return Text(store_->UpdatePlanGroup({code, name, false}, response), response);
}

QString CClient::DeleteGroup(const std::string& code) const {
  view::DeletePlanGroupResponse response;
  return Text(store_->DeletePlanGroup({code, {}, 0}, response), response);
}

QString CClient::DeletePlan(const std::string& code) const {
  view::DeletePlanResponse response;
  return Text(store_->DeletePlan({code, {}, {}, {}, {}}, response), response);
}

QString CClient::Update(const view::UpdatePlanRequest& request) const {
  view::UpdatePlanResponse response;
  return Text(store_->UpdatePlan(request, response), response);
}

QString CClient::Share(const std::string& plan, const std::string& users) const {
  view::ShareViewResponseInfo response;
  return Text(store_->ViewShareUsers({users, plan}, response), response);
}

QString CClient::SetDefaultView(const std::string& code, int type) const {
  view::ClienDefaultViewConfigReponse response;
  return Text(store_->SetClientViewConfig({code, type}, response), response);
}

view::UpdatePlanRequest CClient::Unchanged(const std::string& plan) const {
  const view::GetPlanDetailResponse detail = Detail(plan);
  view::UpdatePlanRequest request;
  request.plan_index_code = plan;
  request.plan_name = detail.name;
  request.index_type = detail.type;
  request.parent_index_code = detail.group_index_code;
  request.auto_play = detail.auto_run;
  request.begin_time = detail.start_time;
  request.end_time = detail.end_time;
  request.pages = detail.pages;
  request.revision = detail.revision;
  return request;
}

}  // namespace StoreTest
