#include "site/camera_form.h"

#include <QComboBox>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QStyle>
#include <utility>

#include "MarUIControl/line_edit.h"
#include "TarnHost/camera_address.h"
#include "plan_rules/stream_kinds.h"
#include "site/region_form.h"

namespace TarnClient {

namespace {

constexpr int kWidth = 560;

QString TitleFor(const std::string& code) {
  return code.empty() ? CCameraForm::tr("New camera") : CCameraForm::tr("Edit camera");
}

}  // namespace

CCameraForm::CCameraForm(std::shared_ptr<const SiteTable> site, const std::string& code, const std::string& region,
                         TryCamera try_camera, QWidget* parent)
    : CFormDialog(QStringLiteral("camera_form"), TitleFor(code), tr("Save"), parent),
      site_(std::move(site)),
      code_(code),
      try_camera_(std::move(try_camera)),
      name_(NewField("camera_name", TarnHost::kLongestCameraName)),
      region_(new QComboBox(this)),
      user_(NewField("camera_user", TarnHost::kLongestCameraUser)),
      password_(NewField("camera_password", TarnHost::kLongestCameraSecret)),
      device_(NewField("camera_device", TarnHost::kLongestCameraAddress)) {
  setMinimumWidth(kWidth);
  region_->setObjectName(QStringLiteral("camera_region"));
  AddField(tr("Name"), name_);
  AddField(tr("Region"), region_);
  AddAddress(view_plugin_protocol::kMainStream, "camera_main", tr("Address of the main stream"));
  AddAddress(view_plugin_protocol::kSubStream, "camera_sub", tr("Address of the sub stream"));
  AddSignIn();
  AddField(tr("Address of the device"), device_);
  AddNote(
      tr("Streams begin with rtsp:// or rtsps://, the device with http:// or https://. The device is asked for its"
         " presets."));
  const auto* camera = site_->Camera(code);
  FillRegions(*site_, {}, camera ? camera->region_index_code : region, region_);
  Show();
  connect(device_, &QLineEdit::editingFinished, this, [this] { TakeSignInOut(device_, &TarnHost::ReadDeviceAddress); });
  connect(this, &CFormDialog::SignalConfirmed, this, &CCameraForm::Save);
  name_->setFocus(Qt::OtherFocusReason);
}

void CCameraForm::Show() {
  if (const auto* camera = site_->Camera(code_)) {
    name_->setText(QString::fromStdString(camera->name));
  }
  const TarnHost::CameraAccess access = AccessBefore();
  for (const Address& address : qAsConst(addresses_)) {
    address.field->setText(QString::fromStdString(site_->Address(code_, address.stream)));
    address.field->setCursorPosition(0);
  }
  user_->setText(QString::fromStdString(access.user));
  password_->setText(QString::fromStdString(access.secret.Reveal()));
  device_->setText(QString::fromStdString(access.device_url));
}

void CCameraForm::AddAddress(int32_t stream, const char* name, const QString& label) {
  auto* field = NewField(name, TarnHost::kLongestCameraAddress);
  field->setPlaceholderText(QStringLiteral("rtsp://"));
  auto* result = new QLabel(this);
  result->setObjectName(QString::fromLatin1(name) + QStringLiteral("_result"));
  result->setTextFormat(Qt::PlainText);
  result->setWordWrap(true);
  result->hide();
  QPushButton* test = NewButton("camera_test_btn", tr("Test"));
  test->setAccessibleName(tr("Test: %1").arg(label));
  test->setVisible(bool(try_camera_));
  addresses_.append({stream, field, result});
  const Address address = addresses_.last();
  connect(test, &QPushButton::clicked, this, [this, address] { Try(address); });
  connect(field, &QLineEdit::editingFinished, this,
          [this, field] { TakeSignInOut(field, &TarnHost::ReadCameraAddress); });
  connect(field, &QLineEdit::textChanged, result, &QWidget::hide);
  AddField(label, field, {test});
  AddWidget(result);
}

void CCameraForm::AddSignIn() {
  password_->setEchoMode(QLineEdit::Password);
  password_->setInputMethodHints(Qt::ImhHiddenText | Qt::ImhSensitiveData | Qt::ImhNoPredictiveText);
  QPushButton* reveal = NewButton("camera_reveal_btn", tr("Show"));
  reveal->setCheckable(true);
  reveal->setAccessibleName(tr("Show the password"));
  connect(reveal, &QPushButton::toggled, this, [this, reveal](bool on) {
    password_->setEchoMode(on ? QLineEdit::Normal : QLineEdit::Password);
    reveal->setText(on ? tr("Hide") : tr("Show"));
  });
  AddField(tr("User"), user_);
  AddField(tr("Password"), password_, {reveal});
}

// Somebody pastes an address as the camera's manual has it, with user and password in it.
void CCameraForm::TakeSignInOut(QLineEdit* field, ReadAddress read_address) {
  TarnHost::CameraAddress read;
  TarnHost::CameraSignIn sign_in;
  QString why;
  if (!read_address(field->text(), &read, &why) || read.user.empty()) {
    return;
  }
  TarnHost::AddSignIn(read, &sign_in, &why);
  field->setText(QString::fromStdString(read.url));
  user_->setText(QString::fromStdString(read.user));
  if (sign_in.secret) {
    password_->setText(QString::fromStdString(sign_in.secret->Reveal()));
  }
}

void CCameraForm::TakeAllSignInsOut() {
  for (const Address& address : qAsConst(addresses_)) {
    TakeSignInOut(address.field, &TarnHost::ReadCameraAddress);
  }
  TakeSignInOut(device_, &TarnHost::ReadDeviceAddress);
}

TarnHost::CSecret CCameraForm::Secret() const {
  return TarnHost::CSecret(password_->text().toStdString());
}

void CCameraForm::Try(const Address& address) {
  TakeSignInOut(address.field, &TarnHost::ReadCameraAddress);
  const auto show = [result = QPointer<QLabel>(address.result)](const CameraTrialResult& answer) {
    if (result) {
      result->setProperty("good", answer.is_live);
      result->style()->unpolish(result);  // the skin's rule goes by it
      result->style()->polish(result);
      result->setText(answer.text);
      result->show();
    }
  };
  TarnHost::CameraAddress read;
  QString why;
  if (!TarnHost::ReadCameraAddress(address.field->text(), &read, &why)) {
    show({false, why});
  } else if (read.url.empty()) {
    show({false, tr("There is no address to try.")});
  } else {
    show({false, tr("Connecting...")});
    try_camera_({read.url, user_->text().toStdString(), Secret(), site_->authority}, address.result, show);
  }
}

TarnHost::CameraAccess CCameraForm::AccessBefore() const {
  const auto found = site_->access.find(code_);
  return found == site_->access.end() ? TarnHost::CameraAccess() : found->second;
}

QString CCameraForm::TakeAddresses(const TarnHost::CameraAccess& before,
                                   TarnHost::CameraChanges::Camera* change) const {
  TarnHost::CameraAddress read;
  QString why;
  for (const Address& address : addresses_) {
    if (!TarnHost::ReadCameraAddress(address.field->text(), &read, &why)) {
      return why;
    }
    if (read.url != site_->Address(code_, address.stream)) {
      change->streams.push_back({address.stream, read.url});
    }
  }
  if (TarnHost::ReadDeviceAddress(device_->text(), &read, &why) && read.url != before.device_url) {
    change->device_url = read.url;
  }
  return why;
}

QString CCameraForm::TakeSignIn(const TarnHost::CameraAccess& before, TarnHost::CameraChanges::Camera* change) const {
  const std::string user = user_->text().toStdString();
  if (user != before.user) {
    change->user = user;
  }
  if (Secret() != before.secret) {
    change->secret = Secret();
  }
  QString why = TarnHost::WhyNoCameraUser(user_->text());
  if (why.isEmpty()) {
    why = TarnHost::WhyNoCameraSecret(Secret());
  }
  return why;
}

std::optional<TarnHost::CameraChanges::Camera> CCameraForm::Entered(QString* why) const {
  TarnHost::CameraChanges::Camera change;
  change.index_code = code_;
  const auto* camera = site_->Camera(code_);
  const QString name = name_->text().trimmed();
  if (!camera || name.toStdString() != camera->name) {
    change.name = name.toStdString();
    *why = TarnHost::WhyNoCameraName(name);
  }
  const std::string region = region_->currentData().toString().toStdString();
  if (!camera || region != camera->region_index_code) {
    change.region = region;
  }
  const TarnHost::CameraAccess before = AccessBefore();
  if (why->isEmpty()) {
    *why = TakeAddresses(before, &change);
  }
  if (why->isEmpty()) {
    *why = TakeSignIn(before, &change);
  }
  return why->isEmpty() ? std::make_optional(std::move(change)) : std::nullopt;
}

void CCameraForm::Save() {
  TakeAllSignInsOut();
  QString why;
  const auto change = Entered(&why);
  ShowFault(why);
  if (!change) {
    return;
  }
  TarnHost::CameraChanges changes;
  changes.cameras.push_back(*change);
  SendChanges(changes);
}

}  // namespace TarnClient
