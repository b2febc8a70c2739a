#include "plugin_rows.h"

#include <QJsonObject>
#include <utility>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "plan_item_role.h"
#include "plan_rows.h"
#include "plugin_shutdown.h"
#include "standard_plan_model.h"
#include "view_model_data_manager.h"
#include "view_public_def.h"

using namespace TarnPlanView;

namespace {

void AddRowsBelow(const QModelIndex& parent, const QAbstractItemModel& model, QJsonArray* rows) {
  const QString parent_code = CodeOfRow(parent);
  for (int row = 0; row < model.rowCount(parent); ++row) {
    const QModelIndex index = model.index(row, 0, parent);
    const auto plan = index.data(CurrentRecordRole).value<view_plugin_protocol::PlanBasicInfo>();
    const bool is_group = index.data(IsGroupRole).toBool();
    rows->append(QJsonObject{{"code", CodeOfRow(index)},
                             {"name", index.data().toString()},
                             {"parent", parent_code},
                             {"pages", is_group ? 0 : plan.page_count}});
    AddRowsBelow(index, model, rows);
  }
}

}  // namespace

CPluginRows::CPluginRows(std::shared_ptr<TarnHost::CPlanStore> store) {
  TarnHost::InstallHostServices(std::move(store));
  CViewModelDataManager::Instance().InitManager();
  CViewModelDataManager::Instance().LoadAllViewManagerModelData();
}

CPluginRows::~CPluginRows() {
  CViewModelDataManager::Instance().UninitManager();
  CViewModelDataManager::Release();
  TarnHost::InstallHostServices(nullptr);
  ReleasePlugin();
}

QJsonArray CPluginRows::Tree() {
  const auto* model = qobject_cast<CStandardPlanModel*>(
      CViewModelDataManager::Instance().GetViewManagerByTheme(QStringLiteral("0"), PublicTheme));
  QJsonArray rows;
  AddRowsBelow(model->index(0, 0), *model, &rows);
  return rows;
}
