#include "plan_view_tree.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QScrollBar>
#include <QSortFilterProxyModel>
#include <QTimerEvent>

#include "TarnUIDataController/skin_loader.h"
#include "item_type.h"
#include "plan_item_role.h"
#include "plan_rows.h"
#include "plan_view_tree_p.h"
#include "standard_plan_model.h"
#include "view_config_manager.h"
#include "view_public_def.h"

namespace TarnPlanView {

namespace {

constexpr int kIconSize = 18;

}  // namespace

CPlanViewTree::CPlanViewTree(QWidget* parent) : CTreeView(parent), d_(new Private(this)) {
  setObjectName(CViewConfigManager::Instance().IsDarkSkin() ? QStringLiteral("plan_view_tree")
                                                            : QStringLiteral("plan_view_tree_white"));
  setAccessibleName(tr("Plan tree"));
  setHeaderHidden(true);
  setUniformRowHeights(true);
  setIconSize(QSize(kIconSize, kIconSize));
  setTextElideMode(Qt::ElideRight);
  setSelectionMode(SingleSelection);
  const bool drag = CViewConfigManager::Instance().IsEnableDrag();
  setAcceptDrops(drag);
  setDragEnabled(drag);
  setDropIndicatorShown(false);
  viewport()->setMouseTracking(true);
  viewport()->setAttribute(Qt::WA_Hover);
  initMenu();
  InitLine();
  InitRect();
  d_->SetUp();
  ensurePolished();  // rows laid out before the first show take their height from the skin, too
}

CPlanViewTree::~CPlanViewTree() = default;

void CPlanViewTree::Private::SetUp() {
  memory = new CExpansionMemory(q);
  const auto hide_indicator = [this] { HideIndicator(); };  // the rows below it have moved
  connect(q->verticalScrollBar(), &QScrollBar::valueChanged, q, hide_indicator);
  connect(q, &QTreeView::expanded, q, hide_indicator);
  connect(q, &QTreeView::collapsed, q, hide_indicator);
  connect(q, &QAbstractItemView::doubleClicked, q, [this](const QModelIndex& index) {
    if (IsPlanRow(index)) {
      Q_EMIT q->SignalPlayRequested(index);
    }
  });
  connect(&tarn_ui_data_controller::CSkinLoader::Instance(), &tarn_ui_data_controller::CSkinLoader::SignalSkinChanged,
          q, [this] { FollowSkin(); });
}

void CPlanViewTree::Private::FollowSkin() {
  if (delegate) {
    delegate->Renew();
  }
  q->viewport()->update();
}

void CPlanViewTree::InitLine() {
  d_->indicator.MakeLine(viewport());
}

void CPlanViewTree::InitRect() {
  d_->indicator.MakeFrame(viewport());
}

void CPlanViewTree::SetFilterSortModel(QSortFilterProxyModel* model) {
  disconnect(d_->on_removed);
  disconnect(d_->on_reset);
  d_->LeaveRows();
  setModel(model);
  d_->memory->Watch(model);
  if (!model) {
    return;
  }
  const auto look_again = [this] {
    d_->HideIndicator();
    if (d_->hover_part != MarUIControl::CItemDataRole::NoPart && !d_->hover_row.isValid()) {
      d_->LeaveRows();
    }
  };
  d_->on_removed = connect(model, &QAbstractItemModel::rowsRemoved, this, look_again);
  d_->on_reset = connect(model, &QAbstractItemModel::modelReset, this, look_again);
}

void CPlanViewTree::SetShowRightHoverDelgete() {
  if (d_->delegate) {
    return;
  }
  d_->delegate = new CPlanTreeItemDelegate(this);
  setItemDelegate(d_->delegate);
  connect(d_->delegate, &CPlanTreeItemDelegate::SignalMoreButtonClicked, this, &CPlanViewTree::OnRightMoreBtnClicked);
}

void CPlanViewTree::SetCyclingGroup(const QString& code) {
  if (!d_->delegate) {
    return;
  }
  const auto describe = [this](const QString& group, const QVariant& text) {
    const QModelIndex row = RowOf(group, true);
    if (row.isValid() && row.data(Qt::AccessibleDescriptionRole) != text) {
      model()->setData(row, text, Qt::AccessibleDescriptionRole);
    }
  };
  if (d_->delegate->CyclingGroup() != code) {
    describe(d_->delegate->CyclingGroup(), QVariant());
  }
  d_->delegate->SetCyclingGroup(code);
  // Each time: a row that was loaded again says nothing of it.
  describe(code, CPlanTreeItemDelegate::tr("The plans of this group play in turn"));
  viewport()->update();
}

QModelIndex CPlanViewTree::RowOf(const QString& code, bool is_group) const {
  const auto* proxy = qobject_cast<const QSortFilterProxyModel*>(model());
  if (!proxy) {
    return QModelIndex();
  }
  const auto* plans = qobject_cast<const CStandardPlanModel*>(proxy->sourceModel());
  if (!plans) {
    return QModelIndex();
  }
  return proxy->mapFromSource(plans->FindIndexByIndexCode(code, is_group));
}

EItemLevel CPlanViewTree::GetItemLevel(const QModelIndex& index) const {
  switch (index.data(ItemTypeRole).toInt()) {
    case PublicRootItem:
    case PublicGroupItem:
      return PublicGroupLevel;
    case PublicPlanItem:
    case PublicLeafItem:
      return PublicPlanLevel;
    case OwnRootItem:
    case OwnGroupItem:
      return OwnGroupLevel;
    case OwnPlanItem:
    case OwnLeafItem:
      return OwnPlanLevel;
    default:
      return NoLevel;
  }
}

bool CPlanViewTree::IsGroupPropertySame(const QModelIndex& a, const QModelIndex& b) const {
  const int level_a = GetItemLevel(a), level_b = GetItemLevel(b);
  if (level_a > 3 && level_b < 3) {
    return false;
  }
  return level_a >= 3 || level_b < 4;
}

void CPlanViewTree::ExpandWhenLoaded(const QString& group_code) {
  d_->memory->Await(group_code);
}

OpenGroups CPlanViewTree::GetOpenGroups() const {
  return d_->memory->Groups();
}

void CPlanViewTree::SetOpenGroups(const OpenGroups& groups) {
  d_->memory->SetGroups(groups);
}

// Every model tells of the row that one tree asked for, so an index may be of this tree, of its source or foreign.
QModelIndex CPlanViewTree::Private::Own(const QModelIndex& index) const {
  if (!index.isValid() || index.model() == q->model()) {
    return index;
  }
  const auto* proxy = qobject_cast<QSortFilterProxyModel*>(q->model());
  if (!proxy || index.model() != proxy->sourceModel()) {
    return QModelIndex();
  }
  return proxy->mapFromSource(index);
}

void CPlanViewTree::Private::FinishExpand(const QModelIndex& index, bool expand) {
  const QModelIndex own = Own(index);
  if (own.isValid()) {
    q->CTreeView::FinishExpand(own, expand, !q->model()->canFetchMore(own));
  }
}

void CPlanViewTree::OnFinishAnsyFilterExpandedTree(const QModelIndex& index, bool expand) {
  d_->FinishExpand(index, expand);
}

void CPlanViewTree::OnFinishAnsySourceExpandedTree(const QModelIndex& index, bool expand) {
  d_->FinishExpand(index, expand);
}

void CPlanViewTree::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  CTreeView::currentChanged(current, previous);
  Q_EMIT SignalCurrentIndexChanged(current, previous);
}

// --- Mouse ---

void CPlanViewTree::Private::BecomeCurrent(const QModelIndex& index) {
  if (!index.isValid() || !q->selectionModel()) {
    return;
  }
  const bool scrolls = q->hasAutoScroll();
  q->setAutoScroll(false);  // the row must not move away below the mouse
  const auto select =
      q->selectionMode() == SingleSelection ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
  q->selectionModel()->setCurrentIndex(index, select);
  q->setAutoScroll(scrolls);
}

bool CPlanViewTree::Private::IsOnMoreButton(const QPoint& position) const {
  const QModelIndex index = q->indexAt(position);
  return delegate && index.isValid() && delegate->MoreButtonRect(q->visualRect(index)).contains(position);
}

void CPlanViewTree::mousePressEvent(QMouseEvent* event) {
  d_->HideThumbnail();
  const QPersistentModelIndex index = indexAt(event->pos());
  d_->BecomeCurrent(index);
  if (event->button() == Qt::LeftButton || event->button() == Qt::RightButton) {
    d_->NotePress(event);
  }
  CTreeView::mousePressEvent(event);
}

// Only the left button plays, and the "more" button does not.
void CPlanViewTree::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || d_->IsOnMoreButton(event->pos())) {
    mousePressEvent(event);
    return;
  }
  CTreeView::mouseDoubleClickEvent(event);
}

void CPlanViewTree::wheelEvent(QWheelEvent* event) {
  d_->LeaveRows();
  CTreeView::wheelEvent(event);
}

// What takes room of the tree, as an offer below it does, does not cover the row where the user is.
void CPlanViewTree::resizeEvent(QResizeEvent* event) {
  const QRect before(QPoint(), event->oldSize());
  const bool was_in_sight = before.contains(visualRect(currentIndex()));
  CTreeView::resizeEvent(event);
  if (was_in_sight) {
    scrollTo(currentIndex());
  }
}

void CPlanViewTree::Private::TrackMouse(const QPoint& position) {
  const QModelIndex index = q->indexAt(position);
  if (!index.isValid()) {
    LeaveRows();
    return;
  }
  SetHover(index, IsOnMoreButton(position) ? MarUIControl::CItemDataRole::MoreButtonPart
                                           : MarUIControl::CItemDataRole::TextPart);
}

void CPlanViewTree::Private::SetHover(const QModelIndex& index, MarUIControl::CItemDataRole::Part part) {
  if (hover_row == index && hover_part == part) {
    return;
  }
  for (const QModelIndex& row : {QModelIndex(hover_row), index}) {
    const QRect rect = q->visualRect(row);
    q->viewport()->update(0, rect.top(), q->viewport()->width(), rect.height());
  }
  hover_row = index;
  hover_part = part;
  if (delegate) {
    delegate->SetHover(index, part);
  }
  Q_EMIT q->SignalPlanViewMouseMove(index, hover_part);
}

void CPlanViewTree::Private::LeaveRows() {
  if (hover_part != MarUIControl::CItemDataRole::NoPart) {
    SetHover(QModelIndex(), MarUIControl::CItemDataRole::NoPart);
    HideThumbnail();
  }
}

void CPlanViewTree::Private::HideThumbnail() {
  Q_EMIT q->SignalHideThumbnail(QCursor::pos());
}

bool CPlanViewTree::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::MouseMove) {
    const auto* mouse = static_cast<QMouseEvent*>(event);
    if (mouse->buttons() == Qt::NoButton) {
      d_->TrackMouse(mouse->pos());
    }
  } else if (event->type() == QEvent::Leave) {
    d_->LeaveRows();
  }
  return CTreeView::viewportEvent(event);
}

bool CPlanViewTree::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::FocusOut:
    case QEvent::WindowDeactivate:
    case QEvent::Hide:
      d_->HideThumbnail();
      break;
    case QEvent::FontChange:
    case QEvent::StyleChange:
    case QEvent::PaletteChange:
      d_->FollowSkin();
      break;
    case QEvent::ShortcutOverride: {
      // A shortcut of the window must not take the keys from the row that has the focus.
      const auto* press = static_cast<QKeyEvent*>(event);
      const bool command = press->key() == Qt::Key_F2 || press->key() == Qt::Key_Delete;
      if (command && press->modifiers() == Qt::NoModifier && d_->HasCommands()) {
        event->accept();
        return true;
      }
      break;
    }
    default:
      break;
  }
  return CTreeView::event(event);
}

// While the menu is open its row keeps the look of the row under the mouse, so that one sees what the menu is about.
bool CPlanViewTree::eventFilter(QObject* watched, QEvent* event) {
  if (watched == d_->menu && d_->delegate) {
    if (event->type() == QEvent::Show) {
      d_->delegate->SetHover(d_->menu_row, MarUIControl::CItemDataRole::MoreButtonPart);
      viewport()->update();
    } else if (event->type() == QEvent::Hide) {
      d_->delegate->SetHover(d_->hover_row, d_->hover_part.GetPart());
      viewport()->update();
    }
  }
  return CTreeView::eventFilter(watched, event);
}

void CPlanViewTree::timerEvent(QTimerEvent* event) {
  if (event->timerId() == d_->open_timer.timerId()) {
    d_->ExpandUnderDrag();
    return;
  }
  CTreeView::timerEvent(event);
}

}  // namespace TarnPlanView
