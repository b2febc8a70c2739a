#pragma once

#include <QLineEdit>

#include "host_export.h"

namespace MarUIControl {

/// One line of text. What is pasted or dropped loses its line breaks and, under a validator that says which characters
/// may stand, the characters that may not, instead of being refused as a whole. Ctrl+U is left to the window.
/// Thread: GUI.
class TARN_HOST_EXPORT CLineEdit : public QLineEdit {
  Q_OBJECT
 public:
  explicit CLineEdit(QWidget* parent = nullptr);
  ~CLineEdit() override;

  /// The most that can be typed; counts UTF-16 units. What is pasted is cut off there.
  void setMaxLineEditLength(int length);
  /// The tool tip, as plain text: markup in it is shown as it is.
  void setToolTip(const QString& text);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void PasteAllowed(const QString& pasted);
  QString Allowed(const QString& pasted) const;
  QString TextWith(const QString& inserted) const;
  bool IsRefused(QString text) const;
  void SeparateUndo();
};

}  // namespace MarUIControl
