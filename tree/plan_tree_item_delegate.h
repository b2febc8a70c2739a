#pragma once

#include <QColor>
#include <QFont>
#include <QFontMetrics>
#include <QIcon>
#include <QPersistentModelIndex>
#include <QStyledItemDelegate>

#include "MarUIControl/item_data_role.h"
#include "row_marks.h"

class QAbstractItemView;

namespace TarnPlanView {

/// Paints the rows of the plan tree: icon, name with the located text marked, the signs of a plan that plays, starts by
/// itself or turns pages and of a group whose plans play in turn, and the "more" button on the current row and under
/// the mouse. Fonts, icons and colours are made once a skin, not once a row. Child of its view. Thread: GUI.
class CPlanTreeItemDelegate : public QStyledItemDelegate {
  Q_OBJECT
 public:
  explicit CPlanTreeItemDelegate(QAbstractItemView* view);
  ~CPlanTreeItemDelegate() override;

  /// The row that the mouse is over, and on which part of it.
  void SetHover(const QModelIndex& index, MarUIControl::CItemDataRole::Part part);
  /// The group that takes what is being dragged, marked so that it is seen in either skin; invalid for none.
  void SetDropGroup(const QModelIndex& index);
  /// In the coordinates of `row`, a row's visual rectangle.
  QRect MoreButtonRect(const QRect& row) const;
  /// The plans of this group play in turn; an empty code for none.
  void SetCyclingGroup(const QString& code) { cycling_group_ = code; }
  const QString& CyclingGroup() const { return cycling_group_; }
  /// Skin or font have changed.
  void Renew();

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;

 Q_SIGNALS:
  /// The button of this row was clicked; the point is the screen's.
  void SignalMoreButtonClicked(const QModelIndex& index, const QPoint& global_position);

 private:
  struct Layout {
    QRect icon, text, clock, tour, badge, more;  // all but icon and text are empty where they are not shown
  };

  Layout Arrange(const QStyleOptionViewItem& option, const RowMarks& marks, bool more) const;
  QColor Accent(bool selected) const;
  bool ShowsMore(const QModelIndex& index) const;
  const QFontMetrics& Metrics(bool playing) const { return playing ? bold_metrics_ : metrics_; }
  void PaintName(QPainter* painter, const QStyleOptionViewItem& option, const QRect& rect, bool playing) const;
  void PaintLocated(QPainter* painter, const QString& shown, const QRect& rect, const QFontMetrics& metrics,
                    bool selected) const;
  void PaintMarks(QPainter* painter, const QStyleOptionViewItem& option, const Layout& layout, bool cycling) const;
  void PaintMore(QPainter* painter, const QRect& rect, const QModelIndex& index, bool selected) const;
  void PaintFocus(QPainter* painter, const QStyleOptionViewItem& option) const;
  void PaintDropGroup(QPainter* painter, const QRect& row) const;
  void ShowSignTip(const QString& text, const QRect& signs, const QRect& row) const;

  QAbstractItemView* const view_;
  QPersistentModelIndex hover_row_, drop_group_;
  bool over_button_ = false;
  QString cycling_group_;
  QFont bold_font_;
  QFontMetrics metrics_, bold_metrics_;
  QIcon more_icon_, more_icon_on_selection_;
  QColor accent_color_, focus_color_;
};

}  // namespace TarnPlanView
