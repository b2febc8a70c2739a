#include "page_list.h"

#include <QDropEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>

#include "TarnUIDataController/skin_loader.h"
#include "page_strip_delegate.h"
#include "page_strip_model.h"
#include "plan_document.h"
#include "qt/event_places.h"

namespace TarnPlanView {

CPageList::CPageList(CPlanDocument* document, QWidget* parent) : QListView(parent), document_(document) {
  setObjectName(QStringLiteral("page_list"));
  setModel(new CPageStripModel(document, this));
  setItemDelegate(new CPageStripDelegate(this));
  setFlow(QListView::LeftToRight);
  setWrapping(false);
  setUniformItemSizes(true);
  setMouseTracking(true);
  setSelectionMode(QAbstractItemView::SingleSelection);
  setDragDropMode(QAbstractItemView::InternalMove);
  setDefaultDropAction(Qt::MoveAction);
  setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setAccessibleName(tr("Pages"));
  setToolTip(tr("Drag or Ctrl+Shift+arrow to move a page, Insert to add, Ctrl+D to duplicate, Delete to remove"));
  // The model was connected first: the rows stand when this is called.
  connect(document_, &CPlanDocument::SignalChanged, this, &CPageList::FollowDocument);
  FollowDocument();
}

void CPageList::FollowDocument() {
  const QModelIndex page = model()->index(document_->CurrentPage(), 0);
  if (currentIndex() != page) {
    following_ = true;
    setCurrentIndex(page);
    following_ = false;
  }
}

void CPageList::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QListView::currentChanged(current, previous);
  if (current.isValid() && !following_) {
    document_->SetCurrentPage(current.row());
  }
}

bool CPageList::MovePageBy(QKeyEvent* event) {
  const bool left = event->key() == Qt::Key_Left, right = event->key() == Qt::Key_Right;
  if ((!left && !right) || event->modifiers() != (Qt::ControlModifier | Qt::ShiftModifier)) {
    return false;
  }
  const int page = document_->CurrentPage(), to = page + (right != isRightToLeft() ? 1 : -1);
  if (to >= 0 && to < document_->Draft().pages.size()) {
    document_->MovePage(page, to);
  }
  return true;
}

void CPageList::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Delete) {
    document_->RemovePage(document_->CurrentPage());
  } else if (event->key() == Qt::Key_Insert && event->modifiers() == Qt::NoModifier) {
    document_->AddPage(document_->CurrentPage());
  } else if (event->key() == Qt::Key_D && event->modifiers() == Qt::ControlModifier) {
    document_->DuplicatePage(document_->CurrentPage());
  } else if (!MovePageBy(event)) {
    QListView::keyPressEvent(event);
  }
}

int CPageList::GapAt(int x) const {
  int gap = 0;
  while (gap < model()->rowCount()) {
    const int middle = visualRect(model()->index(gap, 0)).center().x();
    if (isRightToLeft() ? x > middle : x < middle) {
      break;
    }
    ++gap;
  }
  return gap;
}

void CPageList::ShowGap(int gap) {
  if (gap_ != gap) {
    gap_ = gap;
    viewport()->update();
  }
}

void CPageList::dragMoveEvent(QDragMoveEvent* event) {
  QListView::dragMoveEvent(event);  // scrolls at the ends
  if (event->source() == this) {
    ShowGap(GapAt(TarnQt::PlaceOf(*event).x()));
    event->setDropAction(Qt::MoveAction);
    event->accept();
  } else {
    event->ignore();
  }
}

void CPageList::dragLeaveEvent(QDragLeaveEvent* event) {
  ShowGap(-1);
  QListView::dragLeaveEvent(event);
}

// The document moves the page, the rows follow it; the view has nothing to insert or to remove.
void CPageList::dropEvent(QDropEvent* event) {
  stopAutoScroll();
  setState(NoState);
  ShowGap(-1);
  if (event->source() != this || !currentIndex().isValid()) {
    event->ignore();
    return;
  }
  const int from = currentIndex().row(), gap = GapAt(TarnQt::PlaceOf(*event).x());
  event->setDropAction(Qt::CopyAction);
  event->accept();
  if (gap > from + 1) {
    document_->MovePage(from, gap - 1);
  } else if (gap < from) {
    document_->MovePage(from, gap);
  }
}

void CPageList::paintEvent(QPaintEvent* event) {
  QListView::paintEvent(event);
  if (gap_ < 0) {
    return;
  }
  const int last = model()->rowCount() - 1;
  const QRect beside = visualRect(model()->index(qMin(gap_, last), 0));
  const bool at_right = (gap_ > last) != isRightToLeft();
  QPainter painter(viewport());
  painter.fillRect(QRect(at_right ? beside.right() : beside.left() - 1, beside.top() + 2, 3, beside.height() - 4),
                   tarn_ui_data_controller::CSkinLoader::Instance().GetColor(QStringLiteral("focus")));
}

// A plain wheel scrolls along the strip.
void CPageList::wheelEvent(QWheelEvent* event) {
  const QPoint turn = event->angleDelta();
  if (turn.x() == 0 && turn.y() != 0) {
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - turn.y() / 2);
    event->accept();
  } else {
    QListView::wheelEvent(event);
  }
}

}  // namespace TarnPlanView
