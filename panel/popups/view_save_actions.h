#pragma once

#include <QMetaType>

namespace TarnPlanView {

/// What the save menu offers.
enum ViewSaveActions { SaveView = 1, SaveAsView = 2 };

}  // namespace TarnPlanView

Q_DECLARE_METATYPE(TarnPlanView::ViewSaveActions)
