#include "site/region_form.h"

#include <QComboBox>
#include <algorithm>
#include <set>

#include "MarUIControl/line_edit.h"
#include "TarnHost/camera_address.h"

namespace TarnClient {

namespace {

QString TitleFor(const std::string& code) {
  return code.empty() ? CRegionForm::tr("New region") : CRegionForm::tr("Edit region");
}

}  // namespace

void FillRegions(const SiteTable& site, const std::vector<std::string>& without, const std::string& chosen,
                 QComboBox* box) {
  const std::set<std::string> left_out(without.begin(), without.end());
  box->addItem(CRegionForm::tr("(no region)"), QString());
  for (const auto& [path, code] : site.Paths()) {
    if (left_out.count(code) == 0) {
      box->addItem(path, QString::fromStdString(code));
    }
  }
  box->setCurrentIndex(std::max(0, box->findData(QString::fromStdString(chosen))));
}

CRegionForm::CRegionForm(std::shared_ptr<const SiteTable> site, const std::string& code,
                         const std::string& parent_region, QWidget* parent)
    : CFormDialog(QStringLiteral("region_form"), TitleFor(code), tr("Save"), parent),
      site_(std::move(site)),
      code_(code),
      name_(new MarUIControl::CLineEdit(this)),
      above_(new QComboBox(this)) {
  setMinimumWidth(380);
  name_->setObjectName(QStringLiteral("region_name"));
  name_->setMaxLineEditLength(TarnHost::kLongestCameraName);
  above_->setObjectName(QStringLiteral("region_above"));
  std::string above = parent_region;
  std::vector<std::string> own;
  if (const auto* region = site_->Region(code)) {
    name_->setText(QString::fromStdString(region->name));
    above = region->parent_index_code;
    own = site_->CollectBelow({code}).regions;
  }
  FillRegions(*site_, own, above, above_);
  AddField(tr("Name"), name_);
  AddField(tr("In region"), above_);
  connect(this, &CFormDialog::SignalConfirmed, this, &CRegionForm::Save);
  name_->setFocus(Qt::OtherFocusReason);
}

void CRegionForm::Save() {
  const QString why = TarnHost::WhyNoRegionName(name_->text().trimmed());
  ShowFault(why);
  if (!why.isEmpty()) {
    return;
  }
  TarnHost::CameraChanges changes;
  changes.regions.push_back(
      {code_, name_->text().trimmed().toStdString(), above_->currentData().toString().toStdString()});
  SendChanges(changes);
}

}  // namespace TarnClient
