#include "busy_focus.h"

#include <utility>

namespace TarnPlanView {

void CBusyFocus::Take() {
  editor_->setFocusPolicy(Qt::TabFocus);
  QWidget* focus = editor_->window()->focusWidget();
  if (focus && editor_->isAncestorOf(focus)) {
    before_ = focus;
    editor_->setFocus(Qt::OtherFocusReason);
  }
}

void CBusyFocus::GiveBack(QWidget* refuge) {
  editor_->setFocusPolicy(Qt::NoFocus);
  const QPointer<QWidget> before = std::exchange(before_, nullptr);
  if (!before || !IsFree()) {
    return;
  }
  const bool usable = before->isVisibleTo(editor_) && before->isEnabledTo(editor_);
  QWidget* target = usable ? before.data() : refuge;
  target->setFocus(Qt::OtherFocusReason);
}

bool CBusyFocus::IsFree() const {
  const QWidget* focus = editor_->window()->focusWidget();
  return !focus || focus == editor_;
}

}  // namespace TarnPlanView
