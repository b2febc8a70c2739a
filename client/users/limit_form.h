#pragma once

#include <optional>

#include "TarnHost/site_users.h"
#include "site/form_dialog.h"

namespace MarUIControl {
class CLineEdit;
}

namespace TarnClient {

class CCheckList;

/// Says which user groups alone see a group of public plans. Thread: GUI.
class CLimitForm : public CFormDialog {
  Q_OBJECT
 public:
  /// No limit: of a group that is still to be named.
  CLimitForm(const TarnHost::SiteUsers& site, const std::optional<TarnHost::SiteLimit>& limit, QWidget* parent);

 private:
  void Save();
  const TarnHost::SiteLimit* Group() const;

  const TarnHost::SiteUsers site_;
  MarUIControl::CLineEdit* path_ = nullptr;
  CCheckList* user_groups_ = nullptr;
};

}  // namespace TarnClient
