#include "search_plan_list_view.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLabel>

#include "plan_item_role.h"
#include "plan_menu.h"
#include "search_plan_item_delegate.h"
#include "view_extern_widget.h"

namespace TarnPlanView {

using tarn_ui_data_controller::CPopupMenu;
using tarn_ui_data_controller::MsgType;

namespace {

constexpr int kSummaryIndent = 10;
constexpr int kSummaryPadding = 6;

bool IsCommand(const QKeyEvent& event) {
  return event.modifiers() == Qt::NoModifier && (event.key() == Qt::Key_F2 || event.key() == Qt::Key_Delete);
}

bool OpensMenu(const QKeyEvent& event) {
  return event.key() == Qt::Key_Menu || (event.key() == Qt::Key_F10 && event.modifiers() == Qt::ShiftModifier);
}

bool AsksForRow(const QKeyEvent& event) {
  const bool is_return = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
  return is_return && (event.modifiers() & ~Qt::KeypadModifier) == Qt::ControlModifier;
}

}  // namespace

CSearchPlanListView::CSearchPlanListView(QWidget* parent)
    : QListView(parent), menu_(MakePlanMenu(this)), show_in_tree_(new QAction(this)), summary_(new QLabel(this)) {
  summary_->setObjectName(QStringLiteral("hit_count"));
  summary_->setIndent(kSummaryIndent);
  summary_->hide();
  setItemDelegate(new CSearchPlanItemDelegate(this));
  setUniformItemSizes(true);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  setMouseTracking(true);
  setFrameShape(QFrame::NoFrame);
  connect(this, &QAbstractItemView::doubleClicked, this, &CSearchPlanListView::RequestPlay);
  connect(menu_, &CPopupMenu::signalPopupMenuClicked, this,
          [this](MsgType type, const QVariant& code) { Q_EMIT SignalMenuClicked(type, code.toString()); });
  show_in_tree_->setText(CViewExternWidget::tr("Show in tree"));
  show_in_tree_->setShortcut(Qt::CTRL | Qt::Key_Return);
  show_in_tree_->setShortcutContext(Qt::WidgetShortcut);  // shown only: the list takes the key itself
  show_in_tree_->setShortcutVisibleInContextMenu(true);
  connect(show_in_tree_, &QAction::triggered, this, &CSearchPlanListView::RequestRow);
  menu_->SetMoreActions({show_in_tree_});
}

void CSearchPlanListView::SetSummary(const QString& text) {
  summary_->setText(text);
  summary_->setVisible(!text.isEmpty());
  setAccessibleDescription(text);
  int height = 0;
  if (!text.isEmpty()) {
    height = summary_->sizeHint().height() + kSummaryPadding;
  }
  setViewportMargins(0, height, 0, 0);
  summary_->setGeometry(0, 0, width(), height);
}

void CSearchPlanListView::resizeEvent(QResizeEvent* event) {
  QListView::resizeEvent(event);
  summary_->resize(width(), summary_->height());
}

void CSearchPlanListView::OfferShowInTree(const QString& why_not) {
  show_in_tree_->setEnabled(why_not.isEmpty());
  show_in_tree_->setToolTip(why_not);
}

QModelIndex CSearchPlanListView::Hit(const QString& plan_code) const {
  return model()->match(model()->index(0, 0), PlanIndexCodeRole, plan_code, 1, Qt::MatchExactly).value(0);
}

void CSearchPlanListView::SetViewMoreActions(QList<QAction*>& actions) {
  menu_->SetMoreActions(QList<QAction*>{show_in_tree_} + actions);
}

// Keys of the list come before shortcuts of the window around it.
bool CSearchPlanListView::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    const auto* press = static_cast<QKeyEvent*>(event);
    if (press->key() == Qt::Key_Escape || IsCommand(*press) || AsksForRow(*press)) {
      event->accept();
      return true;
    }
  }
  return QListView::event(event);
}

void CSearchPlanListView::keyPressEvent(QKeyEvent* event) {
  if (TakeCommand(*event) || TakeKey(*event)) {
    event->accept();
  } else {
    QListView::keyPressEvent(event);
  }
}

bool CSearchPlanListView::TakeCommand(const QKeyEvent& event) {
  if (!IsCommand(event) && !OpensMenu(event) && !AsksForRow(event)) {
    return false;
  }
  if (event.isAutoRepeat()) {
    return true;  // a key held down is one command, not many
  }
  if (OpensMenu(event)) {
    ShowMenuAtCurrent();
  } else if (AsksForRow(event)) {
    RequestRow();
  } else if (event.key() == Qt::Key_F2) {
    RequestCommand(tarn_ui_data_controller::Edit);
  } else {
    RequestCommand(tarn_ui_data_controller::Delete);
  }
  return true;
}

bool CSearchPlanListView::TakeKey(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      RequestPlay(currentIndex());
      return true;
    case Qt::Key_Escape:
      Q_EMIT SignalLeave();
      return true;
    case Qt::Key_Up:
      if (currentIndex().row() > 0 || event.modifiers() != Qt::NoModifier) {
        return false;
      }
      Q_EMIT SignalBack();
      return true;
    default:
      return false;
  }
}

void CSearchPlanListView::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
  if (event->reason() == QContextMenuEvent::Keyboard) {
    ShowMenuAtCurrent();
  } else {
    ShowMenu(indexAt(event->pos()), event->globalPos());
  }
}

void CSearchPlanListView::ShowMenuAtCurrent() {
  if (!currentIndex().isValid() || menu_->isVisible()) {
    return;
  }
  scrollTo(currentIndex());
  const QRect row = visualRect(currentIndex());
  ShowMenu(currentIndex(), viewport()->mapToGlobal(isRightToLeft() ? row.bottomRight() : row.bottomLeft()));
}

void CSearchPlanListView::ShowMenu(const QModelIndex& index, const QPoint& global_position) {
  const QString code = index.data(PlanIndexCodeRole).toString();
  if (code.isEmpty()) {
    return;
  }
  setCurrentIndex(index);
  menu_->SetMenuData(code);
  menu_->setAccessibleName(index.data().toString());
  Q_EMIT SignalMenuAboutToShow(menu_, index);
  menu_->PopupAt(global_position);
}

void CSearchPlanListView::RequestCommand(MsgType type) {
  const QString code = currentIndex().data(PlanIndexCodeRole).toString();
  if (!code.isEmpty()) {
    Q_EMIT SignalMenuClicked(type, code);
  }
}

void CSearchPlanListView::RequestRow() {
  const QString code = currentIndex().data(PlanIndexCodeRole).toString();
  if (!code.isEmpty()) {
    Q_EMIT SignalShowInTree(code);
  }
}

void CSearchPlanListView::RequestPlay(const QModelIndex& index) {
  const QString code = index.data(PlanIndexCodeRole).toString();
  if (!code.isEmpty()) {
    Q_EMIT SignalDoubleClicked(code);
  }
}

}  // namespace TarnPlanView
