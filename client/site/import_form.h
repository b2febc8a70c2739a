#pragma once

#include "site/camera_csv.h"
#include "site/form_dialog.h"

namespace TarnClient {

/// Shows what an import of cameras would do, and which lines it leaves out and why; nothing is done before it is
/// confirmed, and then all at once. Closes when the service has taken it. Thread: GUI.
class CImportForm : public CFormDialog {
  Q_OBJECT
 public:
  /// `file` and `encoding` name where it comes from.
  CImportForm(const QString& file, const QString& encoding, const CameraImport& plan, QWidget* parent);

 private:
  void AddLeftOut(const QStringList& lines);
  void Send();

  const CameraImport plan_;
};

}  // namespace TarnClient
