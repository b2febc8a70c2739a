#pragma once

#include <QMainWindow>
#include <QPointer>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "MarUIControl/key_guide.h"
#include "plans/play_origin.h"
#include "wall/page_clock.h"
#include "wall/plan_drop.h"

class QAction;
class QSplitter;
class QTabWidget;
class QToolButton;

namespace TarnHost {
enum class StoreTrouble;
}

namespace view_plugin_protocol {
struct GetPlanDetailResponse;
struct UpdatePlanRequest;
}  // namespace view_plugin_protocol

namespace TarnClient {

class CDeskMemory;
class CCameraStates;
class CHistoryCheck;
class CHistoryPopup;
class CLiveWall;
class CPlanFamily;
class CPlanPlayer;
class CPlanRenewal;
class CPlanSaver;
class CHelpDesk;
class CMainMenu;
class CMessageDesk;
class CPlayHistory;
class CRowMenu;
class CSettingsDialog;
class CShowInTree;
class CStoreState;
class CUserMenu;
class CUserSettings;
class CWindowActions;

/// The client's window: a panel for each family of plans on the left, the live wall on the right. Its commands and
/// their keys are those of CWindowActions; Esc stops. Made once the plan data's manager stands. Thread: GUI.
class CMainWindow : public QMainWindow {
  Q_OBJECT
 public:
  struct Setup {
    QString user, store_url;
    QString station_id;  // identity of the site whose plans may be dropped on the wall
    std::function<bool(const QString&, QString*)> log_in;  // makes a user the current one; false with the reason
    std::unique_ptr<CPageClock> cycle_clock;               // unset: real time
    CUserSettings* settings = nullptr;  // loaded for the user, and outlives the window; null: nothing is kept
  };

  explicit CMainWindow(Setup setup, QWidget* parent = nullptr);
  /// Ends the panels' work first.
  ~CMainWindow() override;

  CLiveWall& Wall() { return *wall_; }
  CPlanPlayer& Player() { return *player_; }
  CHelpDesk& Help() { return *help_; }
  /// All commands, with their keys.
  void OpenMenu();
  void OpenAbout();
  CMessageDesk& Messages() { return *messages_; }
  CPlayHistory& History() { return *history_; }
  /// Public plans first, then own ones.
  CPlanFamily& Family(size_t number) { return *families_.at(number); }
  size_t FamilyCount() const { return families_.size(); }
  CWindowActions& Actions() { return *actions_; }
  /// The client's own entries in the menus of that family's rows.
  CRowMenu& RowMenu(size_t family) { return *row_menus_.at(family); }
  /// The family whose panel is in front.
  CPlanFamily& CurrentFamily();
  void ShowFamily(size_t number);
  /// Opens what the user has chosen for the start.
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
  /// Logs in as another user: the wall stops, the panels wait for that user's plans. On failure nothing changes but for
  /// a message.
  void SwitchUser(const QString& user);
  QString User() const;
  /// What is wrong with the store, in the status line and on the panels' wait pages until kNone comes.
  void ShowStoreTrouble(TarnHost::StoreTrouble trouble, const QString& line);

 Q_SIGNALS:
  void SignalUserSwitched();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  /// A plan that plays asks, and then one that is being edited and not saved: nothing is thrown away for a close that
  /// is cancelled.
  void closeEvent(QCloseEvent* event) override;

 private:
  bool MayLeave();
  /// Whether nothing plays, or the user closes the window all the same.
  bool MayStopPlaying();
  void OnMayLeave();
  void RememberDesk(QSplitter* splitter);
  void FollowSettings();
  void SayTrouble(const QString& text);
  QWidget* BuildSide();
  void BuildHistory();
  void BuildStatusBar(const QString& user, const QString& store_url);
  void AddFamilies();
  void OrderTabs();
  void OnTabChanged();
  void ConnectMessages();
  void ConnectActions();
  void BuildMessagesButton();
  void BuildMenu();
  QList<MarUIControl::KeyEntry> AllKeys() const;
  QToolButton* NewButton(const char* name, QAction* action);
  QString WhyNotPlayAgain() const;
  void RenewPlayAgain();
  void PlayAgain();
  void OnSaveReasons(const QString& why_not_save, const QString& why_not_save_as);
  void OnDropped(const PlanDrop& drop);
  void OnPlayed(const view_plugin_protocol::GetPlanDetailResponse& plan, PlayOrigin origin);
  void OnPlanUpdated(const view_plugin_protocol::UpdatePlanRequest& plan);
  void OnHistoryTaken(int row);
  QString PlaceOf(const view_plugin_protocol::GetPlanDetailResponse& plan) const;
  void ShowTitle(const QString& plan);
  QString NameOfPlan(const QString& code) const;
  void ShowTip(const QString& text, int state);

  const std::function<bool(const QString&, QString*)> log_in_;
  const QString store_url_;
  std::function<void()> after_saving_;  // what waits for a plan to be saved
  bool may_stop_playing_ = false;       // the user has confirmed it, and the close waited for that plan
  CWindowActions* actions_ = nullptr;
  CCameraStates* const cameras_;
  QTabWidget* tabs_ = nullptr;
  CLiveWall* wall_ = nullptr;
  CPlanPlayer* player_ = nullptr;
  CPlanRenewal* renewal_ = nullptr;
  CPlanSaver* saver_ = nullptr;
  CMessageDesk* messages_ = nullptr;
  CHelpDesk* help_ = nullptr;
  CMainMenu* menu_ = nullptr;
  QToolButton* menu_button_ = nullptr;
  CPlayHistory* history_ = nullptr;
  CHistoryPopup* history_popup_ = nullptr;
  CHistoryCheck* history_check_ = nullptr;
  QToolButton* history_button_ = nullptr;
  CUserMenu* user_menu_ = nullptr;
  CStoreState* store_state_ = nullptr;
  CShowInTree* show_in_tree_ = nullptr;
  QPointer<CSettingsDialog> settings_;
  const QString station_id_;
  CUserSettings* const user_settings_;
  CDeskMemory* memory_ = nullptr;
  QString said_trouble_;  // of the settings
  std::vector<std::unique_ptr<CPlanFamily>> families_;
  std::vector<CRowMenu*> row_menus_;  // one a family
};

}  // namespace TarnClient
