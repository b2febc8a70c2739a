#pragma once

#include <QObject>

class QAbstractItemModel;

namespace TarnPlanView {

class CEmptyState;
class CPlanViewTree;

/// What the tree says when there is nothing in it: that nothing could be loaded, or that nothing is there yet.
/// Thread: GUI.
class CTreeNotice : public QObject {
  Q_OBJECT
 public:
  explicit CTreeNotice(CPlanViewTree* tree);

  /// Looks at the rows; false while there are none because everything is being loaded again.
  bool Renew();
  /// A load has come to its end: rows that are missing now could not be loaded.
  void OnLoadEnded();
  /// A load begins: rows that are missing are on their way.
  void OnLoadBegun() { load_failed_ = false; }
  void Hide();
  void RenewPicture();

 Q_SIGNALS:
  void SignalRetry();

 private:
  CPlanViewTree* const tree_;
  CEmptyState* const state_;
  bool load_failed_ = false;
};

}  // namespace TarnPlanView
