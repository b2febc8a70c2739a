#pragma once

#include <QMenu>

#include "LyraPluginManager/ptz_plugin_protocol.h"
#include "host_calls/result.h"

namespace TarnClient {

/// The presets of a camera to choose from, asked for when it opens. Deletes itself when it closes. Thread: GUI; the
/// service is asked on the thread pool.
class CPresetMenu : public QMenu {
  Q_OBJECT
 public:
  /// `preset_no` is shown as chosen; 0: none.
  CPresetMenu(const QString& camera_code, int preset_no, QWidget* parent);

 Q_SIGNALS:
  void SignalChosen(int preset_no);

 private:
  void Show(const HostCalls::Result<ptz_plugin_protocol::GetPresetResponse>& answer);
  void ShowInstead(const QString& text);
  void Add(const QString& text, int preset_no);

  const int preset_no_;
};

}  // namespace TarnClient
