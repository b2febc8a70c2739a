#pragma once

#include <QPersistentModelIndex>
#include <QTreeView>

namespace ResourceTreeKit {

/// Clicks on the stars of a camera tree. Such a click is about the star alone: the view does not get it, so it neither
/// selects, drags nor activates. Thread: GUI.
class CStarClicks : public QObject {
  Q_OBJECT
 public:
  explicit CStarClicks(QTreeView* view);

 Q_SIGNALS:
  /// Pressed and released over the star of this row.
  void Clicked(const QModelIndex& row);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool Press(const QMouseEvent& event);
  bool Release(const QMouseEvent& event);
  QModelIndex StarUnder(const QMouseEvent& event) const;

  QTreeView* const view_;
  QPersistentModelIndex pressed_;
};

}  // namespace ResourceTreeKit
