#pragma once

#include <QPointer>

#include "MarUIControl/multilevel_combo_box.h"
#include "MarUIControl/tree_view.h"
#include "host_export.h"

namespace WidgetKit {

/// Location combo box that brings its tree along, with the search line that steps from hit to hit above it.
///
/// LocationView() is a MarUIControl::CTreeView of its own, without a header, until SetLocationView() puts another view
/// in its place; give it a model. What the box holds is read and set by GetCurrentIndex() and SetCurrentIndex(), which
/// the view's current row follows whenever the drop-down opens. SignalIndexActivated() tells of a choice of the user,
/// SignalCurrentIndexChanged(), before it, of every change. Rows that are not selectable cannot be chosen. Thread: GUI.
class TARN_HOST_EXPORT CNewLocationComboBox : public MarUIControl::CMultilevelComboBox {
  Q_OBJECT
 public:
  explicit CNewLocationComboBox(QWidget* parent = nullptr);
  ~CNewLocationComboBox() override;

  /// The view in the drop-down when it is a tree of the host, to answer its AsynchronousExpand(); otherwise null.
  MarUIControl::CTreeView* LocationTree() const;

 private:
  QPointer<MarUIControl::CTreeView> own_tree_;
};

}  // namespace WidgetKit
