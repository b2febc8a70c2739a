#pragma once

#include <QList>
#include <QPersistentModelIndex>
#include <QSet>
#include <QVariant>
#include <memory>

#include "MarUIControl/item_data_role.h"
#include "MarUIControl/tree_view.h"
#include "TarnUIDataController/msg_type.h"
#include "item_level.h"
#include "open_group.h"
#include "tarn_plan_view_export.h"

class QAction;
class QSortFilterProxyModel;

namespace tarn_ui_data_controller {
class CPopupMenu;
}

namespace TarnPlanView {

/// Tree of plan groups and plans: levels of rows, "more" button on hover, popup menu, drags to the live wall and within
/// the tree. It only asks: what a command or a drop means is decided by its receivers.
///
/// Keys: Return or Enter plays a plan row and expands a group row, F2 edits, Delete deletes, Menu and Shift+F10 open
/// the menu at the current row. Thread: GUI.
class TARNPLANVIEW_EXPORT CPlanViewTree : public MarUIControl::CTreeView {
  Q_OBJECT
 public:
  explicit CPlanViewTree(QWidget* parent = nullptr);
  ~CPlanViewTree() override;

  /// Not owned. What was expanded expands again, by its code, when its row comes in again.
  void SetFilterSortModel(QSortFilterProxyModel* model);
  /// Puts the hover buttons on the rows (the host's own spelling).
  void SetShowRightHoverDelgete();

  /// The row of the group or plan with this code; invalid when it is not loaded.
  QModelIndex RowOf(const QString& code, bool is_group) const;
  /// The level that moves go by; NoLevel for an invalid row.
  EItemLevel GetItemLevel(const QModelIndex& index) const;
  /// Whether both rows belong to the same kind of group. A row without a level counts with family 0.
  bool IsGroupPropertySame(const QModelIndex& a, const QModelIndex& b) const;

  /// Hides a command from the menu for good, and from keys and hits, or shows it again.
  void SetMenuItemVisible(tarn_ui_data_controller::MsgType type, bool visible);
  /// By that call, a MsgType each; an entry that only does not suit a row is not meant.
  const QSet<int>& HiddenMenuItems() const;
  /// The host's own actions below the tree's commands, in place of those of an earlier call; not owned.
  void SetViewMoreActions(QList<QAction*>& actions);
  /// The row menu; owned by the tree. Its entries are enabled when it opens for a row.
  tarn_ui_data_controller::CPopupMenu* GetViewMoreMenu() const;

  /// The row of this group carries a sign that its plans play in turn; an empty code for none.
  void SetCyclingGroup(const QString& code);

  /// Whether the user may move plans; at first not. Without it a drop inside the tree is refused with a message.
  void SetMovePermission(bool permitted);

  /// Rows with this code (role 666) expand when they come in; for the roots that a panel shows open.
  void ExpandWhenLoaded(const QString& group_code);
  /// What is open below the roots, for SetOpenGroups() at another time; to be asked while no load is under way. Outer
  /// groups come first; one that is no longer where it was is left out.
  OpenGroups GetOpenGroups() const;
  /// Opens these groups, each as soon as its row comes in, by the same requests as the user's; those of the last call
  /// that have not come are forgotten.
  void SetOpenGroups(const OpenGroups& groups);

 Q_SIGNALS:
  /// Another row is current; either may be invalid.
  void SignalCurrentIndexChanged(const QModelIndex& current, const QModelIndex& previous);
  /// A command of the menu or of a key; `data` is the code, as QString, of the row that the menu was opened for. That
  /// row is the current one, unless it has vanished meanwhile.
  void SignalMenuClicked(tarn_ui_data_controller::MsgType type, QVariant data);
  /// A text for the user; `state` is an AlertState of CNomalMessage.
  void SignalMessageTipNeeded(const QString& text, int state);
  /// Own rows were dropped: where the drag began, where it ended, and the row it ended on (all in the viewport).
  void SignalMoveRow(const QPoint& start, const QPoint& end, const QRect& targetRect);
  /// The mouse has come to another row, or to another part of it; an invalid index when it has left the rows.
  void SignalPlanViewMouseMove(const QModelIndex& index, MarUIControl::CItemDataRole role);
  /// What is shown of the row under the mouse has to go; where the mouse is on the screen.
  void SignalHideThumbnail(QPoint position);
  /// The user wants this plan row to play: double click, Return or Enter.
  void SignalPlayRequested(const QModelIndex& index);
  /// The menu is about to open for this row, which is current: time to enable its entries.
  void SignalMenuAboutToShow(const QModelIndex& index);

 public Q_SLOTS:
  /// The children of a row are there, or could not be had. An index of the own proxy is used, one of its source is
  /// mapped, any other is ignored.
  void OnFinishAnsyFilterExpandedTree(const QModelIndex& index, bool expand);
  /// The same.
  void OnFinishAnsySourceExpandedTree(const QModelIndex& index, bool expand);
  /// Opens the menu of a row of this tree's model at a point of the screen, with the row made current. Nothing for rows
  /// without commands, as the placeholder.
  void OnRightMoreBtnClicked(const QModelIndex& index, const QPoint& global_position);

 protected:
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  bool viewportEvent(QEvent* event) override;
  void startDrag(Qt::DropActions supported_actions) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool event(QEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  void initMenu();
  void InitLine();
  void InitRect();

  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace TarnPlanView
