#pragma once

#include "MarUIControl/line_edit.h"
#include "host_export.h"

namespace MarUIControl {

/// Line edit whose placeholder ends in an ellipsis when it does not fit. placeholderText() holds the whole text.
/// Thread: GUI.
class TARN_HOST_EXPORT CPlaceholdLineEdit : public CLineEdit {
  Q_OBJECT
 public:
  explicit CPlaceholdLineEdit(QWidget* parent = nullptr);
  ~CPlaceholdLineEdit() override;

  void setPlaceholderText(const QString& text);
  QString placeholderText() const;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void RenewPlaceholder();

  QString placeholder_;
};

}  // namespace MarUIControl
