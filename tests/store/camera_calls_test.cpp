#include <QtTest>

#include "store_fixture.h"

using namespace StoreTest;

// What the store says of the site's cameras.
class CameraCallsTest : public CStoreTest {
  Q_OBJECT
 private Q_SLOTS:
  void KeepsFavoriteCamerasPerUser();
  void SaysWhatCamerasCanDoNow();
};

void CameraCallsTest::KeepsFavoriteCamerasPerUser() {
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
void CameraCallsTest::SaysWhatCamerasCanDoNow() {
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

QTEST_GUILESS_MAIN(CameraCallsTest)
#include "camera_calls_test.moc"
