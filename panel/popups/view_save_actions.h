#pragma once

#include <QMetaType>

namespace TarnPlanView {

/// What the save menu offers.
enum ViewSaveActions {
  SaveView = 1,    ///< Over the plan that plays.
  SaveAsView = 2,  ///< As a new plan.
};

}  // namespace TarnPlanView

Q_DECLARE_METATYPE(TarnPlanView::ViewSaveActions)
