#pragma once

#include <QListView>

namespace TarnPlanView {

class CPlanDocument;

/// The pages side by side. A page is moved by dragging it or by Ctrl+Shift and an arrow, removed by Delete, doubled by
/// Ctrl+D, Insert adds one; the current row is the document's current page. Thread: GUI.
class CPageList : public QListView {
  Q_OBJECT
 public:
  /// The document outlives the list.
  CPageList(CPlanDocument* document, QWidget* parent);

 protected:
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void keyPressEvent(QKeyEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void FollowDocument();
  bool MovePageBy(QKeyEvent* event);
  /// Before which page a drop at `x` goes.
  int GapAt(int x) const;
  void ShowGap(int gap);

  CPlanDocument* const document_;
  int gap_ = -1;
  bool following_ = false;
};

}  // namespace TarnPlanView
