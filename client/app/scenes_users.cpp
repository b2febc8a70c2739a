#include <TarnPlanView/plan_clock.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QDateTime>
#include <QLineEdit>
#include <QListWidget>
#include <QTabBar>

#include "TarnHost/host_services.h"
#include "TarnHost/site_users.h"
#include "app/scenes.h"
#include "log_in/log_in_dialog.h"
#include "settings/settings_dialog.h"
#include "window/main_window.h"

// Scenes of logging in, of a locked desk and of the page of users.
namespace TarnClient {

namespace {

using TarnHost::LogInAnswer;
using TarnHost::LogInOutcome;

constexpr int kUserGroupsTab = 1, kLimitsTab = 2;  // tabs of the page of users

void ShowLogIn(QWidget* parent, const QStringList& without_password, LogInOutcome outcome, const QString& note = {}) {
  CLogInDialog::Setup setup;
  setup.note = note;
  setup.title = CLogInDialog::tr("Log in");
  setup.confirm_text = setup.title;
  setup.may_remember = true;
  setup.without_password = without_password;
  if (without_password.isEmpty()) {
    setup.user = QStringLiteral("operator");
  }
  setup.log_in = [outcome](const auto&, const auto&) { return LogInAnswer{outcome, 60}; };
  auto* dialog = new CLogInDialog(std::move(setup), parent);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->show();
}

// So that the page shows user groups and a limit.
void MakeUsers() {
  const auto services = TarnHost::InstalledHostServices();
  TarnHost::SiteUsers site;
  std::string error;
  TarnHost::SiteUserChanges changes;
  if (!services->GetSiteUsers(site, &error)) {
    return;
  }
  changes.user_groups.push_back({{std::nullopt, TarnHost::SiteUserGroup{0, QStringLiteral("Night shift")}}});
  const QStringList member{QStringLiteral("Night shift")};
  changes.users.push_back({{std::nullopt, TarnHost::SiteUser{0, QStringLiteral("Weber"), {5, 6}, member, false}},
                           TarnHost::CSecret("not shown")});
  services->ChangeSiteUsers(changes, &error);
}

}  // namespace

void CScene::LogInDemo() {
  Browse();
  AddCall([this] {
    ShowLogIn(window_, {QStringLiteral("operator"), QStringLiteral("guard"), QStringLiteral("viewer")},
              LogInOutcome::kDone);
  });
}

void CScene::LogInWrong() {
  Browse();
  AddCall([this] { ShowLogIn(window_, {}, LogInOutcome::kWrongPassword); });
  Add([this] {
    auto* dialog = window_->findChild<CLogInDialog*>();
    dialog->findChild<QLineEdit*>(QStringLiteral("log_in_password"))->setText(QStringLiteral("secret"));
    dialog->findChild<QAbstractButton*>(QStringLiteral("log_in_confirm_btn"))->click();
    return true;
  });
}

void CScene::LogInAtCopy() {
  Browse();
  AddCall([this] {
    const QDateTime at(TarnPlanView::CPlanClock::Now().date().addDays(-1), QTime(17, 42));
    ShowLogIn(window_, {}, LogInOutcome::kDone, CLogInDialog::NoteOnCopy(at));
  });
}

void CScene::DeskLocked() {
  Browse();
  AddPlay(QStringLiteral("Gate overview"));
  AddCall([this] { window_->LockDesk(); });
}

void CScene::DeskUnlock() {
  DeskLocked();
  AddCall([this] { window_->UnlockDesk(); });
}

void CScene::DeskOfOldPassword() {
  Browse();
  AddPlay(QStringLiteral("Gate overview"));
  AddCall([this] { window_->AskForPassword(); });
}

void CScene::DeskLockedWithEditor() {
  PlanEditor();
  AddCall([this] { window_->LockDesk(); });
}

void CScene::SiteUsersPage() {
  Browse();
  Add([this] {
    MakeUsers();
    window_->OpenSettings();
    window_->Settings()->OpenUsers();
    return true;
  });
  Add([this] {
    const auto* list = window_->Settings()->findChild<QAbstractItemView*>(QStringLiteral("users_list"));
    return list && list->model()->rowCount() > 0;
  });
}

void CScene::UserForm() {
  SiteUsersPage();
  AddSettingsClick("users_edit_btn");
}

void CScene::AddUsersKind(int kind) {
  Add([this, kind] {
    window_->Settings()->findChild<QTabBar*>(QStringLiteral("users_kinds"))->setCurrentIndex(kind);
    return true;
  });
}

void CScene::UserGroupForm() {
  SiteUsersPage();
  AddUsersKind(kUserGroupsTab);
  AddSettingsClick("users_edit_btn");
}

void CScene::LimitForm() {
  SiteUsersPage();
  AddUsersKind(kLimitsTab);
  AddSettingsClick("users_add_btn");
  Add([this] {
    auto* path = window_->Settings()->findChild<QLineEdit*>(QStringLiteral("limit_path"));
    auto* groups = window_->Settings()->findChild<QListWidget*>(QStringLiteral("limit_user_groups"));
    if (!path || !groups) {
      return false;
    }
    path->setText(QStringLiteral("Perimeter/Gates"));
    groups->item(0)->setCheckState(Qt::Checked);
    return true;
  });
}

}  // namespace TarnClient
