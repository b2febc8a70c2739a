#pragma once

#include <QFrame>
#include <QPointer>

class QLabel;
class QListView;
class QModelIndex;

namespace TarnClient {

class CPlayHistory;

/// Pop-up with the plans played last. A click or Return takes one, Esc closes. Thread: GUI.
class CHistoryPopup : public QFrame {
  Q_OBJECT
 public:
  /// `history` is not owned and outlives the pop-up.
  CHistoryPopup(CPlayHistory* history, QWidget* parent);

  /// Opens below `anchor`, the newest plan that can be played current.
  void ShowBelow(QWidget* anchor);

 Q_SIGNALS:
  /// A row of the history was taken; the pop-up is closed.
  void SignalTaken(int row);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void Take(const QModelIndex& index);
  QModelIndex FirstPlayable() const;

  CPlayHistory* const history_;
  QListView* list_ = nullptr;
  QLabel* empty_ = nullptr;
  QPointer<QWidget> anchor_;
};

}  // namespace TarnClient
