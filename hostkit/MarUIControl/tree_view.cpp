#include "MarUIControl/tree_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QSet>
#include <QTimerEvent>

#include "MarUIControl/standard_item_model.h"

namespace MarUIControl {

namespace {

constexpr int kFrameMs = 80;
constexpr int kFramesPerTurn = 12;

QModelIndex FirstColumn(const QModelIndex& index) {
  return index.sibling(index.row(), 0);
}

}  // namespace

class CTreeView::Private {
 public:
  explicit Private(CTreeView* view) : q(view) {}

  // Whether the user's wish to expand `index` is a request, or has to be held back, instead of a plain expansion.
  bool IsUnfetched(const QModelIndex& index) const {
    return index.isValid() && !q->isExpanded(index) && (waiting.contains(index) || NeedsFetch(index));
  }
  bool NeedsFetch(const QModelIndex& index) const {
    return !fetched.contains(index) && q->model()->canFetchMore(index);
  }
  void Request(const QModelIndex& index);
  void Forget();
  void DropVanished();
  void StopTimerWhenIdle();
  QModelIndex RowOfExpanderAt(const QPoint& position) const;
  QRect ExpanderRect(const QRect& branches) const;
  void DrawWaitingMark(QPainter* painter, const QRect& expander, const QColor& color) const;
  bool ExpandByKey(const QModelIndex& current, int key);
  void ExpandFetchedBelow(const QModelIndex& index);

  CTreeView* const q;
  QSet<QPersistentModelIndex> waiting, fetched;
  QMetaObject::Connection on_reset, on_removed;
  int timer = 0, frame = 0;
};

void CTreeView::Private::Request(const QModelIndex& index) {
  if (waiting.contains(index)) {
    return;
  }
  waiting.insert(index);
  if (timer == 0) {
    timer = q->startTimer(kFrameMs);
  }
  q->viewport()->update();
  Q_EMIT q->AsynchronousExpand(index);
}

void CTreeView::Private::Forget() {
  waiting.clear();
  fetched.clear();
  StopTimerWhenIdle();
}

void CTreeView::Private::DropVanished() {
  const auto drop = [](QSet<QPersistentModelIndex>& rows) {
    for (auto row = rows.begin(); row != rows.end();) {
      if (row->isValid()) {
        ++row;
      } else {
        row = rows.erase(row);
      }
    }
  };
  drop(waiting);
  drop(fetched);
  StopTimerWhenIdle();
}

void CTreeView::Private::StopTimerWhenIdle() {
  if (timer != 0 && waiting.isEmpty()) {
    q->killTimer(timer);
    timer = 0;
  }
}

QModelIndex CTreeView::Private::RowOfExpanderAt(const QPoint& position) const {
  const QModelIndex index = FirstColumn(q->indexAt(position));
  if (!index.isValid() || (!q->rootIsDecorated() && index.parent() == q->rootIndex())) {
    return QModelIndex();
  }
  QRect branches = q->visualRect(index);
  if (q->isRightToLeft()) {
    branches.setLeft(branches.right() + 1);
    branches.setWidth(q->indentation());
  } else {
    branches.setRight(branches.left() - 1);
    branches.setLeft(branches.right() - q->indentation() + 1);
  }
  return branches.contains(position) ? index : QModelIndex();
}

QRect CTreeView::Private::ExpanderRect(const QRect& branches) const {
  const int left = q->isRightToLeft() ? branches.left() : branches.right() - q->indentation() + 1;
  return QRect(left, branches.top(), q->indentation(), branches.height());
}

void CTreeView::Private::DrawWaitingMark(QPainter* painter, const QRect& expander, const QColor& color) const {
  const int size = qMax(8, qMin(12, qMin(expander.width(), expander.height()) - 4));
  QRectF circle(0, 0, size, size);
  circle.moveCenter(QRectF(expander).center());
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  QColor faint = color;
  faint.setAlphaF(0.3);
  painter->setPen(QPen(faint, 2));
  painter->drawEllipse(circle);
  painter->setPen(QPen(color, 2, Qt::SolidLine, Qt::RoundCap));
  painter->drawArc(circle, -frame * 360 * 16 / kFramesPerTurn, 100 * 16);
  painter->restore();
}

bool CTreeView::Private::ExpandByKey(const QModelIndex& current, int key) {
  const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
  const int forward = q->isRightToLeft() ? Qt::Key_Left : Qt::Key_Right;
  if (!enter && key != forward && key != Qt::Key_Plus && key != Qt::Key_Asterisk) {
    return false;
  }
  if (IsUnfetched(current)) {
    Request(current);
    return true;
  }
  if (key == Qt::Key_Asterisk) {
    ExpandFetchedBelow(current);
    return true;
  }
  if (enter && q->model()->hasChildren(current)) {
    q->setExpanded(current, !q->isExpanded(current));
    return true;
  }
  return false;
}

// The base class would open rows whose children nobody has asked for.
void CTreeView::Private::ExpandFetchedBelow(const QModelIndex& index) {
  if (IsUnfetched(index) || !q->model()->hasChildren(index)) {
    return;
  }
  q->expand(index);
  for (int row = 0; row < q->model()->rowCount(index); ++row) {
    ExpandFetchedBelow(q->model()->index(row, 0, index));
  }
}

CTreeView::CTreeView(QWidget* parent) : CAbstractItemView(parent), d_(new Private(this)) {
  // Rows hold one line each. Otherwise a way to a far row measures every row before it.
  setUniformRowHeights(true);
}

CTreeView::~CTreeView() = default;

void CTreeView::setModel(QAbstractItemModel* new_model) {
  disconnect(d_->on_reset);
  disconnect(d_->on_removed);
  d_->Forget();
  CAbstractItemView::setModel(new_model);
  if (!new_model) {
    return;
  }
  d_->on_reset = connect(new_model, &QAbstractItemModel::modelReset, this, [this] { d_->Forget(); });
  d_->on_removed = connect(new_model, &QAbstractItemModel::rowsRemoved, this, [this] { d_->DropVanished(); });
}

void CTreeView::ExpandAsync(const QModelIndex& index) {
  const QModelIndex row = FirstColumn(index);
  if (!row.isValid() || row.model() != model()) {
    return;
  }
  if (d_->IsUnfetched(row)) {
    d_->Request(row);
  } else {
    expand(row);
  }
}

void CTreeView::FinishExpand(const QModelIndex& index, bool expand_row, bool fetched) {
  const QModelIndex row = FirstColumn(index);
  if (!row.isValid() || row.model() != model()) {
    return;
  }
  d_->waiting.remove(row);
  d_->StopTimerWhenIdle();
  if (fetched) {
    d_->fetched.insert(row);
  }
  if (!model()->hasChildren(row)) {
    scheduleDelayedItemsLayout();  // the base class keeps what it once learnt about expanders
  } else if (expand_row && model()->rowCount(row) > 0) {
    expand(row);
  }
  viewport()->update();
}

void CTreeView::ForgetWaiting() {
  d_->waiting.clear();
  d_->StopTimerWhenIdle();
  viewport()->update();
}

bool CTreeView::IsWaiting(const QModelIndex& index) const {
  return d_->waiting.contains(FirstColumn(index));
}

bool CTreeView::IsFetched(const QModelIndex& index) const {
  return d_->fetched.contains(FirstColumn(index));
}

void CTreeView::mousePressEvent(QMouseEvent* event) {
  const QModelIndex row = d_->RowOfExpanderAt(event->pos());
  if (event->button() == Qt::LeftButton && itemsExpandable() && d_->IsUnfetched(row)) {
    d_->Request(row);
    event->accept();
    return;
  }
  CAbstractItemView::mousePressEvent(event);
}

// Some styles expand on release: the gesture that made the request must not be taken for a second one.
void CTreeView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && d_->IsUnfetched(d_->RowOfExpanderAt(event->pos()))) {
    event->accept();
    return;
  }
  CAbstractItemView::mouseReleaseEvent(event);
}

void CTreeView::mouseDoubleClickEvent(QMouseEvent* event) {
  const QPersistentModelIndex row = FirstColumn(indexAt(event->pos()));
  const bool request = event->button() == Qt::LeftButton && expandsOnDoubleClick() && itemsExpandable() &&
                       d_->IsUnfetched(row) && !d_->RowOfExpanderAt(event->pos()).isValid();
  if (!request) {
    CAbstractItemView::mouseDoubleClickEvent(event);
    return;
  }
  setExpandsOnDoubleClick(false);  // doubleClicked() is still told, but the base class must not expand
  CAbstractItemView::mouseDoubleClickEvent(event);
  setExpandsOnDoubleClick(true);
  if (row.isValid()) {
    d_->Request(row);
  }
}

void CTreeView::keyPressEvent(QKeyEvent* event) {
  const QModelIndex current = FirstColumn(currentIndex());
  const auto modifiers = event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
  if (current.isValid() && modifiers == Qt::NoModifier && d_->ExpandByKey(current, event->key())) {
    event->accept();
    return;
  }
  CAbstractItemView::keyPressEvent(event);
}

void CTreeView::drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const {
  if (!d_->waiting.contains(index)) {
    CAbstractItemView::drawBranches(painter, rect, index);
    return;
  }
  const bool selected = selectionModel() && selectionModel()->isSelected(index);
  d_->DrawWaitingMark(painter, d_->ExpanderRect(rect),
                      palette().color(selected ? QPalette::HighlightedText : QPalette::Text));
}

void CTreeView::dataChanged(const QModelIndex& top_left, const QModelIndex& bottom_right, const QVector<int>& roles) {
  CAbstractItemView::dataChanged(top_left, bottom_right, roles);
  if (roles.contains(CStandardItemModel::ChildrenFetchedRole)) {
    scheduleDelayedItemsLayout();  // an expander may have come or gone
  }
}

void CTreeView::timerEvent(QTimerEvent* event) {
  if (event->timerId() != d_->timer) {
    CAbstractItemView::timerEvent(event);
    return;
  }
  d_->DropVanished();
  d_->frame = (d_->frame + 1) % kFramesPerTurn;
  for (const QPersistentModelIndex& row : qAsConst(d_->waiting)) {
    const QRect item = visualRect(row);
    viewport()->update(QRect(0, item.top(), viewport()->width(), item.height()));
  }
}

}  // namespace MarUIControl
