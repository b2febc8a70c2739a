#pragma once

#include <QAbstractItemModel>
#include <QBasicTimer>
#include <QHash>
#include <QPointer>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QStringMatcher>
#include <QVector>
#include <optional>
#include <vector>

namespace WidgetKit {

/// Looks for all rows of a model whose text contains another, in slices between which the event loop runs.
///
/// It reads the rows where they are kept, below the sort and filter proxies, because a row costs several times as much
/// there; only the hits are mapped up through the proxies, and what these filter out is dropped. Proxies must not
/// change texts. Thread: GUI.
class RowScanner : public QObject {
  Q_OBJECT
 public:
  explicit RowScanner(QObject* parent = nullptr);
  ~RowScanner() override;

  /// Looks below `root`, an index of `model`. Ends what it was looking for before.
  void Start(QAbstractItemModel* model, const QModelIndex& root, const QString& text);
  void Stop();
  bool IsRunning() const { return stage_ != Idle; }

  static bool Contains(const QStringMatcher& matcher, const QModelIndex& index);

 Q_SIGNALS:
  /// `hits`: the first of them in the order of the model, at most a thousand; `count`: how many there are.
  void Finished(const QVector<QModelIndex>& hits, int count);
  /// Rows have come, gone or moved, so what it has found is useless; it has stopped.
  void Interrupted();

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  using Path = QVector<int>;  // rows from the top down, by which rows are in the order in which the view shows them
  enum Stage { Idle, Reading, Mapping, Done };
  struct Level {
    QModelIndex parent;
    int row;
    int rows;
    const QStandardItem* item;  // of the parent, or null
  };
  struct Hit {
    Path path;
    QModelIndex index;
    bool operator<(const Hit& other) const { return path < other.path; }
  };

  /// The item of a row of the source, or of its root; null where the source keeps no items.
  const QStandardItem* ItemOf(const QModelIndex& source_index) const;
  void Descend(QAbstractItemModel* model);
  void Watch();
  void Interrupt();
  bool ReadSome();
  void ReadRow();
  static void FetchAhead(const Level& level);
  bool MapSome();
  void MapHit(const QModelIndex& source_index);
  void Keep(Hit hit);
  void Finish();
  QModelIndex ToModel(QModelIndex source_index) const;
  QModelIndex ToSource(QModelIndex index) const;
  std::optional<Path> PathOf(const QModelIndex& source_index);

  QBasicTimer timer_;
  Stage stage_ = Idle;
  QStringMatcher matcher_;
  QPointer<QAbstractItemModel> source_;
  std::vector<QPointer<QSortFilterProxyModel>> proxies_;  // from the source up
  const QStandardItemModel* items_ = nullptr;             // the source as such, or null
  QModelIndex source_root_;
  // Plain indexes: any change of the rows ends the scan.
  std::vector<Level> levels_;
  std::vector<QModelIndex> found_;
  size_t mapped_ = 0;
  QHash<QModelIndex, std::optional<Path>> paths_;
  std::vector<Hit> kept_;  // a heap, the last in order at its top
  int count_ = 0;
};

}  // namespace WidgetKit
