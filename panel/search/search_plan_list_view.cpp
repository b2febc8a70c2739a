#include "search_plan_list_view.h"

#include <QKeyEvent>

#include "plan_item_role.h"
#include "search_plan_item_delegate.h"

namespace TarnPlanView {

CSearchPlanListView::CSearchPlanListView(QWidget* parent) : QListView(parent) {
  setItemDelegate(new CSearchPlanItemDelegate(this));
  setUniformItemSizes(true);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  setMouseTracking(true);
  setFrameShape(QFrame::NoFrame);
  connect(this, &QAbstractItemView::doubleClicked, this, &CSearchPlanListView::RequestPlay);
}

// Keys of the list come before shortcuts of the window around it.
bool CSearchPlanListView::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
    event->accept();
    return true;
  }
  return QListView::event(event);
}

void CSearchPlanListView::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      RequestPlay(currentIndex());
      event->accept();
      return;
    case Qt::Key_Escape:
      event->accept();
      Q_EMIT SignalLeave();
      return;
    default:
      QListView::keyPressEvent(event);
  }
}

void CSearchPlanListView::RequestPlay(const QModelIndex& index) {
  const QString code = index.data(PlanIndexCodeRole).toString();
  if (!code.isEmpty()) {
    Q_EMIT SignalDoubleClicked(code);
  }
}

}  // namespace TarnPlanView
