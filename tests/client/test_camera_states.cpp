#include <QtTest>
#include <atomic>

#include "TarnHost/host_services.h"
#include "cameras/camera_states.h"
#include "plan_test.h"

namespace {

/// A site whose only camera comes and goes, and that may not answer.
class CFlickeringSite : public TarnTest::CRecordingServices {
 public:
  using CRecordingServices::CRecordingServices;
  bool GetCameraTree(std::vector<ResourceTreeKit::CRegionItemInfo>&,
                     std::vector<ResourceTreeKit::CCameraItemInfo>& cameras, std::string*) override {
    ++looks;
    cameras = {{"101", "Gate", "1", online}};
    return answers;
  }
  std::atomic<bool> online{false}, answers{true};
  std::atomic<int> looks{0};
};

}  // namespace

class CameraStatesTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void LooksAgainWhileSomebodyWatches() {
    Open();
    const auto site = std::make_shared<CFlickeringSite>(TarnHost::InstalledHostServices());
    TarnHost::InstallHostServices(site);
    TarnClient::CCameraStates states(nullptr, 20);                  // instead of half a minute
    QVERIFY(states.IsOnline("101") && states.IsOnline("unknown"));  // nothing is known yet
    QTRY_VERIFY(!states.IsOnline("101"));
    QVERIFY(states.IsOnline("unknown"));

    states.Watch(true);
    site->online = true;
    QTRY_VERIFY(states.IsOnline("101"));
    site->online = false;
    QTRY_VERIFY(!states.IsOnline("101"));
    site->answers = false;
    site->online = true;
    const int before = site->looks;
    QTRY_VERIFY(site->looks > before + 2);
    QVERIFY(!states.IsOnline("101"));  // as it was

    states.Watch(false);
    QVERIFY(!states.findChild<QTimer*>()->isActive());
    TarnTest::CPlanFixture::Drain();
    site->answers = true;
    states.Watch(true);  // at once, and not after the pause
    QTRY_VERIFY(states.IsOnline("101"));
  }
};

QTEST_MAIN(CameraStatesTest)
#include "test_camera_states.moc"
