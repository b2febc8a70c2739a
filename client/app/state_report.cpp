#include "app/state_report.h"

#include <TarnPlanView/standard_plan_model_export.h>
#include <TarnPlanView/view_model_data_manager_export.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <memory>

#include "wall/live_wall.h"

namespace TarnClient {

namespace {

int RowsBelow(const QAbstractItemModel& model, const QModelIndex& parent) {
  const int rows = model.rowCount(parent);
  int all = rows;
  for (int row = 0; row < rows; ++row) {
    all += RowsBelow(model, model.index(row, 0, parent));
  }
  return all;
}

int RowsOf(TarnPlanView::ThemeNodeType theme) {
  const std::unique_ptr<TarnPlanView::CStandardPlanModelExport> handle(
      TarnPlanView::CViewModelDataManagerExport::Instance().GetViewManagerByTheme(QStringLiteral("0"), theme));
  const QAbstractItemModel* model = handle->GetPlanViewModel();
  return model ? RowsBelow(*model, QModelIndex()) : 0;
}

QJsonArray Windows(const CLiveWall& wall) {
  QJsonArray windows;
  for (const CLiveWall::WindowState& window : wall.Windows()) {
    windows.append(QJsonObject{{QStringLiteral("camera"), window.camera},
                               {QStringLiteral("state"), window.state},
                               {QStringLiteral("frames"), window.frames}});
  }
  return windows;
}

}  // namespace

QByteArray MakeStateReport(const CLiveWall& wall) {
  const QJsonObject rows{{QStringLiteral("public"), RowsOf(TarnPlanView::PublicTheme)},
                         {QStringLiteral("own"), RowsOf(TarnPlanView::OwnTheme)}};
  const QJsonObject report{{QStringLiteral("rows"), rows},
                           {QStringLiteral("playing"), wall.PlanName()},
                           {QStringLiteral("page"), wall.PageNumber()},
                           {QStringLiteral("windows"), Windows(wall)}};
  return QJsonDocument(report).toJson(QJsonDocument::Compact);
}

}  // namespace TarnClient
