#include "users/users_page.h"

#include <QAction>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTabBar>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "MarUIControl/nomal_message.h"
#include "TarnHost/host_services.h"
#include "TarnUIDataController/message_tip_manager.h"
#include "TarnUIDataController/show_message_tip.h"
#include "host_calls/ask.h"
#include "settings/list_command.h"
#include "users/limit_form.h"
#include "users/right_texts.h"
#include "users/user_form.h"
#include "users/user_group_form.h"
#include "users/users_call.h"

namespace TarnClient {

using TarnHost::SiteLimit;
using TarnHost::SiteUser;
using TarnHost::SiteUserChanges;
using TarnHost::SiteUserGroup;
using TarnHost::SiteUsers;

namespace {

constexpr int kQuestion = 3;  // OK and Cancel
constexpr int kNameWidth = 200, kColumnWidth = 230;

struct UsersAnswer {
  std::optional<SiteUsers> site;
  std::string error;
};

UsersAnswer ReadUsers() {
  SiteUsers site;
  const SiteCallResult result = RunOnSite(
      [&site](TarnHost::IHostServices& services, std::string* error) { return services.GetSiteUsers(site, error); });
  if (result.ok) {
    return {std::move(site), std::string()};
  }
  return {std::nullopt, result.response.error_info};
}

QString MembersOf(const SiteUsers& site, const QString& group) {
  QStringList names;
  for (const SiteUser& user : site.users) {
    if (user.user_groups.contains(group)) {
      names << user.name;
    }
  }
  return names.join(QStringLiteral(", "));
}

}  // namespace

CUsersPage::CUsersPage(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("users_page"));
  kinds_ = new QTabBar(this);
  kinds_->setObjectName(QStringLiteral("users_kinds"));
  kinds_->setAccessibleName(tr("What the list shows"));
  kinds_->setDrawBase(false);
  kinds_->setExpanding(false);
  for (const QString& kind : {tr("Users"), tr("User groups"), tr("Who sees which group")}) {
    kinds_->addTab(kind);
  }
  BuildList();
  auto* left = new QVBoxLayout;
  left->setSpacing(8);
  left->addWidget(kinds_);
  left->addWidget(list_, 1);
  left->addWidget(state_, 1);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 12, 0, 0);
  layout->setSpacing(16);
  layout->addLayout(left, 1);
  layout->addLayout(BuildCommands());
  setFocusProxy(list_);
  connect(kinds_, &QTabBar::currentChanged, this, &CUsersPage::Show);
  Show();
  Read();
}

QList<MarUIControl::KeyEntry> CUsersPage::Keys() {
  const QString group = tr("In the settings, on the page of users");
  return {{group, {QKeySequence(Qt::Key_Insert)}, tr("Add...")},
          {group, {QKeySequence(Qt::Key_F2), QKeySequence(Qt::Key_Return)}, tr("Change...")},
          {group, {QKeySequence(Qt::Key_Delete)}, tr("Delete")}};
}

void CUsersPage::BuildList() {
  list_ = new QTreeWidget(this);
  list_->setObjectName(QStringLiteral("users_list"));
  list_->setRootIsDecorated(false);
  list_->setUniformRowHeights(true);
  list_->setAllColumnsShowFocus(true);
  connect(list_, &QTreeWidget::currentItemChanged, this, &CUsersPage::RenewCommands);
  connect(list_, &QTreeWidget::itemActivated, this, &CUsersPage::Edit);
  state_ = new QLabel(this);
  state_->setObjectName(QStringLiteral("site_state"));
  state_->setTextFormat(Qt::PlainText);
  state_->setAlignment(Qt::AlignCenter);
  state_->setWordWrap(true);
}

QVBoxLayout* CUsersPage::BuildCommands() {
  auto* column = new QVBoxLayout;
  column->setSpacing(8);
  add_ = AddCommand("users_add_btn", tr("Add..."), Qt::Key_Insert, &CUsersPage::Add, column);
  edit_ = AddCommand("users_edit_btn", tr("Change..."), Qt::Key_F2, &CUsersPage::Edit, column);
  remove_ = AddCommand("users_remove_btn", tr("Delete"), Qt::Key_Delete, &CUsersPage::Remove, column);
  column->addStretch();
  return column;
}

QAction* CUsersPage::AddCommand(const char* name, const QString& text, const QKeySequence& key,
                                void (CUsersPage::*command)(), QVBoxLayout* column) {
  QAction* action = AddListCommand(list_, name, text, key, column);
  connect(action, &QAction::triggered, this, command);
  return action;
}

void CUsersPage::Read() {
  HostCalls::Ask(&ReadUsers).Replacing(reading_).Then(this, [this](const UsersAnswer& answer) {
    trouble_ = QString::fromStdString(answer.error);
    if (answer.site) {
      site_ = answer.site;
    }
    Show();
  });
}

CUsersPage::Kind CUsersPage::Shown() const {
  return static_cast<Kind>(kinds_->currentIndex());
}

void CUsersPage::Show() {
  const int current = CurrentId();
  list_->clear();
  switch (Shown()) {
    case kUsers:
      SetColumns({tr("Name"), tr("May"), tr("User groups"), tr("Password")});
      ShowUsers();
      break;
    case kUserGroups:
      SetColumns({tr("Name"), tr("Members")});
      ShowUserGroups();
      break;
    case kLimits:
      SetColumns({tr("Group of public plans"), tr("Seen by")});
      ShowLimits();
      break;
  }
  list_->setAccessibleName(kinds_->tabText(kinds_->currentIndex()));
  for (int row = 0; row < list_->topLevelItemCount(); ++row) {
    if (row == 0 || list_->topLevelItem(row)->data(0, Qt::UserRole).toInt() == current) {
      list_->setCurrentItem(list_->topLevelItem(row));
    }
  }
  ShowState();
}

void CUsersPage::SetColumns(const QStringList& labels) {
  list_->setColumnCount(labels.size());
  list_->setHeaderLabels(labels);
  list_->setColumnWidth(0, kNameWidth);
  for (int column = 1; column + 1 < labels.size(); ++column) {
    list_->setColumnWidth(column, kColumnWidth);
  }
}

void CUsersPage::AddRow(const QStringList& texts, int id) {
  auto* row = new QTreeWidgetItem(list_, texts);
  row->setData(0, Qt::UserRole, id);
  for (int column = 0; column < texts.size(); ++column) {
    row->setToolTip(column, texts[column].toHtmlEscaped());
  }
}

void CUsersPage::ShowUsers() {
  for (const SiteUser& user : site_.value_or(SiteUsers()).users) {
    QString password = tr("none");
    if (user.lacks_role) {
      password = tr("no role at the server");
    } else if (user.has_password) {
      password = tr("yes");
    }
    AddRow({user.name, ShortTextOf(user.rights), user.user_groups.join(QStringLiteral(", ")), password}, user.id);
  }
}

void CUsersPage::ShowUserGroups() {
  const SiteUsers site = site_.value_or(SiteUsers());
  for (const SiteUserGroup& group : site.user_groups) {
    AddRow({group.name, MembersOf(site, group.name)}, group.id);
  }
}

void CUsersPage::ShowLimits() {
  for (const SiteLimit& group : site_.value_or(SiteUsers()).groups) {
    if (!group.user_groups.isEmpty()) {
      AddRow({group.path, group.user_groups.join(QStringLiteral(", "))}, group.group);
    }
  }
}

QString CUsersPage::StateText() const {
  if (!site_ && trouble_.isEmpty()) {
    return tr("The users are being read...");
  }
  if (!site_) {
    return tr("The users cannot be read: %1").arg(trouble_);
  }
  if (list_->topLevelItemCount() > 0) {
    return QString();
  }
  if (Shown() == kUserGroups) {
    return tr("There are no user groups yet. They say who sees which group of public plans.");
  }
  return tr("All users see all groups of public plans.");
}

void CUsersPage::ShowState() {
  const QString text = StateText();
  state_->setText(text);
  state_->setVisible(!text.isEmpty());
  list_->setVisible(text.isEmpty());
  RenewCommands();
}

// Without user groups nothing can be limited to any.
void CUsersPage::RenewCommands() {
  const bool is_row = site_ && list_->currentItem() != nullptr;
  add_->setEnabled(site_ && (Shown() != kLimits || !site_->user_groups.empty()));
  edit_->setEnabled(is_row);
  remove_->setEnabled(is_row);
}

int CUsersPage::CurrentId() const {
  const QTreeWidgetItem* row = list_->currentItem();
  return row ? row->data(0, Qt::UserRole).toInt() : 0;
}

template <class Record>
std::optional<Record> CUsersPage::Current(const std::vector<Record>& records) const {
  const auto found =
      std::find_if(records.begin(), records.end(), [id = CurrentId()](const Record& one) { return one.id == id; });
  return found == records.end() ? std::nullopt : std::make_optional(*found);
}

std::optional<SiteLimit> CUsersPage::CurrentLimit() const {
  for (const SiteLimit& group : site_->groups) {
    if (group.group == CurrentId()) {
      return group;
    }
  }
  return std::nullopt;
}

void CUsersPage::Add() {
  Open(true);
}

void CUsersPage::Edit() {
  if (edit_->isEnabled()) {
    Open(false);
  }
}

void CUsersPage::Open(bool is_new) {
  QStringList groups;
  for (const SiteUserGroup& group : site_->user_groups) {
    groups << group.name;
  }
  switch (Shown()) {
    case kUsers:
      return OpenForm(new CUserForm(is_new ? std::nullopt : Current(site_->users), groups, this));
    case kUserGroups:
      return OpenForm(new CUserGroupForm(*site_, is_new ? std::nullopt : Current(site_->user_groups), this));
    case kLimits:
      return OpenForm(new CLimitForm(*site_, is_new ? std::nullopt : CurrentLimit(), this));
  }
}

void CUsersPage::OpenForm(CFormDialog* form) {
  connect(form, &QDialog::finished, this, &CUsersPage::Read);
  form->open();
}

QString CUsersPage::Question() const {
  const QString name = list_->currentItem()->text(0);
  switch (Shown()) {
    case kUsers:
      return tr("Delete the user \"%1\" with all of this user's own plans? This cannot be undone.").arg(name);
    case kUserGroups:
      return tr("Delete the user group \"%1\"?").arg(name);
    case kLimits:
      break;
  }
  return tr("Let all users see \"%1\"?").arg(name);
}

SiteUserChanges CUsersPage::Removal() const {
  SiteUserChanges changes;
  switch (Shown()) {
    case kUsers:
      changes.users.push_back({{Current(site_->users), std::nullopt}, std::nullopt});
      break;
    case kUserGroups:
      changes.user_groups.push_back({{Current(site_->user_groups), std::nullopt}});
      break;
    case kLimits: {
      SiteLimit after = CurrentLimit().value_or(SiteLimit());
      after.user_groups.clear();
      changes.limits.push_back({CurrentLimit().value_or(SiteLimit()), after});
      break;
    }
  }
  return changes;
}

// What is removed is what the question named, whatever comes in while it is open.
void CUsersPage::Remove() {
  const SiteUserChanges changes = Removal();
  const QPointer<CUsersPage> alive(this);
  const int answer = tarn_ui_data_controller::ShowMessageTip(Question(), MarUIControl::CNomalMessage::Failure, this,
                                                             kQuestion, tr("Delete"));
  if (!alive || answer != 1) {
    return;
  }
  SendUserChanges(changes, this, [this](const SiteCallResult& result) {
    if (!result.ok) {
      Tip(QString::fromStdString(result.response.error_info));
    }
    Read();
  });
}

void CUsersPage::Tip(const QString& text) {
  tarn_ui_data_controller::CMessageTipManager::Instance().ShowTip(text, MarUIControl::CNomalMessage::Failure, this);
}

}  // namespace TarnClient
