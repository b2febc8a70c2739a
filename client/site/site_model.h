#pragma once

#include <QAbstractItemModel>
#include <QIcon>
#include <memory>

#include "site/site_rows.h"

namespace TarnClient {

/// The site's regions and cameras as a tree with columns. Thread: GUI.
class CSiteModel : public QAbstractItemModel {
  Q_OBJECT
 public:
  enum Column { kName, kMain, kSub, kUser, kColumnCount };

  explicit CSiteModel(QObject* parent = nullptr);

  void SetRows(std::shared_ptr<const SiteRows> rows);
  const SiteRows& Rows() const { return *rows_; }
  /// Null for an index that is none of this model's.
  const SiteRow* RowOf(const QModelIndex& index) const;
  QModelIndex IndexOf(const std::string& code, bool is_region) const;
  /// The row at this place in Rows().
  QModelIndex IndexAt(int place, int column = 0) const;

  QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  QModelIndex parent(const QModelIndex& child) const override;
  using QObject::parent;
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  const std::vector<int>& ChildrenOf(const QModelIndex& parent) const;
  QVariant Text(const SiteRow& row, int column) const;

  const QIcon region_icon_, camera_icon_;
  std::shared_ptr<const SiteRows> rows_ = std::make_shared<SiteRows>();
};

}  // namespace TarnClient
