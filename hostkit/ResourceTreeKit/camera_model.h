#pragma once

#include <QAbstractItemModel>
#include <memory>

#include "ResourceTreeKit/camera_content.h"
#include "ResourceTreeKit/camera_row_key.h"
#include "ResourceTreeKit/camera_row_look.h"
#include "ResourceTreeKit/camera_rows.h"
#include "ResourceTreeKit/node_set.h"

namespace ResourceTreeKit {

/// The rows of a content that are shown, after the favourites, which have a branch of their own while there are any in
/// sight. Thread: GUI.
class CCameraModel : public QAbstractItemModel {
  Q_OBJECT
 public:
  /// Invalid, or true or false for a camera while favourites are shown.
  static constexpr int FavoriteRole = Qt::UserRole + 1;
  static constexpr int OnlineRole = Qt::UserRole + 2;
  static constexpr int CodeRole = Qt::UserRole + 3;

  explicit CCameraModel(QObject* parent);

  /// All three reset the model.
  void SetContent(std::shared_ptr<const CCameraContent> content, CCameraRows rows, const QStringList& favorites);
  void SetRows(CCameraRows rows);
  void SetFavoritesVisible(bool visible);
  bool AreFavoritesVisible() const { return favorites_visible_; }
  void SetFavorite(const QString& code, bool favorite);
  bool IsFavorite(const QString& code) const;
  /// Whether these, as far as they have rows, are all favourites there are.
  bool HasFavorites(const QStringList& codes) const;

  const CCameraContent& Content() const { return *content_; }
  std::shared_ptr<const CCameraContent> SharedContent() const { return content_; }
  const CCameraRows& Rows() const { return rows_; }
  /// Null for a row that is none.
  const CCameraItemInfo* CameraAt(const QModelIndex& index) const;
  CameraRowKey KeyOf(const QModelIndex& index) const;
  QModelIndex Find(const CameraRowKey& key) const;
  QModelIndex IndexOfNode(int node) const;

  QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
  QModelIndex parent(const QModelIndex& index) const override;
  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  bool HasBranch() const { return favorites_visible_ && !shown_favorites_.IsEmpty(); }
  /// How many rows at the top the favourites' branch takes.
  int BranchRows() const { return HasBranch() ? 1 : 0; }
  QModelIndex BranchIndex() const;
  QModelIndex FavoriteIndex(int place) const;
  CNodeSet NodesOf(const QStringList& cameras) const;
  void ShowFavorites();
  void InsertFavorite(int node);
  void RemoveFavorite(int node);
  void ReportMark(int node);

  std::shared_ptr<const CCameraContent> content_;
  CCameraRows rows_;
  CNodeSet favorites_, shown_favorites_;
  bool favorites_visible_ = false;
  const CCameraRowLook look_;
};

}  // namespace ResourceTreeKit
