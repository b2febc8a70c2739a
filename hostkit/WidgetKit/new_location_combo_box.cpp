#include "WidgetKit/new_location_combo_box.h"

namespace WidgetKit {

CNewLocationComboBox::CNewLocationComboBox(QWidget* parent)
    : CMultilevelComboBox(parent), own_tree_(new MarUIControl::CTreeView) {
  own_tree_->setHeaderHidden(true);
  own_tree_->setAccessibleName(tr("Choices"));
  SetLocationView(own_tree_);
  SetEditLabelVisible(true);
}

// A view that another one has replaced has no other owner.
CNewLocationComboBox::~CNewLocationComboBox() {
  if (own_tree_ && !own_tree_->parent()) {
    delete own_tree_;
  }
}

MarUIControl::CTreeView* CNewLocationComboBox::LocationTree() const {
  return qobject_cast<MarUIControl::CTreeView*>(LocationView());
}

}  // namespace WidgetKit
