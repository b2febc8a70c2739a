#include "MarUIControl/standard_item.h"

namespace MarUIControl {

namespace {

bool HasCheck(const QStandardItem& item) {
  return item.isCheckable() || item.data(Qt::CheckStateRole).isValid();
}

// What the rows below say together; no value when none of them has a check.
QVariant StateBelow(const QStandardItem& item) {
  QVariant state;
  for (int row = 0; row < item.rowCount(); ++row) {
    const QStandardItem* child = item.child(row);
    if (!child || !HasCheck(*child)) {
      continue;
    }
    if (state.isValid() && state.toInt() != child->checkState()) {
      return Qt::PartiallyChecked;
    }
    state = child->checkState();
  }
  return state;
}

}  // namespace

CStandardItem::CStandardItem() = default;

CStandardItem::CStandardItem(const QString& text) : QStandardItem(text) {}

CStandardItem::~CStandardItem() = default;

void CStandardItem::setData(const QVariant& value, int role) {
  if (role != Qt::CheckStateRole) {
    QStandardItem::setData(value, role);
    return;
  }
  const bool changed = data(role) != value;
  QStandardItem::setData(value, role);
  if (!changed || !value.isValid()) {
    return;
  }
  const auto state = static_cast<Qt::CheckState>(value.toInt());
  if (state != Qt::PartiallyChecked) {
    SpreadDown(state);
  }
  RenewAbove();
}

QStandardItem* CStandardItem::clone() const {
  return new CStandardItem(*this);
}

int CStandardItem::type() const {
  return QStandardItem::UserType;
}

// Below, the plain setData() is used: the spread must not climb up again from every row.
void CStandardItem::SpreadDown(Qt::CheckState state) {
  for (int row = 0; row < rowCount(); ++row) {
    QStandardItem* child = this->child(row);
    if (!child) {
      continue;
    }
    if (HasCheck(*child)) {
      child->QStandardItem::setData(state, Qt::CheckStateRole);
    }
    if (auto* item = dynamic_cast<CStandardItem*>(child)) {
      item->SpreadDown(state);
    }
  }
}

void CStandardItem::RenewAbove() {
  for (QStandardItem* above = parent(); above; above = above->parent()) {
    if (!HasCheck(*above)) {
      continue;
    }
    const QVariant state = StateBelow(*above);
    if (!state.isValid() || state == above->data(Qt::CheckStateRole)) {
      return;
    }
    above->QStandardItem::setData(state, Qt::CheckStateRole);
  }
}

}  // namespace MarUIControl
