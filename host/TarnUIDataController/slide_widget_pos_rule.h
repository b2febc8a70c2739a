#pragma once

#include <QPointer>
#include <QRect>
#include <QWidget>

#include "host_export.h"

namespace tarn_ui_data_controller {

/// Where a slide-out dock stands. Hosts and plug-ins may derive rules of their own. Thread: GUI.
class TARN_HOST_EXPORT CSlideWidgetPosRule {
 public:
  /// Attached to nothing.
  CSlideWidgetPosRule();
  virtual ~CSlideWidgetPosRule();

  /// The widget the dock clings to; not owned.
  void SetPosAttachTo(QWidget* widget);
  /// Null for none, or when it was deleted.
  QWidget* PosAttachTo() const;

  /// The place of a dock `width` pixels wide, in coordinates of the window of the widget attached to; empty when that
  /// widget is gone or hidden.
  virtual QRect Place(int width) const = 0;

 private:
  QPointer<QWidget> attach_to_;
};

}  // namespace tarn_ui_data_controller
