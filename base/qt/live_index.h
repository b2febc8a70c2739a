#pragma once

#include <QAbstractItemModel>
#include <QPersistentModelIndex>

namespace TarnQt {

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)

/// The index of a row for a signal: who hears of it after another has removed the row gets an invalid one. Since Qt 6 a
/// QPersistentModelIndex gives away only what it is at the moment. Thread: GUI.
class CLiveIndex {
 public:
  CLiveIndex(const QPersistentModelIndex& index) : persistent_(index), now_(index) {
    if (const QAbstractItemModel* model = index.model()) {
      Follow(model, &QAbstractItemModel::rowsInserted);
      Follow(model, &QAbstractItemModel::rowsRemoved);
      Follow(model, &QAbstractItemModel::rowsMoved);
      Follow(model, &QAbstractItemModel::layoutChanged);
      Follow(model, &QAbstractItemModel::modelReset);
      Follow(model, &QObject::destroyed);
    }
  }
  CLiveIndex(const CLiveIndex&) = delete;
  CLiveIndex& operator=(const CLiveIndex&) = delete;

  operator const QModelIndex&() const { return now_; }

 private:
  template <class Signal>
  void Follow(const QAbstractItemModel* model, Signal changed) {
    QObject::connect(model, changed, &context_, [this] { now_ = persistent_; });
  }

  QPersistentModelIndex persistent_;
  QModelIndex now_;
  QObject context_;
};

#else

using CLiveIndex = QPersistentModelIndex;

#endif

}  // namespace TarnQt
