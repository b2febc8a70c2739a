#include "WidgetKit/row_scanner.h"

#include <QElapsedTimer>
#include <QTimerEvent>
#include <algorithm>

#if defined(__GNUC__)
#define TARN_PREFETCH(address) __builtin_prefetch(address)
#else
#define TARN_PREFETCH(address) Q_UNUSED(address)
#endif

namespace WidgetKit {

namespace {

constexpr qint64 kSliceNs = 6 * 1000 * 1000;
constexpr int kRowsBetweenLooks = 64;  // at the clock
constexpr int kHitsBetweenLooks = 8;   // the first hit of a group may sort the whole group
constexpr int kRowsAhead = 8;
constexpr size_t kMostKept = 1000;

// Does one piece of work after the other until all is done or the time of a slice has passed.
template <class Step, class Left>
bool RunSlice(int steps_between_looks, Left left, Step step) {
  QElapsedTimer clock;
  clock.start();
  for (int steps = 1; left(); ++steps) {
    step();
    if (steps % steps_between_looks == 0 && clock.nsecsElapsed() >= kSliceNs) {
      return !left();
    }
  }
  return true;
}

}  // namespace

RowScanner::RowScanner(QObject* parent) : QObject(parent) {}

RowScanner::~RowScanner() = default;

bool RowScanner::Contains(const QStringMatcher& matcher, const QModelIndex& index) {
  return matcher.indexIn(index.data(Qt::DisplayRole).toString()) >= 0 && index.flags() & Qt::ItemIsEnabled;
}

void RowScanner::Start(QAbstractItemModel* model, const QModelIndex& root, const QString& text) {
  Stop();
  matcher_ = QStringMatcher(text, Qt::CaseInsensitive);
  Descend(model);
  source_root_ = ToSource(root);
  items_ = qobject_cast<QStandardItemModel*>(source_);
  levels_.push_back({source_root_, 0, source_->rowCount(source_root_), ItemOf(source_root_)});
  Watch();
  stage_ = Reading;
  timer_.start(0, this);
}

const QStandardItem* RowScanner::ItemOf(const QModelIndex& source_index) const {
  if (!items_) {
    return nullptr;
  }
  if (!source_index.isValid()) {
    return items_->invisibleRootItem();
  }
  return items_->itemFromIndex(source_index);
}

void RowScanner::Stop() {
  timer_.stop();
  stage_ = Idle;
  if (source_) {
    disconnect(source_, nullptr, this, nullptr);
  }
  for (const auto& proxy : proxies_) {
    if (proxy) {
      disconnect(proxy, nullptr, this, nullptr);
    }
  }
  source_.clear();
  proxies_.clear();
  levels_.clear();
  found_.clear();
  paths_.clear();
  kept_.clear();
  mapped_ = 0;
  count_ = 0;
}

// Other proxies may change texts or the shape of the tree; they are read as they are.
void RowScanner::Descend(QAbstractItemModel* model) {
  source_ = model;
  for (auto* proxy = qobject_cast<QSortFilterProxyModel*>(model); proxy && proxy->sourceModel();
       proxy = qobject_cast<QSortFilterProxyModel*>(proxy->sourceModel())) {
    proxies_.insert(proxies_.begin(), proxy);
    source_ = proxy->sourceModel();
  }
}

// A proxy emits nothing for rows that it filters out.
void RowScanner::Watch() {
  connect(source_, &QAbstractItemModel::rowsInserted, this, &RowScanner::Interrupt);
  connect(source_, &QAbstractItemModel::rowsRemoved, this, &RowScanner::Interrupt);
  connect(source_, &QAbstractItemModel::rowsMoved, this, &RowScanner::Interrupt);
  connect(source_, &QAbstractItemModel::layoutChanged, this, &RowScanner::Interrupt);
  connect(source_, &QAbstractItemModel::modelReset, this, &RowScanner::Interrupt);
  connect(source_, &QObject::destroyed, this, &RowScanner::Interrupt);
  for (const auto& proxy : proxies_) {
    connect(proxy, &QAbstractProxyModel::sourceModelChanged, this, &RowScanner::Interrupt);
    connect(proxy, &QObject::destroyed, this, &RowScanner::Interrupt);
  }
}

void RowScanner::Interrupt() {
  Stop();
  Q_EMIT Interrupted();
}

// One stage a turn of the event loop: after the last one the view moves to a hit, which takes long enough.
void RowScanner::timerEvent(QTimerEvent* event) {
  if (event->timerId() != timer_.timerId()) {
    return;
  }
  if (stage_ == Done) {
    Finish();
  } else if (stage_ == Reading && ReadSome()) {
    stage_ = Mapping;
  } else if (stage_ == Mapping && MapSome()) {
    stage_ = Done;
  }
}

bool RowScanner::ReadSome() {
  return RunSlice(
      kRowsBetweenLooks, [this] { return !levels_.empty(); }, [this] { ReadRow(); });
}

void RowScanner::ReadRow() {
  Level& level = levels_.back();
  if (level.row >= level.rows) {
    levels_.pop_back();
    return;
  }
  FetchAhead(level);
  const QModelIndex index = source_->index(level.row++, 0, level.parent);
  if (Contains(matcher_, index)) {
    found_.push_back(index);
  }
  const int rows = source_->rowCount(index);
  if (rows > 0) {
    levels_.push_back({index, 0, rows, ItemOf(index)});
  }
}

// The rows of a large tree are scattered over the memory, and waiting for it takes most of the time: so some rows are
// fetched before their turn.
void RowScanner::FetchAhead(const Level& level) {
  if (!level.item) {
    return;
  }
  const int first = level.row == 0 ? 1 : level.row + kRowsAhead;
  const int last = qMin(level.row + kRowsAhead, level.rows - 1);
  for (int row = first; row <= last; ++row) {
    TARN_PREFETCH(level.item->child(row));
  }
}

bool RowScanner::MapSome() {
  return RunSlice(
      kHitsBetweenLooks, [this] { return mapped_ < found_.size(); }, [this] { MapHit(found_[mapped_++]); });
}

void RowScanner::MapHit(const QModelIndex& source_index) {
  std::optional<Path> path = PathOf(source_index.parent());
  if (!path) {
    return;
  }
  const QModelIndex index = ToModel(source_index);
  if (index.isValid()) {
    ++count_;
    path->append(index.row());
    Keep({*path, index});
  }
}

void RowScanner::Keep(Hit hit) {
  if (kept_.size() == kMostKept) {
    if (!(hit < kept_.front())) {
      return;
    }
    std::pop_heap(kept_.begin(), kept_.end());
    kept_.pop_back();
  }
  kept_.push_back(std::move(hit));
  std::push_heap(kept_.begin(), kept_.end());
}

// The path in the model on top; none when a proxy hides the row or one above it. A proxy asked for a row below a hidden
// one would answer as if that row stood at the top.
std::optional<RowScanner::Path> RowScanner::PathOf(const QModelIndex& source_index) {
  if (source_index == source_root_) {
    return Path();
  }
  const auto known = paths_.constFind(source_index);
  if (known != paths_.constEnd()) {
    return *known;
  }
  std::optional<Path> path = PathOf(source_index.parent());
  if (path) {
    const QModelIndex index = ToModel(source_index);
    if (index.isValid()) {
      path->append(index.row());
    } else {
      path.reset();
    }
  }
  paths_.insert(source_index, path);
  return path;
}

void RowScanner::Finish() {
  std::sort_heap(kept_.begin(), kept_.end());
  QVector<QModelIndex> hits;
  hits.reserve(static_cast<int>(kept_.size()));
  for (const Hit& hit : kept_) {
    hits.append(hit.index);
  }
  const int count = count_;
  Stop();
  Q_EMIT Finished(hits, count);
}

QModelIndex RowScanner::ToModel(QModelIndex index) const {
  for (auto proxy = proxies_.begin(); index.isValid() && proxy != proxies_.end(); ++proxy) {
    index = (*proxy)->mapFromSource(index);
  }
  return index;
}

QModelIndex RowScanner::ToSource(QModelIndex index) const {
  for (auto proxy = proxies_.rbegin(); proxy != proxies_.rend(); ++proxy) {
    index = (*proxy)->mapToSource(index);
  }
  return index;
}

}  // namespace WidgetKit
