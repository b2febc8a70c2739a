#pragma once

#include <QWidget>

namespace MarUIControl {
class CLineEdit;
}

namespace TarnClient {

/// A folder of the disk, typed or chosen in a dialog; empty for the one that it names as the usual one. Thread: GUI.
class CFolderField : public QWidget {
  Q_OBJECT
 public:
  /// `label` is what assistive technology calls it.
  CFolderField(const QString& label, const QString& usual_folder, QWidget* parent);

  QString Folder() const;
  void SetFolder(const QString& folder);

 Q_SIGNALS:
  void SignalChanged();

 private:
  void Choose();

  const QString usual_folder_;
  MarUIControl::CLineEdit* edit_ = nullptr;
};

}  // namespace TarnClient
