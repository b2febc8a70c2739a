#include <QAction>
#include <QMenu>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <QtTest>

#include "TarnHost/store_care.h"
#include "client_desk.h"
#include "help/help_desk.h"
#include "log_in/lock_bar.h"
#include "messages/message_desk.h"
#include "messages/messages_window.h"
#include "plan_records.h"
#include "settings/settings_dialog.h"
#include "window/extra_wall.h"
#include "window/walls.h"
#include "window/window_actions.h"

using namespace TarnClient;
using TarnHost::SiteUserChanges;
using TarnHost::SiteUsers;

/// Switching to a user who has a password, and a locked desk.
class DeskLockTest : public TarnTest::CClientDesk {
  Q_OBJECT
 private Q_SLOTS:
  void cleanup() {
    if (window_) {
      CloseDesk();
    }
  }
  void AsksTheNextUser();
  void LetsPlayAndTurnOnly();
  void TurnsAndHoldsByKeys();
  void LocksFromOtherWindows();
  void LocksAllWalls();
  void GoesToAnotherUser();
  void LocksWhenTheUserIsDeleted();

 private:
  CLockBar* Sign() const { return window_->findChild<CLockBar*>(); }
};

void DeskLockTest::AsksTheNextUser() {
  Open();
  SetPassword("viewer", "gate 7");
  window_->SwitchUser("viewer");
  QVERIFY(LogInDialog());
  TypeLogIn("viewer", "gate 8");
  QTRY_VERIFY(!LogInFault().isEmpty());
  QCOMPARE(window_->User(), QString("operator"));
  LogInDialog()->reject();
  QTRY_VERIFY(!LogInDialog());
  QVERIFY(window_->User() == "operator" && Row("Public A plan 2").isValid());  // nothing was changed
  QSignalSpy switched(window_.get(), &CMainWindow::SignalUserSwitched);
  QSignalSpy gone(fixture_.Public(), &QAbstractItemModel::rowsRemoved);
  int rows_gone_before = -1;
  connect(window_.get(), &CMainWindow::SignalUserSwitched, this, [&] { rows_gone_before = gone.size(); });
  window_->SwitchUser("viewer");
  TypeLogIn("viewer", "gate 7");
  QTRY_COMPARE(switched.size(), 1);
  QCOMPARE(rows_gone_before, 0);  // the panels knew before their trees came
  QTRY_VERIFY(!gone.isEmpty());
  QCOMPARE(window_->User(), QString("viewer"));
  QTRY_VERIFY(!LogInDialog());
  WaitForPlans();
}

void DeskLockTest::LetsPlayAndTurnOnly() {
  Open();
  SetPassword("operator", "gate 7");
  window_->OpenSettings();
  QPointer<CSettingsDialog> settings = window_->Settings();
  const auto key = [this](int with) { QTest::keyClick(window_.get(), Qt::Key(with), Qt::ControlModifier); };
  QTest::keyClick(settings, Qt::Key_L, Qt::ControlModifier);
  QTRY_VERIFY(window_->IsDeskLocked());
  window_->activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(window_.get()));
  QVERIFY(Sign()->isVisible() && Sign()->accessibleName().contains("operator"));
  QVERIFY(settings && !settings->isVisible());
  for (const QAction* action : window_->Actions().All()) {
    const bool stays = action == window_->Actions().Of(WindowCommand::Lock) ||
                       action == window_->Actions().Of(WindowCommand::PlayAgain);
    QVERIFY2(stays || !action->isEnabled(), qPrintable(action->text()));
  }
  for (const int with : {int(Qt::Key_H), int(Qt::Key_M), int(Qt::Key_U), int(Qt::Key_S), int(Qt::Key_Comma)}) {
    key(with);
  }
  QVERIFY(!QApplication::activePopupWidget() && !settings->isVisible());
  auto* tree = Tree();
  tree->setCurrentIndex(Row("Public A plan 2"));
  QTest::keyClick(tree, Qt::Key_Delete);
  QTest::keyClick(tree, Qt::Key_F2);
  QVERIFY(Row("Public A plan 2").isValid() && !QApplication::activeModalWidget());
  QVERIFY(!window_->close());
  QMenu menu(tree);  // as a click on the row's button opens it
  menu.addAction("Delete");
  menu.popup(QPoint());
  QTRY_VERIFY(!QApplication::activePopupWidget());
  QTest::keyClick(tree, Qt::Key_Return);
  QTRY_COMPARE(Wall().PlanName(), QString("Public A plan 2"));
  QTest::keyClick(&Wall(), Qt::Key_Escape);
  QCOMPARE(Wall().PlanName(), QString("Public A plan 2"));
  Sign()->Button()->click();
  TypeLogIn("operator", "gate 8");
  QTRY_VERIFY(!LogInFault().isEmpty());
  QVERIFY(window_->IsDeskLocked());
  TypeLogIn("operator", "gate 7");
  QTRY_VERIFY(!window_->IsDeskLocked());
  QVERIFY(!Sign()->isVisible() && settings->isVisible());
  QVERIFY(window_->Actions().Of(WindowCommand::Settings)->isEnabled());
}

// The wall's keys, and those of the buttons in its bar, also where these stand in a menu. Shift, on its way to
// Shift+Tab, is no attempt at anything.
void DeskLockTest::TurnsAndHoldsByKeys() {
  Open();
  auto pages = TarnTest::Unchanged(Stored("Public A plan 2"));
  pages.pages.push_back(TarnTest::CameraPage(2, 1, {}));
  QCOMPARE(fixture_.InStore().Update(pages), QString());
  Play("Public A plan 2");
  window_->LockDesk();
  window_->activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(window_.get()));
  const auto button = [this](const char* name) { return window_->findChild<QToolButton*>(name); };
  button("wall_pause_btn")->setFocus();
  QTest::keyClick(button("wall_pause_btn"), Qt::Key_Shift, Qt::ShiftModifier);
  QVERIFY(button("wall_pause_btn")->hasFocus());
  QTest::keyClick(button("wall_pause_btn"), Qt::Key_Space);
  QVERIFY(Wall().IsHeld());
  QTest::keyClick(&Wall(), Qt::Key_PageDown);
  QCOMPARE(Wall().PageNumber(), 2);
  button("wall_next_btn")->setFocus();
  QTest::keyClick(button("wall_next_btn"), Qt::Key_Space);
  QCOMPARE(Wall().PageNumber(), 1);
  for (const char* name : {"wall_stop_btn", "wall_split_4_btn", "add_view_btn", "search_btn", "settings_btn"}) {
    QVERIFY2(!button(name)->isEnabled(), name);
  }
  QTest::keyClick(button("wall_next_btn"), Qt::Key_Delete);
  QVERIFY(Sign()->Button()->hasFocus());
  window_->Desk().Parts()->setSizes({2000, 1});
  QTRY_VERIFY(!button("wall_next_btn")->isVisible());
  QTest::mouseClick(button("wall_more_btn"), Qt::LeftButton);
  QPointer<QWidget> menu = QApplication::activePopupWidget();
  QCoreApplication::processEvents();
  QVERIFY(menu && menu->isVisible() && menu->actions().contains(button("wall_next_btn")->defaultAction()));
  menu->close();
}

void DeskLockTest::LocksFromOtherWindows() {
  Open();
  window_->Messages().Open();
  window_->Help().Open();
  const QList<QWidget*> windows{window_->Messages().Page(), window_->Help().Window()};
  for (QWidget* window : windows) {
    QTest::keyClick(window, Qt::Key_L, Qt::ControlModifier);
    QTRY_VERIFY(window_->IsDeskLocked());
    QVERIFY(!window->isVisible());
    window_->UnlockDesk();
    TypeLogIn("operator", QString());
    QTRY_VERIFY(!window_->IsDeskLocked() && !LogInDialog());
    QVERIFY(window->isVisible());
  }
}

void DeskLockTest::LocksAllWalls() {
  Open();
  window_->OpenNewWall();
  CExtraWall* wall = window_->Walls().Extra().first();
  wall->activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(wall));
  QTest::keyClick(wall, Qt::Key_L, Qt::ControlModifier);
  QVERIFY(window_->IsDeskLocked() && Sign()->isVisible());
  QVERIFY(wall->findChild<CLockBar*>()->isVisible() && !wall->close());
  window_->UnlockDesk();
  auto* dialog = QApplication::activeWindow()->findChild<CLogInDialog*>();
  for (QWidget* window : QApplication::topLevelWidgets()) {
    dialog = dialog ? dialog : qobject_cast<CLogInDialog*>(window);
  }
  QVERIFY(dialog);
  QTest::keyClick(dialog->findChild<QLineEdit*>("log_in_password"), Qt::Key_Return);  // no password: Return will do
  QTRY_VERIFY(!window_->IsDeskLocked());
  QVERIFY(!wall->findChild<CLockBar*>()->isVisible());
}

void DeskLockTest::GoesToAnotherUser() {
  Open();
  window_->Help().Open();
  window_->LockDesk();
  window_->UnlockDesk();
  TypeLogIn("viewer", QString());
  QTRY_COMPARE(window_->User(), QString("viewer"));
  QVERIFY(!window_->IsDeskLocked());
  QVERIFY(!window_->Help().Window() || !window_->Help().Window()->isVisible());  // it was the last user's
  WaitForPlans();
  window_->AskForPassword();
  QVERIFY(Sign()->accessibleName().contains("does not take the password of viewer"));
  TypeLogIn("operator", QString());
  QTRY_COMPARE(window_->User(), QString("operator"));
  WaitForPlans();
  window_->LockDesk();  // whose password was not refused
  QVERIFY(Sign()->accessibleName().startsWith("Locked by operator"));
}

// Pictures go on; the desk waits for somebody who is known.
void DeskLockTest::LocksWhenTheUserIsDeleted() {
  const QTemporaryDir folder;
  const QString url = "sqlite:" + folder.filePath("site.sqlite");
  Open({{"load_all", 1}}, "viewer", url);
  SiteUsers site;
  QString error;
  QVERIFY2(TarnHost::StoreCare::ReadUsers(url, &site, &error), qPrintable(error));
  SiteUserChanges changes;
  for (const auto& user : site.users) {
    if (user.name == "viewer") {
      changes.users.push_back({{user, std::nullopt}, std::nullopt});
    }
  }
  QVERIFY2(TarnHost::StoreCare::ChangeUsers(url, changes, &error), qPrintable(error));
  view_plugin_protocol::GetCurrentUserResponse current;
  QTRY_VERIFY(!fixture_.Store().GetCurrentUser({}, current));
  window_->OnUsersChanged();
  QVERIFY(window_->IsDeskLocked() && Sign()->accessibleName().contains("deleted"));
  window_->UnlockDesk();
  TypeLogIn("viewer", QString());
  QTRY_VERIFY(!LogInFault().isEmpty());
  TypeLogIn("operator", QString());
  QTRY_COMPARE(window_->User(), QString("operator"));
  QVERIFY(!window_->IsDeskLocked());
  WaitForPlans();
  CloseDesk();
}

QTEST_MAIN(DeskLockTest)
#include "test_desk_lock.moc"
