#include "plan_view_tree_p.h"

#include <QContextMenuEvent>
#include <QKeyEvent>

#include "MarUIControl/nomal_message.h"
#include "item_type.h"
#include "plan_item_role.h"
#include "plan_menu.h"
#include "plan_rows.h"
#include "view_config_manager.h"

namespace TarnPlanView {

using MarUIControl::CNomalMessage;

using tarn_ui_data_controller::MsgType;

namespace {

bool IsRowWithCommands(const QModelIndex& index) {
  return index.data(ItemTypeRole).toInt() > 0;
}

}  // namespace

void CPlanViewTree::initMenu() {
  auto* menu = MakePlanMenu(this);
  connect(menu, &tarn_ui_data_controller::CPopupMenu::signalPopupMenuClicked, this,
          [this](MsgType type, const QVariant& code) { d_->RunCommand(type, code.toString()); });
  menu->installEventFilter(this);
  d_->menu = menu;
}

void CPlanViewTree::SetMenuItemVisible(MsgType type, bool visible) {
  if (visible) {
    d_->hidden_entries.remove(type);
  } else {
    d_->hidden_entries.insert(type);
  }
  if (d_->menu) {
    d_->menu->SetMenuItemVisible(type, visible);
  }
}

const QSet<int>& CPlanViewTree::HiddenMenuItems() const {
  return d_->hidden_entries;
}

void CPlanViewTree::SetViewMoreActions(QList<QAction*>& actions) {
  d_->menu->SetMoreActions(actions);
}

tarn_ui_data_controller::CPopupMenu* CPlanViewTree::GetViewMoreMenu() const {
  return d_->menu;
}

void CPlanViewTree::OnRightMoreBtnClicked(const QModelIndex& index, const QPoint& global_position) {
  d_->ShowMenu(index, global_position);
}

void CPlanViewTree::Private::ShowMenu(const QModelIndex& index, const QPoint& global_position) {
  if (index.model() != q->model() || !IsRowWithCommands(index)) {
    return;
  }
  menu_row = index;
  menu_code = CodeOfRow(index);
  menu_for_group = index.data(IsGroupRole).toBool();
  BecomeCurrent(index);
  if (!menu_row.isValid()) {
    return;  // a listener took it away
  }
  OfferEntries(menu_row);
  menu->SetMenuData(menu_code);
  menu->setAccessibleName(menu_row.data().toString());
  HideThumbnail();
  Q_EMIT q->SignalMenuAboutToShow(menu_row);
  if (menu_row.isValid()) {
    menu->PopupAt(global_position);
  }
}

void CPlanViewTree::Private::OfferEntries(const QModelIndex& index) {
  PanelSituation situation;
  situation.item_type = index.data(ItemTypeRole).toInt();
  situation.switches = CViewConfigManager::Instance().Host();
  ShowEntries(*menu, StatesOf(situation), hidden_entries);
}

void CPlanViewTree::Private::ShowMenuAtCurrent() {
  const QPersistentModelIndex current = q->currentIndex();
  if (!current.isValid() || menu->isVisible()) {
    return;
  }
  q->scrollTo(current);
  const QRect row = q->visualRect(current);
  const QRect text(row.topLeft() + QPoint(q->iconSize().width(), 0), row.bottomRight());
  ShowMenu(current, q->viewport()->mapToGlobal(q->isRightToLeft() ? text.bottomRight() : text.bottomLeft()));
}

// A reload may have put another row in the place of the one that the menu was opened for.
QModelIndex CPlanViewTree::Private::MenuRow() const {
  if (menu_row.isValid() && CodeOfRow(menu_row) == menu_code) {
    return menu_row;
  }
  return q->RowOf(menu_code, menu_for_group);
}

void CPlanViewTree::Private::RunCommand(MsgType type, const QString& code) {
  const QPersistentModelIndex row = MenuRow();
  if (!row.isValid()) {
    Q_EMIT q->SignalMessageTipNeeded(CPlanViewTree::tr("This row is no longer there."), CNomalMessage::Failure);
    return;
  }
  BecomeCurrent(row);
  Q_EMIT q->SignalMenuClicked(type, code);
}

void CPlanViewTree::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
  if (event->reason() == QContextMenuEvent::Keyboard) {
    d_->ShowMenuAtCurrent();
  } else {
    d_->ShowMenu(indexAt(event->pos()), event->globalPos());
  }
}

bool CPlanViewTree::Private::CommandByKey(MsgType type) {
  const QModelIndex current = q->currentIndex();
  if (!IsRowWithCommands(current) || hidden_entries.contains(type)) {
    return false;
  }
  Q_EMIT q->SignalMenuClicked(type, CodeOfRow(current));
  return true;
}

// A tree that only offers its rows, as in a drop-down, has no commands.
bool CPlanViewTree::Private::HasCommands() const {
  return q->contextMenuPolicy() != Qt::PreventContextMenu;
}

bool CPlanViewTree::Private::HandleKey(int key, Qt::KeyboardModifiers modifiers) {
  if (!HasCommands()) {
    return false;
  }
  const auto held = modifiers & ~Qt::KeypadModifier;
  if (key == Qt::Key_Menu || (key == Qt::Key_F10 && held == Qt::ShiftModifier)) {
    ShowMenuAtCurrent();
    return true;
  }
  if (held != Qt::NoModifier) {
    return false;
  }
  switch (key) {
    case Qt::Key_F2:
      return CommandByKey(tarn_ui_data_controller::Edit);
    case Qt::Key_Delete:
      return CommandByKey(tarn_ui_data_controller::Delete);
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (IsPlanRow(q->currentIndex())) {
        Q_EMIT q->SignalPlayRequested(q->currentIndex());
        return true;
      }
      return false;
    default:
      return false;
  }
}

void CPlanViewTree::keyPressEvent(QKeyEvent* event) {
  const bool command = event->key() == Qt::Key_F2 || event->key() == Qt::Key_Delete ||
                       ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && IsPlanRow(currentIndex()));
  // A key held down is one command, not many.
  if ((command && event->isAutoRepeat()) || d_->HandleKey(event->key(), event->modifiers())) {
    event->accept();
    return;
  }
  CTreeView::keyPressEvent(event);
}

}  // namespace TarnPlanView
