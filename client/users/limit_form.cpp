#include "users/limit_form.h"

#include <QCompleter>
#include <algorithm>

#include "MarUIControl/line_edit.h"
#include "users/check_list.h"
#include "users/users_call.h"

namespace TarnClient {

using TarnHost::SiteLimit;

CLimitForm::CLimitForm(const TarnHost::SiteUsers& site, const std::optional<SiteLimit>& limit, QWidget* parent)
    : CFormDialog(QStringLiteral("limit_form"), tr("Who sees a group"), tr("Save"), parent), site_(site) {
  path_ = new MarUIControl::CLineEdit(this);
  path_->setObjectName(QStringLiteral("limit_path"));
  QStringList paths, names;
  for (const SiteLimit& group : site.groups) {
    paths << group.path;
  }
  for (const TarnHost::SiteUserGroup& group : site.user_groups) {
    names << group.name;
  }
  auto* completer = new QCompleter(paths, path_);
  completer->setFilterMode(Qt::MatchContains);
  completer->setCaseSensitivity(Qt::CaseInsensitive);
  path_->setCompleter(completer);
  path_->setPlaceholderText(tr("Perimeter/Gates"));
  const SiteLimit shown = limit.value_or(SiteLimit());
  path_->setText(shown.path);
  path_->setReadOnly(limit.has_value());
  AddField(tr("Group of public plans"), path_);
  AddNote(
      tr("Seen by these user groups alone, with all below it. Without any, all users see it. Who may configure the"
         " site sees all groups."));
  user_groups_ = new CCheckList("limit_user_groups", tr("User groups"), names, shown.user_groups, this);
  AddWidget(user_groups_);
  connect(this, &CFormDialog::SignalConfirmed, this, &CLimitForm::Save);
  if (limit) {
    user_groups_->setFocus();
  } else {
    path_->setFocus();
  }
}

const SiteLimit* CLimitForm::Group() const {
  const auto has_path = [path = path_->text().trimmed()](const SiteLimit& group) { return group.path == path; };
  if (std::count_if(site_.groups.begin(), site_.groups.end(), has_path) != 1) {
    return nullptr;  // of several of one name the form cannot tell which is meant
  }
  return &*std::find_if(site_.groups.begin(), site_.groups.end(), has_path);
}

void CLimitForm::Save() {
  const SiteLimit* group = Group();
  if (group == nullptr) {
    ShowFault(tr("There is no one group with this path."));
    path_->setFocus();
    return;
  }
  SiteLimit after = *group;
  after.user_groups = user_groups_->Checked();
  TarnHost::SiteUserChanges changes;
  changes.limits.push_back({*group, after});
  SetBusy(true);
  SendUserChanges(changes, this, [this](const SiteCallResult& result) { CloseIfDone(result); });
}

}  // namespace TarnClient
