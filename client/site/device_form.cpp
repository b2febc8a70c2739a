#include "site/device_form.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <utility>

#include "MarUIControl/line_edit.h"
#include "TarnHost/camera_address.h"
#include "devices/device_answers.h"
#include "devices/device_texts.h"
#include "site/region_form.h"

namespace TarnClient {

namespace {

constexpr QSize kDeviceFormSize(600, 600);
constexpr int kFoundRow = 28;

QString LineOf(const DeviceFound& device) {
  QStringList parts;
  for (const QString& part : {device.name, device.model, device.place}) {
    if (!part.isEmpty()) {
      parts.append(part.simplified());
    }
  }
  parts.append(device.service.host());
  return parts.join(QStringLiteral(" - "));
}

}  // namespace

CDeviceForm::CDeviceForm(std::shared_ptr<const SiteTable> site, const std::string& region, QWidget* parent)
    : CFormDialog(QStringLiteral("device_form"), tr("Find cameras"), tr("Add"), parent),
      site_(std::move(site)),
      list_(new QListWidget(this)),
      state_(new QLabel(this)),
      address_(NewField("device_address", TarnHost::kLongestCameraAddress)),
      user_(NewField("device_user", TarnHost::kLongestCameraUser)),
      password_(NewField("device_password", TarnHost::kLongestCameraSecret)),
      region_(new QComboBox(this)) {
  AddList();
  AddSignIn(region);
  resize(kDeviceFormSize);
  question_.SetAuthority(QByteArray::fromStdString(site_->authority));
  connect(&finder_, &CDeviceFinder::SignalFound, this, &CDeviceForm::OnFound);
  connect(&finder_, &CDeviceFinder::SignalFinished, this, &CDeviceForm::ShowState);
  connect(&question_, &CDeviceQuestion::SignalAnswered, this, &CDeviceForm::Take);
  connect(&question_, &CDeviceQuestion::SignalFailed, this, [this](DeviceFailure failure, const QString& words) {
    SetBusy(false);
    ShowFault(TextOf(failure, words));
  });
  connect(this, &CFormDialog::SignalConfirmed, this, &CDeviceForm::Ask);
  list_->setFocus(Qt::OtherFocusReason);
  Search();
}

void CDeviceForm::AddList() {
  list_->setObjectName(QStringLiteral("device_list"));
  list_->setAccessibleName(tr("Cameras that were found"));
  state_->setObjectName(QStringLiteral("settings_note"));
  state_->setTextFormat(Qt::PlainText);
  state_->setWordWrap(true);
  again_ = NewButton("device_search_btn", tr("Search again"));
  auto* search = new QWidget(this);
  auto* row = new QHBoxLayout(search);
  row->setContentsMargins(0, 4, 0, 4);
  row->addWidget(state_, 1);
  row->addWidget(again_);
  AddWidget(list_, 1);
  AddWidget(search);
  connect(again_, &QPushButton::clicked, this, &CDeviceForm::Search);
  connect(list_, &QListWidget::currentRowChanged, this, &CDeviceForm::Choose);
}

void CDeviceForm::AddSignIn(const std::string& region) {
  region_->setObjectName(QStringLiteral("device_region"));
  FillRegions(*site_, {}, region, region_);
  password_->setEchoMode(QLineEdit::Password);
  AddField(tr("Address of the device"), address_);
  AddField(tr("User"), user_);
  AddField(tr("Password"), password_);
  AddField(tr("Region"), region_);
}

void CDeviceForm::Search() {
  found_.clear();
  list_->clear();
  if (!finder_.Find()) {
    ShowFault(tr("No network can be searched. Type an address."));
  }
  ShowState();
}

void CDeviceForm::SearchAt(const QHostAddress& address, quint16 port) {
  found_.clear();
  list_->clear();
  finder_.FindAt(address, port);
  ShowState();
}

void CDeviceForm::OnFound(const DeviceFound& device) {
  found_.push_back(device);
  auto* row = new QListWidgetItem(LineOf(device), list_);
  row->setSizeHint(QSize(0, kFoundRow));
  if (list_->count() == 1 && address_->text().isEmpty()) {
    list_->setCurrentRow(0);
  }
  ShowState();
}

void CDeviceForm::ShowState() {
  again_->setEnabled(!finder_.IsFinding());
  if (finder_.IsFinding()) {
    state_->setText(tr("Searching the local networks..."));
  } else if (found_.empty()) {
    state_->setText(tr("No camera has answered. One that is known can be asked by its address."));
  } else {
    state_->setText(tr("%n camera(s) found", nullptr, static_cast<int>(found_.size())));
  }
}

void CDeviceForm::Choose() {
  const int row = list_->currentRow();
  if (row >= 0 && static_cast<size_t>(row) < found_.size()) {
    address_->setText(found_[static_cast<size_t>(row)].service.toString());
    address_->setCursorPosition(0);
  }
}

void CDeviceForm::Ask() {
  choice_ = {DeviceAddress(address_->text()),
             {},
             user_->text().toStdString(),
             region_->currentData().toString().toStdString(),
             TarnHost::CSecret(password_->text().toStdString())};
  for (const DeviceFound& device : found_) {
    if (device.service == choice_.service) {
      choice_.name = device.name;
    }
  }
  if (!choice_.service.isValid()) {
    ShowFault(tr("That is no address of a device."));
    return;
  }
  ShowFault(QString());
  SetBusy(true);
  question_.Ask(choice_.service, user_->text(), password_->text());
}

void CDeviceForm::Take(const DeviceAnswer& answer) {
  int known = 0;
  const TarnHost::CameraChanges changes = CamerasOfDevice(answer, choice_, *site_, &known);
  if (changes.cameras.empty()) {
    SetBusy(false);
    ShowFault(tr("The site has this camera already."));
    return;
  }
  SendChanges(changes);
}

}  // namespace TarnClient
