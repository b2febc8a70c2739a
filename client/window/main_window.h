#pragma once

#include <QDateTime>
#include <QPointer>
#include <functional>
#include <memory>
#include <string>

#include "MarUIControl/key_guide.h"
#include "log_in/log_in_calls.h"
#include "wall/page_clock.h"
#include "window/desk_window.h"

namespace TarnClient {

class CCameraStates;
class CCameraTrials;
class CDeskLock;
class CDeskMemory;
class CExtraWall;
class CHelpDesk;
class CLeaving;
class CMessageDesk;
class CPlayHistory;
class CSettingsDialog;
class CUserMenu;
class CUserSettings;
class CUserSwitch;
class CWalls;

/// The client's window: a wall with its panels, and what there is once in the client, as settings and messages. Its
/// commands and their keys are those of CWindowActions; Esc stops. Made once the plan data's manager stands. Thread:
/// GUI.
class CMainWindow : public CDeskWindow {
  Q_OBJECT
 public:
  struct Setup {
    QString user, store_url;
    QString station_id;           // identity of the site whose plans may be dropped on the wall
    bool is_owners_desk = false;  // its account owns a store on a server, which keeps no rights from that
    LogInCalls log_in;
    std::unique_ptr<CPageClock> cycle_clock;  // unset: real time
    CUserSettings* settings = nullptr;        // loaded for the user, and outlives the window; null: nothing is kept
  };

  explicit CMainWindow(Setup setup, QWidget* parent = nullptr);
  /// Ends the panels' work first.
  ~CMainWindow() override;

  /// All that are open.
  CWalls& Walls() { return *walls_; }
  CHelpDesk& Help() { return *help_; }
  CMessageDesk& Messages() { return *messages_; }
  CPlayHistory& History() { return *history_; }
  /// One more, in a window of its own; says why when there can be none.
  void OpenNewWall();
  /// Those that the user had open when he left.
  void OpenLeftWalls();
  /// Opens what the user has chosen for the start; the default view on this window's wall alone.
  void OpenFirst();
  /// Plays a plan that the user did not pick in a tree, and brings its row into view where it is loaded.
  void PlayPlan(const std::string& code);
  void OpenHistory();
  void OpenUsers();
  void OpenSettings();
  /// Null while they are closed.
  CSettingsDialog* Settings() const;
  /// The plan in an open editor, else what is on the wall over the plan that plays.
  void Save();
  void SaveAs();
  void OpenSaveMenu();
  /// Logs in as another user, who is asked for the password if there is one: the wall stops, the panels wait for that
  /// user's plans. Cancelled or refused, nothing changes; a refusal without a dialog is a message.
  void SwitchUser(const QString& user);
  QString User() const;
  /// Until the user's password is given, only playing, holding and turning pages work, on all walls.
  void LockDesk();
  /// The store does not take the password that the user has logged in with: all but the wall waits for another.
  void AskForPassword();
  /// Asks who unlocks a locked desk.
  void UnlockDesk();
  bool IsDeskLocked() const;
  /// The site's users are others than before.
  void OnUsersChanged();
  /// What is wrong with the store, in the status line and on the panels' wait pages until kNone comes.
  /// `as_of`: when what is shown instead of the store was true, if anything is.
  void ShowStoreTrouble(TarnHost::StoreTrouble trouble, const QString& line, const QDateTime& as_of = QDateTime());

 Q_SIGNALS:
  void SignalUserSwitched();

 protected:
  /// What plays on any wall asks, and then what is being edited and not saved: nothing is thrown away for a close that
  /// is cancelled.
  void closeEvent(QCloseEvent* event) override;

 private:
  CWallDesk::Setup DeskSetup(int number);
  std::unique_ptr<CExtraWall> MakeExtraWall(int number);
  void ConnectWall(CDeskWindow* wall);
  void OpenNewWallFrom(const CDeskWindow* wall);
  void OnWallOpened(CExtraWall* wall);
  void PlaceNewWall(CExtraWall* wall);
  void OnWallsChanged();
  void RememberWall(CDeskWindow* wall);
  QVector<CDeskWindow*> Windows();
  void BuildStatusBar(const QString& user);
  void FollowSettings();
  void SayTrouble(const QString& text);
  QList<MarUIControl::KeyEntry> AllKeys() const;
  void RenewCameraWatch();
  void PlayLast(const CWallDesk& desk);
  void ShowTitle(const QString& plan);
  void BuildUserSwitch(const LogInCalls& calls);
  void TakeUser(const QString& user);
  void OnLockKey();
  QString LockText() const;
  QWidget* ActiveWall();

  const QString store_url_;
  const QString station_id_;
  const bool is_owners_desk_;
  bool may_stop_playing_ = false;  // the user has confirmed it, and the close waited for an edited plan
  struct {
    TarnHost::StoreTrouble trouble = {};
    QDateTime since;
    QString line;
  } store_trouble_;
  CCameraStates* const cameras_;
  std::shared_ptr<IPictureSupply> pictures_;
  CCameraTrials* const trials_;
  CMessageDesk* const messages_;
  CHelpDesk* const help_;
  CPlayHistory* const history_;
  CLeaving* const leaving_;
  CUserSettings* const user_settings_;
  CWalls* const walls_;
  CUserMenu* user_menu_ = nullptr;
  QPointer<CSettingsDialog> settings_;
  CDeskMemory* memory_ = nullptr;
  CDeskLock* lock_ = nullptr;
  CUserSwitch* user_switch_ = nullptr;
  bool has_old_password_ = false;  // the store has another one of his
  bool user_is_gone_ = false;      // deleted while logged in
  QString said_trouble_;           // of the settings
};

}  // namespace TarnClient
