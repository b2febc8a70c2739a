#pragma once

#include <QObject>
#include <QString>

#include "Wren/Base/singleton.h"
#include "host_export.h"

class QWidget;

namespace tarn_ui_data_controller {

/// Messages about what the user has just typed or chosen (the host's own spelling). Shown as message tips, and as those
/// they wait their turn. Thread: GUI.
class TARN_HOST_EXPORT CNomalMessageManager : public QObject, public Wren::Base::CSingleton<CNomalMessageManager> {
  Q_OBJECT
 public:
  ~CNomalMessageManager() override;

  /// Shows a message over `window`; null takes the active one. `level`: 0 information, any other a refusal.
  void ShowMessage(QWidget* window, const QString& text, int level);

 Q_SIGNALS:
  /// A message was asked for. Emitted at once, also for one that waits its turn.
  void SignalMessageShown(const QString& text, int level);

 private:
  friend class Wren::Base::CSingleton<CNomalMessageManager>;
  CNomalMessageManager();
};

}  // namespace tarn_ui_data_controller
