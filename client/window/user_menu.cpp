#include "window/user_menu.h"

#include <QActionGroup>
#include <QMenu>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "plans/off_thread.h"
#include "wall/plain_text_tip.h"

namespace TarnClient {

namespace {

struct Users {
  bool ok = false;
  QStringList names;
  QString error;
};

Users FetchUsers() {
  view_plugin_protocol::UserResponseInfo response;
  Users users;
  users.ok = LyraPluginManager::CViewBusinessInterfaceMgr::Instance().GetAllUserInfo({}, response);
  users.error = MarUIControl::StringToQString(response.error_info);
  for (const auto& user : response.users) {
    users.names << MarUIControl::StringToQString(user.name);
  }
  return users;
}

// A lone "&" in a name would become a mnemonic.
QString Shown(QString name) {
  return name.replace(QLatin1Char('&'), QLatin1String("&&"));
}

}  // namespace

CUserMenu::CUserMenu(const QString& user, QWidget* parent) : QToolButton(parent), menu_(new QMenu(this)) {
  setObjectName(QStringLiteral("user_btn"));
  setIcon(QIcon(QStringLiteral(":/TarnClient/images/user.svg")));
  setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  setFocusPolicy(Qt::StrongFocus);
  menu_->setObjectName(QStringLiteral("user_menu"));
  menu_->setAccessibleName(tr("Users"));
  connect(this, &QToolButton::clicked, this, &CUserMenu::Open);
  SetUser(user);
}

void CUserMenu::SetUser(const QString& user) {
  user_ = user;
  setText(Shown(user));
  setAccessibleName(tr("User: %1").arg(user));
  setToolTip(PlainTextTip(tr("%1. Switch user (Ctrl+U)").arg(accessibleName())));
}

void CUserMenu::Open() {
  if (fetching_) {
    return;
  }
  fetching_ = true;
  RunOffThread(this, &FetchUsers, [this](const Users& users) {
    fetching_ = false;
    if (users.ok) {
      Show(users.names);
    } else {
      Q_EMIT SignalFailed(users.error);
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
