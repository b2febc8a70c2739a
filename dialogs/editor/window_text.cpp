#include "window_text.h"

#include <QStringList>

#include "MarUIControl/string_conversion.h"
#include "plan_rules/stream_kinds.h"

namespace TarnPlanView {

using view_plugin_protocol::Content;
using view_plugin_protocol::kMainStream;
using view_plugin_protocol::kSmoothStream;
using view_plugin_protocol::kSubStream;
using view_plugin_protocol::PlanWindow;

QString CWindowText::Name(const PlanWindow* window) const {
  switch (ContentIn(window)) {
    case Content::Nothing:
      return QString();
    case Content::Camera:
      return CameraName(*window);
    case Content::OtherContent:
      return tr("Other content");
  }
  return QString();
}

QString CWindowText::CameraName(const PlanWindow& window) const {
  QString kept = MarUIControl::StringToQString(window.resource_name);
  if (kept.isEmpty()) {
    kept = MarUIControl::StringToQString(window.resource_code);
  }
  const auto on_site = OnSite(window);
  if (!on_site) {
    return kept;
  }
  return on_site->name.isEmpty() ? tr("%1 (not found)").arg(kept) : on_site->name;
}

bool CWindowText::IsOnSite(const PlanWindow* window) const {
  if (!IsCamera(window)) {
    return false;
  }
  const auto on_site = OnSite(*window);
  return !on_site || !on_site->name.isEmpty();
}

bool CWindowText::IsOffline(const PlanWindow* window) const {
  if (!IsCamera(window)) {
    return false;
  }
  const auto on_site = OnSite(*window);
  return on_site && !on_site->name.isEmpty() && !on_site->online;
}

QString CWindowText::NameAndState(const PlanWindow* window) const {
  return IsOffline(window) ? tr("%1, offline").arg(Name(window)) : Name(window);
}

std::optional<CWindowText::SiteCamera> CWindowText::OnSite(const PlanWindow& window) const {
  if (!look_up_) {
    return std::nullopt;
  }
  return look_up_(window.resource_code);
}

QString CWindowText::Stream(int stream_type) {
  switch (stream_type) {
    case kMainStream:
      return tr("Main stream");
    case kSubStream:
      return tr("Sub-stream");
    case kSmoothStream:
      return tr("Smooth stream");
    default:
      return tr("Stream %1").arg(stream_type);
  }
}

QString CWindowText::Hints(const PlanWindow& window) const {
  QStringList hints;
  if (IsCamera(window) && window.stream_type != kMainStream) {
    hints.append(Stream(window.stream_type));
  }
  if (IsCamera(window) && window.preset_no != 0) {
    hints.append(tr("Preset %1").arg(window.preset_no));
  }
  return hints.join(QStringLiteral(", "));
}

QString CWindowText::Spoken(int window_no, int windows, const PlanWindow* window) const {
  const QString place = tr("Window %1 of %2").arg(window_no).arg(windows);
  if (!IsFilled(window)) {
    return tr("%1: empty").arg(place);
  }
  QStringList content{NameAndState(window), Hints(*window)};
  content.removeAll(QString());
  // Not a chain of arg(): a name may hold a place mark itself.
  return place + QStringLiteral(": ") + content.join(QStringLiteral(", "));
}

QString CWindowText::Dwell(int seconds) {
  constexpr int kMinute = 60, kHour = 60 * 60;
  if (seconds < 2 * kMinute) {
    return tr("%1 s").arg(seconds);
  }
  QStringList parts;
  if (seconds >= kHour) {
    parts.append(tr("%1 h").arg(seconds / kHour));
  }
  if (seconds % kHour >= kMinute) {
    parts.append(tr("%1 min").arg(seconds % kHour / kMinute));
  }
  if (seconds % kMinute != 0) {
    parts.append(tr("%1 s").arg(seconds % kMinute));
  }
  return parts.join(QLatin1Char(' '));
}

}  // namespace TarnPlanView
