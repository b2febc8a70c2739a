#include "settings/settings_dialog.h"

#include <TarnPlanView/default_load_view_display.h>

#include <QAbstractItemModel>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "MarUIControl/nomal_message.h"
#include "MarUIControl/primary_button.h"
#include "MarUIControl/push_button.h"
#include "TarnUIDataController/message_tip_manager.h"
#include "TarnUIDataController/skin_loader.h"
#include "WidgetKit/new_location_combo_box.h"
#include "app/client_options.h"
#include "settings/settings_form.h"
#include "settings/user_settings.h"

namespace TarnClient {

using TarnPlanView::CDefaultLoadViewDisplay;

namespace {

constexpr int kWidth = 440;

// The skin in use may be another one than the stored one: that of the command line.
ChosenSettings InUse(ChosenSettings chosen) {
  const QString skin = tarn_ui_data_controller::CSkinLoader::Instance().GetCurrentSkin();
  const QStringList skins = ClientOptions::Skins();
  if (skins.contains(skin) && skins.contains(chosen.skin)) {
    chosen.skin = skin;
  }
  return chosen;
}

}  // namespace

CSettingsDialog::CSettingsDialog(TarnPlanView::CStandardViewController* controller, CUserSettings* settings,
                                 QWidget* parent)
    : QDialog(parent),
      settings_(settings),
      default_view_(new CDefaultLoadViewDisplay(this)),
      form_(new CSettingsForm(default_view_, this)) {
  setObjectName(QStringLiteral("settings_dialog"));
  setWindowTitle(tr("Settings"));
  setMinimumWidth(kWidth);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(20, 20, 20, 16);
  layout->setSpacing(20);
  layout->addWidget(form_);
  layout->addWidget(BuildButtons());
  shown_ = InUse(settings_->Chosen());
  form_->Show(shown_);
  connect(form_, &CSettingsForm::SignalChanged, this, &CSettingsDialog::Renew);
  connect(default_view_, &CDefaultLoadViewDisplay::SignalChoiceChanged, this, &CSettingsDialog::Renew);
  default_view_->SetViewController(controller);
  // Later than the rows: they may come in the middle of a load.
  read_again_.setSingleShot(true);
  connect(&read_again_, &QTimer::timeout, this, &CSettingsDialog::Read);
  connect(default_view_->GetLocationComboBox()->LocationModel(), &QAbstractItemModel::rowsInserted, this,
          [this](const QModelIndex& above) {
            if (!is_read_ && !above.isValid()) {
              read_again_.start(0);
            }
          });
  Read();
  form_->setFocus(Qt::OtherFocusReason);
}

// What the user has chosen meanwhile is left alone.
void CSettingsDialog::Read() {
  is_read_ = default_view_->ReadDefaultView();
  if (is_read_ && !default_view_->GetLocationComboBox()->GetCurrentIndex().isValid()) {
    default_view_->SelectView(default_view_->GetResourceType(), default_view_->GetIndexCode());
  }
  Renew();
}

QWidget* CSettingsDialog::BuildButtons() {
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  save_ = new MarUIControl::CPrimaryButton(row);
  save_->setObjectName(QStringLiteral("settings_save_btn"));
  save_->setText(tr("Save"));
  save_->setDefault(true);
  auto* close = new MarUIControl::CPushButton(row);
  close->setObjectName(QStringLiteral("settings_close_btn"));
  close->setText(tr("Cancel"));
  close->setAutoDefault(false);
  layout->addStretch();
  layout->addWidget(save_);
  layout->addWidget(close);
  connect(save_, &QPushButton::clicked, this, &CSettingsDialog::Save);
  connect(close, &QPushButton::clicked, this, &QDialog::reject);
  return row;
}

// What has been stored by the time something else cannot be is no change any more.
void CSettingsDialog::Save() {
  if (SaveChosen() && (!default_view_->IsChanged() || default_view_->SaveChosenView())) {
    accept();
  } else {
    Renew();
  }
}

bool CSettingsDialog::SaveChosen() {
  const ChosenSettings entered = form_->Entered();
  QString error;
  if (entered == shown_) {
    return true;
  }
  if (!settings_->Choose(shown_, entered, &error)) {
    tarn_ui_data_controller::CMessageTipManager::Instance().ShowTip(error, MarUIControl::CNomalMessage::Failure, this);
    return false;
  }
  shown_ = entered;
  form_->Show(shown_);
  return true;
}

void CSettingsDialog::Renew() {
  save_->setEnabled(default_view_->IsChanged() || form_->Entered() != shown_);
}

}  // namespace TarnClient
