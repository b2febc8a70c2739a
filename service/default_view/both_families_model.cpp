#include "both_families_model.h"

#include "found_plans.h"
#include "item_type.h"
#include "plan_item_role.h"
#include "standard_plan_model.h"

namespace TarnPlanView {

namespace {

/// What an index of the joint tree carries: the item above it in its own model.
QStandardItem* ItemAbove(const QStandardItemModel* source, const QModelIndex& index) {
  QStandardItem* above = source->itemFromIndex(index.parent());
  return above == nullptr ? source->invisibleRootItem() : above;
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
  connect(source, &QAbstractItemModel::rowsAboutToBeInserted, this,
          [this, source](const QModelIndex& parent, int first, int last) {
            const int offset = OffsetBelow(parent, source);
            beginInsertRows(MapFromSource(parent), first + offset, last + offset);
          });
  connect(source, &QAbstractItemModel::rowsInserted, this, [this] { endInsertRows(); });
  connect(source, &QAbstractItemModel::rowsAboutToBeRemoved, this,
          [this, source](const QModelIndex& parent, int first, int last) {
            const int offset = OffsetBelow(parent, source);
            beginRemoveRows(MapFromSource(parent), first + offset, last + offset);
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

int CBothFamiliesModel::OffsetBelow(const QModelIndex& parent, const QAbstractItemModel* source) const {
  if (parent.isValid()) {
    return 0;
  }
  return Offset(source);
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
  const QStandardItemModel* model = Source(source.model());
  if (!model) {
    return QModelIndex();
  }
  return createIndex(source.row() + OffsetBelow(source.parent(), model), 0, ItemAbove(model, source));
}

QModelIndex CBothFamiliesModel::MapToSource(const QModelIndex& index) const {
  if (!index.isValid() || index.model() != this) {
    return QModelIndex();
  }
  const auto* above = static_cast<const QStandardItem*>(index.internalPointer());
  const QStandardItemModel* model = above->model();
  const QModelIndex parent = above->index();  // invalid at the top
  return model->index(index.row() - OffsetBelow(parent, model), 0, parent);
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
  if (!source.isValid()) {
    return 0;
  }
  return source.model()->rowCount(source);
}

int CBothFamiliesModel::columnCount(const QModelIndex&) const {
  return 1;
}

bool CBothFamiliesModel::hasChildren(const QModelIndex& parent) const {
  if (!parent.isValid()) {
    return rowCount() > 0;
  }
  const QModelIndex source = MapToSource(parent);
  return source.isValid() && source.model()->hasChildren(source);
}

bool CBothFamiliesModel::canFetchMore(const QModelIndex& parent) const {
  const QModelIndex source = MapToSource(parent);
  return source.isValid() && source.model()->canFetchMore(source);
}

QVariant CBothFamiliesModel::data(const QModelIndex& index, int role) const {
  const QModelIndex source = MapToSource(index);
  if (source.parent().isValid()) {
    return source.data(role);
  }
  const int type = source.data(ItemTypeRole).toInt();
  if (type != kFoundPlansItem && role == Qt::DisplayRole) {
    return Title(type, source.data(role));
  }
  if (type != kFoundPlansItem && (role == Qt::FontRole || role == Qt::ForegroundRole)) {
    return QVariant();  // the placeholder's own are made for a light ground
  }
  return source.data(role);
}

QVariant CBothFamiliesModel::Title(int type, const QVariant& own_text) {
  switch (type) {
    case PublicRootItem:
      return tr("Public plans");
    case OwnRootItem:
      return tr("My plans");
    case PlaceholderItem:
      return tr("No default view");
    default:
      return own_text;
  }
}

Qt::ItemFlags CBothFamiliesModel::flags(const QModelIndex& index) const {
  const QModelIndex source = MapToSource(index);
  if (!source.isValid()) {
    return Qt::NoItemFlags;
  }
  const int type = source.data(ItemTypeRole).toInt();
  if (type == kFoundPlansItem) {
    return Qt::NoItemFlags;
  }
  const auto* plans = qobject_cast<const CStandardPlanModel*>(source.model());
  const bool is_fixed_group = IsGroupItem(type) && !(plans && plans->IsGroupCanSelected());
  if (type == PublicRootItem || type == OwnRootItem || is_fixed_group) {
    return Qt::ItemIsEnabled;
  }
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

}  // namespace TarnPlanView
