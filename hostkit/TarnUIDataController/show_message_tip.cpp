#include "TarnUIDataController/show_message_tip.h"

#include <QPointer>

#include "MarUIControl/modal_tip_dialog.h"
#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"

namespace tarn_ui_data_controller {

namespace {

using MarUIControl::CModalTipDialog;

constexpr int kOkButton = 1;
constexpr int kCancelButton = 2;

int ModelFor(int state, int buttons) {
  if (buttons == (kOkButton | kCancelButton)) {
    return CModalTipDialog::QuestionModel;
  }
  if (state == MarUIControl::CNomalMessage::Success) {
    return CModalTipDialog::HintModel;
  }
  return CModalTipDialog::WarningModel;
}

void SetButtons(CModalTipDialog& dialog, int buttons) {
  const bool ok = buttons & kOkButton;
  const bool cancel = (buttons & kCancelButton) || !ok;  // never a box without a way out
  dialog.SetConfirmVisible(ok);
  dialog.SetCancelVisible(cancel);
  if (cancel && !ok) {
    dialog.SetCancelText(CModalTipDialog::tr("Close"));
  }
}

}  // namespace

int ShowMessageTip(const QString& text, int state, QWidget* widget, int buttons) {
  return ShowMessageTip(text, state, widget, buttons, CModalTipDialog::tr("OK"));
}

int ShowMessageTip(const QString& text, int state, QWidget* widget, int buttons, const QString& confirm_text) {
  // The box is a child of the window, which may go while the box is open and would take a box on the stack with it.
  const QPointer<CModalTipDialog> dialog = new CModalTipDialog(MarUIControl::GetIndependentWindow(widget));
  dialog->SetDialogModel(ModelFor(state, buttons));
  dialog->SetContent(text);
  dialog->SetConfirmText(confirm_text);
  SetButtons(*dialog, buttons);
  const int answer = dialog->exec();
  delete dialog;
  return static_cast<int>(answer == CModalTipDialog::Confirmed && (buttons & kOkButton));
}

}  // namespace tarn_ui_data_controller
