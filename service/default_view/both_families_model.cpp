#include "both_families_model.h"

#include "found_plans.h"
#include "item_type.h"
#include "plan_item_role.h"
#include "standard_plan_model.h"
#include "view_public_def.h"

namespace TarnPlanView {

namespace {

/// What an index of the joint tree carries: the item above it in its own model.
QStandardItem* ItemAbove(const QStandardItemModel* source, const QModelIndex& index) {
  const QModelIndex parent = index.parent();
  return parent.isValid() ? source->itemFromIndex(parent) : source->invisibleRootItem();
}

}  // namespace

CBothFamiliesModel::CBothFamiliesModel(CStandardPlanModel* public_plans, CStandardPlanModel* own_plans,
                                       QStandardItemModel* found, QObject* parent)
    : QAbstractItemModel(parent), sources_{public_plans, own_plans, found} {
  for (QStandardItemModel* source : sources_) {
    Follow(source);
  }
}

CBothFamiliesModel::~CBothFamiliesModel() = default;

void CBothFamiliesModel::Follow(QStandardItemModel* source) {
  const auto offset = [this, source](const QModelIndex& parent) { return parent.isValid() ? 0 : Offset(source); };
  connect(source, &QAbstractItemModel::rowsAboutToBeInserted, this,
          [this, offset](const QModelIndex& parent, int first, int last) {
            beginInsertRows(MapFromSource(parent), first + offset(parent), last + offset(parent));
          });
  connect(source, &QAbstractItemModel::rowsInserted, this, [this] { endInsertRows(); });
  connect(source, &QAbstractItemModel::rowsAboutToBeRemoved, this,
          [this, offset](const QModelIndex& parent, int first, int last) {
            beginRemoveRows(MapFromSource(parent), first + offset(parent), last + offset(parent));
          });
  connect(source, &QAbstractItemModel::rowsRemoved, this, [this] { endRemoveRows(); });
  connect(source, &QAbstractItemModel::dataChanged, this,
          [this](const QModelIndex& top, const QModelIndex& bottom, const QVector<int>& roles) {
            Q_EMIT dataChanged(MapFromSource(top), MapFromSource(bottom), roles);
          });
  connect(source, &QAbstractItemModel::modelAboutToBeReset, this, [this] { beginResetModel(); });
  connect(source, &QAbstractItemModel::modelReset, this, [this] { endResetModel(); });
}

int CBothFamiliesModel::Offset(const QAbstractItemModel* source) const {
  int rows = 0;
  for (const QStandardItemModel* before : sources_) {
    if (before == source) {
      break;
    }
    rows += before->rowCount();
  }
  return rows;
}

QStandardItemModel* CBothFamiliesModel::Source(const QAbstractItemModel* model) const {
  for (QStandardItemModel* source : sources_) {
    if (source == model) {
      return source;
    }
  }
  return nullptr;
}

QModelIndex CBothFamiliesModel::MapFromSource(const QModelIndex& source) const {
  const QStandardItemModel* model = source.isValid() ? Source(source.model()) : nullptr;
  if (!model) {
    return QModelIndex();
  }
  const int offset = source.parent().isValid() ? 0 : Offset(model);
  return createIndex(source.row() + offset, 0, ItemAbove(model, source));
}

QModelIndex CBothFamiliesModel::MapToSource(const QModelIndex& index) const {
  if (!index.isValid() || index.model() != this) {
    return QModelIndex();
  }
  const auto* above = static_cast<const QStandardItem*>(index.internalPointer());
  const QStandardItemModel* model = above->model();
  const bool top = above == model->invisibleRootItem();
  return model->index(index.row() - (top ? Offset(model) : 0), 0, top ? QModelIndex() : above->index());
}

QModelIndex CBothFamiliesModel::index(int row, int column, const QModelIndex& parent) const {
  if (!hasIndex(row, column, parent)) {
    return QModelIndex();
  }
  if (parent.isValid()) {
    const QModelIndex above = MapToSource(parent);
    return MapFromSource(above.model()->index(row, 0, above));
  }
  for (const QStandardItemModel* source : sources_) {
    if (row < source->rowCount()) {
      return MapFromSource(source->index(row, 0));
    }
    row -= source->rowCount();
  }
  return QModelIndex();
}

QModelIndex CBothFamiliesModel::parent(const QModelIndex& child) const {
  return MapFromSource(MapToSource(child).parent());
}

int CBothFamiliesModel::rowCount(const QModelIndex& parent) const {
  if (!parent.isValid()) {
    return Offset(nullptr);
  }
  const QModelIndex source = MapToSource(parent);
  return source.isValid() ? source.model()->rowCount(source) : 0;
}

int CBothFamiliesModel::columnCount(const QModelIndex&) const {
  return 1;
}

bool CBothFamiliesModel::hasChildren(const QModelIndex& parent) const {
  const QModelIndex source = MapToSource(parent);
  return source.isValid() ? source.model()->hasChildren(source) : rowCount() > 0;
}

bool CBothFamiliesModel::canFetchMore(const QModelIndex& parent) const {
  const QModelIndex source = MapToSource(parent);
  return source.isValid() && source.model()->canFetchMore(source);
}

QVariant CBothFamiliesModel::data(const QModelIndex& index, int role) const {
  const QModelIndex source = MapToSource(index);
  const bool title = !source.parent().isValid() && source.data(ItemTypeRole).toInt() != kFoundPlansItem;
  if (!title || role == ItemTypeRole || role == GroupIndexCodeRole) {
    return source.data(role);
  }
  if (role == Qt::DisplayRole) {
    switch (source.data(ItemTypeRole).toInt()) {
      case PublicRootItem:
        return tr("Public plans");
      case OwnRootItem:
        return tr("My plans");
      case PlaceholderItem:
        return tr("No default view");
      default:
        break;
    }
  }
  // The placeholder's own font and colour are made for a light ground.
  const bool look = role == Qt::FontRole || role == Qt::ForegroundRole;
  return look ? QVariant() : source.data(role);
}

Qt::ItemFlags CBothFamiliesModel::flags(const QModelIndex& index) const {
  const QModelIndex source = MapToSource(index);
  if (!source.isValid()) {
    return Qt::NoItemFlags;
  }
  const int type = source.data(ItemTypeRole).toInt();
  const bool root = type == PublicRootItem || type == OwnRootItem;
  const bool group = CViewPublicDef::IsPlanGroup(source);
  if (type == kFoundPlansItem) {
    return Qt::NoItemFlags;
  }
  const auto* plans = qobject_cast<const CStandardPlanModel*>(source.model());
  const bool groups_too = plans && plans->IsGroupCanSelected();
  return root || (group && !groups_too) ? Qt::ItemIsEnabled : Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

}  // namespace TarnPlanView
