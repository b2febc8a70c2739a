#include "users/user_form.h"

#include <QCheckBox>

#include "MarUIControl/line_edit.h"
#include "log_in/typed_password.h"
#include "plan_rules/plan_limits.h"
#include "users/check_list.h"
#include "users/right_texts.h"
#include "users/users_call.h"

namespace TarnClient {

using TarnHost::SiteUser;

namespace {

QString TitleOf(const std::optional<SiteUser>& user) {
  return user ? CUserForm::tr("User") : CUserForm::tr("New user");
}

}  // namespace

CUserForm::CUserForm(const std::optional<SiteUser>& user, const QStringList& user_groups, QWidget* parent)
    : CFormDialog(QStringLiteral("user_form"), TitleOf(user), tr("Save"), parent), before_(user) {
  const SiteUser shown = user.value_or(SiteUser());
  name_ = new MarUIControl::CLineEdit(this);
  name_->setObjectName(QStringLiteral("user_name"));
  name_->setMaxLength(view_plugin_protocol::kLongestName);
  name_->setText(shown.name);
  AddField(tr("Name"), name_);
  AddRights();
  if (!user_groups.isEmpty()) {
    AddNote(tr("Member of these user groups:"));
    groups_ = new CCheckList("user_groups", tr("User groups"), user_groups, shown.user_groups, this);
    AddWidget(groups_);
  }
  AddPassword();
  connect(this, &CFormDialog::SignalConfirmed, this, &CUserForm::Save);
  name_->setFocus();
}

void CUserForm::AddRights() {
  AddNote(tr("May do this with public plans and the site:"));
  for (const int code : AllRights()) {
    auto* box = new QCheckBox(TextOfRight(code), this);
    box->setObjectName(QStringLiteral("user_right_%1").arg(code));
    box->setChecked(before_ && before_->rights.count(code) != 0);
    rights_[code] = box;
    AddWidget(box);
  }
}

void CUserForm::AddPassword() {
  const bool had_one = before_ && before_->has_password;
  has_password_ = new QCheckBox(tr("Logs in with a password"), this);
  has_password_->setObjectName(QStringLiteral("user_has_password"));
  has_password_->setChecked(had_one);
  AddNote(QString());
  AddWidget(has_password_);
  for (MarUIControl::CLineEdit** field : {&password_, &again_}) {
    *field = new MarUIControl::CLineEdit(this);
    (*field)->setEchoMode(QLineEdit::Password);
    (*field)->setInputMethodHints(Qt::ImhHiddenText | Qt::ImhNoPredictiveText | Qt::ImhSensitiveData);
    (*field)->setEnabled(had_one);
    connect(has_password_, &QCheckBox::toggled, *field, &QWidget::setEnabled);
  }
  password_->setObjectName(QStringLiteral("user_password"));
  again_->setObjectName(QStringLiteral("user_password_again"));
  if (had_one) {
    password_->setPlaceholderText(tr("Left empty, it stays"));
  }
  AddField(tr("New password"), password_);
  AddField(tr("The same again"), again_);
}

QString CUserForm::PasswordFault() const {
  const bool had_one = before_ && before_->has_password;
  if (!has_password_->isChecked()) {
    return QString();
  }
  if (password_->text() != again_->text()) {
    return tr("The two passwords are not the same.");
  }
  if (password_->text().isEmpty() && !had_one) {
    return tr("Type a password.");
  }
  return QString();
}

std::optional<TarnHost::CSecret> CUserForm::Password() const {
  const bool had_one = before_ && before_->has_password;
  if (!has_password_->isChecked()) {
    return had_one ? std::make_optional(TarnHost::CSecret()) : std::nullopt;
  }
  if (password_->text().isEmpty()) {
    return std::nullopt;
  }
  return TypedPassword(*password_);
}

void CUserForm::Save() {
  const QString fault = PasswordFault();
  ShowFault(fault);
  if (!fault.isEmpty()) {
    password_->setFocus();
    return;
  }
  SiteUser after = before_.value_or(SiteUser());
  after.name = name_->text();
  after.rights.clear();
  for (const auto& [code, box] : rights_) {
    if (box->isChecked()) {
      after.rights.insert(code);
    }
  }
  if (groups_) {
    after.user_groups = groups_->Checked();
  }
  TarnHost::SiteUserChanges changes;
  changes.users.push_back({{before_, after}, Password()});
  SetBusy(true);
  SendUserChanges(changes, this, [this](const SiteCallResult& result) { CloseIfDone(result); });
}

}  // namespace TarnClient
