#include "panel_stage.h"
#include "view_model_data_manager.h"

using namespace TarnPlanView;
using TarnTest::CPanelStage;
using view_plugin_protocol::UpdatePlanRequest;

// Which row is current when rows have gone and come again.
class CurrentRowTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void OutlastsAReload_data();
  void OutlastsAReload();
  void OutlastsSavesByAnyone();
};

void CurrentRowTest::OutlastsAReload_data() {
  QTest::addColumn<QString>("row");
  QTest::addColumn<bool>("load_all");
  QTest::addColumn<QString>("act");
  QTest::addColumn<QString>("current");
  const auto add = [](const char* name, const char* row, bool load_all, const char* act, const char* current) {
    QTest::newRow(name) << QString(row) << load_all << QString(act) << QString(current);
  };
  add("plan", "A1 plan 10", false, "", "A1 plan 10");
  add("plan, all loaded", "A1 plan 10", true, "", "A1 plan 10");
  add("group, all loaded", "A1", true, "", "A1");
  add("below a closed group", "A1 plan 2", false, "collapse", "A1 plan 2");
  add("below a closed group, all loaded", "A1 plan 2", true, "collapse", "A1 plan 2");
  add("root", "Plans", false, "", "Plans");
  add("gone since", "A1 plan 10", false, "delete", "Plans");
  add("user goes on", "A1 plan 10", false, "choose", "Public B");
  add("next user", "A1 plan 10", false, "switch", "Plans");
  add("second loss before the rows are back", "A1 plan 10", false, "again", "A1 plan 10");
}

// A lost connection ends in a reload of all trees; the user finds the tree as he left it.
void CurrentRowTest::OutlastsAReload() {
  QFETCH(QString, row);
  QFETCH(bool, load_all);
  QFETCH(QString, act);
  QFETCH(QString, current);
  CPanelStage stage(Opened({{"load_all", load_all}}));
  stage.Choose(row);
  if (act == "collapse") {
    stage.Tree().collapse(stage.Row("Public A"));
    QCOMPARE(stage.Current(), row);
  } else if (act == "delete") {
    QCOMPARE(fixture_.InStore().DeletePlan(fixture_.Code(row)), QString());
  } else if (act == "switch") {
    stage.Panel().SwitchUserUpdate();
  }
  auto& manager = CViewModelDataManager::Instance();
  const auto reload = [&] {
    manager.OnUpdateViewModelData();
    QTRY_VERIFY(manager.IsViewModelInitFinish() && stage.Tree().isExpanded(stage.Tree().model()->index(0, 0)));
  };
  Services().Hold("GetPlansInGroup");
  reload();
  if (act == "again") {
    reload();
  } else if (act == "choose") {
    stage.Tree().setCurrentIndex(stage.Tree().RowOf(fixture_.Code(current), true));
  }
  Services().ReleaseAll();
  QTRY_COMPARE(stage.Current(), current);
  fixture_.Drain();
  QCOMPARE(stage.Current(), current);
}

void CurrentRowTest::OutlastsSavesByAnyone() {
  CPanelStage stage(Opened());
  UpdatePlanRequest request = TarnTest::ChangedPlan(fixture_.Code("Public A plan 2"), "");
  QSignalSpy saved(&stage.Controller(), &CStandardViewController::SignalUpdatePlanSucc);
  const auto rename = [&](const char* before, const char* after) {
    request.plan_name = after;
    stage.Controller().UpdatePlanParam(request, before);
    QVERIFY(saved.wait());
  };
  stage.Choose("Public A plan 2");
  rename("Public A plan 2", "Public A plan 20");
  QCOMPARE(stage.Current(), QString("Public A plan 20"));
  stage.Choose("Public A plan 10");
  rename("Public A plan 20", "Public A plan 2");
  QCOMPARE(stage.Current(), QString("Public A plan 10"));
  stage.Choose("Public A plan 2");
  request.parent_index_code = fixture_.Code("Public B").toStdString();  // its rows have not been fetched yet
  rename("Public A plan 2", "Public A plan 2");
  QCOMPARE(stage.Current(), QString("Public A"));
}

QTEST_MAIN(CurrentRowTest)
#include "test_current_row.moc"
