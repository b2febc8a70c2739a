#pragma once

#include <QPointer>
#include <QWidget>

namespace TarnPlanView {

/// The focus of an editor whose parts are disabled while it works. It waits in the editor itself and not on the next
/// button, where a key meant for a field would press it; also when the editor is opened meanwhile. Thread: GUI.
class CBusyFocus {
 public:
  explicit CBusyFocus(QWidget* editor) : editor_(editor) {}

  /// To be called before the parts are disabled.
  void Take();
  /// To be called when they are enabled again. Back to where the focus was, else to `refuge`; it is never taken from
  /// where the user has put it meanwhile.
  void GiveBack(QWidget* refuge);
  /// Whether it waits in the editor, or is nowhere.
  bool IsFree() const;

 private:
  QWidget* const editor_;
  QPointer<QWidget> before_;
};

}  // namespace TarnPlanView
