#include "window/user_menu.h"

#include <QActionGroup>
#include <QMenu>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "host_calls/ask.h"
#include "window/window_actions.h"

namespace TarnClient {

namespace {

QStringList NamesOf(const std::list<view_plugin_protocol::UserInfo>& users) {
  QStringList names;
  for (const auto& user : users) {
    names << MarUIControl::StringToQString(user.name);
  }
  return names;
}

// A lone "&" in a name would become a mnemonic.
QString Shown(QString name) {
  return name.replace(QLatin1Char('&'), QLatin1String("&&"));
}

}  // namespace

CUserMenu::CUserMenu(const QString& user, CWindowActions* actions, QWidget* parent)
    : QToolButton(parent), actions_(actions), menu_(new QMenu(this)) {
  setObjectName(QStringLiteral("user_btn"));
  setDefaultAction(actions_->Of(WindowCommand::Users));
  setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  setFocusPolicy(Qt::StrongFocus);
  menu_->setObjectName(QStringLiteral("user_menu"));
  menu_->setAccessibleName(tr("Users"));
  actions_->Connect(WindowCommand::Users, [this] { Open(); });
  SetUser(user);
}

void CUserMenu::SetUser(const QString& user) {
  user_ = user;
  setAccessibleName(tr("User: %1").arg(user));
  actions_->Of(WindowCommand::Users)->setIconText(Shown(user));
  actions_->SetTipText(WindowCommand::Users, tr("%1. Switch user").arg(accessibleName()));
}

void CUserMenu::Open() {
  if (calls_.IsUnderWay()) {
    return;
  }
  HostCalls::Ask(&LyraPluginManager::CViewBusinessInterfaceMgr::GetAllUserInfo, view_plugin_protocol::UserRequestInfo())
      .Within(calls_)
      .Then(this, [this](const auto& answer) {
        if (answer.ok) {
          Show(NamesOf(answer.response.users));
        } else {
          Q_EMIT SignalFailed(MarUIControl::StringToQString(answer.response.error_info));
        }
      });
}

void CUserMenu::Show(const QStringList& users) {
  menu_->clear();
  auto* group = new QActionGroup(menu_);
  for (const QString& user : users) {
    QAction* action = menu_->addAction(Shown(user));
    action->setCheckable(true);
    action->setChecked(user == user_);
    group->addAction(action);
    connect(action, &QAction::triggered, this, [this, user] {
      if (user != user_) {
        Q_EMIT SignalUserChosen(user);
      }
    });
    if (user == user_) {
      menu_->setActiveAction(action);
    }
  }
  // Above the button: it stands at the lower edge of the window.
  menu_->popup(mapToGlobal(QPoint(0, -menu_->sizeHint().height())));
}

}  // namespace TarnClient
