#pragma once

#include <memory>

#include "site/form_dialog.h"
#include "site/site_table.h"

class QComboBox;

namespace MarUIControl {
class CLineEdit;
}

namespace TarnClient {

/// Fills a box with the paths of all regions but those of `without`, "no region" first, and chooses one.
void FillRegions(const SiteTable& site, const std::vector<std::string>& without, const std::string& chosen,
                 QComboBox* box);

/// Adds or changes a region; closes when the service has taken it. Thread: GUI.
class CRegionForm : public CFormDialog {
  Q_OBJECT
 public:
  /// An empty `code`: a new one, in `parent_region` at first.
  CRegionForm(std::shared_ptr<const SiteTable> site, const std::string& code, const std::string& parent_region,
              QWidget* parent);

 private:
  void Save();

  const std::shared_ptr<const SiteTable> site_;
  const std::string code_;
  MarUIControl::CLineEdit* const name_;
  QComboBox* const above_;
};

}  // namespace TarnClient
