#pragma once

#include "MarUIControl/line_edit.h"
#include "host_export.h"

namespace WidgetKit {

/// Search field: a magnifier that searches and a cross that clears. Return and the magnifier emit SignalSearch(); Esc
/// empties a field that holds text and is left to the parent otherwise. Thread: GUI.
class TARN_HOST_EXPORT CNewSearchLine : public MarUIControl::CLineEdit {
  Q_OBJECT
 public:
  explicit CNewSearchLine(QWidget* parent = nullptr);
  ~CNewSearchLine() override;

 Q_SIGNALS:
  /// Return, or a click on the magnifier.
  void SignalSearch();
  /// Esc in an empty field.
  void SignalLeave();

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace WidgetKit
