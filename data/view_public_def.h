#pragma once

#include <QIcon>
#include <QModelIndex>
#include <QPixmap>
#include <QString>
#include <string>

#include "MarUIControl/split_type_data.h"
#include "tarn_plan_view_export.h"

namespace TarnPlanView {

/// What every piece of the plan panel asks about rows and icons. Thread: GUI.
class TARNPLANVIEW_EXPORT CViewPublicDef {
 public:
  CViewPublicDef();
  CViewPublicDef(const CViewPublicDef&);
  CViewPublicDef& operator=(const CViewPublicDef&);
  virtual ~CViewPublicDef();

  /// Family of a row (0, 1, 2) by its item type; -1 for anything else.
  static int GetIndexType(const QModelIndex& index);
  /// 0 for a group, 1 for a plan or plan-like leaf, -1 for anything else (roots included).
  static int GetIndexItemType(const QModelIndex& index);
  /// True for groups; false for roots.
  static bool IsPlanGroup(const QModelIndex& index);
  /// Code of a group or plan; "-1" for everything else, whatever its own code roles hold.
  static std::string GetIndexCode(const QModelIndex& index);

  /// `path` with "_d" before its last ".svg" when `dark`; the search is case-sensitive.
  static QString GetDarkPath(QString path, bool dark);
  /// The drawing at its own size and the application's device pixel ratio.
  static QPixmap GetHighDpiSvgPixmap(const QString& svgPath);
  static QIcon GetHighDpiSvgIcon(const QString& normal, const QString& selected);

  /// Cached; the same icon at every call.
  static QIcon GetPlanGroupIcon(bool dark);
  static QIcon GetPlanIcon(bool dark, bool playing);
  /// Drops the cached icons. They must be gone before the application object is; later calls build them again.
  static void ReleaseCachedIcons();

  /// Null icon for an unknown split.
  static QIcon GetViewIcon(MarUIControl::struSplitTypeData::SplitType split);
  static QIcon GetRootViewIcon();
  static QIcon GetCustomViewGroupIcon();
  static QIcon GetCustomViewItemIcon();
  static QIcon GetPlayViewItemIcon();
  static QIcon GetCameraOnlineIcon();
  static QIcon GetCameraOfflineIcon();
  static QIcon GetCameraOnlineAlarmIcon();
  static QIcon GetCameraPlaying();
  static QIcon GetCameraPlayingAlarm();
  static QIcon GetCameraRecording();
  static QIcon GetCameraRecordingAlarm();
  static QIcon GetResourceGroupIcon();
  static QIcon GetScreenIcon();
};

}  // namespace TarnPlanView
