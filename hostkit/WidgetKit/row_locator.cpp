#include "WidgetKit/row_locator.h"

#include <QTreeView>

namespace WidgetKit {

namespace {

constexpr char kMarkedText[] = "_located_text_";
constexpr int kTypingMs = 150;
constexpr int kFirstPauseMs = 50;
constexpr int kLastPauseMs = 1000;
constexpr int kMostRowsCompared = 64;

void ExpandTo(QAbstractItemView* view, const QModelIndex& index) {
  auto* tree = qobject_cast<QTreeView*>(view);
  const QModelIndex parent = index.parent();
  if (!tree || !parent.isValid() || parent == tree->rootIndex()) {
    return;
  }
  ExpandTo(view, parent);
  tree->expand(parent);
}

// Those who follow the current row may take away the row or the view.
void MoveTo(const QPointer<QAbstractItemView>& view, const QPersistentModelIndex& index) {
  ExpandTo(view, index);
  if (!view || !index.isValid()) {
    return;
  }
  const bool in_sight = view->viewport()->rect().contains(view->visualRect(index).center());
  view->setCurrentIndex(index);
  if (!in_sight && view && index.isValid()) {
    view->scrollTo(index, QAbstractItemView::PositionAtCenter);  // with some of what stands around it
  }
}

}  // namespace

RowLocator::RowLocator() : pause_ms_(kFirstPauseMs) {
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, &RowLocator::OnTimer);
  connect(&scanner_, &RowScanner::Finished, this, &RowLocator::OnFinished);
  connect(&scanner_, &RowScanner::Interrupted, this, &RowLocator::OnInterrupted);
}

void RowLocator::SetView(QAbstractItemView* view) {
  if (view_ == view) {
    return;
  }
  Clear();
  Watch(nullptr);
  view_ = view;
  SetText(text_);
}

QAbstractItemModel* RowLocator::Model() const {
  if (!view_) {
    return nullptr;
  }
  return view_->model();
}

void RowLocator::SetText(const QString& text) {
  text_ = text;
  if (!view_ || text_.isEmpty()) {
    Clear();
    return;
  }
  scanner_.Stop();
  state_ = kTyped;
  timer_.start(kTypingMs);
}

void RowLocator::Clear() {
  timer_.stop();
  scanner_.Stop();
  hits_.Clear();
  to_first_ = false;
  state_ = kIdle;
  Mark(QString());
  Q_EMIT CountChanged();
}

void RowLocator::OnTimer() {
  if (state_ == kTyped) {
    Locate();
  } else {
    Begin();
  }
}

void RowLocator::Locate() {
  if (!Model() || text_.isEmpty()) {
    Clear();
    return;
  }
  to_first_ = true;
  pause_ms_ = kFirstPauseMs;
  hits_.Clear();
  Begin();
  Q_EMIT CountChanged();
  Q_EMIT Locating();
}

void RowLocator::Begin() {
  timer_.stop();
  if (!Model()) {
    Clear();
    return;
  }
  state_ = kScanning;
  Watch(Model());
  scanner_.Start(watched_, view_->rootIndex(), text_);
}

void RowLocator::Pause(int ms) {
  state_ = kPausing;
  timer_.start(ms);
}

void RowLocator::Watch(QAbstractItemModel* model) {
  if (watched_ == model) {
    return;
  }
  if (watched_) {
    disconnect(watched_, nullptr, this, nullptr);
  }
  watched_ = model;
  if (!model) {
    return;
  }
  connect(model, &QAbstractItemModel::rowsInserted, this, &RowLocator::OnRows);
  connect(model, &QAbstractItemModel::rowsRemoved, this, &RowLocator::OnRows);
  connect(model, &QAbstractItemModel::rowsMoved, this, &RowLocator::OnRows);
  connect(model, &QAbstractItemModel::layoutChanged, this, &RowLocator::OnRows);
  connect(model, &QAbstractItemModel::modelReset, this, &RowLocator::OnRows);
  connect(model, &QAbstractItemModel::dataChanged, this, &RowLocator::OnTexts);
}

void RowLocator::OnRows() {
  if (scanner_.IsRunning()) {
    scanner_.Stop();
    OnInterrupted();
  } else if (state_ == kDone) {
    Pause(kFirstPauseMs);
  }
}

// A tree that is just being filled changes all the time: the pauses grow until one look ends before the next change.
void RowLocator::OnInterrupted() {
  Pause(pause_ms_);
  pause_ms_ = qMin(2 * pause_ms_, kLastPauseMs);
}

void RowLocator::OnTexts(const QModelIndex& first, const QModelIndex& last, const QVector<int>& roles) {
  const bool texts = roles.isEmpty() || roles.contains(Qt::DisplayRole) || roles.contains(Qt::EditRole);
  if (!texts) {
    return;
  }
  if (state_ == kScanning) {
    state_ = kScanningOld;
  } else if (state_ == kDone && AnyHitChanged(first, last)) {
    Pause(kFirstPauseMs);
  }
}

bool RowLocator::AnyHitChanged(const QModelIndex& first, const QModelIndex& last) const {
  if (last.row() - first.row() >= kMostRowsCompared || !hits_.IsComplete()) {
    return true;
  }
  const QStringMatcher matcher(text_, Qt::CaseInsensitive);
  for (int row = first.row(); row <= last.row(); ++row) {
    const QModelIndex index = first.sibling(row, 0);
    if (RowScanner::Contains(matcher, index) != hits_.Contains(index)) {
      return true;
    }
  }
  return false;
}

void RowLocator::OnFinished(const QVector<QModelIndex>& found, int count) {
  if (!view_ || view_->model() != watched_) {
    Begin();
    return;
  }
  const bool old = state_ == kScanningOld;
  state_ = kDone;
  pause_ms_ = kFirstPauseMs;
  hits_.Set(found, count);
  Mark(text_);  // together with the move to a hit: one painting for both
  const QPointer<RowLocator> alive(this);
  if (to_first_) {
    to_first_ = awaits_ && count == 0;
    MoveToHit(1);
  }
  if (!alive) {
    return;
  }
  Q_EMIT CountChanged();
  if (old && state_ == kDone) {
    Pause(kFirstPauseMs);
  }
  Q_EMIT Located(count);
}

void RowLocator::Step(int by) {
  if (!view_) {
    return;
  }
  if (state_ == kTyped || (view_->model() != watched_ && !text_.isEmpty())) {
    Locate();
  } else {
    MoveToHit(by);
  }
}

void RowLocator::MoveToHit(int by) {
  const QModelIndex hit = hits_.Step(by);
  if (hit.isValid()) {
    Q_EMIT CountChanged();
    MoveTo(view_, hit);
  }
}

// What was fetched last may still have to be looked through.
void RowLocator::SetAwaitsRows(bool awaits) {
  if (awaits_ == awaits) {
    return;
  }
  awaits_ = awaits;
  if (state_ == kDone) {
    to_first_ = to_first_ && awaits_;
    Q_EMIT CountChanged();
  }
}

QString RowLocator::MarkedText(const QWidget* view) {
  if (!view) {
    return {};
  }
  return view->property(kMarkedText).toString();
}

void RowLocator::Mark(const QString& text) {
  if (view_ && MarkedText(view_) != text) {
    view_->setProperty(kMarkedText, text);
    view_->viewport()->update();
  }
}

}  // namespace WidgetKit
