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
  /// Holds nothing: all that it does is static.
  CViewPublicDef();
  /// Copies nothing.
  CViewPublicDef(const CViewPublicDef&);
  /// Copies nothing.
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
  /// An icon of two such drawings, for the modes Normal and Selected.
  static QIcon GetHighDpiSvgIcon(const QString& normal, const QString& selected);

  /// Of groups in trees of a dark or light background. Cached; the same icon at every call.
  static QIcon GetPlanGroupIcon(bool dark);
  /// Of plans there; the playing mark is the same on both backgrounds. Cached as well.
  static QIcon GetPlanIcon(bool dark, bool playing);
  /// Drops the cached icons. They must be gone before the application object is; later calls build them again.
  static void ReleaseCachedIcons();

  /// A split as a picture, from the host's resources; a null icon for an unknown split.
  static QIcon GetViewIcon(MarUIControl::struSplitTypeData::SplitType split);
  /// A null icon: roots have none.
  static QIcon GetRootViewIcon();
  /// A group of plans, for a host's own trees. This and what follows comes from the host's resources below `:/Bolt`;
  /// where there is no such picture the icon has none.
  static QIcon GetCustomViewGroupIcon();
  /// A plan.
  static QIcon GetCustomViewItemIcon();
  /// A plan that plays.
  static QIcon GetPlayViewItemIcon();
  /// A camera that can be reached.
  static QIcon GetCameraOnlineIcon();
  /// A camera that cannot be reached.
  static QIcon GetCameraOfflineIcon();
  /// A camera that can be reached and reports an alarm.
  static QIcon GetCameraOnlineAlarmIcon();
  /// A camera that plays.
  static QIcon GetCameraPlaying();
  /// A camera that plays and reports an alarm.
  static QIcon GetCameraPlayingAlarm();
  /// A camera that is being recorded.
  static QIcon GetCameraRecording();
  /// A camera that is being recorded and reports an alarm.
  static QIcon GetCameraRecordingAlarm();
  /// A group of resources.
  static QIcon GetResourceGroupIcon();
  /// A video wall.
  static QIcon GetScreenIcon();
};

}  // namespace TarnPlanView
