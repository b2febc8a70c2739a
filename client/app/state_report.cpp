#include "app/state_report.h"

#include <TarnPlanView/standard_plan_model_export.h>
#include <TarnPlanView/view_model_data_manager_export.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <memory>

#include "pictures/picture_reason.h"
#include "wall/live_wall.h"
#include "window/wall_desk.h"

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

QJsonObject Report(const CLiveWall::WindowState& window) {
  const PictureStatus& status = window.status;
  QJsonObject report{{QStringLiteral("camera"), window.camera},
                     {QStringLiteral("state"), window.state},
                     {QStringLiteral("frames"), window.frames},
                     {QStringLiteral("stream"), status.kind},
                     {QStringLiteral("age_ms"), status.age_ms}};
  if (!status.size.isEmpty()) {
    report[QStringLiteral("size")] = QStringLiteral("%1x%2").arg(status.size.width()).arg(status.size.height());
  }
  const QString reason = ReasonOf(status);
  if (!reason.isEmpty()) {
    report[QStringLiteral("reason")] = reason;
  }
  return report;
}

QJsonArray Windows(const CLiveWall& wall) {
  QJsonArray windows;
  for (const CLiveWall::WindowState& window : wall.Windows()) {
    windows.append(Report(window));
  }
  return windows;
}

QJsonObject StateOf(const CLiveWall& wall) {
  return {{QStringLiteral("playing"), wall.PlanName()},
          {QStringLiteral("page"), wall.PageNumber()},
          {QStringLiteral("windows"), Windows(wall)}};
}

}  // namespace

QByteArray MakeStateReport(const QVector<CWallDesk*>& desks) {
  const QJsonObject rows{{QStringLiteral("public"), RowsOf(TarnPlanView::PublicTheme)},
                         {QStringLiteral("own"), RowsOf(TarnPlanView::OwnTheme)}};
  QJsonObject report = StateOf(desks.first()->Wall());
  report.insert(QStringLiteral("rows"), rows);
  QJsonArray walls;
  for (const CWallDesk* desk : desks.mid(1)) {
    QJsonObject wall = StateOf(desk->Wall());
    wall.insert(QStringLiteral("monitor"), QString::number(desk->Number()));
    walls.append(wall);
  }
  report.insert(QStringLiteral("walls"), walls);
  return QJsonDocument(report).toJson(QJsonDocument::Compact);
}

}  // namespace TarnClient
