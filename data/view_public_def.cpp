#include "view_public_def.h"

#include <QSvgRenderer>

#include "MarUIControl/string_conversion.h"
#include "WidgetKit/high_dpi_svg_icon.h"
#include "item_type.h"
#include "plan_icon_cache.h"
#include "plan_item_role.h"
#include "plan_rows.h"
#include "plan_rules/families.h"

namespace TarnPlanView {

namespace {

constexpr char kSvgSuffix[] = ".svg";

QString TreePublic(const char* file) {
  return QStringLiteral(":/Bolt/Public/TreePublic/Images/Public/TreePublic/") + QLatin1String(file);
}

QIcon TreePublicIcon(const char* normal, const char* selected) {
  return WidgetKit::GetHighDpiSvgIcon(TreePublic(normal), TreePublic(selected), QSize());
}

QIcon OwnIcon(const char* name, bool dark) {
  const QString base = QStringLiteral(":/Images/TarnPlanView/") + QLatin1String(name);
  return CViewPublicDef::GetHighDpiSvgIcon(CViewPublicDef::GetDarkPath(base + QLatin1String(".svg"), dark),
                                           CViewPublicDef::GetDarkPath(base + QLatin1String("_sel.svg"), dark));
}

}  // namespace

CViewPublicDef::CViewPublicDef() = default;
CViewPublicDef::CViewPublicDef(const CViewPublicDef&) = default;
CViewPublicDef& CViewPublicDef::operator=(const CViewPublicDef&) = default;
CViewPublicDef::~CViewPublicDef() = default;

int CViewPublicDef::GetIndexType(const QModelIndex& index) {
  const int type = TypeOf(index);
  if (type >= PublicRootItem && type <= PublicLeafItem) {
    return view_plugin_protocol::PublicFamily;
  }
  if (type >= OwnRootItem && type <= OwnLeafItem) {
    return view_plugin_protocol::OwnFamily;
  }
  if (type >= ReceivedRootItem && type <= ReceivedLeafItem) {
    return view_plugin_protocol::ReceivedFamily;
  }
  return -1;
}

int CViewPublicDef::GetIndexItemType(const QModelIndex& index) {
  const int type = TypeOf(index);
  if (IsGroupItem(type)) {
    return 0;
  }
  if (IsPlanItem(type)) {
    return 1;
  }
  return -1;
}

bool CViewPublicDef::IsPlanGroup(const QModelIndex& index) {
  return IsGroupItem(TypeOf(index));
}

std::string CViewPublicDef::GetIndexCode(const QModelIndex& index) {
  const int type = TypeOf(index);
  if (IsGroupItem(type)) {
    return MarUIControl::QStringToString(index.data(GroupIndexCodeRole).toString());
  }
  if (IsPlanItem(type)) {
    return MarUIControl::QStringToString(index.data(PlanIndexCodeRole).toString());
  }
  return kPublicRootCode;
}

QString CViewPublicDef::GetDarkPath(QString path, bool dark) {
  if (!dark) {
    return path;
  }
  const int at = path.lastIndexOf(QLatin1String(kSvgSuffix), -1, Qt::CaseSensitive);
  if (at >= 0) {
    path.insert(at, QLatin1String("_d"));
  }
  return path;
}

QPixmap CViewPublicDef::GetHighDpiSvgPixmap(const QString& svgPath) {
  const QSize size = QSvgRenderer(svgPath).defaultSize();
  return QIcon(svgPath).pixmap(size);
}

QIcon CViewPublicDef::GetHighDpiSvgIcon(const QString& normal, const QString& selected) {
  QIcon icon;
  icon.addPixmap(GetHighDpiSvgPixmap(normal), QIcon::Normal, QIcon::Off);
  icon.addPixmap(GetHighDpiSvgPixmap(selected), QIcon::Selected, QIcon::Off);
  return icon;
}

QIcon CViewPublicDef::GetPlanGroupIcon(bool dark) {
  return CPlanIconCache::Get(dark ? CPlanIconCache::GroupDark : CPlanIconCache::GroupLight,
                             [dark] { return OwnIcon("tree_main_group", dark); });
}

QIcon CViewPublicDef::GetPlanIcon(bool dark, bool playing) {
  if (playing) {
    return CPlanIconCache::Get(CPlanIconCache::PlanPlaying, [] { return OwnIcon("tree_main_view_play", false); });
  }
  return CPlanIconCache::Get(dark ? CPlanIconCache::PlanDark : CPlanIconCache::PlanLight,
                             [dark] { return OwnIcon("tree_main_view", dark); });
}

void CViewPublicDef::ReleaseCachedIcons() {
  CPlanIconCache::Clear();
}

QIcon CViewPublicDef::GetViewIcon(MarUIControl::struSplitTypeData::SplitType split) {
  const QString base = QStringLiteral(":/Bolt/Tree/Images/Public/Control/Tree/DefaultView%1.png");
  switch (split) {
    case MarUIControl::struSplitTypeData::Split1:
      return QIcon(base.arg(1));
    case MarUIControl::struSplitTypeData::Split4:
      return QIcon(base.arg(4));
    case MarUIControl::struSplitTypeData::Split9:
      return QIcon(base.arg(9));
    case MarUIControl::struSplitTypeData::Split16:
      return QIcon(base.arg(16));
  }
  return QIcon();
}

QIcon CViewPublicDef::GetRootViewIcon() {
  return QIcon(QString());
}

QIcon CViewPublicDef::GetCustomViewGroupIcon() {
  return TreePublicIcon("tree_main_group.svg", "tree_main_group_sel.svg");
}

QIcon CViewPublicDef::GetCustomViewItemIcon() {
  return TreePublicIcon("tree_main_view.svg", "tree_main_view_sel.svg");
}

QIcon CViewPublicDef::GetPlayViewItemIcon() {
  return TreePublicIcon("tree_main_view_play.svg", "tree_main_view_play_sel.svg");
}

QIcon CViewPublicDef::GetCameraOnlineIcon() {
  return QIcon(TreePublic("tree_main_camera.svg"));
}
QIcon CViewPublicDef::GetCameraOfflineIcon() {
  return QIcon(TreePublic("tree_main_camera_offline.svg"));
}
QIcon CViewPublicDef::GetCameraOnlineAlarmIcon() {
  return QIcon(TreePublic("tree_main_camera_alarm.svg"));
}
QIcon CViewPublicDef::GetCameraPlaying() {
  return QIcon(TreePublic("tree_main_camera_play.svg"));
}
QIcon CViewPublicDef::GetCameraPlayingAlarm() {
  return QIcon(TreePublic("tree_main_camera_alarm_play.svg"));
}
QIcon CViewPublicDef::GetCameraRecording() {
  return QIcon(TreePublic("tree_main_camera_recording.svg"));
}
QIcon CViewPublicDef::GetCameraRecordingAlarm() {
  return QIcon(TreePublic("tree_main_camera_alarm_recording.svg"));
}
QIcon CViewPublicDef::GetResourceGroupIcon() {
  return QIcon(TreePublic("tree_main_user_group.svg"));
}

QIcon CViewPublicDef::GetScreenIcon() {
  return QIcon(QStringLiteral(":/Bolt/Public/Draw/Images/Public/TreePublic/smart wall.svg"));
}

}  // namespace TarnPlanView
