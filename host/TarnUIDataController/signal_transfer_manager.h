#pragma once

#include <QObject>

#include "Wren/Base/singleton.h"
#include "host_export.h"

namespace tarn_ui_data_controller {

/// Signals that concern the whole client. Thread: GUI.
class TARN_HOST_EXPORT CSignalTransferManager : public QObject, public Wren::Base::CSingleton<CSignalTransferManager> {
  Q_OBJECT
 public:
  ~CSignalTransferManager() override;

 Q_SIGNALS:
  /// A plan was changed somewhere in the client.
  void SignalPlanStateChanged();
  /// A modal box has opened (true) or closed.
  void signalModalityRequested(bool modal);

 private:
  friend class Wren::Base::CSingleton<CSignalTransferManager>;
  CSignalTransferManager();
};

}  // namespace tarn_ui_data_controller
