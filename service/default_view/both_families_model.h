#pragma once

#include <QAbstractItemModel>
#include <QVector>

class QStandardItemModel;

namespace TarnPlanView {

class CStandardPlanModel;

/// Public and own plans and what a search has found in one tree: the top rows of the three models one below the other,
/// with what stands under them.
///
/// Both roots carry the site's name, which says nothing side by side: here they are called by their family, and the
/// placeholder by what choosing it means. Roots cannot be selected, groups where their model says so. The models are
/// not owned and outlive this one; like all plan trees they never move rows. Thread: GUI.
class CBothFamiliesModel : public QAbstractItemModel {
  Q_OBJECT
 public:
  CBothFamiliesModel(CStandardPlanModel* public_plans, CStandardPlanModel* own_plans, QStandardItemModel* found,
                     QObject* parent);
  ~CBothFamiliesModel() override;

  /// Invalid for an index of another model, as is that of MapToSource().
  QModelIndex MapFromSource(const QModelIndex& source) const;
  QModelIndex MapToSource(const QModelIndex& index) const;

  QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
  QModelIndex parent(const QModelIndex& child) const override;
  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  bool hasChildren(const QModelIndex& parent = QModelIndex()) const override;
  bool canFetchMore(const QModelIndex& parent) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  void Follow(QStandardItemModel* source);
  /// Number of top rows of the models before it.
  int Offset(const QAbstractItemModel* source) const;
  /// What is to be added to the rows of `source` below `parent`: its offset at the top, else nothing.
  int OffsetBelow(const QModelIndex& parent, const QAbstractItemModel* source) const;
  /// One of ours, or null.
  QStandardItemModel* Source(const QAbstractItemModel* model) const;
  /// How a top row of this item type is called here.
  static QVariant Title(int type, const QVariant& own_text);

  const QVector<QStandardItemModel*> sources_;
};

}  // namespace TarnPlanView
