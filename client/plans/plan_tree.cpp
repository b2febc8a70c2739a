#include "plans/plan_tree.h"

#include <TarnPlanView/plan_item_role.h>

#include <QHelpEvent>
#include <QKeyEvent>
#include <QToolTip>

namespace TarnClient {

namespace {

constexpr int kIconSize = 20;

// Empty for a row that is no plan.
QString PlanCode(const QModelIndex& index) {
  const QVariant is_group = index.data(TarnPlanView::IsGroupRole);
  return is_group.isValid() && !is_group.toBool() ? index.data(TarnPlanView::PlanIndexCodeRole).toString() : QString();
}

}  // namespace

CPlanTree::CPlanTree(QWidget* parent) : CTreeView(parent) {
  setObjectName(QStringLiteral("plan_view_tree"));
  setHeaderHidden(true);
  setUniformRowHeights(true);
  setIconSize(QSize(kIconSize, kIconSize));
  setTextElideMode(Qt::ElideRight);
  ensurePolished();  // rows laid out before the first show take their height from the skin, too
  connect(this, &QAbstractItemView::doubleClicked, this, &CPlanTree::RequestPlay);
}

void CPlanTree::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && !PlanCode(currentIndex()).isEmpty()) {
    RequestPlay(currentIndex());
    event->accept();
    return;
  }
  CTreeView::keyPressEvent(event);
}

bool CPlanTree::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) {
    return CTreeView::viewportEvent(event);
  }
  const auto* help = static_cast<QHelpEvent*>(event);
  const QModelIndex index = indexAt(help->pos());
  if (index.isValid() && sizeHintForIndex(index).width() > visualRect(index).width()) {
    QToolTip::showText(help->globalPos(), index.data().toString().toHtmlEscaped(), viewport(), visualRect(index));
  } else {
    QToolTip::hideText();
  }
  return true;
}

void CPlanTree::RequestPlay(const QModelIndex& index) {
  const QString code = PlanCode(index);
  if (!code.isEmpty()) {
    Q_EMIT SignalPlayRequested(code);
  }
}

}  // namespace TarnClient
