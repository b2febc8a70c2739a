#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QMimeData>
#include <QSpinBox>

#include "MarUIControl/range_time_edit.h"
#include "MarUIControl/switch_control.h"
#include "TarnHost/plan_site.h"
#include "editor_stage.h"
#include "group_chooser.h"
#include "plan_draft.h"

using namespace TarnPlanView;
using namespace view_plugin_protocol;
using TarnTest::CEditorStage;

namespace {

QByteArray CameraJson(const QString& code, const QString& type, const QString& station) {
  return QStringLiteral(
             R"({"_source_id_":"%1","_station_id_":"%2","_source_type_":"%3","_normal_resource":{"name":"X"}})")
      .arg(code, station, type)
      .toUtf8();
}

QByteArray Json(const QStringList& cameras) {
  return '[' + cameras.join(',').toUtf8() + ']';
}

/// Drops on a window of the grid; whether it was taken.
bool Drop(CWindowGrid& grid, int window_no, const QByteArray& payload) {
  QMimeData cargo;
  cargo.setData(QStringLiteral("_drag_json_data_"), payload);
  const QPoint at = grid.WindowRect(window_no).center();
  QDragEnterEvent enter(at, Qt::CopyAction, &cargo, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&grid, &enter);
  QDropEvent drop(at, Qt::CopyAction, &cargo, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&grid, &drop);
  return enter.isAccepted() && drop.isAccepted();
}

PlanWindow Window(int window_no, int kind, const std::string& code) {
  return {window_no, kind, code, code, 0, 0};
}

}  // namespace

class PlanEditorTest : public TarnTest::CPlanTest {
  Q_OBJECT
 private Q_SLOTS:
  void MakesAPlanByKeys();
  void UndoGoesBackToTheStart();
  void TakesDropsOfCamerasOnly();
  void HoldsAtMost128();
  void SavesOnceAndKeepsInputOnFailure();
  void ChangedElsewhere_data();
  void ChangedElsewhere();
  void DeletedElsewhere();
  void ShowsWhatItDoesNotKnow();
  void RefusesWhatCannotBeSaved();
  void StrangeDwellTimesStay();
  void AsksBeforeChangesAreLost();
  void LoadsWhatItWaitsFor();
  void GroupVanishes();
  void OutlivesModelAndController();
  void TabVisitsNamedControlsInOrder();

 private:
  void Begin(const QMap<QString, int>& switches = {}) {
    TarnTest::PlanFixtureOptions options;
    options.switches = {{"load_all", 1}, {"timed_play", 1}};
    for (auto it = switches.begin(); it != switches.end(); ++it) {
      options.switches[it.key()] = it.value();
    }
    options.site = TarnHost::MakeDemoSite;
    QString error;
    QVERIFY2(fixture_.Open(options, &error), qPrintable(error));
    fixture_.Start();
  }
  QString Camera(const CEditorStage& stage, int place) const {
    const auto cameras = stage.Cameras().CamerasBelow(stage.Cameras().model()->index(0, 0));
    return QString::fromStdString(cameras.value(place).index_code);
  }
  QString Payload(const CEditorStage& stage, int first, int count) {
    QStringList cameras;
    for (int place = first; place < first + count; ++place) {
      cameras.append(CameraJson(Camera(stage, place), "_type_camera_", fixture_.Store().StationId().c_str()));
    }
    return cameras.join(',');
  }
  // Another client's hand: the plan gets this name.
  void RenameElsewhere(const QString& code, const std::string& name) {
    const auto plan = CEditorStage::Stored(code);
    UpdatePlanRequest request;
    request.plan_index_code = plan.index_code;
    request.plan_name = name;
    request.parent_index_code = plan.group_index_code;
    request.pages = plan.pages;
    UpdatePlanResponse response;
    QVERIFY(fixture_.Store().UpdatePlan(request, response));
  }
  QString Add(const std::string& name, const std::list<PlanPage>& pages) {
    AddPlanRequest request;
    request.plan_name = name;
    request.parent_index_code = fixture_.Code("Gates").toStdString();
    request.pages = pages;
    AddPlanResponse response;
    fixture_.Store().AddPlan(request, response);
    return QString::fromStdString(response.index_code);
  }
};

void PlanEditorTest::MakesAPlanByKeys() {
  Begin();
  CEditorStage stage(fixture_);
  stage.OpenNew(fixture_.Code("Gates"));
  auto* name = stage.Find<QLineEdit>("plan_name_edit");
  QVERIFY(!stage.editor->IsDirty());
  QTRY_COMPARE(QApplication::focusWidget(), name);
  QTest::keyClicks(name, "North/ gate camera");  // the slash cannot be typed
  QTest::keyClick(name, Qt::Key_2, Qt::ControlModifier);
  QTest::keyClick(name, Qt::Key_F, Qt::ControlModifier);
  auto* search = stage.Find<QLineEdit>("camera_search");
  QCOMPARE(QApplication::focusWidget(), search);
  QTest::keyClicks(search, "CAM 001");
  QTRY_COMPARE(stage.Cameras().FilterText(), QString("CAM 001"));
  QTRY_VERIFY(!stage.Cameras().IsFiltering());
  QTest::keyClick(search, Qt::Key_Down);
  QCOMPARE(QApplication::focusWidget(), &stage.Cameras());
  stage.Cameras().expandAll();
  QTRY_VERIFY([&] {
    QTest::keyClick(&stage.Cameras(), Qt::Key_Down);
    return !stage.Cameras().CameraAt(stage.Cameras().currentIndex()).index_code.empty();
  }());
  QTest::keyClick(&stage.Cameras(), Qt::Key_Return);
  QCOMPARE(stage.Windows(), QStringList({"CAM 001 Gate", "empty", "empty", "empty"}));
  QCOMPARE(stage.Grid().CurrentWindow(), 2);
  QTest::keyClick(&stage.Cameras(), Qt::Key_Return);
  QTest::keyClick(&stage.Grid(), Qt::Key_Up);  // window 3 was next
  QCOMPARE(stage.Grid().CurrentWindow(), 1);
  QTest::keyClick(&stage.Grid(), Qt::Key_Delete);
  QTest::keyClick(&stage.Grid(), Qt::Key_S, Qt::ControlModifier);
  QTRY_COMPARE(stage.closed, 1);
  const auto stored = CEditorStage::Stored(fixture_.Code("North gate camera"));
  QCOMPARE(stored.group_index_code, fixture_.Code("Gates").toStdString());
  QCOMPARE(stored.pages.size(), size_t(1));
  QCOMPARE(stored.pages.front().split_type, 2);
  QCOMPARE(stored.pages.front().windows.size(), size_t(1));
  QCOMPARE(stored.pages.front().windows.front().window_no, 2);
  QVERIFY(!stored.thumbnail.empty());
}

void PlanEditorTest::UndoGoesBackToTheStart() {
  Begin();
  const QString code = fixture_.Code("Night patrol");
  CEditorStage stage(fixture_);
  stage.Open(code);
  const QStringList at_first = stage.Windows();
  auto& grid = stage.Grid();
  QVERIFY(Drop(grid, 2, Json({Payload(stage, 30, 1)})));
  QTest::keyClick(&grid, Qt::Key_Left, Qt::ControlModifier);  // 2 <-> 1
  QCOMPARE(stage.Windows()[0], stage.Text("window_title").section(": ", 1));
  QCOMPARE(stage.Windows()[1], at_first[0]);
  QTest::keyClick(&grid, Qt::Key_End);
  QTest::keyClick(&grid, Qt::Key_Delete);
  QCOMPARE(stage.Windows()[3], QString("empty"));
  QCOMPARE(stage.Text("filled_count"), QString("13 / 128"));
  stage.Click("duplicate_page_btn");
  QCOMPARE(stage.Text("filled_count"), QString("16 / 128"));
  QTest::keyClick(&stage.Pages(), Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
  QCOMPARE(stage.Pages().currentIndex().row(), 2);
  stage.Click("split_16_btn");
  QCOMPARE(stage.Windows().size(), 16);
  stage.Find<QSpinBox>("dwell_spin")->setValue(90);
  auto* presets = stage.Find<QComboBox>("preset_box");
  grid.SetCurrentWindow(1);
  QTRY_COMPARE(presets->count(), 3);
  QTest::keyClick(presets, Qt::Key_Down);
  QVERIFY(grid.accessibleName().contains("Preset 1"));
  stage.Click("remove_page_btn");
  auto* name = stage.Find<QLineEdit>("plan_name_edit");
  name->setFocus();
  QTest::keyClicks(name, "Changed");
  stage.Find<MarUIControl::CSwitchControl>("auto_run_switch")->click();
  QVERIFY(stage.editor->IsDirty());
  QVERIFY(!stage.Find<QLabel>("editor_dirty_mark")->isHidden());
  for (int step = 0; step < 40 && stage.Find<QWidget>("undo_btn")->isEnabled(); ++step) {
    QTest::keyClick(name, Qt::Key_Z, Qt::ControlModifier);
  }
  QVERIFY(!stage.editor->IsDirty());
  QVERIFY(stage.Find<QLabel>("editor_dirty_mark")->isHidden());
  QCOMPARE(name->text(), QString("Night patrol"));
  stage.Pages().setCurrentIndex(stage.Pages().model()->index(0, 0));
  QCOMPARE(stage.Windows(), at_first);
  while (stage.Find<QWidget>("redo_btn")->isEnabled()) {
    stage.Click("redo_btn");
  }
  QCOMPARE(name->text(), QString("Night patrolChanged"));
  stage.Click("save_plan_btn");
  QTRY_COMPARE(stage.closed, 1);
  const auto stored = CEditorStage::Stored(code);
  QCOMPARE(stored.name, std::string("Night patrolChanged"));
  QCOMPARE(stored.auto_run, false);
  QCOMPARE(stored.pages.size(), size_t(3));  // one came, one went
  QCOMPARE(stored.pages.front().windows.size(), size_t(3));
  QVERIFY(!stored.thumbnail.empty());
}

void PlanEditorTest::TakesDropsOfCamerasOnly() {
  Begin();
  CEditorStage stage(fixture_);
  stage.OpenNew(fixture_.Code("Gates"));
  auto& grid = stage.Grid();
  const QString station = fixture_.Store().StationId().c_str();
  const QByteArray good = CameraJson(Camera(stage, 0), "_type_camera_", station);
  for (const QByteArray& bad :
       {QByteArray(), QByteArray("[]"), QByteArray("{"), QByteArray("[7]"), good /* no list */,
        '[' + CameraJson("", "_type_camera_", station) + ']', '[' + CameraJson("7", "_type_view_", station) + ']',
        '[' + CameraJson("7", "_type_camera_", "another site") + ']', '[' + good + ",null]"}) {
    QVERIFY2(!Drop(grid, 1, bad), bad.constData());
  }
  QVERIFY(!stage.editor->IsDirty());
  // A region goes on where the page ends, and that is told.
  QVERIFY(Drop(grid, 2, Json({Payload(stage, 0, 5)})));
  QCOMPARE(stage.Windows()[0], QString("empty"));
  QCOMPARE(stage.Text("filled_count"), QString("5 / 128"));
  QCOMPARE(stage.Pages().model()->rowCount(), 2);
  QCOMPARE(stage.Pages().currentIndex().row(), 0);
  QCOMPARE(stage.TakeTips(), QStringList({"Cameras placed: 5 of 5. Pages used: 2, new: 1."}));
  QTest::keyClick(&grid, Qt::Key_Z, Qt::ControlModifier);
  QVERIFY(!stage.editor->IsDirty());
  stage.Find<QSpinBox>("dwell_spin")->findChild<QLineEdit*>()->setText("77");  // not left yet
  QVERIFY(Drop(grid, 2, Json({Payload(stage, 0, 5)})));
  stage.Pages().setCurrentIndex(stage.Pages().model()->index(1, 0));
  QCOMPARE(stage.Find<QSpinBox>("dwell_spin")->value(), 77);
}

void PlanEditorTest::HoldsAtMost128() {
  Begin();
  CEditorStage stage(fixture_);
  stage.OpenNew(fixture_.Code("Gates"));
  stage.Click("split_16_btn");
  for (int page = 0; page < 8; ++page) {
    if (page > 0) {
      stage.Click("add_page_btn");
    }
    QVERIFY(Drop(stage.Grid(), 1, Json({Payload(stage, 0, 16)})));
  }
  QCOMPARE(stage.Text("filled_count"), QString("128 / 128"));
  QCOMPARE(stage.TakeTips(), QStringList());
  stage.Grid().SetCurrentWindow(16);
  QTest::keyClick(&stage.Grid(), Qt::Key_Delete);
  QVERIFY(Drop(stage.Grid(), 1, Json({Payload(stage, 0, 3)})));
  QCOMPARE(stage.TakeTips(), QStringList("Cameras placed: 1 of 3. Pages used: 1, new: 0. Left out: 2. "
                                         "A plan holds at most 128 filled windows."));
  stage.Click("add_page_btn");
  Drop(stage.Grid(), 1, Json({Payload(stage, 0, 1)}));
  QCOMPARE(stage.TakeTips().size(), 1);
  QCOMPARE(stage.Text("filled_count"), QString("128 / 128"));
  stage.Click("save_plan_btn");
  QTRY_COMPARE(stage.closed, 1);
}

void PlanEditorTest::SavesOnceAndKeepsInputOnFailure() {
  Begin();
  CEditorStage stage(fixture_);
  stage.OpenNew(fixture_.Code("Gates"));
  auto* name = stage.Find<QLineEdit>("plan_name_edit");
  name->setText("Kept");
  Services().Fail("AddPlan", "disk full");
  QTest::keyClick(name, Qt::Key_S, Qt::ControlModifier);
  QTRY_VERIFY(name->isEnabled());
  QCOMPARE(stage.closed, 0);
  QVERIFY(stage.editor->IsDirty());
  QCOMPARE(name->text(), QString("Kept"));
  QCOMPARE(QApplication::focusWidget(), name);
  Services().Mend("AddPlan");
  Services().Hold("AddPlan");
  Services().ForgetCalls();
  stage.Click("save_plan_btn");
  QVERIFY(Services().WaitUntilHeld("AddPlan"));
  QVERIFY(!name->isEnabled());
  QCOMPARE(name->text(), QString("Kept"));
  QCOMPARE(stage.Text("editor_work"), QString("Saving..."));
  QTest::keyClick(stage.editor.get(), Qt::Key_S, Qt::ControlModifier);
  stage.editor->Save();
  QVERIFY(!stage.editor->MayClose());  // without a question: nothing can be lost yet
  QCOMPARE(stage.questions, QStringList());
  Services().Release("AddPlan");
  QTRY_COMPARE(stage.closed, 1);
  QCOMPARE(Services().Count("AddPlan"), 1);
  QVERIFY(!stage.editor->IsDirty());
  QVERIFY(!fixture_.Code("Kept").isEmpty());
}

void PlanEditorTest::ChangedElsewhere_data() {
  QTest::addColumn<QByteArray>("way");
  QTest::newRow("theirs") << QByteArray("load_theirs_btn");
  QTest::newRow("overwrite") << QByteArray("overwrite_btn");
  QTest::newRow("new") << QByteArray("save_as_new_btn");
}

void PlanEditorTest::ChangedElsewhere() {
  QFETCH(QByteArray, way);
  Begin();
  const QString code = fixture_.Code("Night patrol");
  CEditorStage stage(fixture_);
  stage.Open(code);
  auto* name = stage.Find<QLineEdit>("plan_name_edit");
  name->setText("Mine");
  RenameElsewhere(code, "Theirs");
  stage.Click("save_plan_btn");
  QTRY_VERIFY(stage.IsConflictShown());
  QVERIFY(stage.Text("conflict_text").contains("operator"));
  QVERIFY(name->isEnabled());
  QCOMPARE(name->text(), QString("Mine"));
  QCOMPARE(CEditorStage::Stored(code).name, std::string("Theirs"));
  stage.Click(way);
  if (way == "load_theirs_btn") {
    QCOMPARE(name->text(), QString("Theirs"));
    QVERIFY(!stage.editor->IsDirty());
    QVERIFY(!stage.IsConflictShown());
    return;
  }
  QTRY_COMPARE(stage.closed, 1);
  const bool overwritten = way == "overwrite_btn";
  QCOMPARE(CEditorStage::Stored(code).name, std::string(overwritten ? "Mine" : "Theirs"));
  QCOMPARE(fixture_.Code("Mine (copy)").isEmpty(), overwritten);
}

void PlanEditorTest::DeletedElsewhere() {
  Begin();
  const QString code = fixture_.Code("Night patrol");
  CEditorStage stage(fixture_);
  stage.Open(code);
  stage.Find<QLineEdit>("plan_name_edit")->setText("Mine");
  DeletePlanResquest request;
  request.plan_index_code = code.toStdString();
  DeletePlanResponse response;
  QVERIFY(fixture_.Store().DeletePlan(request, response));
  stage.Click("save_plan_btn");
  QTRY_VERIFY(stage.IsConflictShown());
  QVERIFY(stage.Find<QWidget>("load_theirs_btn")->isHidden());
  QVERIFY(stage.Find<QWidget>("overwrite_btn")->isHidden());
  stage.Click("save_as_new_btn");
  QTRY_COMPARE(stage.closed, 1);
  const auto again = CEditorStage::Stored(fixture_.Code("Mine"));  // there is none beside it: nothing is taken away
  QCOMPARE(again.pages.size(), size_t(3));
  QVERIFY(again.auto_run && again.index_code != code.toStdString());
}

void PlanEditorTest::ShowsWhatItDoesNotKnow() {
  Begin({{"only_camera", 1}, {"thumbnail", 0}});
  PlanPage page;
  page.page_no = 1;
  page.split_type = 2;
  page.windows = {Window(1, 1, "987654"), Window(2, 7, "map 3")};
  page.extra = R"({"colour":"red"})";
  page.windows.back().extra = R"({"zoom":{"x":1}})";
  const QString code = Add("Strange", {page});
  QVERIFY(!code.isEmpty());
  CEditorStage stage(fixture_);
  stage.Open(code);
  QTRY_VERIFY(stage.Windows()[0].endsWith("(not found)"));
  QCOMPARE(stage.Windows()[1], QString("Other content"));
  stage.Grid().SetCurrentWindow(2);
  QVERIFY(!stage.Find<QWidget>("stream_box")->isEnabled());
  QTest::keyClick(&stage.Grid(), Qt::Key_Left, Qt::ControlModifier);
  QCOMPARE(stage.TakeTips().size(), 1);  // it stays where it is
  QVERIFY(!stage.editor->IsDirty());
  stage.Grid().SetCurrentWindow(3);
  QVERIFY(Drop(stage.Grid(), 3, Json({Payload(stage, 0, 1)})));
  stage.Click("save_plan_btn");
  QTRY_COMPARE(stage.closed, 1);
  const PlanPage stored = CEditorStage::Stored(code).pages.front();
  const std::list<PlanWindow>& windows = stored.windows;
  QCOMPARE(windows.size(), size_t(3));
  QCOMPARE(std::next(windows.begin())->content_kind, 7);
  QCOMPARE(std::next(windows.begin())->resource_code, std::string("map 3"));
  QVERIFY(stored.extra == page.extra && std::next(windows.begin())->extra == page.windows.back().extra);
  QVERIFY(CEditorStage::Stored(code).thumbnail.empty());
}

void PlanEditorTest::RefusesWhatCannotBeSaved() {
  Begin();
  CEditorStage stage(fixture_);
  stage.OpenNew(QString());
  auto* name = stage.Find<QLineEdit>("plan_name_edit");
  const auto refused = [&stage] {
    stage.Click("save_plan_btn");
    return stage.TakeTips().value(0);
  };
  name->clear();
  QVERIFY(refused().contains("name"));
  name->setText("   ");
  QVERIFY(refused().contains("name"));
  name->setText("Fine");
  QVERIFY(refused().contains("group"));
  QCOMPARE(QApplication::focusWidget(), stage.Find<QWidget>("target_group_box"));
  stage.OpenNew("-1");
  QVERIFY(refused().contains("top"));
  stage.OpenNew(fixture_.Code("Gates"));
  auto* run = stage.Find<MarUIControl::CSwitchControl>("auto_run_switch");
  auto* times = stage.Find<MarUIControl::CRangeTimeEdit>("auto_run_times");
  auto* note = stage.Find<QLabel>("over_midnight_note_");
  run->click();
  QVERIFY(times->isEnabled());
  QVERIFY(refused().contains("end"));
  times->SetBeginTime(QTime(22, 0));
  times->SetEndTime(QTime(4, 0));
  QVERIFY(!note->isHidden());
  QCOMPARE(Services().Count("AddPlan"), 0);
  QVERIFY(refused().isEmpty());  // reversed times pass: the note says what they mean
  QTRY_COMPARE(stage.closed, 1);
  const auto requests = Services().Requests<AddPlanRequest>();
  QCOMPARE(requests.back().begin_time, std::string("22:00:00"));
}

void PlanEditorTest::StrangeDwellTimesStay() {
  Begin();
  std::list<PlanPage> pages(3);
  int page_no = 0;
  const int dwell[] = {0, -7, 2000000000};
  for (PlanPage& page : pages) {
    page.dwell_seconds = dwell[page_no];
    page.page_no = ++page_no;
  }
  const QString code = Add("Dwells", pages);
  CEditorStage stage(fixture_);
  stage.Open(code);
  auto* spin = stage.Find<QSpinBox>("dwell_spin");
  QList<int> loaded;
  for (const PlanPage& page : CEditorStage::Stored(code).pages) {
    stage.Pages().setCurrentIndex(stage.Pages().model()->index(loaded.size(), 0));
    QCOMPARE(spin->value(), page.dwell_seconds);
    loaded.append(page.dwell_seconds);
  }
  QVERIFY(!stage.editor->IsDirty());
  stage.Pages().setCurrentIndex(stage.Pages().model()->index(1, 0));
  spin->selectAll();
  QTest::keyClicks(spin, "3");
  QTest::keyClick(spin, Qt::Key_Return);
  QCOMPARE(spin->value(), kMinDwellSeconds);
  QTest::keyClick(spin, Qt::Key_Z, Qt::ControlModifier);
  QCOMPARE(spin->value(), loaded[1]);
  QTest::keyClick(spin, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  stage.Click("save_plan_btn");
  QTRY_COMPARE(stage.closed, 1);
  const auto stored = CEditorStage::Stored(code);
  QCOMPARE(stored.pages.front().dwell_seconds, loaded[0]);
  QCOMPARE(std::next(stored.pages.begin())->dwell_seconds, kMinDwellSeconds);
  QCOMPARE(stored.pages.back().dwell_seconds, loaded[2]);
}

void PlanEditorTest::AsksBeforeChangesAreLost() {
  Begin();
  CEditorStage stage(fixture_);
  stage.Open(fixture_.Code("Night patrol"));
  QTest::keyClick(&stage.Grid(), Qt::Key_Escape);
  QCOMPARE(stage.closed, 1);
  QCOMPARE(stage.questions, QStringList());
  for (const int answer : {0, 2, 1}) {
    stage.Open(fixture_.Code("Night patrol"));
    stage.Find<QLineEdit>("plan_name_edit")->setText("Renamed");
    stage.questions.clear();
    stage.closed = 0;
    stage.answer = answer;
    QTest::keyClick(&stage.Grid(), Qt::Key_Escape);
    QCOMPARE(stage.questions.size(), 1);
    QCOMPARE(stage.editor->IsDirty(), answer != 2);
    if (answer == 0) {
      QCOMPARE(stage.closed, 0);
      QCOMPARE(stage.Find<QLineEdit>("plan_name_edit")->text(), QString("Renamed"));
    } else {
      QTRY_COMPARE(stage.closed, 1);
    }
    QCOMPARE(fixture_.Code("Renamed").isEmpty(), answer != 1);
  }
}

void PlanEditorTest::LoadsWhatItWaitsFor() {
  Begin();
  CEditorStage stage(fixture_);
  const QString code = fixture_.Code("Night patrol");
  Services().Fail("GetPlanDetail", "gone fishing");
  stage.editor->OpenPlan(code);
  QVERIFY(!stage.Find<QWidget>("save_plan_btn")->isEnabled());
  QTRY_VERIFY(stage.IsConflictShown());
  QCOMPARE(stage.Text("conflict_text"), QString("gone fishing"));
  QVERIFY(!stage.Find<QWidget>("save_plan_btn")->isEnabled());
  Services().Mend("GetPlanDetail");
  stage.Click("retry_btn");
  QTRY_COMPARE(stage.Find<QLineEdit>("plan_name_edit")->text(), QString("Night patrol"));
  Services().Hold("GetPlanDetail", TarnTest::CRecordingServices::AfterCall);
  stage.editor->OpenPlan(code);
  QVERIFY(Services().WaitUntilHeld("GetPlanDetail"));
  stage.editor->OpenPlan(fixture_.Code("Gate overview"));  // the user has thought better of it
  Services().ReleaseAll();
  QTRY_COMPARE(stage.Find<QLineEdit>("plan_name_edit")->text(), QString("Gate overview"));
  TarnTest::CPlanFixture::Drain();
  QCOMPARE(stage.Find<QLineEdit>("plan_name_edit")->text(), QString("Gate overview"));
  auto other = CEditorStage::Stored(code);
  stage.editor->OnPlanInfo(other);
  QCOMPARE(stage.Find<QLineEdit>("plan_name_edit")->text(), QString("Gate overview"));
}

void PlanEditorTest::GroupVanishes() {
  Begin();
  CEditorStage stage(fixture_);
  stage.OpenNew(fixture_.Code("Roof"));
  auto* groups = stage.editor->findChild<CGroupChooser*>();
  QCOMPARE(groups->CurrentText(), QString("Roof"));
  stage.controller->DeletePlanGroupByIndex(fixture_.Public()->FindIndexByIndexCode(fixture_.Code("Roof"), true));
  QTRY_COMPARE(groups->CurrentText(), QString());
  stage.Click("save_plan_btn");
  QCOMPARE(stage.TakeTips().size(), 1);
  QCOMPARE(Services().Count("AddPlan"), 0);
  const QModelIndex gates = groups->LocationModel()->match(groups->LocationModel()->index(0, 0), Qt::DisplayRole,
                                                           "Gates", 1, Qt::MatchExactly | Qt::MatchRecursive)[0];
  groups->SetCurrentIndex(gates);
  Q_EMIT groups->SignalIndexActivated(gates);
  stage.Click("save_plan_btn");
  QTRY_COMPARE(stage.closed, 1);
  QCOMPARE(Services().Requests<AddPlanRequest>().back().parent_index_code, fixture_.Code("Gates").toStdString());
}

void PlanEditorTest::OutlivesModelAndController() {
  Begin();
  CEditorStage stage(fixture_);
  stage.Open(fixture_.Code("Night patrol"));
  stage.Find<QLineEdit>("plan_name_edit")->setText("Mine");
  Services().Hold("UpdatePlan");
  stage.Click("save_plan_btn");
  QVERIFY(Services().WaitUntilHeld("UpdatePlan"));
  stage.controller.reset();
  QCOMPARE(stage.TakeTips().size(), 1);
  QVERIFY(stage.Find<QWidget>("plan_name_edit")->isEnabled());
  Services().ReleaseAll();
  TarnTest::CPlanFixture::Drain();
  stage.Click("save_plan_btn");
  QCOMPARE(stage.TakeTips().size(), 1);
  QVERIFY(stage.editor->IsDirty());
}

void PlanEditorTest::TabVisitsNamedControlsInOrder() {
  Begin();
  CEditorStage stage(fixture_);
  stage.Open(fixture_.Code("Night patrol"));
  QStringList order;
  const QWidget* first = stage.Find<QWidget>("plan_name_edit");
  const QWidget* control = first;
  do {
    if (stage.editor->isAncestorOf(control) && control->isVisible() && control->isEnabled() &&
        (control->focusPolicy() & Qt::TabFocus) && !control->focusProxy()) {
      order.append(control->objectName());
      QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(control));
      QVERIFY2(spoken && !spoken->text(QAccessible::Name).isEmpty(), qPrintable(control->objectName()));
    }
    control = control->nextInFocusChain();
  } while (control != first);
  QStringList landmarks;
  for (const QString& name : order) {
    if (QStringList{"plan_name_edit", "target_group_box", "camera_search", "camera_tree", "page_list", "window_grid",
                    "save_plan_btn"}
            .contains(name)) {
      landmarks.append(name);
    }
  }
  QCOMPARE(landmarks, QStringList({"plan_name_edit", "target_group_box", "camera_search", "camera_tree", "page_list",
                                   "window_grid", "save_plan_btn"}));
}

QTEST_MAIN(PlanEditorTest)
#include "test_plan_editor.moc"
