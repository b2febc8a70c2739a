#include "MarUIControl/abstract_item_view.h"

#include <QHeaderView>

#include "MarUIControl/control_accessibility.h"

namespace MarUIControl {

CAbstractItemView::CAbstractItemView(QWidget* parent) : QTreeView(parent) {
  InstallControlAccessibility();
  setEditTriggers(QAbstractItemView::NoEditTriggers);
}

CAbstractItemView::~CAbstractItemView() = default;

void CAbstractItemView::setColumnResizeToContents(int column, bool resize) {
  if (column < 0 || column >= header()->count()) {
    return;
  }
  header()->setSectionResizeMode(column, resize ? QHeaderView::ResizeToContents : QHeaderView::Stretch);
}

}  // namespace MarUIControl
