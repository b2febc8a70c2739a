#pragma once

#include <QHash>
#include <QPair>
#include <QPointer>
#include <QSet>
#include <QStandardItemModel>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

#include "WidgetKit/slide_out_data.h"
#include "creation_info_dlg.h"
#include "empty_state.h"
#include "host_calls/call_scope.h"
#include "panel_actions.h"
#include "plan_commands.h"
#include "plan_mover.h"
#include "plan_node_ref.h"
#include "plan_preview.h"
#include "plan_search.h"
#include "resource_wait_widget.h"
#include "save_plan_as_dlg.h"
#include "search_plan_list_view.h"
#include "share_view_wgt.h"
#include "standard_plan_model.h"
#include "standard_view_controller.h"
#include "tarn_add_plan_widget.h"
#include "ui_view_extern_widget.h"
#include "view_extern_widget.h"
#include "view_name_edit.h"
#include "view_sort_filter_proxy_model.h"

namespace TarnPlanView {

class CViewExternWidget::Private {
 public:
  explicit Private(CViewExternWidget* panel);
  ~Private();
  static QVector<Private*>& Panels();

  // Construction.
  void initUi();
  void connectSignalAndSlot();
  void makeShortcuts();
  CViewExternWidget* PanelForKeys() const;
  void beginSearch();
  void renewSkin();

  // Pages.
  PanelPage CurrentPage() const;
  void ShowPage(PanelPage page);
  void waitForLoad();
  void leaveSearch();
  /// The page below the hits, where a search ends.
  PanelPage PageBehindSearch() const;
  /// Later and once, however many rows come and go meanwhile.
  void scheduleRenewal();
  void renewAfterRows();
  void renewEmptyState();
  void onLoadChecked();
  void reload();
  void dropModel();
  /// Nothing that was asked so far is answered or acted upon any more.
  void dropPending();
  /// StopWorking() without a word to anyone.
  void stop();

  bool IsReady() const { return model && controller && !stopped; }

  // Commands.
  void bindActions();
  PanelSituation Situation() const;
  CommandStates States() const { return StatesOf(Situation()); }
  /// Keeps what this row leaves of the four buttons on, while a search or the editor takes some of them away.
  void storeEnableState(const QModelIndex& row);
  /// Shows the buttons as they were stored, but for those that a search or the editor takes away at the moment.
  void restoreEnableState();
  /// The row is current, or its menu opens: its rights are asked for and its commands shown.
  void renewForRow(const QModelIndex& row);
  /// Asks the host for each right once.
  void renewRights();
  bool isCurrent(const QString& code) const;
  bool isThere(PlanCommand command, const QString& code) const;

  // The current row.
  /// A plan that is saved loses its row and gets another one; noted, so that the current plan stays current over it.
  void noteRemoval(const QModelIndex& parent, int first, int last);
  void noteReload(const QModelIndex& row);
  void followUpdated(const QString& plan_code);
  /// What the editor has saved becomes current, as soon as its group is loaded, unless the user has gone on meanwhile.
  void showSaved(const QString& plan_code, const QString& group_code);
  void showAwaited();

  // Rows.
  QModelIndex Current() const { return ui.plan_view_tree->currentIndex(); }
  QModelIndex RowOf(const QString& code, bool is_group) const;
  /// The row that a pop-up was opened for, else the current one. Empty pin: nothing was pinned.
  QModelIndex Pinned(const std::optional<CPlanNodeRef>& pin) const;
  /// Of the model: names the trees that show the same plans. The host's id is told to the host alone.
  QString MonitorId() const;
  bool IsChildPlaying(const QModelIndex& group) const;
  bool HasChildren(const QModelIndex& group) const;
  /// False also when the user changed or the panel ended while the question was open.
  bool Confirm(const QString& question);
  QString PlayingWarning() const;
  void deleteGroup(const QModelIndex& index);
  void deletePlan(const QModelIndex& index);
  CStandardViewController::PlanAnswer noteDeletion(const QPair<bool, QString>& row);
  void play(const QString& code);
  void fillUpdate(const QModelIndex& row, view_plugin_protocol::UpdatePlanRequest& request) const;

  // Pop-ups.
  CViewNameEdit* NameEdit();
  void showNameEdit(const QWidget* button);
  void editRow(const QModelIndex& index);
  QModelIndex GroupForNew() const;
  QString GroupForNewPlan() const;
  void SetViewShareShow(const QString& plan_code);
  void requestCreationInfo(const QString& code);
  /// The controller fetches the plan for the editor.
  void editPlan(const QString& code);
  CTarnAddPlanWidget* PlanEditor();
  bool isEditing() const;
  using OpenInEditor = std::function<void(CTarnAddPlanWidget*)>;
  struct NextPlan {
    QPointer<CViewExternWidget> panel;
    int session = 0;  // of that panel
    OpenInEditor open;
  };
  /// `open` tells the editor what to show. What is open in its place, here or in another panel's editor, goes
  /// first. False when the user keeps that, or has it saved: then this one is opened once that is safe.
  bool openPlanEditor(const OpenInEditor& open);
  /// The panel, this or another, whose editor is open where ours opens; null for none.
  Private* holderOfPlace();
  QWidget* windowOfEditor() const;
  /// What waited for an editor to close, this panel's or another's.
  void openAwaited(const NextPlan& next);
  /// Whether any panel has it in its editor.
  static bool isEditedAnywhere(const QString& plan_code);
  void showPlanEditor(const OpenInEditor& open);
  void closePlanEditor();
  void hidePlanEditor();
  WidgetKit::CSlideOutData InitSlidingRuleWidget();
  CSavePlanAsDlg* SaveAsDialog();
  void closePopups();

  // Search. While the hits are shown, commands are about the marked one and never about the row hidden behind them.
  QModelIndex MarkedHit() const;
  int MarkedHitType() const;
  void editHit();
  void offerForHit(tarn_ui_data_controller::CPopupMenu* menu);
  void onHitCommand(tarn_ui_data_controller::MsgType type, const QString& code);
  QString SearchText() const;
  QString PathOf(const view_plugin_protocol::SearchedPlan& plan) const;
  void renewSearchIcons();

  CViewExternWidget* const q;
  Ui::CViewExternWidget ui;
  QPointer<CStandardPlanModel> model;
  QPointer<CStandardViewController> controller;
  QPointer<CViewSortFilterProxyModel> proxy;
  QStandardItemModel* search_model = nullptr;
  CEmptyState *tree_state = nullptr, *search_state = nullptr;
  CPanelActions* actions = nullptr;
  PanelSituation known;  // what is not read from the widgets: grants, rights, what is under way
  CPlanMover* mover = nullptr;
  CPlanSearch* search = nullptr;
  QTimer renewal;
  QString searched_text, answered_text;  // of the search that is under way, and of the one that is being shown
  bool search_failed = false, load_failed = false;
  std::optional<CPlanNodeRef> row_before_load;
  int session = 0;
  QPointer<CPlanPreview> preview;
  QString playing_code;
  QPointer<CViewNameEdit> name_edit;
  std::optional<CPlanNodeRef> name_edit_row, new_group_parent;  // which row it was opened for
  QString unused_name;                                          // of a group whose parent has vanished meanwhile
  QPointer<CTarnAddPlanWidget> plan_editor;
  bool leaving = false;               // the host waits for the editor's save before it goes
  std::optional<NextPlan> open_next;  // what the user wants to edit after that save
  QString removed_current;            // code of the plan whose row went while it was current
  QString saved_plan, saved_group;    // to become current when it is loaded, unless the user goes elsewhere
  QPointer<CCreationInfoDlg> creation_info;
  QPointer<CShareViewWgt> share_view;
  QPointer<CSavePlanAsDlg> save_as;
  QString monitor_id;
  QPointer<QWidget> monitor;
  ResourceTreeKit::LogicNodeParam logic_node;
  QSet<QPair<bool, QString>> deleting;  // whether it is a group, and its code
  HostCalls::CCallScope creation_info_calls;
  bool stopped = false;
};

}  // namespace TarnPlanView
