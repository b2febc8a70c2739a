#pragma once

#include <QTimer>
#include <QVector>
#include <QWidget>

#include "ResourceTreeKit/camera_item_info.h"
#include "host_export.h"

namespace WidgetKit {
class CNewSearchLine;
}

namespace ResourceTreeKit {

class CCameraTree;

/// A camera tree with a search field above it. Return in the field takes the only hit, or goes to the first of several;
/// Down goes to the tree. While it is in sight it looks every half minute whether the site still has its cameras,
/// without a word when that fails. Thread: GUI.
class TARN_HOST_EXPORT CCameraFinder : public QWidget {
  Q_OBJECT
 public:
  explicit CCameraFinder(QWidget* parent = nullptr);

  /// The tree; lives as long as the finder.
  CCameraTree* Tree() const { return tree_; }
  /// The search field; lives as long as the finder.
  WidgetKit::CNewSearchLine* Search() const { return search_; }
  /// Milliseconds between two looks at the site; 30000 at first.
  void SetWatchInterval(int milliseconds) { watch_.setInterval(milliseconds); }
  /// Puts the focus into the search field, with its text selected.
  void FocusSearch();
  /// Empties the search field and shows all cameras again, at once.
  void ClearSearch();

 Q_SIGNALS:
  /// The user wants this camera: Return as the only hit, or double click, Return or the menu in the tree.
  void SignalCameraChosen(const ResourceTreeKit::CCameraItemInfo& camera);
  /// These are wanted, a region's or several at once, in order.
  void SignalCamerasChosen(const QVector<ResourceTreeKit::CCameraItemInfo>& cameras);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void LookAgain();
  void Filter();
  /// What follows once the hits for the text are shown.
  enum class Awaited { Nothing, OnlyHit, Rows };
  void OnReturn();
  void Await(Awaited awaited);
  void OnFiltered(int cameras);
  void TakeHits();
  /// Or to the first row, for none.
  void GoTo(const QModelIndex& camera);
  QModelIndex FirstCamera() const;

  WidgetKit::CNewSearchLine* search_ = nullptr;
  CCameraTree* tree_ = nullptr;
  QTimer filter_delay_;
  QTimer watch_;
  int hits_ = 0;  // of the filter, as last shown
  Awaited awaited_ = Awaited::Nothing;
};

}  // namespace ResourceTreeKit
