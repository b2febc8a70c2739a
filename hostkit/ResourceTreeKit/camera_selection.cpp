#include "ResourceTreeKit/camera_selection.h"

#include <QSet>

namespace ResourceTreeKit {

namespace {

void AddBelow(const CCameraModel& model, const QModelIndex& row, QVector<CCameraItemInfo>* cameras) {
  if (const CCameraItemInfo* camera = model.CameraAt(row)) {
    cameras->append(*camera);
    return;
  }
  for (int child = 0; child < model.rowCount(row); ++child) {
    AddBelow(model, model.index(child, 0, row), cameras);
  }
}

void AddSelected(const CCameraModel& model, const QModelIndex& parent, const QSet<QModelIndex>& selected,
                 QVector<CCameraItemInfo>* cameras) {
  for (int row = 0; row < model.rowCount(parent); ++row) {
    const QModelIndex index = model.index(row, 0, parent);
    if (selected.contains(index)) {
      AddBelow(model, index, cameras);
    } else {
      AddSelected(model, index, selected, cameras);
    }
  }
}

}  // namespace

QVector<CCameraItemInfo> CamerasBelow(const CCameraModel& model, const QModelIndex& row) {
  QVector<CCameraItemInfo> cameras;
  AddBelow(model, row, &cameras);
  return cameras;
}

QVector<CCameraItemInfo> CamerasOf(const CCameraModel& model, const QModelIndexList& rows) {
  QVector<CCameraItemInfo> all, cameras;
  AddSelected(model, QModelIndex(), QSet<QModelIndex>(rows.begin(), rows.end()), &all);
  QSet<QString> seen;
  for (const CCameraItemInfo& camera : qAsConst(all)) {
    const QString code = QString::fromStdString(camera.index_code);
    if (!seen.contains(code)) {
      seen.insert(code);
      cameras.append(camera);
    }
  }
  return cameras;
}

}  // namespace ResourceTreeKit
