#pragma once

#include <QAbstractItemView>
#include <QPointer>
#include <QTimer>

#include "WidgetKit/hit_list.h"
#include "WidgetKit/row_scanner.h"

namespace WidgetKit {

/// Looks for the rows of an item view that hold a text, marks them and moves the view from one to the next. Rows that
/// come, go or change are looked through again. Thread: GUI.
class RowLocator : public QObject {
  Q_OBJECT
 public:
  RowLocator();

  /// Null ends looking.
  void SetView(QAbstractItemView* view);
  QAbstractItemView* View() const { return view_; }
  /// Looks for the text a moment later, when no other one has come.
  void SetText(const QString& text);
  /// At once; the first hit becomes current.
  void Locate();
  /// So many hits further, around the ends; a text that was only just typed is looked for instead.
  void Step(int by);
  /// See CNewLocationViewWidget.
  void SetAwaitsRows(bool awaits);

  /// Whether nothing is looked for.
  bool IsIdle() const { return state_ == kIdle; }
  /// Whether the hits are still to become others.
  bool IsLocating() const { return state_ != kIdle && state_ != kDone; }
  /// Whether a first hit may still come.
  bool IsSearching() const { return to_first_ || (awaits_ && hits_.Count() == 0); }
  const HitList& Hits() const { return hits_; }

  /// The text that `view` marks in its rows; empty for none.
  static QString MarkedText(const QWidget* view);

 Q_SIGNALS:
  /// The number of hits or the one stepped to has changed.
  void CountChanged();
  void Locating();
  void Located(int hits);

 private:
  enum State {
    kIdle,
    kTyped,        // the text is new, and the timer runs until it is looked for
    kScanning,     // the scanner runs
    kScanningOld,  // the same, but texts have changed meanwhile
    kPausing,      // rows have changed, and the timer runs until they are looked through again
    kDone,         // the hits are those of the rows as they are
  };

  QAbstractItemModel* Model() const;
  void Clear();
  void OnTimer();
  void Begin();
  void Pause(int ms);
  void Watch(QAbstractItemModel* model);
  void OnRows();
  void OnTexts(const QModelIndex& first, const QModelIndex& last, const QVector<int>& roles);
  bool AnyHitChanged(const QModelIndex& first, const QModelIndex& last) const;
  void OnInterrupted();
  void OnFinished(const QVector<QModelIndex>& found, int count);
  void MoveToHit(int by);
  void Mark(const QString& text);

  QPointer<QAbstractItemView> view_;
  QPointer<QAbstractItemModel> watched_;
  QString text_;
  RowScanner scanner_;
  HitList hits_;
  State state_ = kIdle;
  QTimer timer_;
  int pause_ms_;
  bool to_first_ = false;  // the first hit is to become current
  bool awaits_ = false;    // rows for the text are being fetched
};

}  // namespace WidgetKit
