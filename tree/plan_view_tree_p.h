#pragma once

#include <QBasicTimer>
#include <QPersistentModelIndex>
#include <QPoint>
#include <QPointer>
#include <QSet>
#include <QString>

#include "TarnUIDataController/popup_menu.h"
#include "drop_indicator.h"
#include "expansion_memory.h"
#include "plan_drag.h"
#include "plan_tree_item_delegate.h"
#include "plan_view_tree.h"

class QDropEvent;

namespace TarnPlanView {

class CPlanViewTree::Private {
 public:
  /// What a move over a row would do.
  enum Verdict { Refused, Taken, OntoRow, BesideRow };

  explicit Private(CPlanViewTree* tree) : q(tree) {}

  void SetUp();
  void FollowSkin();
  QModelIndex Own(const QModelIndex& index) const;
  void FinishExpand(const QModelIndex& index, bool expand);

  void ShowMenu(const QModelIndex& index, const QPoint& global_position);
  void ShowMenuAtCurrent();
  void OfferEntries(const QModelIndex& index);
  void RunCommand(tarn_ui_data_controller::MsgType type, const QString& code);
  QModelIndex MenuRow() const;
  bool HasCommands() const;
  bool HandleKey(int key, Qt::KeyboardModifiers modifiers);
  bool CommandByKey(tarn_ui_data_controller::MsgType type);

  void BecomeCurrent(const QModelIndex& index);
  bool IsOnMoreButton(const QPoint& position) const;
  void TrackMouse(const QPoint& position);
  void SetHover(const QModelIndex& index, MarUIControl::CItemDataRole::Part part);
  void LeaveRows();
  void HideThumbnail();

  bool IsOwnDrag(const QDropEvent* event) const;
  Verdict Judge(const QModelIndex& target) const;
  void ShowIndicator(Verdict verdict, const QModelIndex& target, int cursor_y);
  void HideIndicator();
  void Accept(QDropEvent* event, const QString& cursor);
  void RefuseMove(QDropEvent* event);
  void NotePress(QMouseEvent* event);
  /// Where the drag began, in the viewport as it is scrolled now.
  QPoint DragStart() const;
  void HoverWhileDragging(const QModelIndex& target);
  void ExpandUnderDrag();

  CPlanViewTree* const q;
  tarn_ui_data_controller::CPopupMenu* menu = nullptr;  // child of the tree
  QSet<int> hidden_entries;                             // a MsgType each
  QPersistentModelIndex menu_row;
  QString menu_code;
  bool menu_for_group = false;

  CPlanTreeItemDelegate* delegate = nullptr;  // child of the tree
  CExpansionMemory* memory = nullptr;         // child of the tree
  CDropIndicator indicator;
  QPersistentModelIndex hover_row;
  MarUIControl::CItemDataRole hover_part;
  QMetaObject::Connection on_removed, on_reset;

  QPoint drag_start;                // where the mouse was pressed
  QPersistentModelIndex drag_row;   // on this row
  QPoint drag_offset;               // so far from its top left corner
  QPersistentModelIndex drag_over;  // closed group that opens when the drag stays over it
  QBasicTimer open_timer;
  QPointer<CPlanDrag> drag;
  bool move_permitted = false;
};

}  // namespace TarnPlanView
