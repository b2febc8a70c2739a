#include <QAbstractButton>
#include <QImage>
#include <QLineEdit>
#include <QSemaphore>
#include <QThreadPool>
#include <QToolButton>
#include <QtTest>

#include "client_desk.h"
#include "host_calls/call_pool.h"
#include "save_plan_as_dlg.h"
#include "view_save_menu.h"
#include "wall/same_pages.h"

using TarnPlanView::CSavePlanAsDlg;
using TarnPlanView::CViewSaveMenu;
using TarnTest::CPlanFixture;
using view_plugin_protocol::GetPlanDetailResponse;
using view_plugin_protocol::PlanPage;
using view_plugin_protocol::UpdatePlanRequest;

class PlanSavingTest : public TarnTest::CClientDesk {
  Q_OBJECT

 private Q_SLOTS:
  void ControlSaysWhatCanBeSaved();
  void SavingOverAPlanKeepsWhatTheWallDoesNotShow();
  void SavesOnceWhateverElseIsSaid();
  void RefusesToSaveOverAnotherUsersPages();
  void SavesTheWallAsNewPlan();
  void SavesNothingInTheNextUsersName();

 private:
  void Update(const UpdatePlanRequest& request) { QCOMPARE(fixture_.InStore().Update(request), QString()); }
  QToolButton* Button(const char* name) const { return window_->findChild<QToolButton*>(name); }
};

void PlanSavingTest::ControlSaysWhatCanBeSaved() {
  Open();
  QVERIFY(!Button("wall_save_btn")->isEnabled() && !Button("wall_save_menu_btn")->isEnabled());
  QVERIFY(Button("wall_save_btn")->toolTip().contains("no plan is playing"));
  QTest::keyClick(window_.get(), Qt::Key_S, Qt::ControlModifier);
  QVERIFY(Tip().contains("no plan is playing"));
  ForgetTips();
  QTest::keyClick(window_.get(), Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
  QVERIFY(Tip().contains("empty"));

  Play("Public A plan 2");
  QVERIFY(Button("wall_save_btn")->isEnabled());
  QTest::mouseClick(Button("wall_save_menu_btn"), Qt::LeftButton);
  auto* menu = Wall().findChild<CViewSaveMenu*>();
  QVERIFY(menu && menu->isVisible());
  menu->OnSaveAsBtnClicked();
  const auto* dialog = window_->Family(0).Panel()->findChild<CSavePlanAsDlg*>();
  QTRY_VERIFY(dialog && dialog->isVisible());

  fixture_.Services().SetRight(6, false);
  Play("Public A plan 10");
  QVERIFY(!Button("wall_save_btn")->isEnabled());
  QVERIFY(Button("wall_save_btn")->toolTip().contains("right to edit"));
}

void PlanSavingTest::SavingOverAPlanKeepsWhatTheWallDoesNotShow() {
  Open({{"load_all", 1}, {"timed_play", 1}});
  UpdatePlanRequest rich = TarnTest::Unchanged(Stored("Public A plan 2"));
  rich.revision = 0;
  rich.auto_play = true;
  rich.begin_time = "02:00:00";
  rich.end_time = "02:30:00";
  rich.pages.front().windows.front().stream_type = 1;
  rich.pages.front().windows.front().preset_no = 3;
  rich.pages.push_back(rich.pages.front());  // a page that the wall does not show now
  rich.pages.back().page_no = 2;
  Update(rich);
  Play("Public A plan 2");
  // Renamed, moved and given other times while it plays; its row in the tree does not know yet.
  UpdatePlanRequest elsewhere = rich;
  elsewhere.plan_name = "Public A moved";
  elsewhere.parent_index_code = Code("Public B");
  elsewhere.end_time = "03:00:00";
  Update(elsewhere);
  QCOMPARE(MarkedRows(), QString("Public A plan 2"));
  const GetPlanDetailResponse before = Stored("Public A moved");

  // Two key presses, one save.
  QTest::keyClick(window_.get(), Qt::Key_S, Qt::ControlModifier);
  QTest::keyClick(window_.get(), Qt::Key_S, Qt::ControlModifier);
  QTRY_VERIFY(Stored("Public A moved").revision > before.revision);
  CPlanFixture::Drain();
  const GetPlanDetailResponse after = Stored("Public A moved");
  QCOMPARE(after.revision, before.revision + 1);
  QVERIFY(after.auto_run);
  QCOMPARE(after.start_time, before.start_time);
  QCOMPARE(after.end_time, std::string("03:00:00"));
  QCOMPARE(after.group_index_code, Code("Public B"));
  QCOMPARE(after.creation_time, before.creation_time);
  QVERIFY(TarnClient::SamePages(after.pages, rich.pages));
  QCOMPARE(QImage::fromData(QByteArray::fromStdString(after.thumbnail), "PNG").size(), QSize(320, 180));

  window_->Save();  // again: its own save is no change of somebody else
  QTRY_COMPARE(Stored("Public A moved").revision, after.revision + 1);
}

// A message about something else does not mean that the save has ended: the plan would be sent twice with one revision.
void PlanSavingTest::SavesOnceWhateverElseIsSaid() {
  Open({{"load_all", 1}, {"thumbnail", 0}});
  auto& services = fixture_.Services();
  Play("Public A plan 2");
  const auto revision = Stored("Public A plan 2").revision;
  services.Hold("UpdatePlan");
  window_->Save();
  QVERIFY(services.WaitUntilHeld("UpdatePlan"));
  window_->Family(1).Controller()->AddPlanGroupByIndexName(Row("Plans", 1), "Made meanwhile");
  QTRY_VERIFY(!Tip().isEmpty());
  window_->Save();
  services.ReleaseAll();
  CPlanFixture::Drain();
  QCOMPARE(services.Count("UpdatePlan"), 1);
  QCOMPARE(Stored("Public A plan 2").revision, revision + 1);
  QVERIFY(Stored("Public A plan 2").thumbnail.empty());  // switched off

  services.Fail("UpdatePlan", "The disk is full");  // a refused save is no longer under way either
  ForgetTips();
  window_->Save();
  QTRY_COMPARE(Tip(), QString("The disk is full"));
  services.Mend("UpdatePlan");
  window_->Save();
  QTRY_COMPARE(Stored("Public A plan 2").revision, revision + 2);
}

void PlanSavingTest::RefusesToSaveOverAnotherUsersPages() {
  Open();
  Play("Public A plan 2");
  UpdatePlanRequest changed = TarnTest::Unchanged(Stored("Public A plan 2"));
  changed.pages.front().windows.front().preset_no = 7;
  Update(changed);
  const auto revision = Stored("Public A plan 2").revision;
  window_->Save();
  QTRY_VERIFY(Tip().contains("changed elsewhere"));
  QCOMPARE(Stored("Public A plan 2").revision, revision);
  const std::function<void(PlanPage&)> changes[] = {
      [](PlanPage& page) { page.page_no = 7; },
      [](PlanPage& page) { page.name = "Other"; },
      [](PlanPage& page) { page.split_type = 8; },
      [](PlanPage& page) { page.dwell_seconds = 77; },
      [](PlanPage& page) { page.extra = "{}"; },
      [](PlanPage& page) { page.windows.clear(); },
      [](PlanPage& page) { page.windows.front().window_no = 7; },
      [](PlanPage& page) { page.windows.front().content_kind = 7; },
      [](PlanPage& page) { page.windows.front().resource_code = "7"; },
      [](PlanPage& page) { page.windows.front().stream_type = 1; },
      [](PlanPage& page) { page.windows.front().preset_no = 7; },
      [](PlanPage& page) { page.windows.front().extra = "{}"; },
  };
  const std::list<PlanPage> mine = Wall().Plan().pages;
  for (size_t i = 0; i < std::size(changes); ++i) {
    std::list<PlanPage> theirs = mine;
    changes[i](theirs.front());
    QVERIFY2(!TarnClient::SamePages(mine, theirs), qPrintable(QString::number(i)));
  }

  ForgetTips();
  fixture_.Services().Fail("GetPlanDetail", "The disk is tired");
  window_->Save();
  QTRY_COMPARE(Tip(), QString("The disk is tired"));
  fixture_.Services().Mend("GetPlanDetail");
  Play("Public A plan 10");
  window_->Save();
  QTRY_VERIFY(!Stored("Public A plan 10").thumbnail.empty());
}

void PlanSavingTest::SavesTheWallAsNewPlan() {
  Open();
  Play("Public A plan 2");
  QTest::keyClick(window_.get(), Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
  auto* dialog = window_->Family(0).Panel()->findChild<CSavePlanAsDlg*>();
  QTRY_VERIFY(dialog && dialog->isVisible());
  dialog->findChild<QLineEdit*>("name_line_edit_")->setText("Kept");
  // What was on the wall when the dialog opened counts.
  window_->Player().Stop();
  dialog->findChild<QAbstractButton*>("save_button_")->click();
  QTRY_VERIFY(!fixture_.Code("Kept").isEmpty());
  const GetPlanDetailResponse kept = Stored("Kept");
  QVERIFY(TarnClient::SamePages(kept.pages, Stored("Public A plan 2").pages));
  QCOMPARE(QImage::fromData(QByteArray::fromStdString(kept.thumbnail), "PNG").size(), QSize(320, 180));
  QTRY_VERIFY(Row("Kept", 1).isValid());

  // Confirmed by one user, but not sent when the next one comes.
  Play("Public A plan 2");
  window_->SaveAs();
  dialog->findChild<QLineEdit*>("name_line_edit_")->setText("Of the last user");
  QThreadPool& pool = HostCalls::CallPool();
  QVERIFY(pool.waitForDone(5000));
  const int threads = pool.maxThreadCount();
  pool.setMaxThreadCount(1);
  QSemaphore held, released;
  pool.start([&] {
    held.release();
    released.acquire();
  });
  held.acquire();
  ForgetTips();
  dialog->findChild<QAbstractButton*>("save_button_")->click();
  SwitchUser("viewer");
  const QString tip = Tip();
  released.release();
  CPlanFixture::Drain();
  pool.setMaxThreadCount(threads);
  QCOMPARE(fixture_.Services().Count("AddPlan"), 1);
  QVERIFY2(tip.contains("user was switched"), qPrintable(tip));
}

void PlanSavingTest::SavesNothingInTheNextUsersName() {
  Open();
  Play("Public A plan 2");
  fixture_.Services().Hold("GetPlanDetail");
  window_->Save();
  QVERIFY(fixture_.Services().WaitUntilHeld("GetPlanDetail"));
  SwitchUser("viewer");
  QVERIFY2(Tip().contains("user was switched"), qPrintable(Tip()));
  fixture_.Services().ReleaseAll();
  window_->Player().Play(Code("Public A plan 2"));
  WaitForPlans();
  QTRY_COMPARE(Wall().PlanName(), QString("Public A plan 2"));
  QCOMPARE(fixture_.Services().Count("UpdatePlan"), 0);
}

QTEST_MAIN(PlanSavingTest)
#include "test_plan_saving.moc"
