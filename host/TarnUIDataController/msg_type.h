#pragma once

#include <QMetaType>

namespace tarn_ui_data_controller {

/// Commands of the client's popup menus. The numbers are shared by all plug-ins; those left out belong to others.
enum MsgType : int {
  CreationInfo = 27,
  PlayVideo = 31,
  Delete = 32,
  Edit = 33,
  GroupCycle = 34,
  Share = 35,
};

}  // namespace tarn_ui_data_controller

Q_DECLARE_METATYPE(tarn_ui_data_controller::MsgType)
