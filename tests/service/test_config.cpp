#include <QtTest>

#include "TarnUIDataController/skin_loader.h"
#include "plan_test.h"
#include "view_config_manager.h"

using namespace TarnPlanView;
using tarn_ui_data_controller::CSkinLoader;
using TarnTest::CPlanTest;

namespace {

struct Switch {
  const char* name;
  bool (CViewConfigManager::*get)() const;
  bool initially;
};

const Switch kSwitches[] = {
    {"load_all", &CViewConfigManager::IsLoadAll, false},
    {"create_under_root", &CViewConfigManager::CreatePlanUnderRootNode, false},
    {"enable_search", &CViewConfigManager::IsEnableSearch, true},
    {"enable_drag", &CViewConfigManager::IsEnableDrag, true},
    {"delete_with_children", &CViewConfigManager::IsSupportDelPlanWithChildren, true},
    {"show_mode", &CViewConfigManager::IsShowPlanOrView, false},
    {"timed_play", &CViewConfigManager::IsSupportTimedPlay, false},
    {"only_camera", &CViewConfigManager::OnlyCamera, false},
    {"move_public_private", &CViewConfigManager::MovePlanBetweenPublicAndPrivate, false},
    {"add_from_favorite", &CViewConfigManager::SupportAddCameraFromFavorite, false},
    {"smooth_stream", &CViewConfigManager::SupportSmoothStream, true},
    {"creation_info", &CViewConfigManager::ShowCreationInfo, false},
    {"save_single_cycle", &CViewConfigManager::IsSupportSaveSingleCycle, false},
    {"thumbnail", &CViewConfigManager::SupportThumbnail, true},
    {"group_cycle", &CViewConfigManager::IsSupportPlanGroupCycle, true},
};

QStringList SwitchesThatAreOn() {
  QStringList on;
  for (const Switch& entry : kSwitches) {
    if ((CViewConfigManager::Instance().*entry.get)()) {
      on << entry.name;
    }
  }
  return on;
}

}  // namespace

class ConfigTest : public CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void EachSwitchComesFromItsOwnField_data();
  void EachSwitchComesFromItsOwnField();
  void FailedCallKeepsTheDefaults();
  void ShowModeIsOnForOneAlone();
  void DarkSkinByName();
  void ReadOnce();
};

void ConfigTest::EachSwitchComesFromItsOwnField_data() {
  QTest::addColumn<QString>("name");
  for (const Switch& entry : kSwitches) {
    QTest::newRow(entry.name) << entry.name;
  }
}

void ConfigTest::EachSwitchComesFromItsOwnField() {
  QFETCH(QString, name);
  QMap<QString, int> switches;
  for (const Switch& entry : kSwitches) {
    switches[entry.name] = name == entry.name;
  }
  Open(switches, false);
  QCOMPARE(SwitchesThatAreOn(), QStringList(name));
}

void ConfigTest::FailedCallKeepsTheDefaults() {
  QMap<QString, int> switches;
  QStringList defaults;
  for (const Switch& entry : kSwitches) {
    switches[entry.name] = !entry.initially;
    if (entry.initially) {
      defaults << entry.name;
    }
  }
  Open(switches, false);
  Services().Fail("GetPlanConfig");
  QCOMPARE(SwitchesThatAreOn(), defaults);
  QVERIFY(CViewConfigManager::Instance().IsSupportPlan());
  QCOMPARE(fixture_.Log().Lines(), QStringList());
}

void ConfigTest::ShowModeIsOnForOneAlone() {
  for (const int mode : {-1, 0, 1, 2}) {
    Open({{"show_mode", mode}}, false);
    QCOMPARE(CViewConfigManager::Instance().IsShowPlanOrView(), mode == 1);
    Shut();
  }
}

void ConfigTest::DarkSkinByName() {
  for (const char* skin : {"white", "redblack"}) {
    Open({}, false);
    QVERIFY(CSkinLoader::Instance().LoadSkin(skin));
    Services().Fail("GetPlanConfig");  // the skin counts whatever came of the call
    QCOMPARE(CViewConfigManager::Instance().IsDarkSkin(), QString(skin) == "redblack");
    QVERIFY(CSkinLoader::Instance().LoadSkin("redblack"));
    QCOMPARE(CViewConfigManager::Instance().IsDarkSkin(), QString(skin) == "redblack");  // a later change is not seen
    Shut();
  }
}

void ConfigTest::ReadOnce() {
  Open({}, false);
  CViewConfigManager::Instance().SetIsSupportPlan(false);
  QVERIFY(!CViewConfigManager::Instance().IsSupportPlan());
  fixture_.Start();
  QCOMPARE(Services().Count("GetPlanConfig"), 1);
  for (const auto& call : Services().Calls()) {
    QVERIFY(call.name != "GetPlanConfig" || call.on_gui_thread);
  }
}

QTEST_MAIN(ConfigTest)
#include "test_config.moc"
