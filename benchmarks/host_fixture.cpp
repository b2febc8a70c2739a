#include "host_fixture.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <cstdio>
#include <cstdlib>

#include "plugin_shutdown.h"
#include "view_model_data_manager.h"

namespace {

[[noreturn]] void EndBecause(const QString& why) {
  std::fprintf(stderr, "bench: %s\n", qPrintable(why));
  std::exit(2);
}

TarnHost::PlanStoreOptions InMemory(const TarnHost::PlanSite& site, const QMap<QString, int>& switches) {
  TarnHost::PlanStoreOptions options;
  options.url = QStringLiteral("sqlite::memory:");
  options.switch_overrides = switches;
  options.first_content = [&site] { return site; };
  return options;
}

}  // namespace

HostFixture::HostFixture(const TarnHost::PlanSite& site, const QMap<QString, int>& switches)
    : HostFixture(InMemory(site, switches)) {}

HostFixture::HostFixture(const TarnHost::PlanStoreOptions& options) {
  QString error;
  store_ = TarnHost::CPlanStore::Open(options, &error);
  if (!store_ || !store_->LogIn({store_->DefaultUser()}).IsDone()) {
    EndBecause(error);
  }
  TarnHost::InstallHostServices(store_);
  WaitFor([this] { return store_->IsViewResourceDownFinish(); });
}

HostFixture::~HostFixture() {
  ReleaseManager();
  TarnHost::InstallHostServices(nullptr);
  store_->Close();
  TarnPlanView::ReleasePlugin();
}

void HostFixture::ReleaseManager() {
  if (TarnPlanView::CViewModelDataManager::IsCreated()) {
    TarnPlanView::CViewModelDataManager::Instance().UninitManager();
    TarnPlanView::CViewModelDataManager::Release();
  }
}

void HostFixture::RestartPlugin() {
  ReleaseManager();
  QCoreApplication::processEvents();
  TarnPlanView::CViewModelDataManager::Instance().InitManager();
}

void HostFixture::WaitFor(const std::function<bool()>& done, int seconds) {
  QElapsedTimer clock;
  clock.start();
  while (!done()) {
    if (clock.hasExpired(qint64{seconds} * 1000)) {
      EndBecause(QStringLiteral("waited in vain"));
    }
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
  }
}
