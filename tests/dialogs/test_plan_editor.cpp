#include <QAccessible>
#include <QComboBox>
#include <QMimeData>
#include <QSpinBox>
#include <QTimeEdit>

#include "MarUIControl/range_time_edit.h"
#include "MarUIControl/switch_control.h"
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

}  // namespace

/// The editor under the hands of a user: what he can make, and what he cannot.
class PlanEditorTest : public TarnTest::CEditorTest {
  Q_OBJECT
 private Q_SLOTS:
  void MakesAPlanByKeys();
  void UndoGoesBackToTheStart();
  void TakesDropsOfCamerasOnly();
  void ADropIsNotCoveredByTheNextCamera();
  void ShowsWhatItDoesNotKnow();
  void RefusesWhatCannotBeSaved();
  void StrangeDwellTimesStay();
  void GroupVanishes();
  void TabVisitsNamedControlsInOrder();

 private:
  QString Camera(const CEditorStage& stage, int place) const {
    const auto cameras = stage.Cameras().CamerasBelow(stage.Cameras().model()->index(0, 0));
    return QString::fromStdString(cameras.value(place % cameras.size()).index_code);
  }
  QByteArray Payload(const CEditorStage& stage, int first, int count) {
    QByteArrayList cameras;
    for (int place = first; place < first + count; ++place) {
      cameras << CameraJson(Camera(stage, place), "_type_camera_", fixture_.Store().StationId().c_str());
    }
    return '[' + cameras.join(',') + ']';
  }
  QString Add(const char* name, const std::list<PlanPage>& pages) {
    std::string code;
    fixture_.InStore().AddPlan(TarnTest::NewPlan(name, fixture_.Code("Gates"), pages), &code);
    return QString::fromStdString(code);
  }
};

void PlanEditorTest::MakesAPlanByKeys() {
  CEditorStage stage(Begun());
  stage.OpenNew(fixture_.Code("Gates"));
  auto* name = &stage.Name();
  QVERIFY(!stage.editor->IsDirty());
  QTRY_COMPARE(QApplication::focusWidget(), name);
  QTest::keyClicks(name, "North/ gate camera");  // the slash cannot be typed
  QTest::keyClick(name, Qt::Key_2, Qt::ControlModifier);
  QTest::keyClick(name, Qt::Key_F, Qt::ControlModifier);
  auto* search = stage.Find<QLineEdit>("camera_search");
  QCOMPARE(QApplication::focusWidget(), search);
  QTest::keyClicks(search, "CAM 0");
  QTest::keyClick(search, Qt::Key_Return);  // many: the user has to choose
  QTRY_COMPARE(QApplication::focusWidget(), &stage.Cameras());
  QVERIFY(!stage.Cameras().CameraAt(stage.Cameras().currentIndex()).index_code.empty());
  QTest::keyClick(name, Qt::Key_F, Qt::ControlModifier);
  QTest::keyClicks(search, "CAM 001");
  QTest::keyClick(search, Qt::Key_Return);  // the only one
  QTRY_COMPARE(stage.Windows().first(), QString("CAM 001 Gate"));
  QTest::keyClick(search, Qt::Key_Down);
  QTRY_COMPARE(QApplication::focusWidget(), &stage.Cameras());
  QVERIFY(!stage.Cameras().CameraAt(stage.Cameras().currentIndex()).index_code.empty());
  QCOMPARE(stage.Windows(), QStringList({"CAM 001 Gate", "empty", "empty", "empty"}));
  QCOMPARE(stage.Grid().CurrentWindow(), 2);
  QTest::keyClick(&stage.Cameras(), Qt::Key_Return);
  QTest::keyClick(&stage.Grid(), Qt::Key_Up);  // window 3 was next
  QCOMPARE(stage.Grid().CurrentWindow(), 1);
  QTest::keyClick(&stage.Grid(), Qt::Key_Delete);
  QTest::keyClick(&stage.Grid(), Qt::Key_S, Qt::ControlModifier);
  QTRY_COMPARE(stage.closed, 1);
  const auto stored = Stored(fixture_.Code("North gate camera"));
  QCOMPARE(stored.group_index_code, fixture_.Code("Gates").toStdString());
  const PlanPage& page = stored.pages.front();
  QVERIFY(stored.pages.size() == 1 && page.split_type == 2);
  QVERIFY(page.windows.size() == 1 && page.windows.front().window_no == 2);
  QVERIFY(!stored.thumbnail.empty());
  stage.OpenNew(fixture_.Code("Gates"));
  QVERIFY(search->text().isEmpty() && stage.Cameras().FilterText().isEmpty());
}

void PlanEditorTest::UndoGoesBackToTheStart() {
  CEditorStage stage(Begun());
  stage.Open(patrol_);
  const QStringList at_first = stage.Windows();
  auto& grid = stage.Grid();
  QVERIFY(Drop(grid, 2, Payload(stage, 30, 1)));
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
  auto* name = &stage.Name();
  name->setFocus();
  QTest::keyClick(name, Qt::Key_End);
  QTest::keyClicks(name, "Changed");
  stage.Find<MarUIControl::CSwitchControl>("auto_run_switch")->click();
  QVERIFY(stage.editor->IsDirty() && !stage.Find<QLabel>("editor_dirty_mark")->isHidden());
  for (int step = 0; step < 40 && stage.Find<QWidget>("undo_btn")->isEnabled(); ++step) {
    QTest::keyClick(name, Qt::Key_Z, Qt::ControlModifier);
  }
  QVERIFY(!stage.editor->IsDirty() && stage.Find<QLabel>("editor_dirty_mark")->isHidden());
  QCOMPARE(name->text(), QString("Night patrol"));
  stage.Pages().setCurrentIndex(stage.Pages().model()->index(0, 0));
  QCOMPARE(stage.Windows(), at_first);
  while (stage.Find<QWidget>("redo_btn")->isEnabled()) {
    stage.Click("redo_btn");
  }
  QCOMPARE(name->text(), QString("Night patrolChanged"));
  stage.Save();
  QTRY_COMPARE(stage.closed, 1);
  const auto stored = Stored(patrol_);
  QVERIFY(stored.name == "Night patrolChanged" && !stored.auto_run && !stored.thumbnail.empty());
  QCOMPARE(stored.pages.size(), size_t(3));  // one came, one went
  QCOMPARE(stored.pages.front().windows.size(), size_t(3));
}

void PlanEditorTest::TakesDropsOfCamerasOnly() {
  CEditorStage stage(Begun());
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
  // A region goes on where the page ends, and a tip says so.
  QVERIFY(Drop(grid, 2, Payload(stage, 0, 5)));
  QCOMPARE(stage.Windows()[0], QString("empty"));
  QCOMPARE(stage.Text("filled_count"), QString("5 / 128"));
  QCOMPARE(stage.Pages().model()->rowCount(), 2);
  QCOMPARE(stage.Pages().currentIndex().row(), 0);
  QCOMPARE(stage.TakeTips(), QStringList({"Cameras placed: 5 of 5. Pages used: 2, new: 1."}));
  QTest::keyClick(&grid, Qt::Key_Z, Qt::ControlModifier);
  QVERIFY(!stage.editor->IsDirty());
  stage.Find<QSpinBox>("dwell_spin")->findChild<QLineEdit*>()->setText("77");  // not left yet
  QVERIFY(Drop(grid, 2, Payload(stage, 0, 5)));
  stage.Pages().setCurrentIndex(stage.Pages().model()->index(1, 0));
  QCOMPARE(stage.Find<QSpinBox>("dwell_spin")->value(), 77);
}

void PlanEditorTest::ADropIsNotCoveredByTheNextCamera() {
  CEditorStage stage(Begun());
  stage.OpenNew(fixture_.Code("Gates"));
  auto& grid = stage.Grid();
  const auto put = [this, &stage](int camera) {
    const DraftCamera chosen{Camera(stage, camera), QStringLiteral("camera")};
    stage.Grid().PutAndGoOn(chosen);
  };
  const auto filled = [&stage] {
    QString windows;
    for (const QString& window : stage.Windows()) {
      windows += window == "empty" ? '-' : 'x';
    }
    return windows;
  };
  QVERIFY(Drop(grid, 3, Payload(stage, 0, 1)));
  QCOMPARE(grid.CurrentWindow(), 3);  // its stream may be chosen next
  const QString dropped = grid.accessibleName();
  put(1);
  QCOMPARE(filled(), QString("--xx"));
  QCOMPARE(grid.CurrentWindow(), 1);  // on from the start of the page
  QVERIFY(Drop(grid, 2, Payload(stage, 2, 1)));
  QTest::keyClick(&grid, Qt::Key_Z, Qt::ControlModifier);
  put(3);
  QCOMPARE(filled(), QString("-xxx"));  // the drop was taken back, and its window is the one
  QTest::mouseClick(&grid, Qt::LeftButton, Qt::NoModifier, grid.WindowRect(3).center());
  QCOMPARE(grid.accessibleName(), dropped);
  put(4);  // chosen by hand
  QCOMPARE(filled(), QString("-xxx"));
  QCOMPARE(grid.CurrentWindow(), 1);
  grid.SetCurrentWindow(3);
  QVERIFY(grid.accessibleName() != dropped);
}

void PlanEditorTest::ShowsWhatItDoesNotKnow() {
  Begin({{"only_camera", 1}, {"thumbnail", 0}});
  PlanPage page = TarnTest::Page(1, 2, {TarnTest::Window(1, "987654"), TarnTest::Window(2, "map 3", 7)});
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
  stage.Click("clear_page_btn");
  QCOMPARE(stage.TakeTips().size(), 1);
  QCOMPARE(stage.Windows(), QStringList({"empty", "Other content", "empty", "empty"}));
  QTest::keyClick(&stage.Grid(), Qt::Key_Z, Qt::ControlModifier);
  stage.Grid().SetCurrentWindow(3);
  QVERIFY(Drop(stage.Grid(), 3, Payload(stage, 0, 1)));
  stage.Save();
  QTRY_COMPARE(stage.closed, 1);
  const auto stored = Stored(code);
  const PlanWindow map = *std::next(stored.pages.front().windows.begin());
  QVERIFY(map.content_kind == 7 && map.resource_code == "map 3" && map.extra == page.windows.back().extra);
  QVERIFY(stored.pages.front().extra == page.extra && stored.thumbnail.empty());
}

void PlanEditorTest::RefusesWhatCannotBeSaved() {
  CEditorStage stage(Begun());
  stage.OpenNew(QString());
  auto* name = &stage.Name();
  const auto refused = [&stage] {
    stage.Save();
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
  QCOMPARE(times->findChild<QTimeEdit*>()->accessibleDescription(), note->text());
  QCOMPARE(Services().Count("AddPlan"), 0);
  QVERIFY(refused().isEmpty());  // reversed times pass: the note says what they mean
  QTRY_COMPARE(stage.closed, 1);
  const auto requests = Services().Requests<AddPlanRequest>();
  QCOMPARE(requests.back().begin_time, std::string("22:00:00"));
}

void PlanEditorTest::StrangeDwellTimesStay() {
  using TarnTest::Page;
  CEditorStage stage(Begun());
  stage.Open(Add("Dwells", {Page(1, 1, {}, "", 0), Page(2, 1, {}, "", -7), Page(3, 1, {}, "", 2000000000)}));
  auto* spin = stage.Find<QSpinBox>("dwell_spin");
  for (const int page : {2, 0, 1}) {
    stage.Pages().setCurrentIndex(stage.Pages().model()->index(page, 0));
    QCOMPARE(spin->value(), QVector<int>({0, -7, 2000000000})[page]);
  }
  QVERIFY(!stage.editor->IsDirty());
  spin->selectAll();
  QTest::keyClicks(spin, "3");
  QTest::keyClick(spin, Qt::Key_Return);
  QCOMPARE(spin->value(), kMinDwellSeconds);
  QTest::keyClick(spin, Qt::Key_Z, Qt::ControlModifier);
  QCOMPARE(spin->value(), -7);
}

void PlanEditorTest::GroupVanishes() {
  CEditorStage stage(Begun());
  stage.OpenNew(fixture_.Code("Roof"));
  auto* groups = stage.editor->findChild<CGroupChooser*>();
  QCOMPARE(groups->CurrentText(), QString("Roof"));
  stage.controller->DeletePlanGroupByIndex(GroupRow("Roof"));
  QTRY_COMPARE(groups->CurrentText(), QString());
  stage.Name().setText("Renamed since");
  QCOMPARE(groups->CurrentText(), QString());
  stage.Save();
  QCOMPARE(stage.TakeTips().size(), 1);
  QCOMPARE(Services().Count("AddPlan"), 0);
  const QModelIndex gates = groups->LocationModel()->match(groups->LocationModel()->index(0, 0), Qt::DisplayRole,
                                                           "Gates", 1, Qt::MatchExactly | Qt::MatchRecursive)[0];
  groups->SetCurrentIndex(gates);
  Q_EMIT groups->SignalIndexActivated(gates);
  stage.Save();
  QTRY_COMPARE(stage.closed, 1);
  QCOMPARE(Services().Requests<AddPlanRequest>().back().parent_index_code, fixture_.Code("Gates").toStdString());
}

void PlanEditorTest::TabVisitsNamedControlsInOrder() {
  CEditorStage stage(Begun());
  stage.Open(patrol_);
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
  const QStringList landmarks{"plan_name_edit", "target_group_box", "camera_search", "camera_tree",
                              "page_list",      "window_grid",      "save_plan_btn"};
  const auto is_other = [&landmarks](const QString& name) { return !landmarks.contains(name); };
  order.erase(std::remove_if(order.begin(), order.end(), is_other), order.end());
  QCOMPARE(order, landmarks);
}

QTEST_MAIN(PlanEditorTest)
#include "test_plan_editor.moc"
