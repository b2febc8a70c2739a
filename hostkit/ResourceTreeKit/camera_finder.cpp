#include "ResourceTreeKit/camera_finder.h"

#include <QApplication>
#include <QKeyEvent>
#include <QVBoxLayout>
#include <utility>

#include "ResourceTreeKit/camera_tree.h"
#include "WidgetKit/new_search_line.h"

namespace ResourceTreeKit {

namespace {

constexpr int kFilterDelay = 150;  // ms after the last key
constexpr int kLookAgain = 30000;  // ms

}  // namespace

CCameraFinder::CCameraFinder(QWidget* parent)
    : QWidget(parent), search_(new WidgetKit::CNewSearchLine(this)), tree_(new CCameraTree(this)) {
  search_->setFixedHeight(32);
  search_->installEventFilter(this);
  tree_->setIndentation(12);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(6);
  column->addWidget(search_);
  column->addWidget(tree_, 1);
  watch_.setInterval(kLookAgain);
  connect(&watch_, &QTimer::timeout, this, &CCameraFinder::LookAgain);
  filter_delay_.setSingleShot(true);
  filter_delay_.setInterval(kFilterDelay);
  connect(search_, &QLineEdit::textChanged, &filter_delay_, QOverload<>::of(&QTimer::start));
  connect(&filter_delay_, &QTimer::timeout, this, &CCameraFinder::Filter);
  connect(search_, &QLineEdit::textChanged, this, [this] { awaited_ = Awaited::Nothing; });
  connect(search_, &QLineEdit::returnPressed, this, &CCameraFinder::OnReturn);
  connect(tree_, &CCameraTree::SignalFiltered, this, &CCameraFinder::OnFiltered);
  connect(tree_, &CCameraTree::SignalCameraActivated, this, &CCameraFinder::SignalCameraChosen);
  connect(tree_, &CCameraTree::SignalRegionActivated, this, &CCameraFinder::SignalCamerasChosen);
}

void CCameraFinder::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  watch_.start();
}

void CCameraFinder::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  watch_.stop();
}

// Not under the user's hand: a drag or a menu belongs to the rows as they are.
void CCameraFinder::LookAgain() {
  if (QApplication::mouseButtons() == Qt::NoButton && !QApplication::activePopupWidget()) {
    tree_->Renew();
  }
}

void CCameraFinder::FocusSearch() {
  search_->setFocus(Qt::ShortcutFocusReason);
  search_->selectAll();
}

void CCameraFinder::ClearSearch() {
  search_->clear();
  Filter();
}

void CCameraFinder::Filter() {
  filter_delay_.stop();
  tree_->SetFilterText(search_->text().trimmed());
}

// Of what was typed last, also where it is not filtered yet.
void CCameraFinder::OnReturn() {
  Filter();
  if (tree_->IsLoaded() && !tree_->FilterText().isEmpty()) {
    Await(Awaited::OnlyHit);
  }
}

void CCameraFinder::Await(Awaited awaited) {
  awaited_ = awaited;
  if (!tree_->IsFiltering()) {
    TakeHits();
  }
}

void CCameraFinder::OnFiltered(int cameras) {
  hits_ = cameras;
  TakeHits();
}

// The only hit is what was looked for; among several the user still has to choose.
void CCameraFinder::TakeHits() {
  const Awaited awaited = std::exchange(awaited_, Awaited::Nothing);
  const bool has_none = awaited == Awaited::OnlyHit && hits_ == 0;
  if (awaited == Awaited::Nothing || has_none) {
    return;
  }
  const QModelIndex row = FirstCamera();
  if (awaited == Awaited::OnlyHit && hits_ == 1 && row.isValid()) {
    search_->selectAll();
    Q_EMIT SignalCameraChosen(tree_->CameraAt(row));
  } else {
    GoTo(row);
  }
}

void CCameraFinder::GoTo(const QModelIndex& camera) {
  QModelIndex row = camera;
  if (!row.isValid()) {
    row = tree_->model()->index(0, 0);
  }
  tree_->setCurrentIndex(row);
  tree_->setFocus(Qt::TabFocusReason);
}

// In the rows that are open.
QModelIndex CCameraFinder::FirstCamera() const {
  QModelIndex row = tree_->model()->index(0, 0);
  while (row.isValid() && tree_->CameraAt(row).index_code.empty()) {
    row = tree_->indexBelow(row);
  }
  return row;
}

bool CCameraFinder::eventFilter(QObject* watched, QEvent* event) {
  if (watched == search_ && event->type() == QEvent::KeyPress &&
      static_cast<QKeyEvent*>(event)->key() == Qt::Key_Down) {
    Filter();
    Await(Awaited::Rows);
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace ResourceTreeKit
