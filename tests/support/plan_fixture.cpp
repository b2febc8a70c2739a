#include "plan_fixture.h"

#include <QAbstractItemModelTester>
#include <QCoreApplication>
#include <QtTest>

#include "MarUIControl/string_conversion.h"
#include "auto_plan_helper.h"
#include "host_calls/call_pool.h"
#include "plugin_shutdown.h"
#include "standard_plan_model.h"
#include "standard_plan_model_export.h"
#include "view_model_data_manager_export.h"

namespace TarnTest {

using MarUIControl::QStringToString;
using MarUIControl::StringToQString;
using namespace TarnPlanView;

TarnHost::PlanSite SmallSite() {
  TarnHost::PlanSite site;
  site.users = {{"operator", {5, 6, 7, 8}}, {"viewer", {}}};
  site.regions = {{"Yard", -1}};
  site.cameras = {{"Gate camera", 0, true, {"Door"}, {0, 1}}};
  site.groups = {
      {"Public A", -1, 0, -1}, {"A1", 0, 0, -1}, {"Public B", -1, 0, -1}, {"Own C", -1, 1, 0}, {"C1", 3, 1, 0}};
  const auto add = [&site](const std::string& name, int group, int family) {
    site.plans.push_back(SitePlan(name, group, family, family - 1, {CameraPage(1, 1)}));
  };
  for (int group = 0; group < 5; ++group) {
    for (const char* suffix : {" plan 2", " plan 10"}) {
      const auto& row = site.groups[size_t(group)];
      add(row.name + suffix, group, row.family);
    }
  }
  add("Public root plan", -1, 0);
  add("Own root plan", -1, 1);
  return site;
}

CPlanFixture::CPlanFixture() = default;

CPlanFixture::~CPlanFixture() {
  Close();
}

bool CPlanFixture::Open(const PlanFixtureOptions& options, QString* error) {
  messages_ = std::make_unique<CMessageGuard>();
  log_ = std::make_unique<CLogCapture>();
  TarnHost::PlanStoreOptions store_options;
  store_options.url = options.url;
  store_options.switch_overrides = options.switches;
  store_options.first_content = options.site;
  store_options.now = options.now;
  store_ = TarnHost::CPlanStore::Open(store_options, error);
  if (!store_) {
    return false;
  }
  services_ = std::make_shared<CRecordingServices>(store_);
  TarnHost::InstallHostServices(services_);
  return LogIn(*store_, options.user, error);
}

void CPlanFixture::Start() {
  auto& facade = CViewModelDataManagerExport::Instance();
  facade.InitManager();
  facade.InitViewConfigInterfacePointer();
  facade.AnalysisResourceInitViewGroup();
  facade.AnalysisResourceInitView();
  for (CStandardPlanModel* model : Models()) {
    Watch(model);
  }
  facade.LoadAllViewManagerModelData();
}

QStringList CPlanFixture::Close() {
  if (!store_) {
    messages_.reset();
    return {};
  }
  CAutoPlanHelper::Instance().StopDetect();
  CViewModelDataManagerExport::Instance().UninitManager();
  TarnHost::InstallHostServices(nullptr);
  if (services_) {
    services_->ReleaseAll();
  }
  Drain();
  ReleasePlugin();
  services_.reset();
  store_->Close();
  store_.reset();
  log_.reset();
  const QStringList unexpected = messages_->Unexpected();
  messages_.reset();
  return unexpected;
}

CStandardPlanModel* CPlanFixture::Model(const QString& monitor, ThemeNodeType theme) const {
  const std::unique_ptr<CStandardPlanModelExport> handle(
      CViewModelDataManagerExport::Instance().GetViewManagerByTheme(monitor, theme));
  return qobject_cast<CStandardPlanModel*>(handle->GetPlanViewModel());
}

QList<CStandardPlanModel*> CPlanFixture::Models() const {
  QList<CStandardPlanModel*> models;
  for (int monitor = 0; monitor < 4; ++monitor) {
    models << Model(QString::number(monitor), PublicTheme) << Model(QString::number(monitor), OwnTheme);
  }
  return models << Model(QStringLiteral("system_config"), OwnTheme);
}

QString CPlanFixture::Code(const QString& name) const {
  std::string code = store_->FindPlanByName(name);
  for (const char* root : {"-1", "-2"}) {
    code = code.empty() ? findGroup(root, QStringToString(name)) : code;
  }
  return StringToQString(code);
}

std::string CPlanFixture::findGroup(const std::string& parent, const std::string& name) const {
  view_plugin_protocol::GetPlanGroupsResponse response;
  store_->GetPlanGroups({parent, 0}, response);
  for (const auto& group : qAsConst(response.groups)) {
    const std::string found = group.name == name ? group.index_code : findGroup(group.index_code, name);
    if (!found.empty()) {
      return found;
    }
  }
  return {};
}

void CPlanFixture::Drain() {
  // A delivered answer may ask again, and the store reports its news by a timer.
  for (int round = 0; round < 4; ++round) {
    HostCalls::AwaitCalls();
    QCoreApplication::processEvents();
  }
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void CPlanFixture::Watch(QAbstractItemModel* model) {
  if (model) {
    new QAbstractItemModelTester(model, QAbstractItemModelTester::FailureReportingMode::QtTest, model);
  }
}

}  // namespace TarnTest
