#pragma once

#include <QIcon>
#include <QStyledItemDelegate>

namespace ResourceTreeKit {

/// Rows of the camera tree: a star at the end of each camera's row tells favourites and, under the mouse and in the
/// current row, offers to make one. Thread: GUI.
class CCameraRowDelegate : public QStyledItemDelegate {
  Q_OBJECT
 public:
  explicit CCameraRowDelegate(QObject* parent);

  /// Where the star of a row with this rectangle stands; empty for a row without one.
  static QRect StarRect(const QRect& row, const QModelIndex& index, Qt::LayoutDirection direction);

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

 private:
  const QIcon star_, empty_star_;
};

}  // namespace ResourceTreeKit
