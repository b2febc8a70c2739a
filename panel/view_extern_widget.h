#pragma once

#include <QList>
#include <QModelIndex>
#include <QStringList>
#include <QVariant>
#include <QWidget>
#include <list>
#include <memory>
#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "ResourceTreeKit/logic_node_param.h"
#include "TarnUIDataController/msg_type.h"
#include "tarn_plan_view_export.h"

class QAction;

namespace tarn_ui_data_controller {
class CPopupMenu;
}

namespace TarnPlanView {

class CPlanViewTree;
class CStandardPlanModel;
class CStandardViewController;

/// The plan panel: bar, tree, search and wait page of one family of plans.
///
/// It owns neither the model nor the controller; both must be set before any button works, and both may die before it.
/// Keys: Ctrl+F search, Ctrl+N new plan, Ctrl+Shift+N new group, Esc leaves the search, Down goes from the search field
/// to the hits, or to the last searches where it is empty; the keys of tree and hits as there.
/// Thread: GUI.
class TARNPLANVIEW_EXPORT CViewExternWidget : public QWidget {
  Q_OBJECT
 public:
  explicit CViewExternWidget(QWidget* parent);
  ~CViewExternWidget() override;

  /// The rows to show; null, and the model that is set, change nothing. A panel that gets its model after the load does
  /// not wait.
  void SetModel(CStandardPlanModel* model);
  /// Null for none, or when it has gone.
  CStandardPlanModel* GetPlanModel() const;
  /// Drops an earlier controller and listens to this one; null for none. Rows that wait for an answer wait no longer.
  void SetStandardViewControl(CStandardViewController* controller);

  /// This plan plays: it is marked in the trees of the model's monitor and becomes current here. An empty code takes
  /// the mark away and leaves the current row.
  void SetCurPlayItemByIndexCode(const QString& index_code);
  /// This plan plays, without the user having asked for it: only the icons on the search page follow. The mark in the
  /// trees is the facade's SetPlanPlayStateByIndexCode(), and the current row stays the user's.
  void RenewPlayingIcons(const QString& index_code);
  /// Makes the plan's row current, with its parent expanded; nothing for a plan that is not loaded.
  void SetCurPlanByIndexCode(const QString& index_code);
  /// Ends a search and makes the plan's row current and seen, with the focus in the tree; what is not loaded on the way
  /// is loaded first. A plan of another family is left to SignalShowInOtherTree(); one that is not there is said.
  void ShowInTree(const QString& plan_code);
  /// The tree; owned by the panel.
  CPlanViewTree* GetPlanViewTree() const;

  /// Fetches the plan of a row to be played, as a double click does: answered by the controller's SignalPlayPlanView().
  /// With a monitor set, SignalPlayPlanToMonitor() goes out first. Nothing without a controller, or for no plan.
  void PlayPlanByIndex(const QModelIndex& index);
  /// The same by the plan's code, whether its row is loaded or not. `automatic` is for those who record plays: the
  /// panel does not look at it.
  void PlayPlanByString(const QString& index_code, const bool& automatic);
  /// The same, for a plan of the list of those played lately.
  void PlayPlanFromHistory(const std::string& index_code);
  /// The plan slides out in the editor, as by the edit button, once the controller has fetched it.
  void EditPlanByIndex(const QModelIndex& index);
  /// Deletes the plan of a row without a question and without an offer to undo it; the answer is the controller's.
  void DelPlanByIndex(const QModelIndex& index);

  /// Fills name, times, family and target group from the save-as dialog.
  void GetSaveAsPlanInfo(view_plugin_protocol::AddPlanRequest& request);
  /// Fills name, group and family from the row of the plan that the request names; the rest stays.
  void GetSaveAsPlanInfo(view_plugin_protocol::UpdatePlanRequest& request);
  /// Code (role 661) of the current row; empty for none.
  QString GetCurrentSelectedViewID() const;
  /// What is known of the current row; nothing changes in `info` when there is none.
  void GetCurrentSelectedViewInfo(view_plugin_protocol::TarnPlanViewInfo& info) const;

  /// The row that a command is about now: the tree's current one, or the marked hit of a search, which names its group
  /// whether that is loaded or not. A root counts as a group. False for none, and while the panel waits for a load.
  bool GetCommandRow(view_plugin_protocol::TarnPlanViewInfo& row) const;
  /// Why no plan or group can be made in this row's group, for the user; empty when it can. The panel's own buttons go
  /// by the same rules.
  QString WhyNoNewPlan(const view_plugin_protocol::TarnPlanViewInfo& row) const;
  /// The same for a group, which cannot be nested deeper than six levels, the root counted.
  QString WhyNoNewGroup(const view_plugin_protocol::TarnPlanViewInfo& row) const;
  /// Opens the plan editor for a new plan in this group.
  void AddPlanTo(const QString& group_code);
  /// Asks for the name of a new group below this one or this root; a group of this tree that is not loaded is brought
  /// into sight first.
  void AddGroupTo(const QString& group_code);
  /// Asks for another name of a plan, or of a group whose row is loaded.
  void RenameRow(const view_plugin_protocol::TarnPlanViewInfo& row);
  /// Lets the user choose the group of this tree that the plan goes to, and moves it there.
  void MovePlan(const view_plugin_protocol::TarnPlanViewInfo& plan);
  /// The host's own entries of the row menu, behind the panel's; hits of a search have them, too. They replace those of
  /// an earlier call; an empty list takes them away. Not owned: one that is deleted leaves the menus.
  void SetViewMoreActions(QList<QAction*>& actions);
  /// The tree's row menu; owned by the tree.
  tarn_ui_data_controller::CPopupMenu* GetViewMoreMenu() const;
  /// The search field; owned by the panel.
  QWidget* GetLocateViewWidget() const;
  /// What the user has last searched for, latest first and ten at most: the search field offers it when it is empty.
  /// Another user begins with none.
  QStringList GetLastSearches() const;
  /// What a host has kept of that; more than ten are cut off.
  void SetLastSearches(const QStringList& texts);
  /// Which cameras the plan editor offers.
  void SetLogicNodeParam(const ResourceTreeKit::LogicNodeParam& param);
  /// Names the monitor that plans of this panel play on: "0" to "3", as the model's. Without it
  /// SignalPlayPlanToMonitor() does not come.
  void SetMonitorId(QString monitor_id);
  /// The widget that shows them; the plan editor slides out over it. Not owned.
  void SetMonitorPointer(QWidget* monitor);
  /// What the panel is called in a row of tabs, by its family; in the user's language.
  QString GetTabName() const;
  /// The commands of the bar and what else is done with the current row, for a menu of the host: text, icon, keys to
  /// show, and whether they are on, as they are now. They belong to `parent`; their keys are the panel's and do nothing
  /// of their own in a menu.
  QList<QAction*> NewBarEntries(QObject* parent);

  /// Whether this panel has a plan in its editor.
  bool IsEditorOpen() const;
  /// Whether a panel, this or another one, has the plan in its editor: until that is closed nothing else may change it.
  static bool IsPlanEdited(const QString& plan_code);
  /// As Ctrl+S in the open plan editor; nothing while none is open.
  void SaveEdited();

  /// Whether the panel may be closed or change its user. Asks when the plan editor holds changes that are not saved;
  /// what the user throws away is gone with the editor's dock when true comes. When the user wants them saved first,
  /// false comes, and SignalMayLeave() once they are safe.
  bool MayLeave();
  /// What keeps the service from answering at the moment, for the wait page; empty when it is over.
  void ShowServiceTrouble(const QString& text);
  /// Another user has logged in: rights are read again and the panel waits for the next load.
  void SwitchUserUpdate();
  /// Ends pending work: nothing of the panel answers any more and its pop-ups are closed. Before the plug-in goes.
  void StopWorking();

 Q_SIGNALS:
  /// A plan is about to be fetched and played on the monitor: a QVariantMap of two QStrings, "monitor_id" as
  /// SetMonitorId() has it, "0" to "3", and "plan_code", the code of the plan.
  void SignalPlayPlanToMonitor(QVariant plan);
  /// The playing plan is about to be deleted.
  void SignalStopPlan();
  /// A controller of this client has added, changed, deleted or restored a plan, or deleted or restored a group; the
  /// trees show it. Not for changes made elsewhere.
  void SignalPlanStateChanged();
  /// The save-as dialog was confirmed: time to fill a request and to send it.
  void SignalSavePlanAs();
  /// A text that the user must be shown, in the user's language; `state` is an AlertState of CNomalMessage. All that
  /// the panel, its pop-ups and its controller have to say comes here; only the dialogs' refusals show themselves.
  void SignalMessageTipNeeded(const QString& text, int state);
  /// The plans of this group shall play one after the other, each for so many seconds: always 20, since the panel lets
  /// no one choose. A host may let its users choose and pass over the number.
  void SignalPlanGroupCycle(const QString& group_index_code, int seconds_per_plan);
  /// What the menu's creation information asked for has come: name and "yyyy-MM-dd HH:mm:ss". The panel shows it.
  void signalSucceedToGetCreationInfo(const QString& creator, const QString& creation_time);
  /// The search has ended with these hits, none among them. The panel shows them.
  void signalGetSearchedResult(const std::list<view_plugin_protocol::SearchedPlan>& plans);
  /// What MayLeave() found unsaved is safe now. Behind all others, whose numbers hosts may go by.
  void SignalMayLeave();
  /// The plan editor has opened or closed.
  void SignalEditorChanged();
  /// ShowInTree() was asked for a plan of another family, a ThemeNodeType, whose tree is another panel's.
  void SignalShowInOtherTree(const QString& plan_code, int family);
  /// The user has searched for something else.
  void SignalLastSearchesChanged();
  /// The menu of GetCommandRow()'s row is about to open: time for the host to enable its own entries.
  void SignalRowMenuAboutToShow();
  /// What the success was that SignalMessageTipNeeded() has just reported, for a host that has not shown it yet.
  void SignalSaidInMoreWords(const QString& text);
  /// The deletion of a plan was undone: it stands in its tree again.
  void SignalPlanRestored(const QString& plan_code);

 public Q_SLOTS:
  /// Searches for the text of the search field at once, as Return there does. Nothing for an empty one.
  void OnFuzzySearchPlan();
  /// As PlayPlanByString(). `window` is for hosts: a plan fills the monitor, whatever window it was asked for in.
  void OnPlayPlanByString(const QString& index_code, int window);
  /// Opens the save-as dialog at a point of the screen.
  void OnPopupSavePlanAsDlg(const QPoint& position);

 private Q_SLOTS:
  void onAddGroupBtnClicked();
  void onAddPlanBtnClicked();
  void onEditBtnClicked();
  void onDeleteBtnClicked();
  void OnSearchBtnClicked();
  void onEditPlanViewGroupName(const QString& name);
  void onAddPlanViewGroupName(const QString& name);
  void onStartPlayView(const QModelIndex& index);
  void onStartPlayViewByString(const QString& index_code, const bool& automatic);
  void onStartPlayViewByString(const QString& index_code, int window);
  void onCurrentIndexChanged(const QModelIndex& current, const QModelIndex& previous);
  void OnMenuClicked(tarn_ui_data_controller::MsgType type, QVariant data);
  void OnMoveRow(const QPoint& start, const QPoint& end, const QRect& targetRect);
  void onSucceedToGetCreationInfo(const QString& creator, const QString& creation_time);
  void onGetSearchedResult(const std::list<view_plugin_protocol::SearchedPlan>& plans);
  void onDoubleClicked(const QString& index_code);
  void OnDownloadResouceFinished();

 private:
  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace TarnPlanView
