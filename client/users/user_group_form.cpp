#include "users/user_group_form.h"

#include "MarUIControl/line_edit.h"
#include "plan_rules/plan_limits.h"
#include "users/check_list.h"
#include "users/users_call.h"

namespace TarnClient {

using TarnHost::SiteUser;
using TarnHost::SiteUserGroup;

namespace {

QString TitleOf(const std::optional<SiteUserGroup>& group) {
  return group ? CUserGroupForm::tr("User group") : CUserGroupForm::tr("New user group");
}

QStringList NamesOf(const std::vector<SiteUser>& users) {
  QStringList names;
  for (const SiteUser& user : users) {
    names << user.name;
  }
  return names;
}

QStringList MembersOf(const std::vector<SiteUser>& users, const QString& group) {
  QStringList names;
  for (const SiteUser& user : users) {
    if (user.user_groups.contains(group)) {
      names << user.name;
    }
  }
  return names;
}

}  // namespace

CUserGroupForm::CUserGroupForm(const TarnHost::SiteUsers& site, const std::optional<SiteUserGroup>& group,
                               QWidget* parent)
    : CFormDialog(QStringLiteral("user_group_form"), TitleOf(group), tr("Save"), parent), site_(site), before_(group) {
  const SiteUserGroup shown = group.value_or(SiteUserGroup());
  name_ = new MarUIControl::CLineEdit(this);
  name_->setObjectName(QStringLiteral("user_group_name"));
  name_->setMaxLength(view_plugin_protocol::kLongestName);
  name_->setText(shown.name);
  AddField(tr("Name"), name_);
  AddNote(tr("Its members:"));
  members_ =
      new CCheckList("user_group_members", tr("Members"), NamesOf(site.users), MembersOf(site.users, shown.name), this);
  AddWidget(members_);
  connect(this, &CFormDialog::SignalConfirmed, this, &CUserGroupForm::Save);
  name_->setFocus();
}

// Users are compared with what they were under the group's old name, and get the new one with it.
void CUserGroupForm::Save() {
  SiteUserGroup after = before_.value_or(SiteUserGroup());
  after.name = name_->text().trimmed();
  TarnHost::SiteUserChanges changes;
  changes.user_groups.push_back({{before_, after}});
  const QStringList members = members_->Checked();
  for (const SiteUser& user : site_.users) {
    SiteUser changed = user;
    if (before_) {
      changed.user_groups.removeAll(before_->name);
    }
    if (members.contains(user.name)) {
      changed.user_groups << after.name;
    }
    changed.user_groups.sort();
    if (!(changed == user)) {
      changes.users.push_back({{user, changed}, std::nullopt});
    }
  }
  SetBusy(true);
  SendUserChanges(changes, this, [this](const SiteCallResult& result) { CloseIfDone(result); });
}

}  // namespace TarnClient
