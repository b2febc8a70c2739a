#include <QTabBar>

#include "MarUIControl/modal_tip_dialog.h"
#include "MarUIControl/nomal_message.h"
#include "TarnUIDataController/message_tip_manager.h"
#include "app/scenes.h"
#include "window/main_window.h"

namespace TarnClient {

namespace {

// As somebody types it who knows file names.
const QString kLongName = QStringLiteral("Perimeter_fence_north_gate_and_weighbridge_").repeated(5);

}  // namespace

// A window that is not active shows no focus.
void CScene::AddActiveWindow() {
  Add([this] {
    window_->activateWindow();
    return window_->isActiveWindow();
  });
}

void CScene::FocusOnTabs() {
  Browse();
  AddActiveWindow();
  Add([this] {
    window_->findChild<QTabBar*>()->setFocus(Qt::TabFocusReason);
    return true;
  });
}

void CScene::FocusOnTree() {
  Browse();
  AddCurrent(QStringLiteral("Gates"));
  AddActiveWindow();
}

void CScene::LongTip() {
  Browse();
  Add([this] {
    const QString text = QStringLiteral("Renamed to \"%1\"").arg(kLongName);
    tarn_ui_data_controller::CMessageTipManager::Instance().ShowTip(text, MarUIControl::CNomalMessage::Success,
                                                                    window_);
    return true;
  });
}

void CScene::LongQuestion() {
  Browse();
  Add([this] {
    auto* question = new MarUIControl::CModalTipDialog(window_);
    question->SetDialogModel(MarUIControl::CModalTipDialog::QuestionModel);
    question->SetTitle(kLongName);
    const QStringList names{kLongName, kLongName, kLongName, kLongName, kLongName};  // more than the box shows at once
    question->SetContent(QStringLiteral("Delete \"%1\" with 12 plans each?").arg(names.join(QStringLiteral("\", \""))));
    question->show();
    return true;
  });
}

}  // namespace TarnClient
