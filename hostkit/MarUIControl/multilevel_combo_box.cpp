#include "MarUIControl/multilevel_combo_box.h"

#include <QAbstractItemView>
#include <QStringList>
#include <QTreeView>

#include "MarUIControl/plain_tool_tip.h"

namespace MarUIControl {

namespace {

QString WayTo(QModelIndex index) {
  QStringList names;
  for (; index.isValid(); index = index.parent()) {
    names.prepend(index.data(Qt::DisplayRole).toString());
  }
  return names.join(QStringLiteral(" / "));
}

}  // namespace

CMultilevelComboBox::CMultilevelComboBox(QWidget* parent) : CLocationComboBox(parent) {}

CMultilevelComboBox::~CMultilevelComboBox() = default;

// Invalid for a row that is none of the drop-down's.
QModelIndex CMultilevelComboBox::OwnRow(const QModelIndex& index) const {
  if (index.model() != LocationModel()) {
    return {};
  }
  return index;
}

void CMultilevelComboBox::SetCurrentIndex(const QModelIndex& index) {
  const QModelIndex row = OwnRow(index);
  const bool changed = row != current_;
  current_ = row;
  chosen_ = row.isValid();
  WatchModel();
  PrepareView();
  RenewText();
  if (changed) {
    Q_EMIT SignalCurrentIndexChanged(row);
  }
}

QModelIndex CMultilevelComboBox::GetCurrentIndex() const {
  return OwnRow(current_);
}

void CMultilevelComboBox::Choose(const QModelIndex& index) {
  const QPersistentModelIndex row = index;
  SetCurrentIndex(index);
  if (row.isValid()) {
    Q_EMIT SignalIndexActivated(row);
  }
}

// Moving about in the drop-down without choosing leaves no trace: it opens at what the box shows.
void CMultilevelComboBox::PrepareView() {
  QAbstractItemView* view = LocationView();
  if (!view || !view->model()) {
    return;
  }
  const QModelIndex row = GetCurrentIndex();
  view->setCurrentIndex(row);
  if (auto* tree = qobject_cast<QTreeView*>(view)) {
    for (QModelIndex above = row.parent(); above.isValid(); above = above.parent()) {
      tree->expand(above);
    }
  }
}

void CMultilevelComboBox::WatchModel() {
  disconnect(on_changed_);
  disconnect(on_removed_);
  disconnect(on_reset_);
  QAbstractItemModel* model = LocationModel();
  if (!model || !chosen_) {
    return;
  }
  on_changed_ = connect(model, &QAbstractItemModel::dataChanged, this, [this] { RenewText(); });
  on_removed_ = connect(model, &QAbstractItemModel::rowsRemoved, this, [this] { RenewText(); });
  on_reset_ = connect(model, &QAbstractItemModel::modelReset, this, [this] { RenewText(); });
}

void CMultilevelComboBox::RenewText() {
  SetCurrentText(current_.data(Qt::DisplayRole).toString());
  setToolTip(PlainToolTip(WayTo(current_)));
  if (chosen_ && !current_.isValid()) {
    chosen_ = false;
    Q_EMIT SignalCurrentIndexChanged(QModelIndex());
  }
}

}  // namespace MarUIControl
