#include "ResourceTreeKit/camera_model.h"

#include <QColor>
#include <algorithm>
#include <utility>

#include "MarUIControl/plain_tool_tip.h"
#include "TarnUIDataController/skin_loader.h"
#include "WidgetKit/high_dpi_svg_icon.h"

namespace ResourceTreeKit {

namespace {

// Internal ids: a row of the content; with this bit, that camera's row among the favourites; alone, their branch.
constexpr quintptr kFavoriteBit = quintptr(1) << 31;

bool IsFavoriteRow(const QModelIndex& index) {
  return (index.internalId() & kFavoriteBit) != 0;
}

int NodeOf(const QModelIndex& index) {
  return static_cast<int>(index.internalId() & ~kFavoriteBit);
}

QIcon Icon(const char* folder, const char* name) {
  const QString path = QString::fromLatin1(folder) + QString::fromLatin1(name);
  return WidgetKit::GetHighDpiSvgIcon(path + QStringLiteral(".svg"), path + QStringLiteral("_sel.svg"), QSize(20, 20));
}

QIcon CameraIcon(const QString& name) {
  return WidgetKit::GetHighDpiSvgIcon(
      QStringLiteral(":/Bolt/Public/TreePublic/Images/Public/TreePublic/%1.svg").arg(name),
      QStringLiteral(":/TarnHost/icons/%1_sel.svg").arg(name), QSize(20, 20));
}

void InsertSorted(std::vector<int>* nodes, int node) {
  nodes->insert(std::lower_bound(nodes->begin(), nodes->end(), node), node);
}

bool Contains(const std::vector<int>& nodes, int node) {
  return std::binary_search(nodes.begin(), nodes.end(), node);
}

}  // namespace

uint qHash(const CameraRowKey& key, uint seed) {
  return ::qHash(key.code, seed) ^ static_cast<uint>(key.kind);
}

CCameraModel::CCameraModel(QObject* parent)
    : QAbstractItemModel(parent),
      content_(CCameraContent::Build({}, {}, {})),
      rows_(CCameraRows::All(*content_)),
      online_(CameraIcon(QStringLiteral("tree_main_camera"))),
      offline_(CameraIcon(QStringLiteral("tree_main_camera_offline"))),
      region_(Icon(":/Bolt/Public/TreePublic/Images/Public/TreePublic/", "tree_main_group")),
      branch_(Icon(":/TarnHost/icons/", "favorite")) {}

void CCameraModel::SetContent(std::shared_ptr<const CCameraContent> content, CCameraRows rows,
                              const QStringList& favorites) {
  beginResetModel();
  content_ = std::move(content);
  rows_ = std::move(rows);
  favorites_ = NodesOf(favorites);
  ShowFavorites();
  endResetModel();
}

std::vector<int> CCameraModel::NodesOf(const QStringList& cameras) const {
  std::vector<int> nodes;
  for (const QString& code : cameras) {
    if (const int node = content_->CameraNode(code)) {
      nodes.push_back(node);
    }
  }
  std::sort(nodes.begin(), nodes.end());
  return nodes;
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
  shown_favorites_.clear();
  for (const int node : favorites_) {
    if (rows_.IsShown(node)) {
      shown_favorites_.push_back(node);
    }
  }
}

bool CCameraModel::IsFavorite(const QString& code) const {
  return Contains(favorites_, content_->CameraNode(code));
}

void CCameraModel::SetFavorite(const QString& code, bool favorite) {
  const int node = content_->CameraNode(code);
  if (node == 0 || Contains(favorites_, node) == favorite) {
    return;
  }
  if (favorite) {
    InsertSorted(&favorites_, node);
    InsertFavorite(node);
  } else {
    favorites_.erase(std::lower_bound(favorites_.begin(), favorites_.end(), node));
    RemoveFavorite(node);
  }
  TellOfMark(node);
}

void CCameraModel::InsertFavorite(int node) {
  if (!rows_.IsShown(node)) {
    return;
  }
  const auto place = std::lower_bound(shown_favorites_.begin(), shown_favorites_.end(), node);
  const int row = static_cast<int>(place - shown_favorites_.begin());
  if (!favorites_visible_) {
    shown_favorites_.insert(place, node);
    return;
  }
  if (shown_favorites_.empty()) {
    beginInsertRows(QModelIndex(), 0, 0);  // the branch comes with its first row
  } else {
    beginInsertRows(index(0, 0), row, row);
  }
  shown_favorites_.insert(place, node);
  endInsertRows();
}

void CCameraModel::RemoveFavorite(int node) {
  if (!Contains(shown_favorites_, node)) {
    return;
  }
  const auto place = std::lower_bound(shown_favorites_.begin(), shown_favorites_.end(), node);
  const int row = static_cast<int>(place - shown_favorites_.begin());
  if (!favorites_visible_) {
    shown_favorites_.erase(place);
    return;
  }
  if (shown_favorites_.size() == 1) {
    beginRemoveRows(QModelIndex(), 0, 0);
  } else {
    beginRemoveRows(index(0, 0), row, row);
  }
  shown_favorites_.erase(place);
  endRemoveRows();
}

void CCameraModel::TellOfMark(int node) {
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
  return node.camera < 0 ? nullptr : &content_->CameraOf(node);
}

CameraRowKey CCameraModel::KeyOf(const QModelIndex& index) const {
  if (!index.isValid() || index.model() != this) {
    return {};
  }
  const int node = NodeOf(index);
  if (IsFavoriteRow(index)) {
    return {node == 0 ? CameraRowKey::kFavorites : CameraRowKey::kFavorite, content_->At(node).code};
  }
  return {content_->At(node).camera < 0 ? CameraRowKey::kRegion : CameraRowKey::kCamera, content_->At(node).code};
}

QModelIndex CCameraModel::Find(const CameraRowKey& key) const {
  switch (key.kind) {
    case CameraRowKey::kRegion:
      return IndexOfNode(content_->RegionNode(key.code));
    case CameraRowKey::kCamera:
      return IndexOfNode(content_->CameraNode(key.code));
    case CameraRowKey::kFavorites:
      return HasBranch() ? index(0, 0) : QModelIndex();
    case CameraRowKey::kFavorite: {
      const int node = content_->CameraNode(key.code);
      const auto place = std::lower_bound(shown_favorites_.begin(), shown_favorites_.end(), node);
      const bool found = HasBranch() && place != shown_favorites_.end() && *place == node;
      return found ? index(static_cast<int>(place - shown_favorites_.begin()), 0, index(0, 0)) : QModelIndex();
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
  const int above = content_->At(node).parent == 0 && HasBranch() ? 1 : 0;
  return createIndex(rows_.RowOf(node) + above, 0, static_cast<quintptr>(node));
}

QModelIndex CCameraModel::index(int row, int column, const QModelIndex& parent) const {
  if (row < 0 || column != 0 || row >= rowCount(parent)) {
    return {};
  }
  if (parent.isValid()) {
    const quintptr id = IsFavoriteRow(parent)
                            ? static_cast<quintptr>(shown_favorites_[static_cast<size_t>(row)]) | kFavoriteBit
                            : static_cast<quintptr>(rows_.ChildAt(NodeOf(parent), row));
    return createIndex(row, 0, id);
  }
  const int above = HasBranch() ? 1 : 0;
  return createIndex(row, 0, row < above ? kFavoriteBit : static_cast<quintptr>(rows_.ChildAt(0, row - above)));
}

QModelIndex CCameraModel::parent(const QModelIndex& index) const {
  if (!index.isValid() || index.internalId() == kFavoriteBit) {
    return {};
  }
  return IsFavoriteRow(index) ? createIndex(0, 0, kFavoriteBit) : IndexOfNode(content_->At(NodeOf(index)).parent);
}

int CCameraModel::rowCount(const QModelIndex& parent) const {
  if (!parent.isValid()) {
    return rows_.ChildCount(0) + (HasBranch() ? 1 : 0);
  }
  if (IsFavoriteRow(parent)) {
    return parent.internalId() == kFavoriteBit ? static_cast<int>(shown_favorites_.size()) : 0;
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
  const Qt::ItemFlags common = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsDragEnabled;
  return CameraAt(index) ? common | Qt::ItemNeverHasChildren : common;
}

QVariant CCameraModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) {
    return {};
  }
  const bool branch = index.internalId() == kFavoriteBit;
  const CCameraContent::Node& node = content_->At(NodeOf(index));
  const CCameraItemInfo* camera = CameraAt(index);
  switch (role) {
    case Qt::DisplayRole:
      return branch ? tr("Favorites") : node.name;
    case Qt::DecorationRole:
      return IconOf(camera, branch);
    case Qt::ForegroundRole:
      return camera && !camera->online
                 ? QVariant(tarn_ui_data_controller::CSkinLoader::Instance().GetColor(QStringLiteral("text_muted")))
                 : QVariant();
    case Qt::AccessibleTextRole:
      return camera ? QVariant(SpokenName(node.name, *camera, Contains(favorites_, NodeOf(index)))) : QVariant();
    case Qt::ToolTipRole:
      return MarUIControl::PlainToolTip(data(index, Qt::AccessibleTextRole).toString());
    case FavoriteRole:
      return camera && favorites_visible_ ? QVariant(Contains(favorites_, NodeOf(index))) : QVariant();
    case OnlineRole:
      return camera ? QVariant(camera->online) : QVariant();
    case CodeRole:
      return node.code;
    default:
      return {};
  }
}

QIcon CCameraModel::IconOf(const CCameraItemInfo* camera, bool branch) const {
  if (camera) {
    return camera->online ? online_ : offline_;
  }
  return branch ? branch_ : region_;
}

QString CCameraModel::SpokenName(const QString& name, const CCameraItemInfo& camera, bool favorite) const {
  QString spoken = camera.online ? name : tr("%1, offline").arg(name);
  return favorite && favorites_visible_ ? tr("%1, favorite").arg(spoken) : spoken;
}

}  // namespace ResourceTreeKit
