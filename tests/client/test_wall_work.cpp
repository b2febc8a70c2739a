#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QToolButton>
#include <QtTest>

#include "MarUIControl/offer_strip.h"
#include "ResourceTreeKit/camera_tree.h"
#include "TarnHost/camera_access.h"
#include "WidgetKit/new_search_line.h"
#include "cameras/camera_panel.h"
#include "client_desk.h"
#include "composing/composer.h"
#include "save_plan_as_dlg.h"
#include "wall/same_pages.h"
#include "wall/wall_window.h"
#include "wall/window_grid.h"
#include "window/wall_desk.h"

using ResourceTreeKit::CCameraTree;
using TarnClient::WallCommand;
using TarnTest::CPlanFixture;
using view_plugin_protocol::GetPlanDetailResponse;
using view_plugin_protocol::PlanWindow;
using view_plugin_protocol::UpdatePlanRequest;

// Working on the wall in the client's own window, over a real store.
class WallWorkTest : public TarnTest::CClientDesk {
  Q_OBJECT

 private Q_SLOTS:
  void TheCamerasTabFillsTheWall();
  void SavesWhatIsInTheWindows();
  void AChangeElsewhereIsNotSavedOver();
  void WhatIsChangedDuringASaveIsSavedNext();
  void WhatLeavesDuringItsSaveIsSaved_data();
  void WhatLeavesDuringItsSaveIsSaved();
  void WhatWasChangedComesBack();
  void CamerasWithoutAPlanComeBackToo();
  void CamerasSavedAsNewPlanPlayOn();
  void AnotherUserGetsNothingBack();
  void ARenamedCameraIsCalledSoAtOnce();
  void KeysAreTheEditorsWhileItIsOpen();
  void TheWallTakesTheScreenAndGivesItBack();

 private:
  TarnClient::CComposer& Composer() { return window_->Desk().Composer(); }
  CCameraTree* Tree() { return window_->Desk().Cameras().Tree(); }
  MarUIControl::COfferStrip* Strip() { return Wall().Strip(); }
  std::string CodeIn(int window_no) {
    const PlanWindow* window = Wall().Arrangement().At(Wall().PageNumber() - 1, window_no);
    return window ? window->resource_code : std::string();
  }
  bool IsMarked() { return window_->findChild<QLabel*>("wall_changed")->isVisible(); }
  void OpenCameras() {
    window_->Desk().ShowCameras();
    QTRY_VERIFY(Tree()->IsLoaded() && Tree()->model()->rowCount() > 0);
  }
};

void WallWorkTest::TheCamerasTabFillsTheWall() {
  Open();
  QVERIFY(QTest::qWaitForWindowActive(window_.get()));
  auto* tabs = window_->findChild<QTabWidget*>();
  QCOMPARE(tabs->count(), 3);
  window_->ShowFamily(1);
  const auto* family = &window_->CurrentFamily();
  OpenCameras();
  QCOMPARE(&window_->CurrentFamily(), family);  // saving still asks in the panel that was in front
  window_->Desk().FocusRows();
  Tree()->expandAll();
  QModelIndex row = Tree()->model()->index(0, 0);
  while (Tree()->CameraAt(row).index_code.empty()) {
    row = Tree()->indexBelow(row);
  }
  Tree()->setCurrentIndex(row);
  QTest::keyClick(Tree(), Qt::Key_Return);
  QCOMPARE(CodeIn(1), Tree()->CameraAt(row).index_code);
  QVERIFY(!Wall().IsPlaying() && Wall().IsShowing());
  QTest::keyClick(Tree(), Qt::Key_3, Qt::ControlModifier);
  QCOMPARE(Wall().Grid()->Count(), 9);
  QVERIFY(window_->close());  // nothing plays, so nothing asks
}

void WallWorkTest::SavesWhatIsInTheWindows() {
  Open();
  Play("Public A plan 2");
  const GetPlanDetailResponse before = Stored("Public A plan 2");
  Composer().Run(WallCommand::Split9);
  Composer().Put({"7", "CAM 007"});
  QVERIFY(IsMarked());
  const auto arranged = Wall().Arrangement().PagesToSave();
  QSignalSpy changed(&Wall(), &TarnClient::CLiveWall::SignalPlanChanged);
  window_->Save();
  QTRY_VERIFY(TarnClient::SamePages(Stored("Public A plan 2").pages, arranged));
  QTRY_VERIFY(!IsMarked());
  QCOMPARE(Stored("Public A plan 2").revision, before.revision + 1);
  QCOMPARE(changed.size(), 0);
}

void WallWorkTest::AChangeElsewhereIsNotSavedOver() {
  Open();
  Play("Public A plan 2");
  Composer().Run(WallCommand::Split9);
  UpdatePlanRequest theirs = TarnTest::Unchanged(Stored("Public A plan 2"));
  theirs.pages.front().windows.front().preset_no = 7;
  QCOMPARE(fixture_.InStore().Update(theirs), QString());
  const auto revision = Stored("Public A plan 2").revision;
  window_->Save();
  QTRY_VERIFY(Tip().contains("changed elsewhere"));
  QVERIFY(IsMarked() && Stored("Public A plan 2").revision == revision);
}

// What he has sent himself is not changed elsewhere, whether or not the plan can be read again after that.
void WallWorkTest::WhatIsChangedDuringASaveIsSavedNext() {
  Open();
  auto& services = fixture_.Services();
  const auto is_saved = [this] {
    return TarnClient::SamePages(Stored("Public A plan 2").pages, Wall().Arrangement().PagesToSave());
  };
  Play("Public A plan 2");
  Composer().Run(WallCommand::Split9);
  services.Hold("UpdatePlan");
  window_->Save();
  QVERIFY(services.WaitUntilHeld("UpdatePlan"));
  services.Fail("GetPlanDetail", "The disk is tired");
  Composer().Put({"7", "CAM 007"});
  services.ReleaseAll();
  CPlanFixture::Drain();
  QVERIFY(IsMarked() && !is_saved());
  services.Mend("GetPlanDetail");
  services.Hold("UpdatePlan");
  window_->Save();
  QVERIFY(services.WaitUntilHeld("UpdatePlan"));
  Composer().Put({"8", "CAM 008"});
  window_->Save();  // once more, when the first one is through
  services.ReleaseAll();
  QTRY_VERIFY(!IsMarked());
  QVERIFY(is_saved());
  QCOMPARE(services.Count("UpdatePlan"), 3);
  QVERIFY2(!Tip().contains("Not saved"), qPrintable(Tip()));
}

void WallWorkTest::WhatLeavesDuringItsSaveIsSaved_data() {
  QTest::addColumn<bool>("changed_since");
  QTest::newRow("all of it") << false;
  QTest::newRow("but what came later") << true;
}

// Wherever it is by then. The rest alone can be had back, and builds on what was saved.
void WallWorkTest::WhatLeavesDuringItsSaveIsSaved() {
  QFETCH(bool, changed_since);
  Open();
  Play("Public A plan 2");
  Composer().Run(WallCommand::Split9);
  fixture_.Services().Hold("UpdatePlan");
  window_->Save();
  QVERIFY(fixture_.Services().WaitUntilHeld("UpdatePlan"));
  if (changed_since) {
    Composer().Put({"7", "CAM 007"});
  }
  Play("Public A plan 10");
  QTRY_VERIFY(Strip()->IsOffering());
  fixture_.Services().ReleaseAll();
  CPlanFixture::Drain();
  QTRY_COMPARE(Strip()->IsOffering(), changed_since);
  if (changed_since) {
    Strip()->Take();
    window_->Save();
    QTRY_VERIFY(!IsMarked());
    QVERIFY2(!Tip().contains("Not saved"), qPrintable(Tip()));
  }
}

void WallWorkTest::WhatWasChangedComesBack() {
  Open();
  Play("Public A plan 2");
  Composer().Run(WallCommand::Split4);
  Composer().Run(WallCommand::Split16);
  Composer().Put({"7", "CAM 007"});
  const auto arranged = Wall().Arrangement().PagesToSave();
  Play("Public A plan 10");
  QVERIFY(!IsMarked());
  QTRY_VERIFY(Strip()->IsOffering() && Strip()->Text().contains("Public A plan 2"));
  const QSignalSpy played(&window_->Player(), &TarnClient::CPlanPlayer::SignalPlayed);
  Strip()->Take();
  QCOMPARE(Wall().PlanName(), QString("Public A plan 2"));
  QVERIFY(played.isEmpty());
  QVERIFY(IsMarked() && TarnClient::SamePages(Wall().Arrangement().PagesToSave(), arranged));
  QTRY_COMPARE(MarkedRows(), QString("Public A plan 2"));
  window_->Player().Stop();
  QVERIFY(Strip()->IsOffering());
  Strip()->Take();
  QVERIFY(Wall().PlanName() == "Public A plan 2" && IsMarked());
  // What was not changed is only offered to be played again.
  Composer().Run(WallCommand::Split1);
  Play("Public A plan 10");
  Strip()->Withdraw();
  window_->Player().Stop();
  QVERIFY(Strip()->Text().startsWith("Stopped"));
}

void WallWorkTest::CamerasWithoutAPlanComeBackToo() {
  Open();
  Composer().Put({"7", "CAM 007"});
  QVERIFY(window_->findChild<QToolButton*>("wall_save_menu_btn")->isEnabled());
  QVERIFY(!window_->findChild<QToolButton*>("wall_save_btn")->isEnabled());
  Play("Public A plan 2");
  QVERIFY(Strip()->IsOffering());
  Strip()->Take();
  QVERIFY(!Wall().IsPlaying() && CodeIn(1) == "7");
  QCOMPARE(MarkedRows(), QString());
  QTest::keyClick(&Wall(), Qt::Key_Escape);
  QVERIFY(!Wall().IsShowing() && Strip()->IsOffering());
}

void WallWorkTest::CamerasSavedAsNewPlanPlayOn() {
  Open();
  UpdatePlanRequest two_pages = TarnTest::Unchanged(Stored("Public A plan 2"));
  two_pages.pages.push_back(two_pages.pages.front());
  two_pages.pages.back().page_no = 2;
  QCOMPARE(fixture_.InStore().Update(two_pages), QString());
  Play("Public A plan 2");
  Wall().Turn(1);
  Wall().Grid()->SetCurrent(1);
  Composer().Put({"7", "CAM 007"});
  window_->SaveAs();
  auto* dialog = window_->Family(0).Panel()->findChild<TarnPlanView::CSavePlanAsDlg*>();
  QTRY_VERIFY(dialog && dialog->isVisible());
  dialog->findChild<QLineEdit*>("name_line_edit_")->setText("Composed");
  dialog->findChild<QAbstractButton*>("save_button_")->click();
  QTRY_COMPARE(Wall().PlanName(), QString("Composed"));
  QVERIFY(!IsMarked() && !Strip()->IsOffering() && CodeIn(1) == "7");
  QVERIFY(Wall().PageNumber() == 2 && Wall().IsHeld());
}

void WallWorkTest::AnotherUserGetsNothingBack() {
  Open({{"load_all", 1}, {"add_from_favorite", 1}});
  OpenCameras();
  std::string error;
  QVERIFY(fixture_.Services().SetFavoriteCamera("1001", true, &error));
  const auto favorites = [this] { return Tree()->model()->index(0, 0).data().toString() == "Favorites"; };
  Tree()->Reload();
  QTRY_VERIFY(favorites());
  auto* search = window_->Desk().Cameras().Search();
  search->setText("CAM 007");
  Composer().Put({"7", "CAM 007"});
  SwitchUser("viewer");
  QVERIFY(!favorites() && search->text().isEmpty());
  WaitForPlans();
  QVERIFY(!Wall().IsShowing() && !Strip()->IsOffering());
  QTRY_VERIFY(Tree()->model()->rowCount() > 0 && !favorites());
}

void WallWorkTest::ARenamedCameraIsCalledSoAtOnce() {
  Open();
  Composer().Put({"1001", "CAM 1"});
  TarnHost::CameraChanges changes;
  changes.cameras.resize(1);
  changes.cameras[0].index_code = "1001";
  changes.cameras[0].name = "Harbour";
  TarnHost::CameraChangesMade made;
  std::string error;
  QVERIFY2(fixture_.Store().ChangeCameras(changes, made, &error), error.c_str());
  QTRY_COMPARE(Wall().Grid()->WindowAt(1)->Camera(), QString("Harbour"));
  QVERIFY(Wall().Grid()->WindowAt(1)->accessibleName().contains("Harbour"));
  QCOMPARE(Wall().Arrangement().PagesToSave().front().windows.front().resource_name, std::string("Harbour"));
}

// Ctrl+1 to Ctrl+4 split the page that is edited.
void WallWorkTest::KeysAreTheEditorsWhileItIsOpen() {
  Open();
  Play("Public A plan 2");
  const auto split = [this] { return Wall().Arrangement().Pages().front().split_type; };
  const int before = split();
  window_->Family(0).Panel()->EditPlanByIndex(Row("Public A plan 2"));
  QTRY_VERIFY(window_->Family(0).Panel()->IsEditorOpen());
  QTest::keyClick(&Wall(), Qt::Key_4, Qt::ControlModifier);
  QCOMPARE(split(), before);
}

void WallWorkTest::TheWallTakesTheScreenAndGivesItBack() {
  Open();
  QVERIFY(QTest::qWaitForWindowActive(window_.get()));
  Play("Public A plan 2");
  auto* tabs = window_->findChild<QTabWidget*>();
  QTest::keyClick(window_.get(), Qt::Key_F11);
  QVERIFY(window_->isFullScreen() && !tabs->isVisible());
  QTest::keyClick(&Wall(), Qt::Key_Escape);
  QVERIFY(!window_->isFullScreen() && tabs->isVisible());
  QTest::keyClick(window_.get(), Qt::Key_F11);
  Wall().Grid()->Choose(1);
  Composer().Run(WallCommand::Replace);  // from what is beside the wall
  QVERIFY(!window_->isFullScreen() && window_->Desk().Cameras().Search()->isVisible());
  QCOMPARE(Wall().PlanName(), QString("Public A plan 2"));
  QTest::keyClick(&Wall(), Qt::Key_Escape);
  QVERIFY(!Wall().IsPlaying());
}

QTEST_MAIN(WallWorkTest)
#include "test_wall_work.moc"
