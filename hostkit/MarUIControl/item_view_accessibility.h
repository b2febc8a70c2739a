#pragma once

#include <QAccessible>

class QAbstractItemView;

namespace MarUIControl {

/// What assistive technology learns of a list or tree: the view with its state, each row with level, what is below it
/// and what it can do. In place of Qt's own, whose views have no state, whose trees keep every row that was ever asked
/// for, and which hide what lies over the rows. Null for a view that only Qt can tell of. Thread: GUI.
QAccessibleInterface* MakeItemViewInterface(QAbstractItemView* view);

}  // namespace MarUIControl
