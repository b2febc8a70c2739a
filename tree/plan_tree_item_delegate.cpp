#include "plan_tree_item_delegate.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTextDocument>
#include <QToolTip>

#include "TarnUIDataController/skin_loader.h"
#include "WidgetKit/new_location_view_widget.h"
#include "current_skin.h"
#include "view_public_def.h"

namespace TarnPlanView {

namespace {

constexpr int kGap = 6;
constexpr int kBadgeSize = 14;
constexpr int kMoreSize = 22;
constexpr int kMoreIconSize = 16;
constexpr int kMatchAlpha = 80;
constexpr int kDropStroke = 2;
constexpr qreal kQuietOpacity = 0.75;
constexpr int kTipBorders = 24;
constexpr QPoint kTipOffset(2, 12);  // tips stand so far beside the point that they are shown for

QFont Bold(QFont font) {
  font.setBold(true);
  return font;
}

QIcon MoreIcon(bool light_strokes) {
  const QString path = QStringLiteral(":/Images/TarnPlanView/row_more.svg");
  return QIcon(CViewPublicDef::GetDarkPath(path, light_strokes));
}

// A name is never taken for markup.
QString PlainToolTip(const QString& name) {
  if (!Qt::mightBeRichText(name)) {
    return name;
  }
  return QStringLiteral("<span>%1</span>").arg(name.toHtmlEscaped());
}

QIcon::Mode IconMode(bool selected) {
  return selected ? QIcon::Selected : QIcon::Normal;
}

QPalette::ColorRole TextRole(bool selected) {
  return selected ? QPalette::HighlightedText : QPalette::Text;
}

}  // namespace

CPlanTreeItemDelegate::CPlanTreeItemDelegate(QAbstractItemView* view)
    : QStyledItemDelegate(view), view_(view), metrics_(view->font()), bold_metrics_(view->font()) {
  Renew();
}

CPlanTreeItemDelegate::~CPlanTreeItemDelegate() = default;

void CPlanTreeItemDelegate::Renew() {
  bold_font_ = Bold(view_->font());
  metrics_ = QFontMetrics(view_->font());
  bold_metrics_ = QFontMetrics(bold_font_);
  const auto& skin = tarn_ui_data_controller::CSkinLoader::Instance();
  more_icon_ = MoreIcon(IsCurrentSkinDark());
  more_icon_on_selection_ = MoreIcon(true);  // selected rows are dark in either skin
  accent_color_ = skin.GetColor(QStringLiteral("accent_on_surface"));
  focus_color_ = skin.GetColor(QStringLiteral("focus"));
}

void CPlanTreeItemDelegate::SetHover(const QModelIndex& index, MarUIControl::CItemDataRole::Part part) {
  hover_row_ = index;
  over_button_ = part == MarUIControl::CItemDataRole::MoreButtonPart;
}

void CPlanTreeItemDelegate::SetDropGroup(const QModelIndex& index) {
  if (drop_group_ != index) {
    drop_group_ = index;
    view_->viewport()->update();
  }
}

QColor CPlanTreeItemDelegate::Accent(bool selected) const {
  if (selected) {
    return view_->palette().color(QPalette::HighlightedText);
  }
  return accent_color_;
}

QRect CPlanTreeItemDelegate::MoreButtonRect(const QRect& row) const {
  const QRect right(row.right() - kMoreSize - kGap / 2 + 1, row.center().y() - kMoreSize / 2 + 1, kMoreSize, kMoreSize);
  return QStyle::visualRect(view_->layoutDirection(), row, right);
}

bool CPlanTreeItemDelegate::ShowsMore(const QModelIndex& index) const {
  return index == hover_row_ || index == view_->currentIndex();
}

CPlanTreeItemDelegate::Layout CPlanTreeItemDelegate::Arrange(const QStyleOptionViewItem& option, const RowMarks& marks,
                                                             bool more) const {
  const QRect& row = option.rect;
  const auto mirrored = [&option, &row](const QRect& rect) { return QStyle::visualRect(option.direction, row, rect); };
  Layout layout;
  int left = row.left() + kGap / 2;
  if (!option.icon.isNull()) {
    const QSize size = view_->iconSize();
    layout.icon = mirrored(QRect(QPoint(left, row.top() + (row.height() - size.height()) / 2), size));
    left += size.width() + kGap;
  }
  int right = row.right() - kGap / 2;
  if (more) {
    layout.more = MoreButtonRect(row);
  }
  if (more || marks.Any()) {  // so that no mark makes way under the mouse
    right -= kMoreSize + kGap / 2;
  }
  const auto take = [&right, &row, &mirrored](bool shown, QRect& place) {
    if (shown) {
      const int top = row.top() + (row.height() - kBadgeSize) / 2;
      place = mirrored(QRect(right - kBadgeSize + 1, top, kBadgeSize, kBadgeSize));
      right -= kBadgeSize + kGap;
    }
  };
  take(marks.IsOn(), layout.badge);
  take(marks.sign.IsTour(), layout.tour);
  take(marks.sign.timed, layout.clock);
  layout.text = mirrored(QRect(QPoint(left, row.top()), QPoint(qMax(left, right), row.bottom())));
  return layout;
}

void CPlanTreeItemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& given,
                                  const QModelIndex& index) const {
  QStyleOptionViewItem option = given;
  initStyleOption(&option, index);
  const bool selected = option.state & QStyle::State_Selected;
  const RowMarks marks = RowMarks::Of(index, cycling_group_);
  const Layout layout = Arrange(option, marks, ShowsMore(index));
  view_->style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, view_);
  if (drop_group_.isValid() && index == drop_group_) {
    PaintDropGroup(painter, option.rect);
  }
  option.icon.paint(painter, layout.icon, Qt::AlignCenter, IconMode(selected));
  PaintName(painter, option, layout.text, marks.IsOn());
  PaintMarks(painter, option, layout, marks.cycling);
  if (!layout.more.isEmpty()) {
    PaintMore(painter, layout.more, index, selected);
  }
  if (option.state & QStyle::State_HasFocus) {
    PaintFocus(painter, option);
  }
}

void CPlanTreeItemDelegate::PaintName(QPainter* painter, const QStyleOptionViewItem& option, const QRect& rect,
                                      bool playing) const {
  const bool selected = option.state & QStyle::State_Selected;
  const QFontMetrics& metrics = Metrics(playing);
  const QString shown = metrics.elidedText(option.text, option.textElideMode, rect.width());
  PaintLocated(painter, shown, rect, metrics, selected);
  QPalette::ColorGroup group = QPalette::Normal;
  if (!(option.state & QStyle::State_Enabled)) {
    group = QPalette::Disabled;
  }
  painter->setPen(option.palette.color(group, TextRole(selected)));
  painter->setFont(playing ? bold_font_ : option.font);
  const auto side = QStyle::visualAlignment(option.direction, Qt::AlignLeft);
  painter->drawText(rect, static_cast<int>(side | Qt::AlignVCenter) | Qt::TextSingleLine, shown);
}

// The line below the text tells matches from the selection without colour.
void CPlanTreeItemDelegate::PaintLocated(QPainter* painter, const QString& shown, const QRect& rect,
                                         const QFontMetrics& metrics, bool selected) const {
  const QString wanted = WidgetKit::CNewLocationViewWidget::LocatedText(view_);
  if (wanted.isEmpty() || view_->layoutDirection() == Qt::RightToLeft) {
    return;
  }
  const QColor line = Accent(selected);
  QColor back = line;
  back.setAlpha(kMatchAlpha);
  for (int at = shown.indexOf(wanted, 0, Qt::CaseInsensitive); at >= 0;
       at = shown.indexOf(wanted, at + wanted.size(), Qt::CaseInsensitive)) {
    const int left = metrics.horizontalAdvance(shown, at);
    const int right = metrics.horizontalAdvance(shown, at + wanted.size());
    QRect mark(rect.left() + left, rect.center().y() - metrics.height() / 2, right - left, metrics.height() + 1);
    painter->fillRect(mark, back);
    painter->fillRect(QRect(mark.left(), mark.bottom(), mark.width(), 1), line);
  }
}

void CPlanTreeItemDelegate::PaintMarks(QPainter* painter, const QStyleOptionViewItem& option, const Layout& layout,
                                       bool cycling) const {
  const bool selected = option.state & QStyle::State_Selected;
  if (!layout.badge.isEmpty()) {
    const auto paint = cycling ? &PaintCyclingMark : &PaintPlayingMark;
    paint(painter, layout.badge, Accent(selected));
  }
  QColor quiet = option.palette.color(TextRole(selected));
  if (!selected) {
    quiet.setAlphaF(kQuietOpacity);
  }
  if (!layout.tour.isEmpty()) {
    PaintTourMark(painter, layout.tour, quiet);
  }
  if (!layout.clock.isEmpty()) {
    PaintClockMark(painter, layout.clock, quiet);
  }
}

void CPlanTreeItemDelegate::PaintMore(QPainter* painter, const QRect& rect, const QModelIndex& index,
                                      bool selected) const {
  if (over_button_ && index == hover_row_) {
    QColor back = view_->palette().color(TextRole(selected));
    back.setAlpha(45);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(back);
    painter->drawRoundedRect(rect, 4, 4);
    painter->restore();
  }
  const int margin = (kMoreSize - kMoreIconSize) / 2;
  const QIcon& icon = selected ? more_icon_on_selection_ : more_icon_;
  icon.paint(painter, rect.adjusted(margin, margin, -margin, -margin));
}

void CPlanTreeItemDelegate::PaintFocus(QPainter* painter, const QStyleOptionViewItem& option) const {
  const bool selected = option.state & QStyle::State_Selected;
  painter->setPen(selected ? option.palette.color(QPalette::HighlightedText) : focus_color_);
  painter->setBrush(Qt::NoBrush);
  painter->drawRect(option.rect.adjusted(1, 1, -2, -2));
}

void CPlanTreeItemDelegate::PaintDropGroup(QPainter* painter, const QRect& row) const {
  QColor back = focus_color_;
  back.setAlpha(kMatchAlpha);
  painter->fillRect(row, back);
  painter->setPen(QPen(focus_color_, kDropStroke));
  painter->setBrush(Qt::NoBrush);
  painter->drawRect(row.adjusted(1, 1, -1, -1));
}

bool CPlanTreeItemDelegate::editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) {
  if (event->type() == QEvent::MouseButtonRelease) {
    const auto* mouse = static_cast<QMouseEvent*>(event);
    if (mouse->button() == Qt::LeftButton && MoreButtonRect(option.rect).contains(mouse->pos())) {
      const QPoint below = view_->viewport()->mapToGlobal(MoreButtonRect(option.rect).bottomLeft());
      Q_EMIT SignalMoreButtonClicked(index, below);
      return true;
    }
  }
  return QStyledItemDelegate::editorEvent(event, model, option, index);
}

// Below its row and within the tree: beside the tree stands the preview.
void CPlanTreeItemDelegate::ShowSignTip(const QString& text, const QRect& signs, const QRect& row) const {
  const int width = QFontMetrics(QToolTip::font()).horizontalAdvance(text) + kTipBorders;
  const int left = qMax(0, qMin(signs.left(), view_->viewport()->width() - width));
  const QPoint place = view_->viewport()->mapToGlobal(QPoint(left, row.bottom())) - kTipOffset;
  QToolTip::showText(place, text, view_->viewport(), signs);
}

bool CPlanTreeItemDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& given,
                                      const QModelIndex& index) {
  if (event->type() != QEvent::ToolTip || !index.isValid()) {
    return QStyledItemDelegate::helpEvent(event, view, given, index);
  }
  QStyleOptionViewItem option = given;
  initStyleOption(&option, index);
  const RowMarks marks = RowMarks::Of(index, cycling_group_);
  const Layout layout = Arrange(option, marks, ShowsMore(index));
  const QRect signs = layout.tour | layout.clock;
  if (layout.more.contains(event->pos())) {
    QToolTip::showText(event->globalPos(), tr("More"), view->viewport(), layout.more);
  } else if (signs.contains(event->pos())) {
    ShowSignTip(TextOf(marks.sign), signs, option.rect);
  } else if (marks.cycling && layout.badge.contains(event->pos())) {
    ShowSignTip(tr("The plans of this group play in turn"), layout.badge, option.rect);
  } else if (Metrics(marks.IsOn()).horizontalAdvance(option.text) > layout.text.width()) {
    QToolTip::showText(event->globalPos(), PlainToolTip(option.text), view->viewport(), option.rect);
  } else {
    QToolTip::hideText();
  }
  return true;
}

}  // namespace TarnPlanView
