#pragma once

#include <optional>

#include "TarnHost/site_users.h"
#include "site/form_dialog.h"

namespace MarUIControl {
class CLineEdit;
}

namespace TarnClient {

class CCheckList;

/// Makes or changes a user group and who is in it. Thread: GUI.
class CUserGroupForm : public CFormDialog {
  Q_OBJECT
 public:
  /// No group: a new one.
  CUserGroupForm(const TarnHost::SiteUsers& site, const std::optional<TarnHost::SiteUserGroup>& group, QWidget* parent);

 private:
  void Save();

  const TarnHost::SiteUsers site_;
  const std::optional<TarnHost::SiteUserGroup> before_;
  MarUIControl::CLineEdit* name_ = nullptr;
  CCheckList* members_ = nullptr;
};

}  // namespace TarnClient
