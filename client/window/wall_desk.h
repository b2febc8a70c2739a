#pragma once

#include <QObject>
#include <QString>
#include <QVector>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "commands/wall_choice.h"
#include "pictures/picture_supply.h"
#include "plans/play_origin.h"
#include "wall/page_clock.h"
#include "wall/plan_drop.h"

class QAction;
class QSplitter;
class QTabWidget;
class QToolButton;

namespace view_plugin_protocol {
struct GetPlanDetailResponse;
struct UpdatePlanRequest;
}  // namespace view_plugin_protocol

namespace TarnClient {

class CCameraPanel;
class CComposer;
class CHistoryCheck;
class CHistoryPopup;
class CLiveWall;
class CPlanFamily;
class CPlanPlayer;
class CPlanRenewal;
class CPlanSaver;
class CPlayHistory;
class CRowMenu;
class CShowInTree;
class CWallOffers;
class CWindowActions;
struct PlayedPlan;

/// One wall and what belongs to it: a panel for each family of plans beside it, what plays there, saving it, and its
/// commands. A window shows it. Made once the plan data's manager stands. Thread: GUI.
class CWallDesk : public QObject {
  Q_OBJECT
 public:
  struct Setup {
    int number = 0;      // of the wall; as a text the id of the monitor whose models the panels show
    QString station_id;  // identity of the site whose plans may be dropped on the wall
    std::shared_ptr<IPictureSupply> pictures;
    std::unique_ptr<CPageClock> cycle_clock;  // unset: real time
    // Neither is owned; both outlive the desk.
    CPlayHistory* history = nullptr;
    IWallChoice* walls = nullptr;
    std::function<QString()> snapshot_folder;  // of the user's choice; empty for none
  };

  /// `window` shows Parts(), owns the widgets and has the commands of `actions`; both outlive the desk.
  CWallDesk(Setup setup, CWindowActions* actions, QWidget* window);
  ~CWallDesk() override;
  /// Ends the panels' work: nothing happens here any more.
  void End();
  /// Plans that are changed or edited there are the same as here.
  void StandBeside(const CWallDesk& other);

  int Number() const { return number_; }
  IWallChoice::Wall State() const;
  /// The panels at the left, the wall at the right.
  QSplitter* Parts() const { return parts_; }
  QTabWidget* Tabs() const { return tabs_; }
  /// What Tab goes through, in this order.
  QVector<QWidget*> TabStops() const;
  CLiveWall& Wall() const { return *wall_; }
  CPlanPlayer& Player() const { return *player_; }
  /// Public plans first, then own ones.
  CPlanFamily& Family(size_t number) const { return *families_.at(number); }
  QVector<CPlanFamily*> Families() const;
  /// The client's own entries in the menus of that family's rows.
  CRowMenu& RowMenu(size_t family) const { return *row_menus_.at(family); }
  /// The family whose panel is in front, or was before the cameras came.
  CPlanFamily& CurrentFamily() const;
  CCameraPanel& Cameras() const { return *cameras_; }
  CComposer& Composer() const { return *composer_; }
  /// Brings the site's cameras to the front.
  void ShowCameras();
  void ShowFamily(size_t number);
  /// For a menu: what can be done with that panel's current row or hit. New ones belong to `owner`.
  QList<QAction*> PlanEntries(QObject* owner) const;
  /// For the first keys of a window.
  void FocusRows();
  /// Plays a plan that the user did not pick in a tree, and brings its row into view where it is loaded.
  void PlayPlan(const std::string& code);
  void OpenHistory();
  /// The plan in an open editor, else what is on the wall over the plan that plays.
  void Save();
  void SaveAs();
  void OpenSaveMenu();
  /// Asks when a plan that is edited over the wall is not saved: false keeps the user here.
  bool MayLeave();
  /// What does nothing while the desk is locked shows as off.
  void SetLocked(bool locked);
  /// Another user has logged in: the wall stops, the panels wait for that user's plans.
  void ForgetUser();
  /// What is wrong with the service, on the panels' wait pages; empty when nothing is any more.
  void ShowServiceTrouble(const QString& text);
  void ShowTip(const QString& text, int state);

 Q_SIGNALS:
  /// What plays, for the window; empty for nothing.
  void SignalTitle(const QString& text);
  /// A panel says this of a change by itself, without a tip.
  void SignalSaid(const QString& text);
  /// The user plays this plan or group now.
  void SignalPicked(const QString& code, bool is_group);
  /// Something beside the wall is about to be shown, which may have the window to itself.
  void SignalPanelsWanted();
  /// What MayLeave() found unsaved is safe now.
  void SignalMayLeave();

 private:
  void BuildParts(const QString& station_id);
  void BuildHistory(CPlayHistory* history);
  void ConnectMessages();
  void ConnectActions();
  void AddFamilies();
  void AddFamily(CPlanFamily* family);
  void AddCameras();
  bool IsEditing() const;
  void BuildComposer(const std::function<QString()>& snapshot_folder);
  void OnTabChanged();
  QString WhyNotPlayAgain() const;
  void RenewPlayAgain();
  void PlayAgain();
  void OnSaveReasons(const QString& why_not_save, const QString& why_not_save_as);
  void OnDropped(const PlanDrop& drop);
  void OnPlayed(const view_plugin_protocol::GetPlanDetailResponse& plan, PlayOrigin origin);
  void OnPlanUpdated(const view_plugin_protocol::UpdatePlanRequest& plan);
  void OnHistoryTaken(int row);
  void SetPlace(const CPlanFamily& family, PlayedPlan* played);
  QString NameOfPlan(const QString& code) const;

  const int number_;
  QWidget* const window_;
  CWindowActions* const actions_;
  QSplitter* const parts_;
  QTabWidget* const tabs_;
  CLiveWall* const wall_;
  CPlanPlayer* const player_;
  CPlanRenewal* const renewal_;
  CPlanSaver* const saver_;
  CShowInTree* const show_in_tree_;
  CPlayHistory* const history_;
  IWallChoice* const walls_;
  CHistoryPopup* history_popup_ = nullptr;
  CHistoryCheck* history_check_ = nullptr;
  QToolButton* history_button_ = nullptr;
  std::vector<std::unique_ptr<CPlanFamily>> families_;
  std::vector<CRowMenu*> row_menus_;  // one a family
  int current_family_ = 0;
  CCameraPanel* cameras_ = nullptr;
  CComposer* composer_ = nullptr;
  CWallOffers* offers_ = nullptr;
};

}  // namespace TarnClient
