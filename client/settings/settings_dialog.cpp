#include "settings/settings_dialog.h"

#include <TarnPlanView/default_load_view_display.h>

#include <QAbstractItemModel>
#include <QHBoxLayout>
#include <QLabel>
#include <QScreen>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include "LyraPluginManager/resource_business_interface_mgr.h"
#include "MarUIControl/accessible_role.h"
#include "MarUIControl/nomal_message.h"
#include "MarUIControl/primary_button.h"
#include "MarUIControl/push_button.h"
#include "TarnUIDataController/message_tip_manager.h"
#include "TarnUIDataController/skin_loader.h"
#include "WidgetKit/new_location_combo_box.h"
#include "app/client_options.h"
#include "plan_rules/rights.h"
#include "settings/settings_form.h"
#include "settings/user_settings.h"
#include "site/site_page.h"
#include "users/users_page.h"

namespace TarnClient {

using TarnPlanView::CDefaultLoadViewDisplay;

namespace {

constexpr int kWidth = 440;
constexpr int kCameraPage = 1, kUsersPage = 2;
constexpr QSize kListSize(980, 640);

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
  layout->setContentsMargins(20, 8, 20, 16);
  layout->setSpacing(16);
  layout->addWidget(BuildPages(), 1);
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

QWidget* CSettingsDialog::BuildPages() {
  pages_ = new QTabWidget(this);
  pages_->setObjectName(QStringLiteral("settings_pages"));
  MarUIControl::SetAccessibleRole(pages_, QAccessible::LayeredPane);
  pages_->setAccessibleName(windowTitle());
  pages_->tabBar()->setAccessibleName(tr("Pages of settings"));
  auto* general = new QWidget(pages_);
  general_ = new QVBoxLayout(general);
  general_->setContentsMargins(0, 16, 0, 0);
  general_->addWidget(form_);
  general_->addStretch();
  for (QWidget** list : {&cameras_, &users_}) {
    *list = new QWidget(pages_);
    (new QVBoxLayout(*list))->setContentsMargins(0, 0, 0, 0);
  }
  pages_->addTab(general, tr("General"));
  pages_->addTab(cameras_, tr("Cameras"));
  pages_->addTab(users_, tr("Users"));
  const bool may_configure = LyraPluginManager::CResourceBusinessInterfaceMgr::Instance().CheckControlPermission(
      view_plugin_protocol::kConfigureRight);
  for (const int page : {kCameraPage, kUsersPage}) {
    pages_->setTabEnabled(page, may_configure);
    if (!may_configure) {
      pages_->setTabToolTip(page, tr("You lack the right to configure the site."));
    }
  }
  connect(pages_, &QTabWidget::currentChanged, this, &CSettingsDialog::OnPage);
  return pages_;
}

void CSettingsDialog::AddNote(const QString& text) {
  auto* note = new QLabel(text, this);
  note->setObjectName(QStringLiteral("settings_note"));
  note->setTextFormat(Qt::PlainText);
  note->setWordWrap(true);
  general_->addSpacing(12);
  general_->addWidget(note);
}

void CSettingsDialog::OpenCameras() {
  OpenPage(kCameraPage);
}

void CSettingsDialog::OpenUsers() {
  OpenPage(kUsersPage);
}

void CSettingsDialog::OpenPage(int page) {
  if (pages_->isTabEnabled(page)) {
    pages_->setCurrentIndex(page);
  }
}

void CSettingsDialog::OnUsersChanged() {
  if (auto* page = users_->findChild<CUsersPage*>()) {
    page->Read();
  }
}

void CSettingsDialog::FillPage() {
  QWidget* page = nullptr;
  if (pages_->currentIndex() == kCameraPage && !cameras_->findChild<CSitePage*>()) {
    page = new CSitePage(try_camera_, cameras_);
    cameras_->layout()->addWidget(page);
  } else if (pages_->currentIndex() == kUsersPage && !users_->findChild<CUsersPage*>()) {
    page = new CUsersPage(users_);
    users_->layout()->addWidget(page);
  }
  if (page) {
    page->setFocus(Qt::OtherFocusReason);
  }
}

bool CSettingsDialog::IsForm() const {
  return pages_->currentIndex() != kCameraPage && pages_->currentIndex() != kUsersPage;
}

// A list needs more room than the form. Return in it must not save what stands in the form.
void CSettingsDialog::OnPage() {
  const bool is_form = IsForm();
  FillPage();
  save_->setDefault(is_form);
  save_->setAutoDefault(is_form);
  if (is_form) {
    Resize(size_of_form_);
  } else {
    if (was_form_) {
      size_of_form_ = size();
    }
    Resize(size().expandedTo(kListSize));
  }
  was_form_ = is_form;
  Renew();
}

// Around the same middle, as far as the screen has room.
void CSettingsDialog::Resize(const QSize& wanted) {
  const QRect room = screen()->availableGeometry();
  QRect place(QPoint(), wanted.boundedTo(room.size()));
  place.moveCenter(geometry().center());
  place.moveLeft(qBound(room.left(), place.left(), room.right() - place.width() + 1));
  place.moveTop(qBound(room.top(), place.top(), room.bottom() - place.height() + 1));
  setGeometry(place);
}

QWidget* CSettingsDialog::BuildButtons() {
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  save_ = new MarUIControl::CPrimaryButton(row);
  save_->setObjectName(QStringLiteral("settings_save_btn"));
  save_->setText(tr("Save"));
  save_->setDefault(true);
  close_ = new MarUIControl::CPushButton(row);
  close_->setObjectName(QStringLiteral("settings_close_btn"));
  close_->setAutoDefault(false);
  layout->addStretch();
  layout->addWidget(save_);
  layout->addWidget(close_);
  connect(save_, &QPushButton::clicked, this, &CSettingsDialog::Save);
  connect(close_, &QPushButton::clicked, this, &QDialog::reject);
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
  const bool is_changed = default_view_->IsChanged() || form_->Entered() != shown_;
  save_->setEnabled(is_changed);
  if (is_changed || IsForm()) {
    close_->setText(tr("Cancel"));
  } else {
    close_->setText(tr("Close"));
  }
}

}  // namespace TarnClient
