#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>

#include "TarnUIDataController/slide_widget_pos_rule.h"
#include "host_export.h"

namespace WidgetKit {

/// What ShowDockWidget() is to show: a widget, how wide, and where. Copyable. Thread: GUI.
class TARN_HOST_EXPORT CSlideOutData {
 public:
  /// No widget, no width, no rule.
  CSlideOutData();
  /// Of the same widget.
  CSlideOutData(const CSlideOutData&);
  /// Of the same widget.
  CSlideOutData& operator=(const CSlideOutData&);
  ~CSlideOutData();

  /// How wide, in device-independent pixels; less where the window is narrower.
  void SetVal_slide_width(int width);
  /// As set; 0 at first.
  int GetVal_slide_width() const;
  /// The widget that slides out. Not owned; keeps its parent's ownership across showing and hiding.
  void SetVal_ptr_dock_widget(QWidget* widget);
  /// Null for none, or when it was deleted.
  QWidget* GetVal_ptr_dock_widget() const;
  /// Where it stands; null: along the right edge of the window that the widget's parent stands in.
  void SetVal_ptr_dock_pos_rule(std::shared_ptr<tarn_ui_data_controller::CSlideWidgetPosRule> rule);
  /// As set; null at first.
  std::shared_ptr<tarn_ui_data_controller::CSlideWidgetPosRule> GetVal_ptr_dock_pos_rule() const;

 private:
  int slide_width_ = 0;
  QPointer<QWidget> dock_widget_;
  std::shared_ptr<tarn_ui_data_controller::CSlideWidgetPosRule> pos_rule_;
};

}  // namespace WidgetKit
