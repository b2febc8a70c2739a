#pragma once

#include <QFrame>
#include <QPointer>

class QAbstractItemView;
class QModelIndex;
class QVBoxLayout;

namespace WidgetKit {
class CNewLocationViewWidget;
}

namespace MarUIControl {

/// Drop-down of a location combo box: a search field over the caller's view. A pop-up window, so that a click
/// elsewhere closes it. Thread: GUI.
class LocationPopup : public QFrame {
  Q_OBJECT
 public:
  explicit LocationPopup(QWidget* owner);
  ~LocationPopup() override;

  /// The view becomes a child of the drop-down, the one before it is let go, without a parent and hidden.
  void SetView(QAbstractItemView* view);
  QAbstractItemView* View() const { return view_; }
  void SetSearchVisible(bool visible);
  WidgetKit::CNewLocationViewWidget* SearchLine() const { return search_; }

  /// Below `anchor`, a rectangle of the screen, or above it where there is more room, whole on the anchor's screen.
  void OpenAt(const QRect& anchor);

 Q_SIGNALS:
  /// The user has chosen this row; the drop-down is still open.
  void Chosen(const QModelIndex& index);
  void Closed();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void Choose(const QModelIndex& index);
  bool HandleKey(QObject* watched, int key, Qt::KeyboardModifiers modifiers);
  bool ReturnInSearch();
  QRect PlaceFor(const QRect& anchor) const;

  QWidget* const owner_;
  QPointer<QAbstractItemView> view_;
  WidgetKit::CNewLocationViewWidget* search_ = nullptr;
};

}  // namespace MarUIControl
