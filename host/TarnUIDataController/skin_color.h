#pragma once

#include <QColor>

#include "TarnUIDataController/skin_loader.h"

namespace tarn_ui_data_controller {

/// A colour of the skin in use, by its name there in Latin-1; invalid for an unknown one. Thread: GUI.
inline QColor SkinColor(const char* name) {
  return CSkinLoader::Instance().GetColor(QString::fromLatin1(name));
}

}  // namespace tarn_ui_data_controller
