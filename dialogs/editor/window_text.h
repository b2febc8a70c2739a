#pragma once

#include <QCoreApplication>
#include <QString>
#include <functional>
#include <optional>
#include <string>

#include "plan_rules/window_content.h"

namespace TarnPlanView {

/// What the editor says about windows and pages. Thread: GUI.
class CWindowText {
  Q_DECLARE_TR_FUNCTIONS(TarnPlanView::CWindowText)
 public:
  /// A camera as the site has it.
  struct SiteCamera {
    QString name;  // empty: the site has no such camera (any more)
    bool online = true;
  };
  /// No value while the site's cameras are not known.
  using CameraLookUp = std::function<std::optional<SiteCamera>(const std::string& index_code)>;

  void SetCameraLookUp(CameraLookUp look_up) { look_up_ = std::move(look_up); }

  /// Empty for a window that holds nothing.
  QString Name(const view_plugin_protocol::PlanWindow* window) const;
  /// Whether this is a camera that the site has, as far as is known.
  bool IsOnSite(const view_plugin_protocol::PlanWindow* window) const;
  /// Whether this is a camera that the site has, but that does not answer there now.
  bool IsOffline(const view_plugin_protocol::PlanWindow* window) const;
  /// The name, and that it is offline.
  QString NameAndState(const view_plugin_protocol::PlanWindow* window) const;
  /// Stream and preset where they are not the usual ones.
  QString Hints(const view_plugin_protocol::PlanWindow& window) const;
  /// "Window 3 of 9: CAM 007, offline, sub-stream", for those who hear it.
  QString Spoken(int window_no, int windows, const view_plugin_protocol::PlanWindow* window) const;

  static QString Stream(int stream_type);
  /// "1 h 5 min", "90 s" and the like.
  static QString Dwell(int seconds);

 private:
  QString CameraName(const view_plugin_protocol::PlanWindow& window) const;
  std::optional<SiteCamera> OnSite(const view_plugin_protocol::PlanWindow& window) const;

  CameraLookUp look_up_;
};

}  // namespace TarnPlanView
