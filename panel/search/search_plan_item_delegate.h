#pragma once

#include <QStyledItemDelegate>

namespace TarnPlanView {

/// Paints a search hit: icon, name with the searched text marked, and below it the groups it stands in and the camera
/// it was found by. Thread: GUI.
class CSearchPlanItemDelegate : public QStyledItemDelegate {
  Q_OBJECT
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;
};

}  // namespace TarnPlanView
