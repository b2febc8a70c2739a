#include "plan_view_tree_p.h"

#include <QApplication>
#include <QCursor>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QMouseEvent>

#include "MarUIControl/nomal_message.h"
#include "moved_rows.h"
#include "plan_item_role.h"
#include "qt/event_places.h"
#include "view_public_def.h"

namespace TarnPlanView {

using MarUIControl::CNomalMessage;

namespace {

constexpr int kOpenGroupMs = 700;
constexpr int kEdgeHeight = 16;

const char kTreeCursor[] = ":/Images/TarnPlanView/monitoring_window_add_resource.svg";
const char kMoveCursor[] = ":/Bolt/Preview/Images/Preview/monitoring_window_add_resource.svg";

}  // namespace

void CPlanViewTree::SetMovePermission(bool permitted) {
  d_->move_permitted = permitted;
}

void CPlanViewTree::Private::NotePress(QMouseEvent* event) {
  drag_start = event->pos();
  drag_row = q->indexAt(drag_start);
  drag_offset = drag_start - q->visualRect(drag_row).topLeft();
}

QPoint CPlanViewTree::Private::DragStart() const {
  const QRect row = q->visualRect(drag_row);
  if (!row.isValid()) {
    return drag_start;
  }
  return row.topLeft() + drag_offset;
}

void CPlanViewTree::startDrag(Qt::DropActions) {
  const QPersistentModelIndex row = currentIndex();
  if (!CPlanDrag::CanDrag(row) || d_->IsOnMoreButton(d_->drag_start)) {
    return;
  }
  d_->SetHover(QModelIndex(), MarUIControl::CItemDataRole::NoPart);
  d_->HideThumbnail();
  if (!row.isValid()) {  // a listener took it away
    return;
  }
  auto* drag = new CPlanDrag(row, this);
  d_->drag = drag;
  const QPointer<CPlanViewTree> alive(this);
  drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::MoveAction);
  if (alive) {
    d_->open_timer.stop();
    d_->HideIndicator();
  }
}

// Rows of another tree carry the host's mark, too.
bool CPlanViewTree::Private::IsOwnDrag(const QDropEvent* event) const {
  const QObject* source = event->source();
  return event->mimeData() && event->mimeData()->property("_tree_drop_").toBool() &&
         (!source || source == q || source == q->viewport());
}

void CPlanViewTree::dragEnterEvent(QDragEnterEvent* event) {
  d_->drag_over = QPersistentModelIndex();
  if (d_->IsOwnDrag(event)) {
    event->acceptProposedAction();
  } else {
    event->ignore();
  }
}

CPlanViewTree::Private::Verdict CPlanViewTree::Private::Judge(const QModelIndex& target) const {
  if (IsGroupRow(drag_row)) {
    return Taken;
  }
  const int source_level = q->GetItemLevel(drag_row), target_level = q->GetItemLevel(target);
  const bool takes_part = source_level != NoLevel;  // a vanished row does not, nor do plans received from others
  if (!takes_part || q->selectedIndexes().size() > 1 || !q->IsGroupPropertySame(target, drag_row)) {
    return Refused;
  }
  if (source_level == target_level) {
    return BesideRow;
  }
  return IsPlanOverItsGroup(source_level, target_level) ? OntoRow : Refused;
}

void CPlanViewTree::Private::ShowIndicator(Verdict verdict, const QModelIndex& target, int cursor_y) {
  const QRect row = q->visualRect(target);
  QModelIndex group;
  if (verdict == OntoRow) {
    indicator.ShowFrame(row);
    group = target;
  } else if (verdict == BesideRow) {
    const int middle = (row.top() + row.bottom()) / 2;
    indicator.ShowLine(row, middle >= cursor_y);  // the middle itself counts as before
    group = target.parent();
  } else {
    indicator.Hide();
  }
  if (delegate) {
    const bool comes_to_another = group != drag_row.parent();
    delegate->SetDropGroup(comes_to_another ? group : QModelIndex());
  }
}

void CPlanViewTree::Private::HideIndicator() {
  indicator.Hide();
  if (delegate) {
    delegate->SetDropGroup(QModelIndex());
  }
}

void CPlanViewTree::Private::Accept(QDropEvent* event, const QString& cursor) {
  if (drag) {
    drag->ShowMoveCursor(cursor);
  }
  event->acceptProposedAction();
}

void CPlanViewTree::Private::RefuseMove(QDropEvent* event) {
  HideIndicator();
  event->ignore();
}

void CPlanViewTree::dragMoveEvent(QDragMoveEvent* event) {
  if (!d_->IsOwnDrag(event)) {
    d_->RefuseMove(event);
    return;
  }
  const QPoint place = TarnQt::PlaceOf(*event);
  const QModelIndex target = indexAt(place);
  d_->HoverWhileDragging(target);
  const int y = place.y();
  if (y < kEdgeHeight || y > viewport()->height() - kEdgeHeight) {
    startAutoScroll();
  }
  const Private::Verdict verdict = d_->Judge(target);
  if (verdict == Private::Refused) {
    d_->RefuseMove(event);
    return;
  }
  d_->ShowIndicator(verdict, target, y);
  d_->Accept(event, QString::fromLatin1(verdict == Private::Taken ? kTreeCursor : kMoveCursor));
}

void CPlanViewTree::dragLeaveEvent(QDragLeaveEvent*) {
  d_->HideIndicator();
  d_->open_timer.stop();
  stopAutoScroll();
  if (d_->drag) {
    d_->drag->ShowMoveCursor(QString::fromLatin1(kTreeCursor));
  }
}

void CPlanViewTree::dropEvent(QDropEvent* event) {
  d_->HideIndicator();
  d_->open_timer.stop();
  stopAutoScroll();
  if (!d_->IsOwnDrag(event) || !d_->drag_row.isValid()) {
    event->ignore();
    return;
  }
  event->acceptProposedAction();
  if (d_->move_permitted) {
    const QPoint place = TarnQt::PlaceOf(*event);
    Q_EMIT SignalMoveRow(d_->DragStart(), place, visualRect(indexAt(place)));
  } else {
    Q_EMIT SignalMessageTipNeeded(tr("TheUserHasNoPermission"), CNomalMessage::Success);
  }
}

void CPlanViewTree::Private::HoverWhileDragging(const QModelIndex& target) {
  if (target != drag_over) {
    drag_over = target;
    open_timer.start(kOpenGroupMs, q);
  }
}

// Only what is there already: a drag is no time to ask the service.
void CPlanViewTree::Private::ExpandUnderDrag() {
  open_timer.stop();
  if (drag_over.isValid() && !q->isExpanded(drag_over) && !q->model()->canFetchMore(drag_over) &&
      q->model()->rowCount(drag_over) > 0) {
    q->expand(drag_over);
    ShowIndicator(Judge(drag_over), drag_over, q->viewport()->mapFromGlobal(QCursor::pos()).y());
  }
}

}  // namespace TarnPlanView
