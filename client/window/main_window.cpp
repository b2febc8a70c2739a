#include "window/main_window.h"

#include <TarnPlanView/panel_keys.h>
#include <TarnPlanView/plan_view_tree.h>

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolButton>
#include <utility>

#include "MarUIControl/accessible_role.h"
#include "MarUIControl/modal_tip_dialog.h"
#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/message_tip_manager.h"
#include "cameras/camera_states.h"
#include "commands/row_menu.h"
#include "help/about_dialog.h"
#include "help/help_desk.h"
#include "help/key_list.h"
#include "history/history_check.h"
#include "history/history_popup.h"
#include "history/play_history.h"
#include "messages/message_desk.h"
#include "messages/message_log.h"
#include "messages/messages_window.h"
#include "plans/plan_family.h"
#include "plans/plan_player.h"
#include "plans/plan_renewal.h"
#include "saving/plan_saver.h"
#include "settings/desk_memory.h"
#include "settings/settings_dialog.h"
#include "settings/user_settings.h"
#include "wall/live_wall.h"
#include "wall/test_picture_source.h"
#include "wall/wall_bar.h"
#include "wall/wall_keys.h"
#include "window/alt_key.h"
#include "window/main_menu.h"
#include "window/show_in_tree.h"
#include "window/store_state.h"
#include "window/tab_order.h"
#include "window/user_menu.h"
#include "window/wall_texts.h"
#include "window/window_actions.h"
#include "window/window_size.h"

namespace TarnClient {

using MarUIControl::CModalTipDialog;
using MarUIControl::CNomalMessage;
using MarUIControl::QStringToString;
using MarUIControl::StringToQString;
using TarnPlanView::CStandardViewController;
using TarnPlanView::CViewExternWidget;

namespace {

constexpr int kSideWidth = 330;

CUserSettings* SettingsOf(const CMainWindow::Setup& setup, QObject* parent) {
  if (setup.settings) {
    return setup.settings;
  }
  return new CUserSettings(QString(), parent);
}

PictureSourceFactory PicturesOf(CCameraStates& cameras) {
  return [states = QPointer<CCameraStates>(&cameras)](const view_plugin_protocol::PlanWindow& window) {
    const auto is_online = [states, code = window.resource_code] { return !states || states->IsOnline(code); };
    return std::make_unique<CTestPictureSource>(window, is_online);
  };
}

// For the first keys. While the panel shows another page it is that page's, since a hidden tree takes none: the panel
// hands it on once the rows are there.
void FocusRowsOf(const CViewExternWidget* panel) {
  QWidget* page = panel->GetPlanViewTree();
  if (const auto* pages = qobject_cast<QStackedWidget*>(page->parentWidget())) {
    page = pages->currentWidget();
  }
  page->setFocus();
}

}  // namespace

CMainWindow::CMainWindow(Setup setup, QWidget* parent)
    : QMainWindow(parent),
      log_in_(std::move(setup.log_in)),
      store_url_(setup.store_url),
      actions_(new CWindowActions(this)),
      cameras_(new CCameraStates(this)),
      tabs_(new QTabWidget(this)),
      wall_(new CLiveWall(PicturesOf(*cameras_), this, std::move(setup.cycle_clock))),
      player_(new CPlanPlayer(wall_, this)),
      renewal_(new CPlanRenewal(wall_, this)),
      saver_(new CPlanSaver(
          wall_, [this]() -> CPlanFamily& { return CurrentFamily(); }, this)),
      messages_(new CMessageDesk(actions_, this)),
      help_(new CHelpDesk([this] { return AllKeys(); }, this)),
      history_(new CPlayHistory(this)),
      station_id_(setup.station_id),
      user_settings_(SettingsOf(setup, this)) {
  ShowTitle(QString());
  QApplication::setWindowIcon(QIcon(QStringLiteral(":/TarnClient/images/window_icon.svg")));  // dialogs', too
  wall_->AcceptDropsOf(station_id_);
  auto* splitter = new QSplitter(Qt::Horizontal, this);
  splitter->setHandleWidth(1);
  splitter->setChildrenCollapsible(false);
  splitter->addWidget(BuildSide());
  splitter->addWidget(wall_);
  splitter->setStretchFactor(1, 1);
  splitter->setSizes({kSideWidth, 4 * kSideWidth});
  setCentralWidget(splitter);
  BuildStatusBar(setup.user, setup.store_url);
  ConnectActions();
  AddFamilies();
  ConnectMessages();
  FollowSettings();
  OrderTabs();
  resize(WindowSizeFor(screen()->availableSize()));
  RememberDesk(splitter);
  FocusRowsOf(CurrentFamily().Panel());
}

CMainWindow::~CMainWindow() {
  memory_->Keep();
  for (const auto& family : families_) {
    family->Panel()->StopWorking();
  }
  std::exchange(families_, {}).clear();  // what hears of their end finds none of them any more
}

QWidget* CMainWindow::BuildSide() {
  tabs_->setMinimumWidth(260);
  MarUIControl::SetAccessibleRole(tabs_, QAccessible::LayeredPane);
  tabs_->setAccessibleName(tr("Plans"));
  tabs_->tabBar()->setAccessibleName(tr("Families of plans"));
  connect(tabs_, &QTabWidget::currentChanged, this, &CMainWindow::OnTabChanged);
  BuildHistory();
  return tabs_;
}

void CMainWindow::BuildHistory() {
  history_button_ = NewButton("history_btn", actions_->Of(WindowCommand::History));
  history_button_->setFocusPolicy(Qt::TabFocus);
  tabs_->setCornerWidget(history_button_);
  history_popup_ = new CHistoryPopup(history_, this);
  history_check_ = new CHistoryCheck(history_, this);
  connect(history_popup_, &CHistoryPopup::SignalTaken, this, &CMainWindow::OnHistoryTaken);
  connect(player_, &CPlanPlayer::SignalPlayed, this, &CMainWindow::OnPlayed);
}

void CMainWindow::BuildStatusBar(const QString& user, const QString& store_url) {
  user_menu_ = new CUserMenu(user, actions_, this);
  connect(user_menu_, &CUserMenu::SignalUserChosen, this, &CMainWindow::SwitchUser);
  connect(user_menu_, &CUserMenu::SignalFailed, this,
          [this](const QString& text) { ShowTip(text, CNomalMessage::Failure); });
  store_state_ = new CStoreState(store_url, this);
  statusBar()->addWidget(user_menu_);
  statusBar()->addWidget(store_state_, 1);
  BuildMessagesButton();
  statusBar()->addPermanentWidget(NewButton("settings_btn", actions_->Of(WindowCommand::Settings)));
  BuildMenu();
  statusBar()->setSizeGripEnabled(false);
}

void CMainWindow::BuildMenu() {
  menu_button_ = NewButton("menu_btn", actions_->Of(WindowCommand::Menu));
  statusBar()->addPermanentWidget(menu_button_);
  menu_ = new CMainMenu(
      actions_, [this](QObject* owner) { return CurrentFamily().Panel()->NewBarEntries(owner); },
      [this] { return wall_->Bar()->Commands(); }, this);
  connect(new CAltKey(this), &CAltKey::SignalTapped, this, &CMainWindow::OpenMenu);
}

void CMainWindow::OpenMenu() {
  menu_->OpenAbove(menu_button_);
}

void CMainWindow::OpenAbout() {
  auto* about = new CAboutDialog(FactsOf(store_url_), this);
  about->open();
}

QList<MarUIControl::KeyEntry> CMainWindow::AllKeys() const {
  const QList<MarUIControl::KeyEntry> of_rows = KeysOf(row_menus_.front()->Actions(), tr("On a row or a hit"));
  const QString here = tr("In the window");
  const QList<MarUIControl::KeyEntry> alt{{here, {}, tr("Menu: press Alt and let it go")}};  // has no name as a key
  return KeysOf(actions_->All(), here) + alt + TarnPlanView::PanelKeys() + of_rows + WallKeys() +
         CMessagesWindow::Keys();
}

void CMainWindow::BuildMessagesButton() {
  QToolButton* button = NewButton("messages_btn", actions_->Of(WindowCommand::Messages));
  statusBar()->addPermanentWidget(button);
  const auto renew = [button](int unread) {
    button->setToolButtonStyle(unread > 0 ? Qt::ToolButtonTextBesideIcon : Qt::ToolButtonIconOnly);
  };
  connect(&messages_->Log(), &CMessageLog::SignalUnreadChanged, button, renew);
}

QToolButton* CMainWindow::NewButton(const char* name, QAction* action) {
  auto* button = new QToolButton(this);
  button->setObjectName(QString::fromLatin1(name));
  button->setFocusPolicy(Qt::StrongFocus);
  BindButton(button, action);
  return button;
}

void CMainWindow::AddFamilies() {
  for (const auto theme : {TarnPlanView::PublicTheme, TarnPlanView::OwnTheme}) {
    families_.push_back(std::make_unique<CPlanFamily>(theme, wall_, tabs_));
    CPlanFamily* family = families_.back().get();
    tabs_->addTab(family->Panel(), family->Title());
    connect(family, &CPlanFamily::SignalSaid, &messages_->Log(),
            [this](const QString& text) { messages_->Log().Add(text, CNomalMessage::Success); });
    player_->Attach(family);
    saver_->Attach(family);
    renewal_->Attach(family);
    show_in_tree_->Attach(family, [this, panel = family->Panel()] { tabs_->setCurrentWidget(panel); });
    row_menus_.push_back(new CRowMenu(family, player_, this));
    connect(row_menus_.back(), &CRowMenu::SignalMessage, this, &CMainWindow::ShowTip);
    // Later: the panel is still in the middle of closing its editor.
    connect(family->Panel(), &CViewExternWidget::SignalMayLeave, this, &CMainWindow::OnMayLeave, Qt::QueuedConnection);
    if (family->Controller()) {
      connect(family->Controller(), &CStandardViewController::SignalUpdatePlanSucc, this, &CMainWindow::OnPlanUpdated);
    }
  }
}

// The window's place is the desk's, not the user's: it stays when another one comes.
void CMainWindow::RememberDesk(QSplitter* splitter) {
  CDeskMemory::Desk desk{this, splitter, tabs_, {}, history_};
  for (const auto& family : families_) {
    desk.families.append(family.get());
  }
  memory_ = new CDeskMemory(user_settings_, desk, this);
  memory_->PlaceWindow();
  memory_->Restore();
}

void CMainWindow::FollowSettings() {
  const auto follow = [this] { player_->SetSecondsPerPlan(user_settings_->Chosen().seconds_per_plan); };
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
    ShowTip(text, CNomalMessage::Failure);
  }
}

void CMainWindow::OrderTabs() {
  QVector<QWidget*> parts{tabs_->tabBar(), history_button_};
  for (const auto& family : families_) {
    parts << family->Panel();
  }
  parts << wall_ << statusBar();
  SetTabOrder(parts);
}

void CMainWindow::ConnectMessages() {
  auto* texts = new CWallTexts(
      player_, wall_, [this](const QString& code) { return NameOfPlan(code); }, this);
  connect(texts, &CWallTexts::SignalTitle, this, &CMainWindow::ShowTitle);
  connect(player_, &CPlanPlayer::SignalMessage, this, &CMainWindow::ShowTip);
  connect(saver_, &CPlanSaver::SignalMessage, this, &CMainWindow::ShowTip);
  connect(wall_, &CLiveWall::SignalDropped, this, &CMainWindow::OnDropped);
}

void CMainWindow::ConnectActions() {
  actions_->Connect(WindowCommand::Save, [this] { Save(); });
  actions_->Connect(WindowCommand::SaveAs, [this] { SaveAs(); });
  actions_->Connect(WindowCommand::WaysToSave, [this] { OpenSaveMenu(); });
  actions_->Connect(WindowCommand::History, [this] { OpenHistory(); });
  actions_->Connect(WindowCommand::Settings, [this] { OpenSettings(); });
  actions_->Connect(WindowCommand::Menu, [this] { OpenMenu(); });
  actions_->Connect(WindowCommand::Keys, [this] { help_->Open(); });
  actions_->Connect(WindowCommand::About, [this] { OpenAbout(); });
  actions_->Connect(WindowCommand::Quit, [this] { close(); });
  show_in_tree_ = new CShowInTree(actions_, wall_, this);
  connect(show_in_tree_, &CShowInTree::SignalMessage, this, &CMainWindow::ShowTip);
  actions_->Connect(WindowCommand::PlayAgain, [this] { PlayAgain(); });
  connect(player_, &CPlanPlayer::SignalStateChanged, this, &CMainWindow::RenewPlayAgain);
  connect(player_, &CPlanPlayer::SignalStateChanged, cameras_,
          [this] { cameras_->Watch(player_->State().on_wall.has_value()); });
  RenewPlayAgain();
  BindButton(wall_->Bar()->SaveButton(), actions_->Of(WindowCommand::Save));
  BindButton(wall_->Bar()->SaveMenuButton(), actions_->Of(WindowCommand::WaysToSave));
  connect(saver_, &CPlanSaver::SignalReasons, this, &CMainWindow::OnSaveReasons);
}

QString CMainWindow::WhyNotPlayAgain() const {
  if (player_->State().stopped) {
    return QString();
  }
  return tr("no plan was stopped in the last seconds");
}

void CMainWindow::RenewPlayAgain() {
  actions_->SetReason(WindowCommand::PlayAgain, WhyNotPlayAgain());
}

void CMainWindow::PlayAgain() {
  const QString why_not = WhyNotPlayAgain();
  if (why_not.isEmpty()) {
    player_->PlayAgain();
  } else {
    ShowTip(tr("Nothing to play again: %1").arg(why_not), CNomalMessage::Hint);
  }
}

void CMainWindow::OnSaveReasons(const QString& why_not_save, const QString& why_not_save_as) {
  actions_->SetReason(WindowCommand::Save, why_not_save);
  actions_->SetReason(WindowCommand::SaveAs, why_not_save_as);
  QString why_no_way;  // to save it, old or new
  if (!why_not_save.isEmpty()) {
    why_no_way = why_not_save_as;
  }
  actions_->SetReason(WindowCommand::WaysToSave, why_no_way);
}

// No shortcut: what has the focus may have a better use for Esc, as a search has.
void CMainWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    player_->Stop();
    return;
  }
  QMainWindow::keyPressEvent(event);
}

CPlanFamily& CMainWindow::CurrentFamily() {
  return *families_.at(static_cast<size_t>(qMax(0, tabs_->currentIndex())));
}

// Left to itself the focus would go on to the first button of the panel that comes.
void CMainWindow::OnTabChanged() {
  const auto* panel = qobject_cast<CViewExternWidget*>(tabs_->currentWidget());
  if (panel && panel->isAncestorOf(focusWidget())) {
    FocusRowsOf(panel);
  }
}

void CMainWindow::ShowFamily(size_t number) {
  tabs_->setCurrentIndex(static_cast<int>(number));
}

void CMainWindow::OpenFirst() {
  const RememberedDesk::Played played = user_settings_->Remembered().last_played;
  switch (user_settings_->Chosen().opens_first) {
    case OpensFirst::DefaultView:
      return player_->OpenDefaultView();
    case OpensFirst::LastPlayed:
      if (!played.code.isEmpty()) {
        player_->OpenInItsPlace(played.code, played.is_group);
      }
      return;
    case OpensFirst::Nothing:
      return;
  }
}

void CMainWindow::PlayPlan(const std::string& code) {
  player_->Play(code);
  for (const auto& family : families_) {
    family->Panel()->SetCurPlanByIndexCode(StringToQString(code));
  }
}

void CMainWindow::ShowTitle(const QString& plan) {
  if (plan.isEmpty()) {
    setWindowTitle(tr("Plans"));
  } else {
    setWindowTitle(tr("%1 - Plans").arg(plan));
  }
}

// As the trees have it; a plan whose group is not loaded may have been played before.
QString CMainWindow::NameOfPlan(const QString& code) const {
  for (const auto& family : families_) {
    const QString name = family->PlanName(code);
    if (!name.isEmpty()) {
      return name;
    }
  }
  return history_->NameOf(code);
}

void CMainWindow::OnDropped(const PlanDrop& drop) {
  if (drop.kind == PlanDrop::Kind::Group) {
    player_->PlayGroup(drop.code);
  } else {
    player_->Play(QStringToString(drop.code));
  }
}

// The turns of a cycle, also one that opens at the start, would push out of the list what the user had chosen.
void CMainWindow::OnPlayed(const view_plugin_protocol::GetPlanDetailResponse& plan, PlayOrigin origin) {
  const std::optional<CProgramme::Cycle>& cycle = player_->State().cycle;
  if (origin == PlayOrigin::GroupCycle && cycle) {
    memory_->SetPlayed(StringToQString(cycle->code), true);
  }
  if (origin == PlayOrigin::GroupCycle || cycle) {
    return;
  }
  if (IsPicked(origin)) {
    memory_->SetPlayed(StringToQString(plan.index_code), false);
  }
  PlayedPlan played;
  played.code = StringToQString(plan.index_code);
  played.name = StringToQString(plan.name);
  played.time = QDateTime::currentDateTime();
  played.place = PlaceOf(plan);
  history_->Add(played);
}

QString CMainWindow::PlaceOf(const view_plugin_protocol::GetPlanDetailResponse& plan) const {
  const QString group = StringToQString(plan.group_name);
  for (const auto& family : families_) {
    if (family->Theme() == plan.type) {
      QStringList groups = family->GroupsOf(StringToQString(plan.index_code));
      if (groups.isEmpty() && !group.isEmpty()) {
        groups << group;
      }
      return (QStringList{family->Title()} + groups).join(QStringLiteral(" / "));
    }
  }
  return group;
}

void CMainWindow::OnPlanUpdated(const view_plugin_protocol::UpdatePlanRequest& plan) {
  history_->Rename(StringToQString(plan.plan_index_code), StringToQString(plan.plan_name));
}

void CMainWindow::OnHistoryTaken(int row) {
  player_->Play(QStringToString(history_->At(row).code), PlayOrigin::History);
}

void CMainWindow::OpenHistory() {
  history_check_->Look();
  history_popup_->ShowBelow(history_button_);
}

void CMainWindow::OpenUsers() {
  user_menu_->Open();
}

CSettingsDialog* CMainWindow::Settings() const {
  return settings_;
}

void CMainWindow::OpenSettings() {
  if (!settings_) {
    settings_ = new CSettingsDialog(families_.front()->Controller(), user_settings_, this);
    settings_->setAttribute(Qt::WA_DeleteOnClose);
    settings_->show();
  }
  settings_->activateWindow();
}

void CMainWindow::Save() {
  for (const auto& family : families_) {
    if (family->Panel()->IsEditorOpen()) {
      return family->Panel()->SaveEdited();
    }
  }
  saver_->Save();
}

void CMainWindow::SaveAs() {
  saver_->SaveAs();
}

void CMainWindow::OpenSaveMenu() {
  saver_->ShowMenu(actions_->Of(WindowCommand::Save)->toolTip(), actions_->Of(WindowCommand::SaveAs)->toolTip());
}

QString CMainWindow::User() const {
  return user_menu_->User();
}

bool CMainWindow::MayLeave() {
  for (const auto& family : families_) {
    if (!family->Panel()->MayLeave()) {
      return false;
    }
  }
  return true;
}

void CMainWindow::closeEvent(QCloseEvent* event) {
  const bool may_stop = std::exchange(may_stop_playing_, false) || MayStopPlaying();
  after_saving_ = [this] {
    may_stop_playing_ = true;
    close();
  };
  event->setAccepted(may_stop && MayLeave());
  if (event->isAccepted()) {
    memory_->Keep();
  }
}

// The end of the desktop's session is no slip of the hand.
bool CMainWindow::MayStopPlaying() {
  if (!wall_->IsPlaying() || !user_settings_->Chosen().asks_before_closing || qApp->isSavingSession()) {
    return true;
  }
  const QPointer<CModalTipDialog> question(new CModalTipDialog(this));
  question->SetDialogModel(CModalTipDialog::QuestionModel);
  question->SetTitle(tr("Close"));
  question->SetContent(tr("\"%1\" is playing. Close all the same?").arg(wall_->PlanName()));
  question->SetConfirmText(tr("Close"));
  question->SetCancelText(tr("Cancel"));
  const bool confirmed = question->exec() == CModalTipDialog::Confirmed;
  delete question;
  return confirmed;
}

// The changes that kept the user here are saved: on with what was wanted.
void CMainWindow::OnMayLeave() {
  if (after_saving_) {
    std::exchange(after_saving_, nullptr)();
  }
}

// The log-in raises the event by which all trees load again; until then the panels show that they wait.
void CMainWindow::SwitchUser(const QString& user) {
  after_saving_ = [this, user] { SwitchUser(user); };
  if (!MayLeave()) {
    return;
  }
  after_saving_ = nullptr;
  memory_->Keep();
  QString error;
  if (!log_in_ || !log_in_(user, &error)) {
    ShowTip(error, CNomalMessage::Failure);
    return;
  }
  user_menu_->SetUser(user);
  user_settings_->Load(station_id_, user);
  if (settings_) {
    settings_->close();  // it shows what the old user has chosen
  }
  player_->ForgetUser();
  history_check_->Drop();
  messages_->ForgetUser();
  for (const auto& family : families_) {
    family->Panel()->SwitchUserUpdate();
  }
  saver_->ForgetUser();
  memory_->RestoreForNewUser();
  for (CRowMenu* menu : row_menus_) {
    menu->ForgetUser();
  }
  FocusRowsOf(CurrentFamily().Panel());
  Q_EMIT SignalUserSwitched();
}

void CMainWindow::ShowStoreTrouble(TarnHost::StoreTrouble trouble, const QString& line) {
  store_state_->ShowTrouble(trouble, line);
  for (const auto& family : families_) {
    family->Panel()->ShowServiceTrouble(CStoreState::TextOf(trouble));
  }
}

void CMainWindow::ShowTip(const QString& text, int state) {
  tarn_ui_data_controller::CMessageTipManager::Instance().ShowTip(text, state, this);
}

}  // namespace TarnClient
