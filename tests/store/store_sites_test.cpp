#include <QtTest>

#include "LyraPluginManager/error_kind.h"
#include "LyraPluginManager/view_business_interface_mgr.h"
#include "TarnConfiguration/view_config_interface.h"
#include "store_fixture.h"

using namespace StoreTest;

/// What a store is opened with, when it serves, and what it says of the site's cameras.
class StoreSitesTest : public CStoreTest {
  Q_OBJECT
 private Q_SLOTS:
  void AppliesSwitches();
  void WaitsForTheDownload();
  void ServesTheSingletons();
  void MakesTheDemoSite();
  void TheDemoSiteHasUsersOfEachKind();
  void MakesAnEmptySite();
  void KeepsFavoriteCamerasPerUser();
  void SaysWhatCamerasCanDoNow();
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
  const TarnHost::LogInAnswer stranger = client->LogIn({"stranger"});
  QVERIFY(stranger.outcome == TarnHost::LogInOutcome::kUnknownUser && stranger.line.contains("stranger"));
  QVERIFY(client->LogIn({"ann"}).IsDone());
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
  size_t fewest_streams = 9, most_streams = 0;
  for (const auto& window : overview.pages.front().windows) {
    ptz_plugin_protocol::GetPresetResponse presets;
    play_plugin_protocol::GetStreamAbiResponse streams;
    QVERIFY(client->GetPresets({window.resource_code}, presets) && presets.presets.size() == 2);
    QVERIFY(client->GetStreamAbility({window.resource_code}, streams));
    most_streams = std::max(most_streams, streams.stream_types.size());
    fewest_streams = std::min(fewest_streams, streams.stream_types.size());
    QVERIFY(!window.resource_name.empty());
  }
  TarnHost::CameraAccessList access;
  std::string error;
  QVERIFY(client->GetCameraAccess({"1001"}, access, &error) && access.is_pretended);
  QVERIFY(fewest_streams == 1 && most_streams == 3);
  const auto patrol = client.Detail("123", 1);
  QVERIFY(patrol.name == "Night patrol" && patrol.start_time == "02:00:00" && patrol.end_time == "04:00:00");
}

// A newcomer's first start shows pictures; each of the others has less than the one before.
void StoreSitesTest::TheDemoSiteHasUsersOfEachKind() {
  fixture_->options.first_content = TarnHost::MakeDemoSite;
  const auto rights = [](const CClient& client) {
    std::string held;
    for (const int right : {5, 6, 7}) {
      held += client->CheckControlPermission(right) ? std::to_string(right) : std::string();
    }
    return held;
  };
  const CClient all(fixture_->Open("operator"));
  QCOMPARE(all.DefaultView(), all.Plan("Gate overview"));
  QCOMPARE(rights(all), std::string("567"));
  const CClient guard(fixture_->Open("guard")), trainee(fixture_->Open("trainee"));
  for (const auto* one : {&guard, &trainee}) {
    QCOMPARE(rights(*one), std::string());
    QCOMPARE(one->DefaultView(), std::string("-3"));
  }
  QCOMPARE(guard.Groups("-1"), all.Groups("-1"));
  QCOMPARE(guard.Search("e", 0), all.Search("e", 0));
  QCOMPARE(trainee.Groups("-1"), QStringList({"Exercises@-1"}));
  QCOMPARE(trainee.Groups("-2") + trainee.Plans("-2") + trainee.Plans("-1"), QStringList());
  const QStringList exercises = trainee.Plans(trainee.Group("-1", "Exercises"));
  QVERIFY(!exercises.isEmpty());
  QCOMPARE(trainee.Search("e", 0).size(), exercises.size());
  QCOMPARE(trainee.Detail(trainee.Plan("Exercises overview")).pages.size(), size_t(1));
  QCOMPARE(trainee.Detail(all.Plan("Gate overview")).error_kind, int32_t(view::Gone));
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

void StoreSitesTest::KeepsFavoriteCamerasPerUser() {
  std::vector<ResourceTreeKit::CRegionItemInfo> regions;
  std::vector<ResourceTreeKit::CCameraItemInfo> cameras;
  std::string error;
  QVERIFY(ann_->GetCameraTree(regions, cameras, &error));
  QVERIFY(regions.size() == 1 && regions[0].name == "Yard" && regions[0].parent_index_code.empty());
  QVERIFY(cameras.size() == 2 && cameras[0].online && !cameras[1].online);
  QCOMPARE(cameras[1].name, std::string("Yard camera"));
  QCOMPARE(cameras[1].region_index_code, regions[0].index_code);

  const auto favorites = [](const CClient& client) {
    std::vector<std::string> codes{"untouched"};
    std::string text;
    return client->GetFavoriteCameras(codes, &text) ? codes : std::vector<std::string>{text};
  };
  const std::string gate = cameras[0].index_code, yard = cameras[1].index_code;
  for (const std::string& code : {yard, gate, gate}) {
    QVERIFY(ann_->SetFavoriteCamera(code, true, &error));
  }
  QCOMPARE(favorites(ann_), (std::vector<std::string>{gate, yard}));
  QVERIFY(favorites(bob_).empty());
  QVERIFY(bob_->SetFavoriteCamera(yard, true, &error) && ann_->SetFavoriteCamera(yard, false, &error));
  for (const std::string& no_code : {std::string(), std::string("1"), "0" + gate, std::string("-1")}) {
    error.clear();
    QVERIFY2(!ann_->SetFavoriteCamera(no_code, true, &error) && !error.empty(), no_code.c_str());
  }
  QCOMPARE(favorites(CClient(fixture_.get(), "ann")), std::vector<std::string>{gate});
  QCOMPARE(favorites(bob_), std::vector<std::string>{yard});
  fixture_->RunPastTheStore("DELETE FROM camera WHERE id = " + QString::fromStdString(yard));
  QVERIFY(favorites(bob_).empty());
  ann_->Close();
  QVERIFY(!ann_->GetCameraTree(regions, cameras, &error) && !ann_->SetFavoriteCamera(gate, true, &error));
}

// Cameras come and go while the store is open.
void StoreSitesTest::SaysWhatCamerasCanDoNow() {
  const auto abilities = [this](const std::string& camera) {
    ptz_plugin_protocol::GetPresetResponse presets;
    play_plugin_protocol::GetStreamAbiResponse streams;
    QStringList said;
    if (ann_->GetPresets({camera}, presets) && ann_->GetStreamAbility({camera}, streams)) {
      for (const auto& preset : presets.presets) {
        said.append(QString::number(preset.preset_no) + ' ' + QString::fromStdString(preset.name));
      }
      for (const int32_t stream : streams.stream_types) {
        said.append("stream " + QString::number(stream));
      }
      return said.join(", ");
    }
    return QString::fromStdString(presets.error_info + streams.error_info);
  };
  const QString gone = "The camera does not exist.";
  QCOMPARE(abilities("1001"), QString("1 Wide, 2 Close, stream 0, stream 1"));
  QCOMPARE(abilities("1002"), QString("stream 0"));
  QCOMPARE(abilities("5000"), gone);
  fixture_->RunPastTheStore("INSERT INTO camera (id, region_id, name, online) VALUES (5000, 1, 'New', 1)");
  QCOMPARE(abilities("5000"), QString());
  fixture_->RunPastTheStore("INSERT INTO camera_preset (camera_id, preset_no, name) VALUES (5000, 7, 'Gate')");
  QCOMPARE(abilities("5000"), QString("7 Gate"));
  fixture_->RunPastTheStore("DELETE FROM camera WHERE id = 1001 OR id = 1002");
  for (const char* no_code : {"1001", "1002", "", "0", "05000", "5000x"}) {
    QCOMPARE(abilities(no_code), gone);
  }
}

QTEST_GUILESS_MAIN(StoreSitesTest)
#include "store_sites_test.moc"
