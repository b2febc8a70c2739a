#include "item_row_accessibility.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QTreeView>

#include "MarUIControl/tree_view.h"
#include "item_view_rows.h"

namespace MarUIControl {

namespace {

QString Joined(QStringList parts) {
  parts.removeAll(QString());
  return parts.join(QStringLiteral(", "));
}

}  // namespace

QTreeView* CRowInterface::Tree() const {
  return qobject_cast<QTreeView*>(view_.data());
}

bool CRowInterface::IsOutOfTheWay() const {
  return !isValid() || (state().offscreen && view_->currentIndex() != index_);
}

QString CRowInterface::text(QAccessible::Text kind) const {
  if (!isValid()) {
    return QString();
  }
  if (kind == QAccessible::Description) {
    return Joined({Place(), index_.data(Qt::AccessibleDescriptionRole).toString()});
  }
  if (kind != QAccessible::Name) {
    return QString();
  }
  for (const int role : {int(Qt::AccessibleTextRole), int(Qt::DisplayRole)}) {
    const QString said = index_.data(role).toString();
    if (!said.isEmpty()) {
      return said;
    }
  }
  return NothingThere();
}

// An empty place of a table is not without a name.
QString CRowInterface::NothingThere() const {
  const QString title = view_->model()->headerData(index_.column(), Qt::Horizontal).toString();
  return title.isEmpty() || !Tree() ? QString() : CTreeView::tr("%1: none").arg(title);
}

// In words: the level has no other way to a reader, and no event says that a row has opened.
QString CRowInterface::Place() const {
  const QTreeView* tree = Tree();
  const QModelIndex row = index_;
  if (!tree || !tree->rootIsDecorated() || row.column() != 0) {
    return QString();
  }
  QString below;
  if (tree->isExpanded(row) && tree->model()->rowCount(row) > 0) {
    below = CTreeView::tr("rows below: %1").arg(tree->model()->rowCount(row));
  }
  return Joined({CTreeView::tr("Level %1").arg(CItemViewRows(view_).LevelOf(row)), below});
}

QRect CRowInterface::rect() const {
  if (!isValid()) {
    return QRect();
  }
  const QRect place = view_->visualRect(index_);
  return {view_->viewport()->mapToGlobal(place.topLeft()), place.size()};
}

QAccessible::Role CRowInterface::role() const {
  return Tree() ? QAccessible::TreeItem : QAccessible::ListItem;
}

QAccessible::State CRowInterface::state() const {
  QAccessible::State state;
  if (!isValid()) {
    state.invalid = true;
    return state;
  }
  const Qt::ItemFlags flags = view_->model()->flags(index_);
  state.disabled = !flags.testFlag(Qt::ItemIsEnabled) || !view_->isEnabled();
  state.selectable = flags.testFlag(Qt::ItemIsSelectable);
  state.selected = view_->selectionModel() && view_->selectionModel()->isSelected(index_);
  state.focusable = !state.disabled && view_->focusPolicy() != Qt::NoFocus;
  state.focused = view_->hasFocus() && view_->currentIndex() == index_;
  state.invisible = !view_->isVisible();
  state.offscreen = !view_->viewport()->rect().intersects(view_->visualRect(index_));
  state.checkable = IsCheckable();
  state.checked = index_.data(Qt::CheckStateRole).toInt() == Qt::Checked;
  state.checkStateMixed = index_.data(Qt::CheckStateRole).toInt() == Qt::PartiallyChecked;
  AddStateInTree(&state);
  return state;
}

void CRowInterface::AddStateInTree(QAccessible::State* state) const {
  const QTreeView* tree = Tree();
  if (tree && index_.column() == 0) {
    state->expandable = tree->itemsExpandable() && tree->model()->hasChildren(index_);
    state->expanded = state->expandable && tree->isExpanded(index_);
    state->collapsed = state->expandable && !state->expanded;
  }
}

void* CRowInterface::interface_cast(QAccessible::InterfaceType type) {
  return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
}

QStringList CRowInterface::actionNames() const {
  QStringList names{pressAction(), setFocusAction(), showMenuAction()};
  if (isValid() && IsCheckable()) {
    names.prepend(toggleAction());
  }
  return names;
}

// By its keys: who hears the row gets what everybody else gets.
void CRowInterface::doAction(const QString& name) {
  if (!isValid() || !view_->isEnabled()) {
    return;
  }
  view_->setFocus(Qt::OtherFocusReason);
  view_->setCurrentIndex(index_);
  if (name == pressAction()) {
    Press(Qt::Key_Return);
  } else if (name == toggleAction()) {
    Press(Qt::Key_Space);
  } else if (name == showMenuAction()) {
    Press(Qt::Key_Menu);
  }
}

// Later: who asked has the answer before a dialog opens.
void CRowInterface::Press(Qt::Key key) {
  for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QCoreApplication::postEvent(view_, new QKeyEvent(type, key, Qt::NoModifier));
  }
}

CTitleInterface::CTitleInterface(QTreeView* tree, int column) : tree_(tree), column_(column) {}

bool CTitleInterface::isValid() const {
  return tree_ && tree_->model() && column_ < tree_->header()->count();
}

QAccessibleInterface* CTitleInterface::parent() const {
  return QAccessible::queryAccessibleInterface(tree_);
}

QString CTitleInterface::text(QAccessible::Text kind) const {
  if (kind != QAccessible::Name || !isValid()) {
    return QString();
  }
  return tree_->model()->headerData(column_, Qt::Horizontal).toString();
}

QRect CTitleInterface::rect() const {
  if (!isValid()) {
    return QRect();
  }
  const QHeaderView* header = tree_->header();
  return {header->mapToGlobal(QPoint(header->sectionViewportPosition(column_), 0)),
          QSize(header->sectionSize(column_), header->height())};
}

QAccessible::State CTitleInterface::state() const {
  QAccessible::State state;
  state.invisible = !isValid() || !tree_->header()->isVisible();
  return state;
}

}  // namespace MarUIControl
