#include "TarnUIDataController/nomal_message_manager.h"

#include "TarnUIDataController/message_tip_manager.h"
#include "TarnUIDataController/tip_kind.h"

namespace tarn_ui_data_controller {

namespace {

constexpr int kDistance = 15;

}  // namespace

CNomalMessageManager::CNomalMessageManager() = default;

CNomalMessageManager::~CNomalMessageManager() = default;

void CNomalMessageManager::ShowMessage(QWidget* window, const QString& text, int level) {
  const int kind = level == 0 ? kHintTip : kWarningTip;
  CMessageTipManager::Instance().ShowMessage(window, text, kind, kTipPlaceTop, kDistance);
  Q_EMIT SignalMessageShown(text, level);
}

}  // namespace tarn_ui_data_controller
