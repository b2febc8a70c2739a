#include "item_view_accessibility.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QEvent>
#include <QHash>
#include <QTimer>
#include <QTreeView>

#include "item_row_accessibility.h"
#include "item_view_rows.h"

namespace MarUIControl {

namespace {

constexpr int kMostRows = 256;  // that are kept for a reader, who asks again for any other

void SayOf(QAccessible::Event what, QAccessibleInterface* row) {
  if (row) {
    QAccessibleEvent event(row, what);
    QAccessible::updateAccessibility(&event);
  }
}

QAccessibleInterface* CurrentRow(QAbstractItemView* view) {
  const QAccessibleInterface* known = QAccessible::queryAccessibleInterface(view);
  return known ? known->focusChild() : nullptr;
}

/// Says what the toolkit leaves unsaid: on which row the user is who comes to the view, and that the row has opened.
class ViewWatch : public QObject {
 public:
  explicit ViewWatch(QAbstractItemView* view) : QObject(view), view_(view) {
    view->installEventFilter(this);
    if (auto* tree = qobject_cast<QTreeView*>(view)) {
      connect(tree, &QTreeView::expanded, this, [this](const QModelIndex& row) { OnOpened(row); });
      connect(tree, &QTreeView::collapsed, this, [this](const QModelIndex& row) { OnOpened(row); });
    }
    if (view->hasFocus()) {
      SayCurrentRow();
    }
  }

  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::FocusIn && QAccessible::isActive()) {
      SayCurrentRow();
    }
    return false;
  }

 private:
  // After the toolkit, which says that the view has the focus.
  void SayCurrentRow() {
    QTimer::singleShot(0, this, [this] {
      if (view_->hasFocus()) {
        SayOf(QAccessible::Focus, CurrentRow(view_));
      }
    });
  }
  void OnOpened(const QModelIndex& row) {
    if (row == view_->currentIndex() && QAccessible::isActive()) {
      SayOf(QAccessible::DescriptionChanged, CurrentRow(view_));
    }
  }

  QAbstractItemView* const view_;
};

/// Numbers its children as the toolkit's events do: in a tree the columns' titles come first, then all columns of each
/// row. Behind them comes what lies over the rows. That it is a table as well tells readers not to ask for all of it.
class ViewInterface : public QAccessibleWidget, public QAccessibleTableInterface {
 public:
  explicit ViewInterface(QAbstractItemView* view)
      : QAccessibleWidget(view, CItemViewRows(view).IsTree() ? QAccessible::Tree : QAccessible::List) {
    new ViewWatch(view);
  }
  ~ViewInterface() override {
    for (const QAccessible::Id id : qAsConst(titles_)) {
      QAccessible::deleteAccessibleInterface(id);
    }
    for (const QAccessible::Id id : qAsConst(rows_)) {
      QAccessible::deleteAccessibleInterface(id);
    }
  }

  int childCount() const override { return CellCount() + (Over() ? 1 : 0); }
  QAccessibleInterface* child(int number) const override;
  QAccessibleInterface* childAt(int x, int y) const override;
  int indexOfChild(const QAccessibleInterface* child) const override;
  QAccessibleInterface* focusChild() const override { return CellOf(View()->currentIndex()); }
  void* interface_cast(QAccessible::InterfaceType type) override;

  QAccessibleInterface* caption() const override { return nullptr; }
  QAccessibleInterface* summary() const override { return nullptr; }
  QAccessibleInterface* cellAt(int row, int column) const override { return CellOf(Rows().At(row, column)); }
  int columnCount() const override { return Rows().Columns(); }
  int rowCount() const override { return Rows().Count(); }
  QString columnDescription(int) const override { return QString(); }
  QString rowDescription(int) const override { return QString(); }
  int selectedCellCount() const override { return Selected().size(); }
  int selectedColumnCount() const override { return 0; }
  int selectedRowCount() const override { return selectedRows().size(); }
  QList<QAccessibleInterface*> selectedCells() const override;
  QList<int> selectedColumns() const override { return {}; }
  QList<int> selectedRows() const override;
  bool isColumnSelected(int) const override { return false; }
  bool isRowSelected(int row) const override { return selectedRows().contains(row); }
  bool selectRow(int row) override;
  bool selectColumn(int) override { return false; }
  bool unselectRow(int) override { return false; }
  bool unselectColumn(int) override { return false; }
  void modelChange(QAccessibleTableModelChangeEvent* event) override;

 private:
  QAbstractItemView* View() const { return static_cast<QAbstractItemView*>(widget()); }
  CItemViewRows Rows() const { return CItemViewRows(View()); }
  int TitleCount() const { return Rows().IsTree() ? columnCount() : 0; }
  int CellCount() const { return TitleCount() + rowCount() * columnCount(); }
  QModelIndexList Selected() const;
  QAccessibleInterface* TitleOf(int column) const;
  QAccessibleInterface* CellOf(const QModelIndex& index) const;
  QAccessibleInterface* Over() const;
  void DropRows() const;

  mutable QHash<int, QAccessible::Id> titles_;  // by column
  mutable QHash<QPersistentModelIndex, QAccessible::Id> rows_;
  QString said_;  // of the row where the user is
};

QAccessibleInterface* ViewInterface::child(int number) const {
  const int titles = TitleCount(), columns = columnCount();
  if (number < 0 || columns <= 0) {
    return nullptr;
  }
  if (number < titles) {
    return TitleOf(number);
  }
  const QModelIndex index = Rows().At((number - titles) / columns, (number - titles) % columns);
  return index.isValid() ? CellOf(index) : Over();
}

QAccessibleInterface* ViewInterface::TitleOf(int column) const {
  if (!titles_.contains(column)) {
    auto* tree = static_cast<QTreeView*>(View());
    titles_.insert(column, QAccessible::registerAccessibleInterface(new CTitleInterface(tree, column)));
  }
  return QAccessible::accessibleInterface(titles_.value(column));
}

QAccessibleInterface* ViewInterface::CellOf(const QModelIndex& index) const {
  if (!index.isValid()) {
    return nullptr;
  }
  const auto known = rows_.constFind(index);
  if (known != rows_.constEnd()) {
    return QAccessible::accessibleInterface(known.value());
  }
  if (rows_.size() >= kMostRows) {
    DropRows();
  }
  auto* cell = new CRowInterface(View(), index);
  rows_.insert(index, QAccessible::registerAccessibleInterface(cell));
  return cell;
}

// Each one that is kept is a burden for every change of the model.
void ViewInterface::DropRows() const {
  for (auto row = rows_.begin(); row != rows_.end();) {
    const auto* known = static_cast<CRowInterface*>(QAccessible::accessibleInterface(row.value()));
    if (known && !known->IsOutOfTheWay()) {
      ++row;
      continue;
    }
    QAccessible::deleteAccessibleInterface(row.value());
    row = rows_.erase(row);
  }
}

// The viewport, where something stands in place of rows.
QAccessibleInterface* ViewInterface::Over() const {
  for (QObject* part : View()->viewport()->children()) {
    if (part->isWidgetType() && static_cast<QWidget*>(part)->isVisible()) {
      return QAccessible::queryAccessibleInterface(View()->viewport());
    }
  }
  return nullptr;
}

QAccessibleInterface* ViewInterface::childAt(int x, int y) const {
  const QModelIndex index = View()->indexAt(View()->viewport()->mapFromGlobal(QPoint(x, y)));
  return index.isValid() ? CellOf(index) : Over();
}

int ViewInterface::indexOfChild(const QAccessibleInterface* child) const {
  if (child && child->object() == View()->viewport()) {
    return CellCount();
  }
  for (auto title = titles_.cbegin(); title != titles_.cend(); ++title) {
    if (QAccessible::accessibleInterface(title.value()) == child) {
      return title.key();
    }
  }
  const auto* cell = dynamic_cast<const CRowInterface*>(child);
  if (!cell || !cell->isValid()) {
    return -1;
  }
  const int row = Rows().RowOf(cell->Index());
  return row < 0 ? row : TitleCount() + row * columnCount() + cell->Index().column();
}

void* ViewInterface::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::TableInterface) {
    return static_cast<QAccessibleTableInterface*>(this);
  }
  return QAccessibleWidget::interface_cast(type);
}

QModelIndexList ViewInterface::Selected() const {
  return View()->selectionModel() ? View()->selectionModel()->selectedIndexes() : QModelIndexList();
}

QList<QAccessibleInterface*> ViewInterface::selectedCells() const {
  QList<QAccessibleInterface*> cells;
  for (const QModelIndex& index : Selected()) {
    cells.append(CellOf(index));
  }
  return cells;
}

QList<int> ViewInterface::selectedRows() const {
  QList<int> rows;
  for (const QModelIndex& index : Selected()) {
    if (index.column() == 0) {
      rows.append(Rows().RowOf(index));
    }
  }
  return rows;
}

bool ViewInterface::selectRow(int row) {
  const QModelIndex index = Rows().At(row, 0);
  if (index.isValid()) {
    View()->setCurrentIndex(index);
  }
  return index.isValid();
}

// What has gone is dropped; a changed row where the user is says itself again.
void ViewInterface::modelChange(QAccessibleTableModelChangeEvent* event) {
  if (event->modelChangeType() != QAccessibleTableModelChangeEvent::DataChanged) {
    DropRows();
    return;
  }
  const QModelIndex current = View()->currentIndex();
  const bool is_touched = current.row() >= event->firstRow() && current.row() <= event->lastRow();
  QAccessibleInterface* cell = is_touched && View()->hasFocus() ? CellOf(current) : nullptr;
  if (cell && cell->text(QAccessible::Name) != said_) {
    said_ = cell->text(QAccessible::Name);
    SayOf(QAccessible::NameChanged, cell);
  }
}

}  // namespace

QAccessibleInterface* MakeItemViewInterface(QAbstractItemView* view) {
  return CItemViewRows::CanTell(view) ? new ViewInterface(view) : nullptr;
}

}  // namespace MarUIControl
