#include "plan_drag.h"

#include <QAbstractItemView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMimeData>

#include "MarUIControl/string_conversion.h"
#include "TarnConfiguration/view_config_interface.h"
#include "plan_item_role.h"
#include "plan_rows.h"
#include "view_config_manager.h"
#include "view_public_def.h"

namespace TarnPlanView {

namespace {

const char kWallCursor[] = ":/Images/TarnUIDataController/FavImg/monitoring_window_add_resource.svg";
const char kDragPicture[] = ":/Images/TarnPlanView/tree_main_view.svg";

QString StationId() {
  const auto config = TarnConfiguration::CreateViewConfigInterface();
  if (!config) {
    return QString();
  }
  return MarUIControl::StringToQString(config->GetStationId());
}

QJsonObject Describe(const QModelIndex& row) {
  const bool group = CViewPublicDef::IsPlanGroup(row);
  const QString code = CodeOfRow(row);
  return {
      {QStringLiteral("_source_id_"), code},
      {QStringLiteral("_station_id_"), StationId()},
      {QStringLiteral("_source_type_"), group ? QStringLiteral("_type_view_group_") : QStringLiteral("_type_view_")},
      {QStringLiteral("_normal_resource"), QJsonObject{{QStringLiteral("name"), row.data().toString()},
                                                       {QStringLiteral("item_type"), row.data(ItemTypeRole).toInt()}}},
      {QStringLiteral("_view_index_code_"), code}};
}

}  // namespace

CPlanDrag::CPlanDrag(const QModelIndex& row, QAbstractItemView* view) : WidgetKit::CDrag(view) {
  auto* data = new QMimeData;
  data->setData(PayloadFormat(), Payload(row));
  setMimeData(data);
  setPixmap(CViewPublicDef::GetHighDpiSvgPixmap(QString::fromLatin1(kDragPicture)));
  // The wall may take the row as a copy or as a move.
  SetCursorPicture(QString::fromLatin1(kWallCursor), Qt::CopyAction);
  ShowMoveCursor(QString::fromLatin1(kWallCursor));
}

bool CPlanDrag::CanDrag(const QModelIndex& row) {
  if (CViewPublicDef::IsPlanGroup(row)) {
    return CViewConfigManager::Instance().IsSupportPlanGroupCycle();
  }
  return IsPlanRow(row);
}

QByteArray CPlanDrag::Payload(const QModelIndex& row) {
  return QJsonDocument(QJsonArray{Describe(row)}).toJson(QJsonDocument::Compact);
}

QString CPlanDrag::PayloadFormat() {
  return QStringLiteral("_drag_json_data_");
}

void CPlanDrag::ShowMoveCursor(const QString& path) {
  if (move_cursor_ != path) {  // asked at each move, and each time drawn again
    move_cursor_ = path;
    SetCursorPicture(path, Qt::MoveAction);
  }
}

}  // namespace TarnPlanView
