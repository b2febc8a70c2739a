#pragma once

#include <memory>

#include "devices/device_finder.h"
#include "devices/device_question.h"
#include "site/device_cameras.h"
#include "site/form_dialog.h"

class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;

namespace MarUIControl {
class CLineEdit;
}

namespace TarnClient {

/// Finds cameras in the local networks, or asks one whose address is typed, and adds what it has. Closes
/// when the service has taken it. Thread: GUI; nothing is waited for.
class CDeviceForm : public CFormDialog {
  Q_OBJECT
 public:
  CDeviceForm(std::shared_ptr<const SiteTable> site, const std::string& region, QWidget* parent);

  /// Asks this machine alone, for tests.
  void SearchAt(const QHostAddress& address, quint16 port);

 private:
  void AddList();
  void AddSignIn(const std::string& region);
  void Search();
  void OnFound(const DeviceFound& device);
  void ShowState();
  void Choose();
  void Ask();
  void Take(const DeviceAnswer& answer);

  const std::shared_ptr<const SiteTable> site_;
  CDeviceFinder finder_;
  CDeviceQuestion question_;
  std::vector<DeviceFound> found_;
  DeviceChoice choice_;  // of the question under way
  QListWidget* const list_;
  QLabel* const state_;
  QPushButton* again_ = nullptr;
  MarUIControl::CLineEdit *const address_, *const user_, *const password_;
  QComboBox* const region_;
};

}  // namespace TarnClient
