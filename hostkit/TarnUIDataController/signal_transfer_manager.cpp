#include "TarnUIDataController/signal_transfer_manager.h"

namespace tarn_ui_data_controller {

CSignalTransferManager::CSignalTransferManager() = default;

CSignalTransferManager::~CSignalTransferManager() = default;

}  // namespace tarn_ui_data_controller
