#pragma once

#include <QModelIndex>
#include <QWidget>
#include <memory>

#include "host_export.h"

class QAbstractItemModel;
class QAbstractItemView;

namespace WidgetKit {
class CNewLocationViewWidget;
}

namespace MarUIControl {

/// Combo box whose drop-down holds an item view of the caller's, with an edit line above it that looks for rows.
///
/// Opens by click, Space, F4 and Alt+Down; Esc closes it without a choice, and nothing but it; a click or Return on a
/// selectable row chooses it and closes. In the edit line Return takes the row that was found. The expander of a row
/// only expands. The drop-down stays on the screen it was opened on. Thread: GUI.
class TARN_HOST_EXPORT CLocationComboBox : public QWidget {
  Q_OBJECT
 public:
  explicit CLocationComboBox(QWidget* parent = nullptr);
  ~CLocationComboBox() override;

  /// The view becomes a child of the drop-down, which deletes it in the end; an earlier one is taken out. Null takes
  /// the view out. What is taken out belongs to the caller again, without a parent.
  void SetLocationView(QAbstractItemView* view);
  /// The view; null without one, or when it was deleted.
  QAbstractItemView* LocationView() const;
  /// The view's model; null without a view.
  QAbstractItemModel* LocationModel() const;
  /// Whether the edit line stands above the view.
  void SetEditLabelVisible(bool visible);
  /// The edit line; it looks through the view whether it is shown or not.
  WidgetKit::CNewLocationViewWidget* SearchLine() const;

  /// Opens the drop-down. Nothing without a view, or while the box is disabled or hidden.
  void ShowPopup();
  /// Closes it without a choice; nothing while it is closed.
  void HidePopup();
  /// Whether the drop-down is open.
  bool IsPopupVisible() const;
  /// The text in the closed box.
  QString CurrentText() const;
  /// What the closed box shows while nothing is chosen.
  void SetPlaceholderText(const QString& text);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  /// The user has chosen this row, an index of the view's model. The drop-down is closed by then.
  void SignalIndexActivated(const QModelIndex& index);

 protected:
  /// What the closed box shows; assistive technology hears of it.
  void SetCurrentText(const QString& text);
  /// A row was chosen in the view; the base shows its text and emits SignalIndexActivated().
  virtual void Choose(const QModelIndex& index);
  /// The drop-down is about to open; the base does nothing.
  virtual void PrepareView();

  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void changeEvent(QEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void DrawText(QPainter* painter, const QString& text, QPalette::ColorRole color) const;

  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace MarUIControl
