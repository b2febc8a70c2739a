#pragma once

#include <QStyledItemDelegate>

namespace TarnPlanView {

/// A page in the strip: its split with the filled windows, number and dwell. Thread: GUI.
class CPageStripDelegate : public QStyledItemDelegate {
  Q_OBJECT
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace TarnPlanView
