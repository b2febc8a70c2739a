#pragma once

#include <QTimeEdit>

#include "MarUIControl/typed_time.h"

namespace MarUIControl {

/// A time of day, HH:mm:ss. A click selects the section under it, and digits go into the sections from there on; what
/// would be no time changes nothing. Tab, the arrow keys, Home and End go from section to section, a colon to the next
/// one. The wheel turns the time only while the field has the focus. Thread: GUI.
class CTimeEdit : public QTimeEdit {
  Q_OBJECT
 public:
  explicit CTimeEdit(QWidget* parent);

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  bool GoBetweenSections(int key);
  bool TypeDigits(QKeyEvent* event);
  void TypeDigit(int digit);
  void TypeSeparator();
  void SelectSection(int section);
  void ClearSections();
  bool IsWholeSelected() const;
  void Paste();
  void Copy() const;

  TypedTime::State state_ = TypedTime::State::Chosen;  // of the current section
  QTime typed_;                                        // the time that the last digit made
};

}  // namespace MarUIControl
