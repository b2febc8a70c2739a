#include "ResourceTreeKit/camera_model.h"

#include <utility>

namespace ResourceTreeKit {

namespace {

// Internal ids: a row of the content; with this bit, that camera's row among the favourites; alone, their branch.
constexpr quintptr kFavoriteBit = quintptr(1) << 31;

bool IsBranch(const QModelIndex& index) {
  return index.internalId() == kFavoriteBit;
}

bool IsFavoriteRow(const QModelIndex& index) {
  return !IsBranch(index) && (index.internalId() & kFavoriteBit) != 0;
}

int NodeOf(const QModelIndex& index) {
  return static_cast<int>(index.internalId() & ~kFavoriteBit);
}

}  // namespace

CCameraModel::CCameraModel(QObject* parent)
    : QAbstractItemModel(parent), content_(CCameraContent::Build({}, {}, {})), rows_(CCameraRows::All(*content_)) {}

void CCameraModel::SetContent(std::shared_ptr<const CCameraContent> content, CCameraRows rows,
                              const QStringList& favorites) {
  beginResetModel();
  content_ = std::move(content);
  rows_ = std::move(rows);
  favorites_ = NodesOf(favorites);
  ShowFavorites();
  endResetModel();
}

CNodeSet CCameraModel::NodesOf(const QStringList& cameras) const {
  std::vector<int> nodes;
  for (const QString& code : cameras) {
    if (const int node = content_->CameraNode(code)) {
      nodes.push_back(node);
    }
  }
  return CNodeSet(std::move(nodes));
}

bool CCameraModel::HasFavorites(const QStringList& codes) const {
  return NodesOf(codes) == favorites_;
}

void CCameraModel::SetRows(CCameraRows rows) {
  beginResetModel();
  rows_ = std::move(rows);
  ShowFavorites();
  endResetModel();
}

void CCameraModel::SetFavoritesVisible(bool visible) {
  if (visible != favorites_visible_) {
    beginResetModel();
    favorites_visible_ = visible;
    endResetModel();
  }
}

void CCameraModel::ShowFavorites() {
  std::vector<int> shown;
  for (const int node : favorites_) {
    if (rows_.IsShown(node)) {
      shown.push_back(node);
    }
  }
  shown_favorites_ = CNodeSet(std::move(shown));
}

bool CCameraModel::IsFavorite(const QString& code) const {
  return favorites_.Contains(content_->CameraNode(code));
}

void CCameraModel::SetFavorite(const QString& code, bool favorite) {
  const int node = content_->CameraNode(code);
  if (node == 0 || favorites_.Contains(node) == favorite) {
    return;
  }
  if (favorite) {
    favorites_.Insert(node);
    InsertFavorite(node);
  } else {
    favorites_.Remove(node);
    RemoveFavorite(node);
  }
  ReportMark(node);
}

void CCameraModel::InsertFavorite(int node) {
  if (!rows_.IsShown(node)) {
    return;
  }
  if (!favorites_visible_) {
    shown_favorites_.Insert(node);
    return;
  }
  const int row = shown_favorites_.PlaceOf(node);
  if (shown_favorites_.IsEmpty()) {
    beginInsertRows(QModelIndex(), 0, 0);  // the branch comes with its first row
  } else {
    beginInsertRows(BranchIndex(), row, row);
  }
  shown_favorites_.Insert(node);
  endInsertRows();
}

void CCameraModel::RemoveFavorite(int node) {
  if (!favorites_visible_ || !shown_favorites_.Contains(node)) {
    shown_favorites_.Remove(node);
    return;
  }
  const int row = shown_favorites_.PlaceOf(node);
  if (shown_favorites_.Size() == 1) {
    beginRemoveRows(QModelIndex(), 0, 0);
  } else {
    beginRemoveRows(BranchIndex(), row, row);
  }
  shown_favorites_.Remove(node);
  endRemoveRows();
}

void CCameraModel::ReportMark(int node) {
  const QModelIndex row = IndexOfNode(node);
  if (row.isValid()) {
    Q_EMIT dataChanged(row, row, {FavoriteRole, Qt::AccessibleTextRole});
  }
}

const CCameraItemInfo* CCameraModel::CameraAt(const QModelIndex& index) const {
  if (!index.isValid() || index.model() != this) {
    return nullptr;
  }
  const CCameraContent::Node& node = content_->At(NodeOf(index));
  if (!node.IsCamera()) {
    return nullptr;
  }
  return &content_->CameraOf(node);
}

CameraRowKey CCameraModel::KeyOf(const QModelIndex& index) const {
  if (!index.isValid() || index.model() != this) {
    return {};
  }
  if (IsBranch(index)) {
    return CameraRowKey::Favorites();
  }
  const CCameraContent::Node& node = content_->At(NodeOf(index));
  if (!node.IsCamera()) {
    return CameraRowKey::Region(node.code);
  }
  return {IsFavoriteRow(index) ? CameraRowKey::kFavorite : CameraRowKey::kCamera, node.code};
}

QModelIndex CCameraModel::Find(const CameraRowKey& key) const {
  switch (key.kind) {
    case CameraRowKey::kRegion:
      return IndexOfNode(content_->RegionNode(key.code));
    case CameraRowKey::kCamera:
      return IndexOfNode(content_->CameraNode(key.code));
    case CameraRowKey::kFavorites:
      return BranchIndex();
    case CameraRowKey::kFavorite: {
      const int node = content_->CameraNode(key.code);
      if (HasBranch() && shown_favorites_.Contains(node)) {
        return FavoriteIndex(shown_favorites_.PlaceOf(node));
      }
      break;
    }
    case CameraRowKey::kNone:
      break;
  }
  return {};
}

QModelIndex CCameraModel::IndexOfNode(int node) const {
  if (node <= 0 || !rows_.IsShown(node)) {
    return {};
  }
  int row = rows_.RowOf(node);
  if (content_->At(node).parent == 0) {
    row += BranchRows();
  }
  return createIndex(row, 0, static_cast<quintptr>(node));
}

QModelIndex CCameraModel::BranchIndex() const {
  if (!HasBranch()) {
    return {};
  }
  return createIndex(0, 0, kFavoriteBit);
}

QModelIndex CCameraModel::FavoriteIndex(int place) const {
  return createIndex(place, 0, static_cast<quintptr>(shown_favorites_.At(place)) | kFavoriteBit);
}

QModelIndex CCameraModel::index(int row, int column, const QModelIndex& parent) const {
  if (row < 0 || column != 0 || row >= rowCount(parent)) {
    return {};
  }
  if (!parent.isValid()) {
    if (row < BranchRows()) {
      return BranchIndex();
    }
    return createIndex(row, 0, static_cast<quintptr>(rows_.ChildAt(0, row - BranchRows())));
  }
  if (IsBranch(parent)) {
    return FavoriteIndex(row);
  }
  return createIndex(row, 0, static_cast<quintptr>(rows_.ChildAt(NodeOf(parent), row)));
}

QModelIndex CCameraModel::parent(const QModelIndex& index) const {
  if (!index.isValid() || IsBranch(index)) {
    return {};
  }
  if (IsFavoriteRow(index)) {
    return BranchIndex();
  }
  return IndexOfNode(content_->At(NodeOf(index)).parent);
}

int CCameraModel::rowCount(const QModelIndex& parent) const {
  if (!parent.isValid()) {
    return rows_.ChildCount(0) + BranchRows();
  }
  if (IsBranch(parent)) {
    return shown_favorites_.Size();
  }
  if (IsFavoriteRow(parent)) {
    return 0;
  }
  return rows_.ChildCount(NodeOf(parent));
}

int CCameraModel::columnCount(const QModelIndex&) const {
  return 1;
}

Qt::ItemFlags CCameraModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) {
    return Qt::NoItemFlags;
  }
  Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsDragEnabled;
  flags.setFlag(Qt::ItemNeverHasChildren, CameraAt(index) != nullptr);
  return flags;
}

QVariant CCameraModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) {
    return {};
  }
  if (IsBranch(index)) {
    return look_.OfFavorites(role);
  }
  const CCameraContent::Node& node = content_->At(NodeOf(index));
  if (!node.IsCamera()) {
    return look_.OfRegion(node, role);
  }
  std::optional<bool> favorite;
  if (favorites_visible_) {
    favorite = favorites_.Contains(NodeOf(index));
  }
  return look_.OfCamera(node, content_->CameraOf(node), favorite, role);
}

}  // namespace ResourceTreeKit
