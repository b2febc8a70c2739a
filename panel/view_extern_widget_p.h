#pragma once

#include <QPointer>
#include <QTimer>
#include <memory>

#include "editor_place.h"
#include "panel_actions.h"
#include "plan_commands.h"
#include "plan_preview.h"
#include "standard_plan_model.h"
#include "standard_view_controller.h"
#include "ui_view_extern_widget.h"
#include "view_extern_widget.h"
#include "view_sort_filter_proxy_model.h"

namespace TarnPlanView {

class CCurrentRowKeeper;
class CGroupNaming;
class CLastSearches;
class CPlanMover;
class CPlanPopups;
class CPlanRevealer;
class CRowDeletion;
class CSearchPage;
class CTreeNotice;
class CUndoOffer;
struct DeletedRow;
struct PlanMove;
struct Undoable;

class CViewExternWidget::Private {
 public:
  explicit Private(CViewExternWidget* panel) : q(panel) {}

  // Construction.
  void initUi();
  void setUpField();
  void connectSignalAndSlot();
  void connectTree();
  void connectEditor();
  void connectPopups();
  void connectUndo();
  void connectSearch();
  void connectHits();
  void connectLastSearches();
  void connectManager();
  void watchRows();
  void makeShortcuts();
  CViewExternWidget* PanelForKeys() const;
  void beginSearch();
  void renewSkin();

  // Pages.
  PanelPage CurrentPage() const;
  void ShowPage(PanelPage page);
  void waitForLoad();
  void leaveSearch();
  /// At once, or with those that are awaited; where there are none, to the last searches or to the tree.
  void goToHits();
  bool offerLastSearches();
  /// The same with the field emptied and the focus in the tree, at the row where the user was.
  void endSearch();
  /// If the hits on show are those for this text.
  void endSearchFor(const QString& text);
  void showInTree(const QString& code, int family);
  /// Later and once, however many rows come and go meanwhile.
  void scheduleRenewal();
  void renewAfterRows();
  void onLoadChecked();
  void reload();
  void dropModel();
  /// Nothing that was asked so far is answered or acted upon any more.
  void dropPending();
  /// The pop-ups and the editor, whose contents belong to a user.
  void closePopups();
  /// StopWorking() without a word to anyone.
  void stop();

  bool IsReady() const { return model && controller && !stopped; }

  // Commands.
  void bindActions();
  /// As if the page were the one on show.
  PanelSituation SituationOn(PanelPage page) const;
  CommandStates States() const { return StatesOf(SituationOn(CurrentPage())); }
  /// Keeps what this row leaves of the four buttons on, while a search or the editor takes some of them away.
  void storeEnableState(const QModelIndex& row);
  /// Shows the buttons as they were stored, but for those that a search or the editor takes away at the moment.
  void restoreEnableState();
  /// Asks the host for each right once.
  void askRights();
  /// The row is current, or its menu opens: its rights are asked for and its commands shown.
  void renewForRow(const QModelIndex& row);
  bool isCurrent(const QString& code) const;
  /// Whether what a command of the menu is about is still there to act on.
  bool isThere(PlanCommand command, const QString& code) const;
  /// As on the page, whichever stands there by now: about the current row of the tree, or the marked hit.
  void run(PlanCommand command, PanelPage page, const QString& code = QString());
  /// Enables in the tree's menu what can be done with the current row.
  void offerForRow();
  /// Shows in the menu of a hit what can be done with it.
  void offerForHit(tarn_ui_data_controller::CPopupMenu* menu);
  /// Why nothing new can be made at this row of the tree, or hit.
  Refusal WhyNothingNewAt(const view_plugin_protocol::TarnPlanViewInfo& row, PlanCommand command) const;
  QAction* newRowEntry(tarn_ui_data_controller::MsgType type, QObject* parent);
  void onHitCommand(tarn_ui_data_controller::MsgType type, const QString& code);
  /// For a key in the search field: the hit that is marked there, or is current in the tree.
  void editMarkedHit();

  // Undo.
  Undoable Deletion(const DeletedRow& row);
  Undoable Moved(const PlanMove& move);
  void onRestored(const DeletedRow& row);
  void revealMoved(const PlanMove& move);
  void onMovedBack(const PlanMove& move);
  void repeatSearch();

  // Rows.
  QModelIndex Current() const { return ui.plan_view_tree->currentIndex(); }
  /// What is below a row, of the tree or of its model, has come or could not be loaded. Other trees share the model:
  /// only a row that this one has asked for opens here.
  void finishExpand(const QModelIndex& index, bool expand);
  /// The group that a new group or plan goes into: the current one, or the one of the current plan.
  QModelIndex GroupForNew() const;
  /// Of the screen: below the row that the host's commands are about, else below the button.
  QPoint placeAtCommandRow(const QWidget* button) const;
  void askForNewIn(const QModelIndex& group);
  /// The group that was made here.
  void revealNew(const QString& group_code, const QString& parent_code);
  /// Its code; empty for a hit whose group is not loaded here, so that the user chooses one.
  QString GroupForNewPlan() const;
  /// Of the model: names the trees that show the same plans. The host's own id goes to the host alone.
  QString MonitorId() const;
  void play(const QString& code);
  /// The plan editor for a new plan; an empty code lets the user choose the group.
  void openNewPlan(const QString& group_code);
  void editRow(const QModelIndex& row);
  /// The controller fetches the plan for the editor.
  void editPlan(const QString& code);
  void SetViewShareShow(const QString& plan_code);

  CViewExternWidget* const q;
  Ui::CViewExternWidget ui;
  QPointer<CStandardPlanModel> model;
  QPointer<CStandardViewController> controller;
  QPointer<CViewSortFilterProxyModel> proxy;
  CPanelActions* actions = nullptr;
  PanelSituation known;  // what is not read from the widgets: grants, rights, what is under way
  CCurrentRowKeeper* keeper = nullptr;
  CEditorPlace* editor = nullptr;
  CRowDeletion* deletion = nullptr;
  CGroupNaming* naming = nullptr;
  CPlanPopups* popups = nullptr;
  CSearchPage* search = nullptr;
  CLastSearches* last_searches = nullptr;
  CTreeNotice* notice = nullptr;
  CPlanMover* mover = nullptr;
  CPlanRevealer* revealer = nullptr;
  CUndoOffer* undo = nullptr;
  QPointer<CPlanPreview> preview;
  QTimer renewal;
  QString monitor_id;
  bool stopped = false;
};

}  // namespace TarnPlanView
