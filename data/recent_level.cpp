#include "recent_level.h"

namespace TarnPlanView {

void CRecentLevel::ForgetWithChangesOf(const QAbstractItemModel* model) {
  const auto forget_it = [this] { forget(); };
  QObject::connect(model, &QAbstractItemModel::rowsInserted, model, forget_it);
  QObject::connect(model, &QAbstractItemModel::rowsRemoved, model, forget_it);
  QObject::connect(model, &QAbstractItemModel::columnsInserted, model, forget_it);
  QObject::connect(model, &QAbstractItemModel::columnsRemoved, model, forget_it);
  QObject::connect(model, &QAbstractItemModel::dataChanged, model, forget_it);
  QObject::connect(model, &QAbstractItemModel::layoutChanged, model, forget_it);
  QObject::connect(model, &QAbstractItemModel::modelReset, model, forget_it);
}

}  // namespace TarnPlanView
