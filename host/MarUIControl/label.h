#pragma once

#include <QLabel>

#include "host_export.h"

namespace MarUIControl {

/// One line of plain text; what does not fit ends in an ellipsis and is shown when the mouse rests on it. Markup in a
/// text is shown as it is, because names come from users. text() and the accessible name always hold the whole text.
/// With word wrap switched on it is a plain label. Thread: GUI.
class TARN_HOST_EXPORT CLabel : public QLabel {
  Q_OBJECT
 public:
  explicit CLabel(QWidget* parent = nullptr);
  /// A label that shows `text`.
  explicit CLabel(const QString& text, QWidget* parent = nullptr);
  ~CLabel() override;

  /// The text to show; setText() does the same.
  void SetText(const QString& text);

  QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  bool IsElided() const;
};

}  // namespace MarUIControl
