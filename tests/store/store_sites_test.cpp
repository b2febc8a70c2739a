#include <QtTest>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "TarnConfiguration/view_config_interface.h"
#include "store_fixture.h"

using namespace StoreTest;

/// What a store is opened with, and when it serves.
class StoreSitesTest : public CStoreTest {
  Q_OBJECT
 private Q_SLOTS:
  void AppliesSwitches();
  void WaitsForTheDownload();
  void ServesTheSingletons();
  void MakesTheDemoSite();
  void MakesAnEmptySite();
};

void StoreSitesTest::AppliesSwitches() {
  fixture_->options.first_content = [] {
    auto site = SmallSite();
    site.switches = {{"timed_play", 1}, {"show_mode", 1}, {"thumbnail", 0}};
    return site;
  };
  fixture_->options.switch_overrides = {{"timed_play", 0}, {"load_all", 1}};
  view::GetPlanConfigResponse config;
  QVERIFY(ann_->GetPlanConfig({}, config));
  QVERIFY(!config.timed_play && config.load_all && config.show_mode == 1 && !config.thumbnail && config.smooth_stream);
  fixture_->options.switch_overrides.clear();
  QVERIFY(bob_->GetPlanConfig({}, config));
  QVERIFY(config.timed_play && !config.load_all);  // an override is for one start
  QCOMPARE(TarnHost::CPlanStore::SwitchNames().size(), 15);
  fixture_->options.switch_overrides = {{"no_such", 1}};
  QVERIFY(fixture_->OpeningError().contains("no_such"));
}

void StoreSitesTest::WaitsForTheDownload() {
  constexpr int kDelayMs = 2000;  // what follows is asked before it is over, on a busy machine, too
  fixture_->options.download_delay = std::chrono::milliseconds(kDelayMs);
  QString error;
  QElapsedTimer clock;
  clock.start();
  const CClient client(TarnHost::CPlanStore::Open(fixture_->options, &error));
  QVERIFY(client.Groups("-1").value(0).contains("logged in"));
  QVERIFY(!client->LogIn("stranger", &error) && error.contains("stranger"));
  QVERIFY(client->LogIn("ann", &error));
  view::ClienInitViewDataResponse response;
  for (int round = 0; round < 2; ++round) {
    if (round != 0) {
      clock.restart();
      client->ClearViewData();
    }
    QVERIFY(!client->IsViewResourceDownFinish() && !client->IsInitViewFinish({}, response));
    QVERIFY(!response.error_info.empty());
    QVERIFY(client.Groups("-1").value(0).contains("downloaded"));
    QCOMPARE(client.AddPlan("-2", "Made meanwhile"), QString());
    QTRY_VERIFY(client->IsViewResourceDownFinish());
    QVERIFY(clock.elapsed() >= kDelayMs);
    QVERIFY(client->IsInitViewGroupFinish({}, response));
    QCOMPARE(client.Plans("-2").size(), round + 1);
  }
  client->Close();
  QVERIFY(client.Groups("-1").value(0).contains("closed") && client.AddPlan("-2", "x").contains("closed"));
  QVERIFY(!client->CheckControlPermission(5) && !client->IsViewResourceDownFinish());
}

void StoreSitesTest::ServesTheSingletons() {
  auto& manager = LyraPluginManager::CViewBusinessInterfaceMgr::Instance();
  view::GetPlanGroupsResponse response;
  QVERIFY(!manager.GetPlanGroups({"root", 0}, response) && !response.error_info.empty());
  QVERIFY(!TarnConfiguration::CreateViewConfigInterface());
  auto store = fixture_->Open();
  const std::weak_ptr<TarnHost::CPlanStore> watch = store;
  const std::string station = store->StationId();
  TarnHost::InstallHostServices(std::move(store));
  QVERIFY(manager.GetPlanGroups({"root", 0}, response));
  QVERIFY(!station.empty() && TarnConfiguration::CreateViewConfigInterface()->GetStationId() == station);
  QVERIFY(!watch.expired());
  TarnHost::InstallHostServices(nullptr);
  QVERIFY(watch.expired());
  QVERIFY(!manager.IsViewResourceDownFinish());
}

void StoreSitesTest::MakesTheDemoSite() {
  fixture_->options.first_content = TarnHost::MakeDemoSite;
  const CClient client(fixture_->Open("operator"));
  QCOMPARE(client->DefaultUser(), QString("operator"));
  const auto overview = client.Detail(client.Plan("Gate overview"));
  QVERIFY(overview.type == 0 && overview.pages.size() == 1 && overview.pages.front().windows.size() == 4);
  for (const auto& window : overview.pages.front().windows) {
    ptz_plugin_protocol::GetPresetResponse presets;
    play_plugin_protocol::GetStreamAbiResponse streams;
    QVERIFY(client->GetPresets({window.resource_code}, presets) && presets.presets.size() == 2);
    QVERIFY(client->GetStreamAbility({window.resource_code}, streams) && streams.stream_types.size() == 2);
    QVERIFY(!window.resource_name.empty());
  }
  const auto patrol = client.Detail("123", 1);
  QVERIFY(patrol.name == "Night patrol" && patrol.start_time == "02:00:00" && patrol.end_time == "04:00:00");
}

void StoreSitesTest::MakesAnEmptySite() {
  fixture_->options.first_content = nullptr;  // as an embedder leaves it who knows of no demo
  const CClient client(fixture_->Open("operator"));
  view::UserResponseInfo users;
  QVERIFY(client->GetAllUserInfo({}, users));
  QCOMPARE(users.users.size(), size_t(1));
  QCOMPARE(client->DefaultUser(), QString("operator"));
  QCOMPARE(client.Groups("-1") + client.Plans("-1") + client.Groups("-2"), QStringList());
  QCOMPARE(client.AddPlan("-1", "First"), QString());
}

QTEST_GUILESS_MAIN(StoreSitesTest)
#include "store_sites_test.moc"
