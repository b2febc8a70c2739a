// Desks that show a site and do nothing, in one process: many_desks URL COUNT
// Standard input: write SECONDS (the first desk makes ten changes a second), quit. Says "ready" and "written CHANGES".
#include <QCoreApplication>
#include <QElapsedTimer>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#include "TarnHost/plan_site.h"
#include "plan_calls.h"

namespace {

using Store = std::shared_ptr<TarnHost::CPlanStore>;
constexpr int kGroups = 30, kPlansEach = 10, kChangesASecond = 10;

// What a site of this size may have: 300 plans with a page of four cameras.
TarnHost::PlanSite Site() {
  TarnHost::PlanSite site = TarnHost::MakeEmptySite();
  site.regions = {{"Yard", -1}};
  site.cameras = {{"Lane", 0, true, {}, {0}}};
  for (int group = 0; group < kGroups; ++group) {
    site.groups.push_back({"Group " + std::to_string(group), -1, 0, -1});
    for (int plan = 0; plan < kPlansEach; ++plan) {
      site.plans.push_back(TarnTest::SitePlan("Plan " + std::to_string(group) + "-" + std::to_string(plan), group, 0,
                                              -1, {TarnTest::CameraPage(1, 2, {"#0", "#0", "#0", "#0"})}));
    }
  }
  return site;
}

Store Open(const QString& url) {
  TarnHost::PlanStoreOptions options;
  options.url = url;
  options.first_content = Site;
  QString error;
  Store store = TarnHost::CPlanStore::Open(options, &error);
  if (!store || !TarnTest::LogIn(*store, store->DefaultUser(), &error)) {
    qFatal("a desk does not start: %s", qPrintable(error));
  }
  return store;
}

void Say(const std::string& line) {
  std::puts(line.c_str());
  std::fflush(stdout);
}

// Renames one plan after the other, at the times at which each is due.
int Write(TarnHost::CPlanStore& store, int seconds) {
  const TarnTest::CPlanCalls calls(store);
  QElapsedTimer clock;
  clock.start();
  int made = 0;
  while (!clock.hasExpired(qint64{seconds} * 1000)) {
    const int plan = made % (kGroups * kPlansEach);
    const QString name = QString("Plan %1-%2").arg(plan / kPlansEach).arg(plan % kPlansEach);
    const std::string code = store.FindPlanByName(name);
    auto change = TarnTest::Unchanged(calls.DetailAtOnce(code));
    change.pages.front().dwell_seconds = 10 + made % 100;
    const QString error = calls.Update(change);
    if (!error.isEmpty()) {
      qFatal("a change is refused: %s", qPrintable(error));
    }
    ++made;
    while (clock.elapsed() < qint64{made} * 1000 / kChangesASecond) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));  // UNAVOIDABLE: a load has a pace
    }
  }
  return made;
}

void Obey(TarnHost::CPlanStore& store) {
  std::string word;
  int seconds = 0;
  while (std::cin >> word && word == "write" && std::cin >> seconds) {
    Say("written " + std::to_string(Write(store, seconds)));
  }
  QMetaObject::invokeMethod(qApp, &QCoreApplication::quit);
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  std::vector<Store> desks;
  for (int desk = 0; desk < application.arguments().value(2).toInt(); ++desk) {
    desks.push_back(Open(application.arguments().value(1)));
  }
  Say("ready");
  std::thread commands([&] { Obey(*desks.front()); });
  QCoreApplication::exec();
  commands.join();
  for (const Store& desk : desks) {
    desk->Close();
  }
  return 0;
}
