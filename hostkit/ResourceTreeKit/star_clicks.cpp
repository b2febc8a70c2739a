#include "ResourceTreeKit/star_clicks.h"

#include <QMouseEvent>
#include <utility>

#include "ResourceTreeKit/camera_row_delegate.h"

namespace ResourceTreeKit {

namespace {

constexpr int kMargin = 3;  // around a star, to hit it more easily

}  // namespace

CStarClicks::CStarClicks(QTreeView* view) : view_(view) {
  view->viewport()->installEventFilter(this);
}

bool CStarClicks::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      return Press(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseButtonRelease:
      return Release(*static_cast<QMouseEvent*>(event));
    default:
      return QObject::eventFilter(watched, event);
  }
}

bool CStarClicks::Press(const QMouseEvent& event) {
  pressed_ = StarUnder(event);
  return pressed_.isValid();
}

bool CStarClicks::Release(const QMouseEvent& event) {
  const QPersistentModelIndex pressed = std::exchange(pressed_, QPersistentModelIndex());
  if (!pressed.isValid()) {
    return false;
  }
  if (StarUnder(event) == pressed) {
    Q_EMIT Clicked(pressed);
  }
  return true;
}

QModelIndex CStarClicks::StarUnder(const QMouseEvent& event) const {
  const QModelIndex row = view_->indexAt(event.pos());
  const QRect star = CCameraRowDelegate::StarRect(view_->visualRect(row), row, view_->layoutDirection());
  const bool hit = !star.isEmpty() && star.adjusted(-kMargin, -kMargin, kMargin, kMargin).contains(event.pos());
  if (!hit || event.button() != Qt::LeftButton) {
    return {};
  }
  return row;
}

}  // namespace ResourceTreeKit
