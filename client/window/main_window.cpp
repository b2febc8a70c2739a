#include "window/main_window.h"

#include <TarnPlanView/panel_keys.h>
#include <TarnPlanView/plan_clock.h>

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QPointer>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "LyraPluginManager/error_kind.h"
#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "ResourceTreeKit/camera_tree.h"
#include "cameras/camera_notice.h"
#include "cameras/camera_panel.h"
#include "cameras/camera_states.h"
#include "cameras/site_addresses.h"
#include "commands/row_menu.h"
#include "composing/composer.h"
#include "help/help_desk.h"
#include "help/key_list.h"
#include "history/play_history.h"
#include "messages/message_desk.h"
#include "messages/messages_window.h"
#include "pictures/stream_supply.h"
#include "plans/plan_family.h"
#include "plans/plan_player.h"
#include "settings/desk_memory.h"
#include "settings/settings_dialog.h"
#include "settings/user_settings.h"
#include "site/camera_trials.h"
#include "site/site_page.h"
#include "site/stream_trials.h"
#include "users/users_page.h"
#include "wall/live_wall.h"
#include "wall/wall_keys.h"
#include "window/closing_question.h"
#include "window/desk_lock.h"
#include "window/extra_wall.h"
#include "window/leaving.h"
#include "window/lock_key.h"
#include "window/store_state.h"
#include "window/user_menu.h"
#include "window/user_switch.h"
#include "window/walls.h"
#include "window/window_actions.h"
#include "window/window_place.h"
#include "window/window_size.h"

namespace TarnClient {

using MarUIControl::CNomalMessage;

namespace {

CUserSettings* SettingsOf(const CMainWindow::Setup& setup, QObject* parent) {
  if (setup.settings) {
    return setup.settings;
  }
  return new CUserSettings(QString(), parent);
}

std::shared_ptr<IPictureSupply> PicturesOf(CCameraStates& cameras, CCameraNotice& notice) {
  CStreamSupply::Setup setup;
  setup.addresses = &ReadSiteAddresses;
  setup.is_online = [states = QPointer<CCameraStates>(&cameras)](const std::string& camera) {
    return !states || states->IsOnline(camera);
  };
  auto supply = std::make_shared<CStreamSupply>(std::move(setup));
  QObject::connect(&notice, &CCameraNotice::SignalCamerasChanged, supply.get(), &CStreamSupply::RenewAddresses);
  return supply;
}

}  // namespace

CMainWindow::CMainWindow(Setup setup, QWidget* parent)
    : CDeskWindow(parent),
      store_url_(setup.store_url),
      station_id_(setup.station_id),
      is_owners_desk_(setup.is_owners_desk),
      cameras_(new CCameraStates(this)),
      pictures_(PicturesOf(*cameras_, *new CCameraNotice(this))),
      trials_(new CCameraTrials(StreamTrials(), this)),
      messages_(new CMessageDesk(&Actions(), this)),
      help_(new CHelpDesk([this] { return AllKeys(); }, this)),
      history_(new CPlayHistory(this)),
      leaving_(new CLeaving(this)),
      user_settings_(SettingsOf(setup, this)),
      walls_(new CWalls(this)) {
  CWallDesk::Setup desk = DeskSetup(0);
  desk.cycle_clock = std::move(setup.cycle_clock);
  TakeDesk(std::move(desk));
  walls_->Begin(&Desk(), [this](int number) { return MakeExtraWall(number); });
  connect(walls_, &CWalls::SignalOpened, this, &CMainWindow::OnWallOpened);
  connect(walls_, &CWalls::SignalClosing, this,
          [this](const CExtraWall* wall) { memory_->Remove(wall->Desk().Number()); });
  connect(walls_, &CWalls::SignalChanged, this, &CMainWindow::OnWallsChanged);
  ShowTitle(QString());
  QApplication::setWindowIcon(QIcon(QStringLiteral(":/TarnClient/images/window_icon.svg")));  // dialogs', too
  BuildStatusBar(setup.user);
  connect(&Desk(), &CWallDesk::SignalTitle, this, &CMainWindow::ShowTitle);
  ConnectWall(this);
  Actions().Of(WindowCommand::CloseWall)->setVisible(false);  // it goes with the client
  FollowSettings();
  OrderTabs();
  resize(WindowSizeFor(screen()->availableSize()));
  memory_ = new CDeskMemory(user_settings_, history_, this);
  lock_ = new CDeskLock([this] { return Windows(); }, this);
  const auto* lock_key = new CLockKey(Actions().Of(WindowCommand::Lock)->shortcut(), this);
  connect(lock_key, &CLockKey::SignalPressed, this, &CMainWindow::LockDesk);
  BuildUserSwitch(setup.log_in);
  RememberWall(this);
  Desk().FocusRows();
}

CMainWindow::~CMainWindow() {
  memory_->Keep();
  walls_->CloseAll();
  Desk().End();
}

CWallDesk::Setup CMainWindow::DeskSetup(int number) {
  CWallDesk::Setup desk;
  desk.number = number;
  desk.station_id = station_id_;
  desk.pictures = pictures_;
  desk.history = history_;
  desk.walls = walls_;
  desk.snapshot_folder = [this] { return user_settings_->Chosen().snapshot_folder; };
  return desk;
}

std::unique_ptr<CExtraWall> CMainWindow::MakeExtraWall(int number) {
  const CExtraWall::Client client{store_url_, messages_, user_settings_, leaving_};
  return std::make_unique<CExtraWall>(DeskSetup(number), client);
}

// What there is once in the client answers in each window.
void CMainWindow::ConnectWall(CDeskWindow* wall) {
  CWindowActions& actions = wall->Actions();
  actions.Connect(WindowCommand::Settings, [this] { OpenSettings(); });
  actions.Connect(WindowCommand::Lock, [this] { OnLockKey(); });
  actions.Connect(WindowCommand::Keys, [this] { help_->Open(); });
  actions.Connect(WindowCommand::NewWall, [this, wall] { OpenNewWallFrom(wall); });
  actions.Connect(WindowCommand::Quit, [this] { close(); });
  connect(&wall->Desk(), &CWallDesk::SignalMayLeave, leaving_, &CLeaving::OnSaved);
  connect(&wall->Wall(), &CLiveWall::SignalPlanChanged, this, &CMainWindow::RenewCameraWatch);
  // The tree and the wall say the same of a camera.
  ResourceTreeKit::CCameraTree* tree = wall->Desk().Cameras().Tree();
  connect(cameras_, &CCameraStates::SignalChanged, tree, [tree] {
    if (tree->IsLoaded()) {
      tree->Renew();
    }
  });
  connect(cameras_, &CCameraStates::SignalChanged, &wall->Wall(), [live = &wall->Wall(), cameras = cameras_] {
    live->RenewNames([cameras](const std::string& code) { return cameras->NameOf(code); });
  });
  connect(tree, &ResourceTreeKit::CCameraTree::SignalLoaded, cameras_, &CCameraStates::Look);
}

void CMainWindow::OnWallOpened(CExtraWall* wall) {
  ConnectWall(wall);
  wall->Actions().Connect(WindowCommand::Users, [this] {
    activateWindow();
    OpenUsers();
  });
  messages_->Add(&wall->Actions());
  wall->Player().SetSecondsPerPlan(user_settings_->Chosen().seconds_per_plan);
  wall->ShowStoreTrouble(store_trouble_.trouble, store_trouble_.since, store_trouble_.line);
  PlaceNewWall(wall);
  RememberWall(wall);
  wall->show();
}

// The window's place is the desk's, not the user's: it stays when another one comes.
void CMainWindow::RememberWall(CDeskWindow* wall) {
  const CWallDesk& desk = wall->Desk();
  const CWallMemory* memory = memory_->Add({desk.Number(), wall, desk.Parts(), desk.Tabs(), desk.Families()});
  connect(&desk, &CWallDesk::SignalPicked, memory, &CWallMemory::SetPlayed);
}

// Where it once stood it is put by the memory.
void CMainWindow::PlaceNewWall(CExtraWall* wall) {
  QVector<QRect> others;
  for (const CDeskWindow* window : Windows()) {
    if (window != wall) {
      others << window->geometry();
    }
  }
  const WindowSpot spot = SpotForWall(ScreensNow(), others);
  wall->setGeometry(spot.window);
  if (spot.is_maximized && memory_->Known(wall->Desk().Number()).window.isEmpty()) {
    wall->setWindowState(wall->windowState() | Qt::WindowMaximized);
  }
}

void CMainWindow::OnWallsChanged() {
  for (const CDeskWindow* window : Windows()) {
    window->Actions().SetReason(WindowCommand::NewWall, walls_->WhyNoNewWall());
  }
  ShowWallName(!walls_->Extra().isEmpty());
  RenewCameraWatch();
}

QVector<CDeskWindow*> CMainWindow::Windows() {
  QVector<CDeskWindow*> windows{this};
  for (CExtraWall* wall : walls_->Extra()) {
    windows << wall;
  }
  return windows;
}

void CMainWindow::OpenNewWall() {
  OpenNewWallFrom(this);
}

void CMainWindow::OpenNewWallFrom(const CDeskWindow* wall) {
  const QString why_not = walls_->WhyNoNewWall();
  if (why_not.isEmpty()) {
    walls_->OpenNew();
  } else {
    wall->Desk().ShowTip(why_not, CNomalMessage::Hint);
  }
}

void CMainWindow::OpenLeftWalls() {
  for (const int number : memory_->LeftOpen()) {
    walls_->Open(number);
  }
  activateWindow();
}

void CMainWindow::RenewCameraWatch() {
  const QVector<CWallDesk*> desks = walls_->Desks();
  cameras_->Watch(
      std::any_of(desks.begin(), desks.end(), [](const CWallDesk* desk) { return desk->Wall().IsShowing(); }));
}

void CMainWindow::BuildStatusBar(const QString& user) {
  user_menu_ = new CUserMenu(user, &Actions(), this);
  connect(user_menu_, &CUserMenu::SignalUserChosen, this, &CMainWindow::SwitchUser);
  connect(user_menu_, &CUserMenu::SignalFailed, &Desk(),
          [this](const QString& text) { Desk().ShowTip(text, CNomalMessage::Failure); });
  statusBar()->addWidget(user_menu_);
  AddWallName();
  ShowWallName(false);
  AddStoreState(store_url_);
  AddMessages(messages_);
  AddButton("settings_btn", WindowCommand::Settings);
  AddMenu({{WindowCommand::History, WindowCommand::Messages},
           {WindowCommand::Users, WindowCommand::Lock, WindowCommand::Settings},
           {WindowCommand::NewWall},
           {WindowCommand::Keys, WindowCommand::About},
           {WindowCommand::Quit}});
}

QList<MarUIControl::KeyEntry> CMainWindow::AllKeys() const {
  const QList<MarUIControl::KeyEntry> of_rows = KeysOf(RowMenu(0).Actions(), tr("On a row or a hit"));
  const QString here = tr("In the window");
  const QList<MarUIControl::KeyEntry> alt{{here, {}, tr("Menu: press Alt and let it go")}};  // has no name as a key
  return KeysOf(Actions().All(), here) + alt + TarnPlanView::PanelKeys() + of_rows + WallKeys() +
         KeysOf(Desk().Composer().Commands().All(), tr("In a window of the live view")) + CMessagesWindow::Keys() +
         CSitePage::Keys() + CUsersPage::Keys();
}

void CMainWindow::FollowSettings() {
  const auto follow = [this] {
    for (const CWallDesk* desk : walls_->Desks()) {
      desk->Player().SetSecondsPerPlan(user_settings_->Chosen().seconds_per_plan);
    }
  };
  const auto say_trouble = [this] { SayTrouble(user_settings_->TroubleText()); };
  follow();
  QTimer::singleShot(0, this, say_trouble);  // over the window, which is not shown yet
  connect(user_settings_, &CUserSettings::SignalChosen, this, follow);
  connect(this, &CMainWindow::SignalUserSwitched, this, follow);
  connect(this, &CMainWindow::SignalUserSwitched, this, say_trouble);
  connect(user_settings_, &CUserSettings::SignalTrouble, this, &CMainWindow::SayTrouble);
}

// Once for all users whom it concerns.
void CMainWindow::SayTrouble(const QString& text) {
  if (!text.isEmpty() && said_trouble_ != text) {
    said_trouble_ = text;
    Desk().ShowTip(text, CNomalMessage::Failure);
  }
}

void CMainWindow::OpenFirst() {
  switch (user_settings_->Chosen().opens_first) {
    case OpensFirst::DefaultView:
      return Player().OpenDefaultView();
    case OpensFirst::LastPlayed:
      for (const CWallDesk* desk : walls_->Desks()) {
        PlayLast(*desk);
      }
      return;
    case OpensFirst::Nothing:
      return;
  }
}

void CMainWindow::PlayLast(const CWallDesk& desk) {
  const RememberedWall::Played played = memory_->Known(desk.Number()).last_played;
  if (!played.code.isEmpty()) {
    desk.Player().OpenInItsPlace(played.code, played.is_group);
  }
}

void CMainWindow::PlayPlan(const std::string& code) {
  Desk().PlayPlan(code);
}

void CMainWindow::ShowTitle(const QString& plan) {
  if (plan.isEmpty()) {
    setWindowTitle(tr("Plans"));
  } else {
    setWindowTitle(tr("%1 - Plans").arg(plan));
  }
}

void CMainWindow::OpenHistory() {
  Desk().OpenHistory();
}

void CMainWindow::OpenUsers() {
  user_menu_->Open();
}

CSettingsDialog* CMainWindow::Settings() const {
  return settings_;
}

void CMainWindow::OpenSettings() {
  if (!settings_) {
    settings_ = new CSettingsDialog(Family(0).Controller(), user_settings_, this);
    settings_->setAttribute(Qt::WA_DeleteOnClose);
    if (is_owners_desk_) {
      settings_->AddNote(
          tr("This desk uses the account that owns the plan store. What each user may see and change is kept here by "
             "this program alone, not by the database."));
    }
    settings_->SetTryCamera(
        [trials = QPointer<CCameraTrials>(trials_)](const CameraTrial& trial, QObject* context, const auto& then) {
          if (trials) {
            trials->Try(trial, context, then);
          }
        });
    settings_->show();
  }
  settings_->activateWindow();
}

void CMainWindow::Save() {
  Desk().Save();
}

void CMainWindow::SaveAs() {
  Desk().SaveAs();
}

void CMainWindow::OpenSaveMenu() {
  Desk().OpenSaveMenu();
}

QString CMainWindow::User() const {
  return user_menu_->User();
}

// The other walls are hidden, not closed: they come back at the next start.
void CMainWindow::closeEvent(QCloseEvent* event) {
  const bool may_stop = std::exchange(may_stop_playing_, false) || MayClose(walls_->OpenWalls(), *user_settings_, this);
  const auto again = [this] {
    may_stop_playing_ = true;
    close();
  };
  event->setAccepted(may_stop && leaving_->MayLeave(walls_->Desks(), again));
  if (event->isAccepted()) {
    memory_->Keep();
    for (CExtraWall* wall : walls_->Extra()) {
      wall->hide();
    }
  }
}

void CMainWindow::BuildUserSwitch(const LogInCalls& calls) {
  CUserSwitch::Desk desk;
  desk.user = [this] { return user_is_gone_ ? QString() : User(); };
  desk.leave = [this](std::function<void()> again) { return leaving_->MayLeave(walls_->Desks(), std::move(again)); };
  desk.take = [this](const QString& user) { TakeUser(user); };
  desk.window = [this] { return ActiveWall(); };
  user_switch_ = new CUserSwitch(calls, desk, this);
  connect(user_switch_, &CUserSwitch::SignalUnlocked, lock_, &CDeskLock::Unlock);
  connect(user_switch_, &CUserSwitch::SignalUnlocked, this, [this] { has_old_password_ = false; });
  connect(user_switch_, &CUserSwitch::SignalRefused, this,
          [this](const QString& text) { Desk().ShowTip(text, CNomalMessage::Failure); });
}

QWidget* CMainWindow::ActiveWall() {
  for (CDeskWindow* window : Windows()) {
    if (window->isActiveWindow()) {
      return window;
    }
  }
  return this;
}

void CMainWindow::SwitchUser(const QString& user) {
  user_switch_->SwitchTo(user);
}

// The log-in raises the event by which all trees load again; until then the panels show that they wait. Nothing of the
// last user's is seen after the lock has gone.
void CMainWindow::TakeUser(const QString& user) {
  user_is_gone_ = has_old_password_ = false;
  memory_->Keep();
  user_menu_->SetUser(user);
  user_settings_->Load(station_id_, user);
  if (settings_) {
    settings_->close();  // it shows what the old user has chosen
  }
  messages_->ForgetUser();
  for (CWallDesk* desk : walls_->Desks()) {
    desk->ForgetUser();
  }
  lock_->HandOver();
  memory_->RestoreForNewUser();
  for (CWallDesk* desk : walls_->Desks()) {
    desk->FocusRows();
  }
  Q_EMIT SignalUserSwitched();
}

void CMainWindow::OnLockKey() {
  if (IsDeskLocked()) {
    UnlockDesk();
  } else {
    LockDesk();
  }
}

bool CMainWindow::IsDeskLocked() const {
  return lock_->IsLocked();
}

QString CMainWindow::LockText() const {
  if (user_is_gone_) {
    return tr("The user %1 was deleted. Somebody else has to log in. Until then plans can be played, held and turned.")
        .arg(User());
  }
  if (has_old_password_) {
    return tr("The plan store does not take the password of %1 any more. Until the new one is given, plans can be"
              " played, held and turned.")
        .arg(User());
  }
  return tr("Locked by %1. Plans can be played, held and turned.").arg(User());
}

void CMainWindow::AskForPassword() {
  has_old_password_ = true;
  LockDesk();
  UnlockDesk();
}

void CMainWindow::LockDesk() {
  lock_->Lock(LockText());
}

void CMainWindow::UnlockDesk() {
  if (lock_->IsLocked()) {
    user_switch_->Unlock();
  }
}

void CMainWindow::OnUsersChanged() {
  view_plugin_protocol::GetCurrentUserResponse current;
  const bool is_known = LyraPluginManager::CViewBusinessInterfaceMgr::Instance().GetCurrentUser({}, current);
  if (settings_) {
    settings_->OnUsersChanged();
  }
  user_is_gone_ = !is_known && current.error_kind == view_plugin_protocol::Gone;
  if (user_is_gone_) {
    LockDesk();
  } else if (is_known) {
    user_menu_->SetUser(MarUIControl::StringToQString(current.user.name));
  }
}

void CMainWindow::ShowStoreTrouble(TarnHost::StoreTrouble trouble, const QString& line, const QDateTime& as_of) {
  if (as_of.isValid()) {
    store_trouble_.since = as_of;
  } else if (!CStoreState::IsOneOutage(store_trouble_.trouble, trouble)) {
    store_trouble_.since = TarnPlanView::CPlanClock::Now();
  }
  store_trouble_.trouble = trouble;
  store_trouble_.line = line;
  for (CDeskWindow* window : Windows()) {
    window->CDeskWindow::ShowStoreTrouble(trouble, store_trouble_.since, line);
  }
}

}  // namespace TarnClient
