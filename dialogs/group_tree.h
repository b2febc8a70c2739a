#pragma once

#include <QPointer>

#include "plan_view_tree.h"

namespace TarnPlanView {

class CStandardPlanModel;
class CStandardViewController;
class CViewSortFilterProxyModel;

/// The groups that the user may put a plan into, for the drop-down of a combo box: rows without commands and drags.
/// Thread: GUI.
class CGroupTree : public CPlanViewTree {
  Q_OBJECT
 public:
  explicit CGroupTree(QWidget* parent);

  /// Whose groups it offers. Not owned; may die first.
  void SetModel(CStandardPlanModel* model);
  /// Loads what is below a row that is opened. Not owned; may die first.
  void SetController(CStandardViewController* controller);
  /// The model of the tree; it belongs to the parent.
  CViewSortFilterProxyModel* Groups() const { return groups_; }
  /// Whether a plan may stand directly in this row's group; roots hold plans only where that is switched on.
  static bool MayHoldPlans(const QModelIndex& row);

 private:
  CViewSortFilterProxyModel* groups_ = nullptr;
  QPointer<CStandardPlanModel> model_;
  QPointer<CStandardViewController> controller_;
};

}  // namespace TarnPlanView
