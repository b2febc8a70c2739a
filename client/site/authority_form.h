#pragma once

#include <string>

#include "site/form_dialog.h"

class QPlainTextEdit;

namespace TarnClient {

/// The certificates that vouch for cameras with encrypted streams, for all desks: pasted or read from a file. Closes
/// when the service has taken them. Thread: GUI.
class CAuthorityForm : public CFormDialog {
  Q_OBJECT
 public:
  CAuthorityForm(const std::string& pem, QWidget* parent);

 private:
  void ReadFile();
  void Save();

  QPlainTextEdit* const text_;
};

}  // namespace TarnClient
