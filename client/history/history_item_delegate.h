#pragma once

#include <QStyledItemDelegate>

namespace TarnClient {

/// Two lines a plan: its name, and below it where it stands and when it was played. Thread: GUI.
class CHistoryItemDelegate : public QStyledItemDelegate {
  Q_OBJECT
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace TarnClient
