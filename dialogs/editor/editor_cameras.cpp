#include "editor_cameras.h"

#include <QApplication>
#include <QKeyEvent>
#include <QVBoxLayout>
#include <utility>

#include "MarUIControl/string_conversion.h"
#include "ResourceTreeKit/camera_tree.h"
#include "WidgetKit/new_search_line.h"
#include "view_config_manager.h"

namespace TarnPlanView {

using ResourceTreeKit::CCameraItemInfo;
using ResourceTreeKit::CCameraTree;

namespace {

constexpr int kFilterDelay = 150;  // ms after the last key
constexpr int kLookAgain = 30000;  // ms

DraftCamera FromSite(const CCameraItemInfo& camera) {
  return {MarUIControl::StringToQString(camera.index_code), MarUIControl::StringToQString(camera.name)};
}

}  // namespace

CEditorCameras::CEditorCameras(QWidget* parent)
    : QWidget(parent), search_(new WidgetKit::CNewSearchLine(this)), tree_(new CCameraTree(this)) {
  search_->setObjectName(QStringLiteral("camera_search"));
  search_->setPlaceholderText(tr("Search cameras"));
  search_->setAccessibleName(tr("Search cameras"));
  search_->setToolTip(tr("Search cameras and regions (Ctrl+F). Return takes the only hit."));
  search_->setFixedHeight(32);
  search_->installEventFilter(this);
  tree_->setObjectName(QStringLiteral("camera_tree"));
  tree_->setAccessibleName(tr("Cameras"));
  tree_->setToolTip(tr("Double click or Return puts a camera into the current window, Ctrl+Return a whole region"));
  tree_->setIndentation(12);
  tree_->SetFavoritesVisible(CViewConfigManager::Instance().SupportAddCameraFromFavorite());
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(6);
  column->addWidget(search_);
  column->addWidget(tree_, 1);
  watch_.setInterval(kLookAgain);
  connect(&watch_, &QTimer::timeout, this, &CEditorCameras::LookAgain);
  filter_delay_.setSingleShot(true);
  filter_delay_.setInterval(kFilterDelay);
  connect(search_, &QLineEdit::textChanged, &filter_delay_, QOverload<>::of(&QTimer::start));
  connect(&filter_delay_, &QTimer::timeout, this, &CEditorCameras::Filter);
  connect(search_, &QLineEdit::textChanged, this, [this] { takes_hits_ = false; });
  connect(search_, &QLineEdit::returnPressed, this, &CEditorCameras::OnReturn);
  connect(tree_, &CCameraTree::SignalFiltered, this, &CEditorCameras::OnFiltered);
  connect(tree_, &CCameraTree::SignalCameraActivated, this, &CEditorCameras::OnCamera);
  connect(tree_, &CCameraTree::SignalRegionActivated, this, &CEditorCameras::OnRegion);
  connect(tree_, &CCameraTree::SignalLoaded, this, &CEditorCameras::SignalCamerasChanged);
}

void CEditorCameras::SetLogicNodeParam(const ResourceTreeKit::LogicNodeParam& param) {
  // A tree of a part of the site cannot say which cameras the site has.
  whole_site_ = param.root_region_index_code.empty() && param.show_offline;
  tree_->SetLogicNodeParam(param);
}

void CEditorCameras::Reload() {
  doubted_.clear();
  if (tree_->IsLoaded()) {  // else the tree itself does, once it is shown
    tree_->Reload();
  }
}

void CEditorCameras::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  watch_.start();
}

void CEditorCameras::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  watch_.stop();
}

// Not under the user's hand: a drag or a menu belongs to the rows as they are.
void CEditorCameras::LookAgain() {
  if (QApplication::mouseButtons() == Qt::NoButton && !QApplication::activePopupWidget()) {
    tree_->Renew();
  }
}

void CEditorCameras::Doubt(const QString& index_code) {
  if (!doubted_.contains(index_code) && tree_->IsLoaded()) {
    doubted_.insert(index_code);
    tree_->Reload();
  }
}

std::optional<CWindowText::SiteCamera> CEditorCameras::Find(const std::string& index_code) const {
  if (!tree_->IsLoaded()) {
    return std::nullopt;
  }
  const CCameraItemInfo camera = tree_->FindCamera(index_code);
  if (camera.index_code.empty()) {
    if (!whole_site_) {
      return std::nullopt;
    }
    return CWindowText::SiteCamera();
  }
  return CWindowText::SiteCamera{MarUIControl::StringToQString(camera.name), camera.online};
}

void CEditorCameras::FocusSearch() {
  search_->setFocus(Qt::ShortcutFocusReason);
  search_->selectAll();
}

void CEditorCameras::ClearSearch() {
  search_->clear();
  Filter();
}

void CEditorCameras::Filter() {
  filter_delay_.stop();
  tree_->SetFilterText(search_->text().trimmed());
}

// Of what was typed last, also where it is not filtered yet.
void CEditorCameras::OnReturn() {
  Filter();
  takes_hits_ = tree_->IsLoaded() && !tree_->FilterText().isEmpty();
  if (!tree_->IsFiltering()) {
    TakeHits();
  }
}

void CEditorCameras::OnFiltered(int cameras) {
  hits_ = cameras;
  TakeHits();
}

// The only hit is what was looked for; among several the user still has to choose.
void CEditorCameras::TakeHits() {
  if (!std::exchange(takes_hits_, false) || hits_ == 0) {
    return;
  }
  const QModelIndex row = FirstCamera();
  if (hits_ == 1 && row.isValid()) {
    search_->selectAll();
    OnCamera(tree_->CameraAt(row));
  } else {
    tree_->setCurrentIndex(row.isValid() ? row : tree_->model()->index(0, 0));
    tree_->setFocus(Qt::TabFocusReason);
  }
}

// In the rows that are open.
QModelIndex CEditorCameras::FirstCamera() const {
  QModelIndex row = tree_->model()->index(0, 0);
  while (row.isValid() && tree_->CameraAt(row).index_code.empty()) {
    row = tree_->indexBelow(row);
  }
  return row;
}

void CEditorCameras::OnCamera(const CCameraItemInfo& camera) {
  Q_EMIT SignalCameraChosen(FromSite(camera));
}

void CEditorCameras::OnRegion(const QVector<CCameraItemInfo>& cameras) {
  QVector<DraftCamera> chosen;
  for (const CCameraItemInfo& camera : cameras) {
    chosen.append(FromSite(camera));
  }
  Q_EMIT SignalCamerasChosen(chosen);
}

bool CEditorCameras::eventFilter(QObject* watched, QEvent* event) {
  if (watched == search_ && event->type() == QEvent::KeyPress &&
      static_cast<QKeyEvent*>(event)->key() == Qt::Key_Down) {
    tree_->setFocus(Qt::TabFocusReason);
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace TarnPlanView
