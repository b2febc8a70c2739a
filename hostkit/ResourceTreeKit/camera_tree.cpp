#include "ResourceTreeKit/camera_tree.h"

#include <QContextMenuEvent>
#include <QKeyEvent>

#include "MarUIControl/return_key.h"
#include "ResourceTreeKit/camera_drag.h"
#include "ResourceTreeKit/camera_model.h"
#include "ResourceTreeKit/camera_presenter.h"
#include "ResourceTreeKit/camera_row_delegate.h"
#include "ResourceTreeKit/camera_selection.h"
#include "ResourceTreeKit/star_clicks.h"
#include "TarnUIDataController/popup_menu.h"
#include "WidgetKit/drag.h"

namespace ResourceTreeKit {

namespace {

const char kAddCursor[] = ":/Images/TarnUIDataController/FavImg/monitoring_window_add_resource.svg";

CCameraItemInfo CopyOf(const CCameraItemInfo* camera) {
  if (!camera) {
    return {};
  }
  return *camera;
}

}  // namespace

class CCameraTree::Private {
 public:
  explicit Private(CCameraTree* tree) : q(tree), model(new CCameraModel(tree)), presenter(tree, model), stars(tree) {}

  void Activate(const QModelIndex& row);
  void ActivateSelection();
  void FillMenu(QMenu* menu, const QModelIndex& row);
  void AddFavoriteEntry(QMenu* menu, const QModelIndex& row);
  QVector<CCameraItemInfo> SelectedCameras() const;

  CCameraTree* const q;
  CCameraModel* const model;
  CCameraPresenter presenter;
  CStarClicks stars;
};

void CCameraTree::Private::Activate(const QModelIndex& row) {
  if (const CCameraItemInfo* camera = model->CameraAt(row)) {
    Q_EMIT q->SignalCameraActivated(CCameraItemInfo(*camera));  // a copy: the model may change under it
  }
}

void CCameraTree::Private::ActivateSelection() {
  const QVector<CCameraItemInfo> cameras = SelectedCameras();
  if (!cameras.isEmpty()) {
    Q_EMIT q->SignalRegionActivated(cameras);
  }
}

QVector<CCameraItemInfo> CCameraTree::Private::SelectedCameras() const {
  return CamerasOf(*model, q->selectionModel()->selectedIndexes());
}

void CCameraTree::Private::FillMenu(QMenu* menu, const QModelIndex& row) {
  const QPersistentModelIndex kept = row;
  const int count = SelectedCameras().size();
  if (count == 1 && model->CameraAt(row)) {
    menu->addAction(CCameraTree::tr("Put into the window"), q, [this, kept] { Activate(kept); });
  } else if (count > 0) {
    menu->addAction(CCameraTree::tr("Put all into windows (%1)").arg(count), q, [this] { ActivateSelection(); });
  }
  if (model->CameraAt(row) && model->AreFavoritesVisible()) {
    AddFavoriteEntry(menu, row);
  }
  menu->addAction(CCameraTree::tr("Load again"), q, &CCameraTree::Reload);
}

void CCameraTree::Private::AddFavoriteEntry(QMenu* menu, const QModelIndex& row) {
  const bool favorite = model->IsFavorite(QString::fromStdString(model->CameraAt(row)->index_code));
  menu->addAction(favorite ? CCameraTree::tr("Remove from favorites") : CCameraTree::tr("Add to favorites"), q,
                  [this, kept = QPersistentModelIndex(row)] { presenter.ToggleFavorite(kept); });
}

CCameraTree::CCameraTree(QWidget* parent) : CTreeView(parent), d_(new Private(this)) {
  qRegisterMetaType<ResourceTreeKit::CCameraItemInfo>();
  setModel(d_->model);
  setItemDelegate(new CCameraRowDelegate(this));
  setHeaderHidden(true);
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  setDragEnabled(true);
  setDragDropMode(QAbstractItemView::DragOnly);
  viewport()->setAttribute(Qt::WA_Hover);
  setAccessibleName(tr("Cameras"));
  connect(this, &QAbstractItemView::doubleClicked, this, [this](const QModelIndex& row) { d_->Activate(row); });
  connect(&d_->stars, &CStarClicks::Clicked, &d_->presenter, &CCameraPresenter::ToggleFavorite);
  connect(&d_->presenter, &CCameraPresenter::Loaded, this, &CCameraTree::SignalLoaded);
  connect(&d_->presenter, &CCameraPresenter::Filtered, this, &CCameraTree::SignalFiltered);
}

CCameraTree::~CCameraTree() = default;

void CCameraTree::SetLogicNodeParam(const LogicNodeParam& param) {
  d_->presenter.SetParam(param);
  if (d_->presenter.IsLoaded() || d_->presenter.IsLoading() || isVisible()) {
    Reload();
  }
}

void CCameraTree::SetFavoritesVisible(bool visible) {
  d_->presenter.ShowFavorites(visible);
}

void CCameraTree::Reload() {
  d_->presenter.Load();
}

void CCameraTree::Renew() {
  d_->presenter.Renew();
}

bool CCameraTree::IsLoaded() const {
  return d_->presenter.IsLoaded();
}

void CCameraTree::SetFilterText(const QString& text) {
  d_->presenter.SetText(text);
}

QString CCameraTree::FilterText() const {
  return d_->presenter.Text();
}

bool CCameraTree::IsFiltering() const {
  return d_->presenter.IsFiltering();
}

int CCameraTree::CameraCount() const {
  return d_->model->Content().CameraCount();
}

CCameraItemInfo CCameraTree::CameraAt(const QModelIndex& index) const {
  return CopyOf(d_->model->CameraAt(index));
}

QVector<CCameraItemInfo> CCameraTree::CamerasBelow(const QModelIndex& index) const {
  if (!index.isValid()) {
    return {};
  }
  return ResourceTreeKit::CamerasBelow(*d_->model, index);
}

CCameraItemInfo CCameraTree::FindCamera(const std::string& index_code) const {
  return CopyOf(d_->model->Content().FindCamera(QString::fromStdString(index_code)));
}

void CCameraTree::showEvent(QShowEvent* event) {
  CTreeView::showEvent(event);
  if (!d_->presenter.IsLoaded() && !d_->presenter.IsLoading()) {
    d_->presenter.Load();
  }
}

void CCameraTree::keyPressEvent(QKeyEvent* event) {
  const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
  const bool camera = d_->model->CameraAt(currentIndex()) != nullptr;
  event->accept();
  if (MarUIControl::IsReturn(event->key()) && modifiers == Qt::ControlModifier) {
    d_->ActivateSelection();
  } else if (MarUIControl::IsReturn(event->key()) && modifiers == Qt::NoModifier && camera) {
    d_->Activate(currentIndex());
  } else if (event->key() == Qt::Key_F && modifiers == Qt::NoModifier && camera && d_->model->AreFavoritesVisible()) {
    d_->presenter.ToggleFavorite(currentIndex());
  } else if (event->key() == Qt::Key_F5 && modifiers == Qt::NoModifier) {
    Reload();
  } else {
    CTreeView::keyPressEvent(event);
  }
}

void CCameraTree::startDrag(Qt::DropActions) {
  const QVector<CCameraItemInfo> cameras = d_->SelectedCameras();
  if (cameras.isEmpty()) {
    return;
  }
  auto* drag = new WidgetKit::CDrag(this);
  drag->setMimeData(MakeCameraDragData(cameras));
  drag->setPixmap(MakeCameraDragPicture(cameras, this));
  drag->SetCursorPicture(QString::fromLatin1(kAddCursor), Qt::CopyAction);
  drag->exec(Qt::CopyAction);
}

void CCameraTree::contextMenuEvent(QContextMenuEvent* event) {
  QModelIndex row = indexAt(event->pos());
  QPoint place = event->pos();
  if (event->reason() == QContextMenuEvent::Keyboard) {
    row = currentIndex();
    if (row.isValid()) {
      place = visualRect(row).center();
    }
  }
  auto* menu = new tarn_ui_data_controller::CPopupMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setAccessibleName(row.isValid() ? row.data().toString() : accessibleName());
  d_->FillMenu(menu, row);
  menu->PopupAt(viewport()->mapToGlobal(place));
  event->accept();
}

}  // namespace ResourceTreeKit
