#pragma once

#include "MarUIControl/line_edit.h"
#include "host_export.h"

namespace MarUIControl {

/// Line edit whose placeholder ends in an ellipsis when it does not fit; the whole is shown when the mouse rests on it,
/// unless the field has a tool tip of its own. Thread: GUI.
class TARN_HOST_EXPORT CPlaceholdLineEdit : public CLineEdit {
  Q_OBJECT
 public:
  explicit CPlaceholdLineEdit(QWidget* parent = nullptr);
  ~CPlaceholdLineEdit() override;

  /// What an empty field shows.
  void setPlaceholderText(const QString& text);
  /// The whole of it, whether it fits or not.
  QString placeholderText() const;

 protected:
  bool event(QEvent* event) override;
};

}  // namespace MarUIControl
