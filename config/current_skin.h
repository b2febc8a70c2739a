#pragma once

#include "TarnUIDataController/skin_loader.h"

namespace TarnPlanView {

/// Whether the skin that shows now is the dark one. It may change while the program runs; what was true at the start is
/// CViewConfigManager::IsDarkSkin(). Thread: GUI.
inline bool IsCurrentSkinDark() {
  return tarn_ui_data_controller::CSkinLoader::Instance().GetCurrentSkin() == QLatin1String("redblack");
}

}  // namespace TarnPlanView
