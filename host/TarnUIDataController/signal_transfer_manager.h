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
  /// A plan was changed in this client. The host emits it, from the success signals of its controllers for instance;
  /// the plug-in then asks for the automatic plan again.
  void SignalPlanStateChanged();
  /// A box of the plug-in that wants the client behind it dimmed has opened (true) or closed.
  void signalModalityRequested(bool modal);

 private:
  friend class Wren::Base::CSingleton<CSignalTransferManager>;
  CSignalTransferManager();
};

}  // namespace tarn_ui_data_controller
