#pragma once

#include <QSet>
#include <QTimer>
#include <QVector>
#include <QWidget>
#include <optional>
#include <string>

#include "ResourceTreeKit/camera_item_info.h"
#include "ResourceTreeKit/logic_node_param.h"
#include "plan_document.h"
#include "window_text.h"

namespace ResourceTreeKit {
class CCameraTree;
}
namespace WidgetKit {
class CNewSearchLine;
}

namespace TarnPlanView {

/// The site's cameras to choose from, with a search field above them. While it is in sight it looks every half minute
/// whether the site still has them, without a word when that fails. Thread: GUI.
class CEditorCameras : public QWidget {
  Q_OBJECT
 public:
  explicit CEditorCameras(QWidget* parent);

  void SetLogicNodeParam(const ResourceTreeKit::LogicNodeParam& param);
  /// Reads the site's cameras again: some may have come or gone since the editor was last open.
  void Reload();
  /// Reads them again because this one may have gone; once for each until the next Reload().
  void Doubt(const QString& index_code);
  /// No value while the cameras are not known, an empty name when the site has no such camera.
  std::optional<CWindowText::SiteCamera> Find(const std::string& index_code) const;
  /// Milliseconds between two looks at the site.
  void SetWatchInterval(int milliseconds) { watch_.setInterval(milliseconds); }
  /// Puts the focus into the search field.
  void FocusSearch();
  /// Shows all cameras again.
  void ClearSearch();

 Q_SIGNALS:
  /// The user wants this camera in the current window.
  void SignalCameraChosen(const TarnPlanView::DraftCamera& camera);
  /// These are wanted, a region's or several at once, in order, in windows that are empty.
  void SignalCamerasChosen(const QVector<TarnPlanView::DraftCamera>& cameras);
  /// Names and states are known, or have changed.
  void SignalCamerasChanged();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void LookAgain();
  void Filter();
  void OnReturn();
  void OnFiltered(int cameras);
  void TakeHits();
  QModelIndex FirstCamera() const;
  void OnCamera(const ResourceTreeKit::CCameraItemInfo& camera);
  void OnRegion(const QVector<ResourceTreeKit::CCameraItemInfo>& cameras);

  WidgetKit::CNewSearchLine* search_ = nullptr;
  ResourceTreeKit::CCameraTree* tree_ = nullptr;
  QTimer filter_delay_;
  QTimer watch_;
  QSet<QString> doubted_;
  bool whole_site_ = true;
  int hits_ = 0;             // of the filter, as last shown
  bool takes_hits_ = false;  // once they are shown
};

}  // namespace TarnPlanView
