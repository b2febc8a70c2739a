#include "window/desk_window.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolButton>
#include <utility>

#include "MarUIControl/nomal_message.h"
#include "help/about_dialog.h"
#include "log_in/lock_bar.h"
#include "log_in/lock_rules.h"
#include "messages/message_desk.h"
#include "messages/message_log.h"
#include "plans/plan_player.h"
#include "wall/live_wall.h"
#include "wall/wall_bar.h"
#include "window/alt_key.h"
#include "window/main_menu.h"
#include "window/store_state.h"
#include "window/tab_order.h"
#include "window/window_actions.h"

namespace TarnClient {

using MarUIControl::CNomalMessage;

namespace {

constexpr int kNameMargin = 6;

}  // namespace

CDeskWindow::CDeskWindow(QWidget* parent) : QMainWindow(parent), actions_(new CWindowActions(this)) {
  statusBar()->setSizeGripEnabled(false);
}

CDeskWindow::~CDeskWindow() = default;

void CDeskWindow::TakeDesk(CWallDesk::Setup setup) {
  desk_ = std::make_unique<CWallDesk>(std::move(setup), actions_, this);
  setCentralWidget(desk_->Parts());
  connect(desk_.get(), &CWallDesk::SignalPanelsWanted, this, [this] {
    if (isFullScreen()) {
      ShowWallAlone(false);
    }
  });
  lock_bar_ = new CLockBar(actions_->Of(WindowCommand::Lock), this);
  setMenuWidget(lock_bar_);
}

void CDeskWindow::AddWallName() {
  wall_name_ = new QLabel(WallName(desk_->Number()), this);
  wall_name_->setObjectName(QStringLiteral("wall_name"));
  wall_name_->setMargin(kNameMargin);
  statusBar()->addWidget(wall_name_);
}

void CDeskWindow::ShowWallName(bool show) {
  wall_name_->setVisible(show);
}

void CDeskWindow::AddStoreState(const QString& store_url) {
  store_url_ = store_url;
  store_state_ = new CStoreState(store_url, this);
  statusBar()->addWidget(store_state_, 1);
}

void CDeskWindow::AddMessages(CMessageDesk* messages) {
  CMessageLog* log = &messages->Log();
  connect(desk_.get(), &CWallDesk::SignalSaid, log,
          [log](const QString& text) { log->Add(text, CNomalMessage::Success); });
  QToolButton* button = NewButton("messages_btn", WindowCommand::Messages);
  statusBar()->addPermanentWidget(button);
  const auto renew = [button](int unread) {
    button->setToolButtonStyle(unread > 0 ? Qt::ToolButtonTextBesideIcon : Qt::ToolButtonIconOnly);
  };
  connect(log, &CMessageLog::SignalUnreadChanged, button, renew);
  renew(log->Unread());
}

void CDeskWindow::AddButton(const char* name, WindowCommand command) {
  statusBar()->addPermanentWidget(NewButton(name, command));
}

QToolButton* CDeskWindow::NewButton(const char* name, WindowCommand command) {
  auto* button = new QToolButton(this);
  button->setObjectName(QString::fromLatin1(name));
  button->setFocusPolicy(Qt::StrongFocus);
  BindButton(button, actions_->Of(command));
  return button;
}

void CDeskWindow::AddMenu(const QVector<QVector<WindowCommand>>& last) {
  menu_button_ = NewButton("menu_btn", WindowCommand::Menu);
  statusBar()->addPermanentWidget(menu_button_);
  const auto plans = [this](QObject* owner) { return desk_->PlanEntries(owner); };
  const auto wall = [this] { return Wall().Bar()->Commands(); };
  menu_ = new CMainMenu(actions_, plans, wall, last, this);
  connect(new CAltKey(this), &CAltKey::SignalTapped, this, &CDeskWindow::OpenMenu);
  actions_->Connect(WindowCommand::Menu, [this] { OpenMenu(); });
  actions_->Connect(WindowCommand::About, [this] { OpenAbout(); });
  actions_->Connect(WindowCommand::FullScreen, [this] { ShowWallAlone(!isFullScreen()); });
}

void CDeskWindow::OrderTabs() {
  SetTabOrder(desk_->TabStops() << statusBar());
}

void CDeskWindow::OpenMenu() {
  menu_->OpenAbove(menu_button_);
}

void CDeskWindow::OpenAbout() {
  auto* about = new CAboutDialog(FactsOf(store_url_), this);
  about->open();
}

void CDeskWindow::ShowLock(const QString& text) {
  const bool is_locked = !text.isEmpty();
  lock_bar_->setVisible(is_locked);
  desk_->SetLocked(is_locked);
  actions_->SetLocked(text, [is_locked](WindowCommand command) { return !is_locked || WorksWhileLocked(command); });
  if (is_locked) {
    lock_bar_->ShowText(text);
    lock_bar_->Button()->setFocus(Qt::OtherFocusReason);
  } else {
    desk_->FocusRows();
  }
}

void CDeskWindow::ShowWallAlone(bool alone) {
  setWindowState(windowState().setFlag(Qt::WindowFullScreen, alone));
}

// By the user, from the last time, or by the desktop.
void CDeskWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  const bool alone = isFullScreen();
  if (event->type() != QEvent::WindowStateChange || !desk_ || desk_->Tabs()->isHidden() == alone) {
    return;
  }
  desk_->Tabs()->setVisible(!alone);
  statusBar()->setVisible(!alone || store_state_->HasTrouble());
  if (alone) {
    Wall().setFocus(Qt::OtherFocusReason);
  }
}

// No shortcut: what has the focus may have a better use for Esc, as a search has.
void CDeskWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && isFullScreen()) {
    return ShowWallAlone(false);
  }
  if (event->key() == Qt::Key_Escape) {
    return Player().Stop();
  }
  QMainWindow::keyPressEvent(event);
}

void CDeskWindow::ShowStoreTrouble(TarnHost::StoreTrouble trouble, const QDateTime& since, const QString& line) {
  store_state_->ShowTrouble(trouble, since, line);
  statusBar()->setVisible(!isFullScreen() || store_state_->HasTrouble());
  desk_->ShowServiceTrouble(store_state_->Trouble());
}

}  // namespace TarnClient
