#include "MarUIControl/tree_view.h"

#include <QBasicTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QSet>
#include <QTimerEvent>

#include "MarUIControl/return_key.h"
#include "MarUIControl/standard_item_model.h"
#include "MarUIControl/tree_expander.h"

namespace MarUIControl {

namespace {

constexpr int kFrameMs = 80;

QModelIndex FirstColumn(const QModelIndex& index) {
  return index.sibling(index.row(), 0);
}

}  // namespace

class CTreeView::Private {
 public:
  explicit Private(CTreeView* view) : q(view) {}

  // Whether the user's gesture on `index` asks for its children, or has asked already, instead of just expanding it.
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
  Qt::Key ForwardKey() const { return q->isRightToLeft() ? Qt::Key_Left : Qt::Key_Right; }
  bool ExpandByKey(const QModelIndex& current, int key);
  void ExpandFetchedBelow(const QModelIndex& index);

  CTreeView* const q;
  QSet<QPersistentModelIndex> waiting, fetched;
  QMetaObject::Connection on_reset, on_removed;
  QBasicTimer timer;  // runs while a row waits
  int frame = 0;
};

void CTreeView::Private::Request(const QModelIndex& index) {
  if (waiting.contains(index)) {
    return;
  }
  waiting.insert(index);
  if (!timer.isActive()) {
    timer.start(kFrameMs, q);
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
  if (waiting.isEmpty()) {
    timer.stop();
  }
}

bool CTreeView::Private::ExpandByKey(const QModelIndex& current, int key) {
  const bool enter = IsReturn(key);
  if (!enter && key != ForwardKey() && key != Qt::Key_Plus && key != Qt::Key_Asterisk) {
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

// The base class would also open rows whose children were never asked for.
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
  // Rows hold one line each. Otherwise scrolling to a far row measures every row before it.
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
    scheduleDelayedItemsLayout();  // the base class caches which rows have expanders
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

void CTreeView::mousePressEvent(QMouseEvent* event) {
  const QModelIndex row = TreeExpander::RowAt(*this, event->pos());
  if (event->button() == Qt::LeftButton && itemsExpandable() && d_->IsUnfetched(row)) {
    d_->Request(row);
    event->accept();
    return;
  }
  CAbstractItemView::mousePressEvent(event);
}

// Some styles expand on release: the gesture that made the request must not be taken for a second one.
void CTreeView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && d_->IsUnfetched(TreeExpander::RowAt(*this, event->pos()))) {
    event->accept();
    return;
  }
  CAbstractItemView::mouseReleaseEvent(event);
}

void CTreeView::mouseDoubleClickEvent(QMouseEvent* event) {
  const QPersistentModelIndex row = FirstColumn(indexAt(event->pos()));
  const bool request = event->button() == Qt::LeftButton && expandsOnDoubleClick() && itemsExpandable() &&
                       d_->IsUnfetched(row) && !TreeExpander::RowAt(*this, event->pos()).isValid();
  if (!request) {
    CAbstractItemView::mouseDoubleClickEvent(event);
    return;
  }
  setExpandsOnDoubleClick(false);  // the base class is to emit doubleClicked(), but not to expand
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
  QPalette::ColorRole role = QPalette::Text;
  if (selectionModel() && selectionModel()->isSelected(index)) {
    role = QPalette::HighlightedText;
  }
  TreeExpander::DrawWaitingMark(painter, TreeExpander::Place(*this, rect), palette().color(role), d_->frame);
}

void CTreeView::dataChanged(const QModelIndex& top_left, const QModelIndex& bottom_right, const QVector<int>& roles) {
  CAbstractItemView::dataChanged(top_left, bottom_right, roles);
  if (roles.contains(CStandardItemModel::ChildrenFetchedRole)) {
    scheduleDelayedItemsLayout();  // an expander may have come or gone
  }
}

void CTreeView::timerEvent(QTimerEvent* event) {
  if (event->timerId() != d_->timer.timerId()) {
    CAbstractItemView::timerEvent(event);
    return;
  }
  d_->DropVanished();
  d_->frame = (d_->frame + 1) % TreeExpander::kFramesPerTurn;
  for (const QPersistentModelIndex& row : qAsConst(d_->waiting)) {
    const QRect item = visualRect(row);
    viewport()->update(QRect(0, item.top(), viewport()->width(), item.height()));
  }
}

}  // namespace MarUIControl
