#pragma once

#include <memory>
#include <optional>

#include "TarnHost/camera_address.h"
#include "site/camera_trial.h"
#include "site/form_dialog.h"
#include "site/site_table.h"

class QComboBox;
class QLabel;
class QLineEdit;

namespace MarUIControl {
class CLineEdit;
}

namespace TarnClient {

/// Adds or changes a camera: name, region, addresses, user and password, which a button uncovers; addresses can be
/// tried. Writes only what was changed; closes when the service has taken it. Thread: GUI.
class CCameraForm : public CFormDialog {
  Q_OBJECT
 public:
  /// An empty `code`: a new one, in `region` at first. Without `try_camera` addresses cannot be tried.
  CCameraForm(std::shared_ptr<const SiteTable> site, const std::string& code, const std::string& region,
              TryCamera try_camera, QWidget* parent);

  /// The changes that were entered; none with the reason in `why`.
  std::optional<TarnHost::CameraChanges::Camera> Entered(QString* why) const;

 private:
  using ReadAddress = bool (*)(const QString& text, TarnHost::CameraAddress* address, QString* why);

  struct Address {
    int32_t stream;
    MarUIControl::CLineEdit* field;
    QLabel* result;
  };

  void Show();
  void AddAddress(int32_t stream, const char* name, const QString& label);
  void AddSignIn();
  void TakeSignInOut(QLineEdit* field, ReadAddress read_address);
  void TakeAllSignInsOut();
  void Try(const Address& address);
  QString TakeAddresses(const TarnHost::CameraAccess& before, TarnHost::CameraChanges::Camera* change) const;
  QString TakeSignIn(const TarnHost::CameraAccess& before, TarnHost::CameraChanges::Camera* change) const;
  TarnHost::CameraAccess AccessBefore() const;
  TarnHost::CSecret Secret() const;
  void Save();

  const std::shared_ptr<const SiteTable> site_;
  const std::string code_;
  const TryCamera try_camera_;
  MarUIControl::CLineEdit* const name_;
  QComboBox* const region_;
  QList<Address> addresses_;
  MarUIControl::CLineEdit *const user_, *const password_, *const device_;
};

}  // namespace TarnClient
