#pragma once

#include <QSet>
#include <QVector>
#include <optional>
#include <string>

#include "ResourceTreeKit/camera_finder.h"
#include "ResourceTreeKit/logic_node_param.h"
#include "plan_document.h"
#include "window_text.h"

namespace TarnPlanView {

/// The site's cameras to choose from, with a search field above them. Thread: GUI.
class CEditorCameras : public ResourceTreeKit::CCameraFinder {
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

 Q_SIGNALS:
  /// The user wants this camera in the current window.
  void SignalCameraWanted(const TarnPlanView::DraftCamera& camera);
  /// These are wanted, a region's or several at once, in order, in windows that are empty.
  void SignalCamerasWanted(const QVector<TarnPlanView::DraftCamera>& cameras);
  /// Names and states are known, or have changed.
  void SignalCamerasChanged();

 private:
  void OnCameras(const QVector<ResourceTreeKit::CCameraItemInfo>& cameras);

  QSet<QString> doubted_;
  bool whole_site_ = true;
};

}  // namespace TarnPlanView
