#pragma once

#include <map>
#include <optional>

#include "TarnHost/site_users.h"
#include "site/form_dialog.h"

class QCheckBox;

namespace MarUIControl {
class CLineEdit;
}

namespace TarnClient {

class CCheckList;

/// Makes or changes a user: name, rights, user groups and password. A password is not shown, only replaced or taken
/// away. Thread: GUI.
class CUserForm : public CFormDialog {
  Q_OBJECT
 public:
  /// No user: a new one.
  CUserForm(const std::optional<TarnHost::SiteUser>& user, const QStringList& user_groups, QWidget* parent);

 private:
  void AddRights();
  void AddPassword();
  void Save();
  /// What is wrong with the passwords; empty for nothing.
  QString PasswordFault() const;
  std::optional<TarnHost::CSecret> Password() const;

  const std::optional<TarnHost::SiteUser> before_;
  MarUIControl::CLineEdit* name_ = nullptr;
  std::map<int, QCheckBox*> rights_;
  CCheckList* groups_ = nullptr;
  QCheckBox* has_password_ = nullptr;
  MarUIControl::CLineEdit *password_ = nullptr, *again_ = nullptr;
};

}  // namespace TarnClient
