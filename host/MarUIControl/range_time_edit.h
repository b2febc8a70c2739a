#pragma once

#include "MarUIControl/range_time_line_edit.h"
#include "host_export.h"

namespace MarUIControl {

/// The range of times in a frame of its own, as dialogs use it. Thread: GUI.
class TARN_HOST_EXPORT CRangeTimeEdit : public CRangeTimeLineEdit {
  Q_OBJECT
 public:
  explicit CRangeTimeEdit(QWidget* parent = nullptr);
  ~CRangeTimeEdit() override;
};

}  // namespace MarUIControl
