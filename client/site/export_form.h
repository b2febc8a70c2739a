#pragma once

#include "site/form_dialog.h"

namespace MarUIControl {
class CSwitchControl;
}

namespace TarnClient {

/// Asks whether passwords are to stand in the file, which they do not unless that is chosen each time. Thread: GUI.
class CExportForm : public CFormDialog {
  Q_OBJECT
 public:
  explicit CExportForm(QWidget* parent);

 Q_SIGNALS:
  void SignalChosen(bool with_passwords);

 private:
  MarUIControl::CSwitchControl* const passwords_;
};

}  // namespace TarnClient
