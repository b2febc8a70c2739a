#include "WidgetKit/dock_widget.h"

#include <QApplication>

#include "MarUIControl/string_conversion.h"
#include "WidgetKit/dock_frame.h"

namespace WidgetKit {

namespace {

QWidget* WindowFor(const CSlideOutData& data) {
  QWidget* within = data.GetVal_ptr_dock_widget()->parentWidget();
  const auto rule = data.GetVal_ptr_dock_pos_rule();
  if (rule && rule->PosAttachTo()) {
    within = rule->PosAttachTo();
  }
  if (QWidget* window = MarUIControl::GetIndependentWindow(within)) {
    return window;
  }
  return QApplication::activeWindow();
}

}  // namespace

void ShowDockWidget(const CSlideOutData& data) {
  QWidget* widget = data.GetVal_ptr_dock_widget();
  if (!widget || IsDockWidgetShown(widget)) {
    return;
  }
  DockFrame* frame = DockFrame::Around(widget);
  if (!frame) {
    QWidget* window = WindowFor(data);
    if (!window || window == widget) {
      return;
    }
    frame = new DockFrame(data, window);
  }
  frame->SlideOut();
}

void HideDockWidget(QWidget* widget) {
  if (IsDockWidgetShown(widget)) {
    DockFrame::Around(widget)->SlideBack();
  }
}

bool IsDockWidgetShown(const QWidget* widget) {
  const DockFrame* frame = DockFrame::Around(widget);
  return frame && !frame->IsSlidingBack();
}

}  // namespace WidgetKit
