#pragma once

#include <QMetaType>

namespace tarn_ui_data_controller {

/// Commands of the client's popup menus. The numbers are shared by all plug-ins; those left out belong to others.
enum MsgType : int {
  CreationInfo = 27,  ///< Show who made the plan, and when.
  PlayVideo = 31,     ///< Play the plan.
  Delete = 32,        ///< Delete the plan or group.
  Edit = 33,          ///< Edit the plan, or rename the group.
  GroupCycle = 34,    ///< Play the plans of the group one after the other.
  Share = 35,         ///< Share the plan with other users.
};

}  // namespace tarn_ui_data_controller

Q_DECLARE_METATYPE(tarn_ui_data_controller::MsgType)
