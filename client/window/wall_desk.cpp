#include "window/wall_desk.h"

#include <TarnPlanView/plan_view_tree.h>

#include <QAction>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <algorithm>
#include <utility>

#include "MarUIControl/accessible_role.h"
#include "MarUIControl/nomal_message.h"
#include "MarUIControl/offer_strip.h"
#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/message_tip_manager.h"
#include "cameras/camera_panel.h"
#include "commands/row_menu.h"
#include "composing/composer.h"
#include "composing/preset_calls.h"
#include "history/history_check.h"
#include "history/history_popup.h"
#include "history/play_history.h"
#include "plans/plan_family.h"
#include "plans/plan_player.h"
#include "plans/plan_renewal.h"
#include "saving/plan_saver.h"
#include "wall/live_wall.h"
#include "wall/wall_bar.h"
#include "window/show_in_tree.h"
#include "window/wall_offers.h"
#include "window/wall_texts.h"
#include "window/window_actions.h"

namespace TarnClient {

using MarUIControl::CNomalMessage;
using MarUIControl::QStringToString;
using MarUIControl::StringToQString;
using TarnPlanView::CStandardViewController;
using TarnPlanView::CViewExternWidget;

namespace {

constexpr int kSideWidth = 330;
constexpr QSize kCornerIcon(18, 18);  // the button is no higher than the bar of tabs
constexpr int kTimedWall = 0;         // where timed plans play: one plan would not start on four walls at once

// While the panel shows another page it is that page's, since a hidden tree takes none: the panel hands it on once the
// rows are there.
void FocusRowsOf(const CViewExternWidget* panel) {
  QWidget* page = panel->GetPlanViewTree();
  if (const auto* pages = qobject_cast<QStackedWidget*>(page->parentWidget())) {
    page = pages->currentWidget();
  }
  page->setFocus();
}

}  // namespace

CWallDesk::CWallDesk(Setup setup, CWindowActions* actions, QWidget* window)
    : QObject(window),
      number_(setup.number),
      window_(window),
      actions_(actions),
      parts_(new QSplitter(Qt::Horizontal, window)),
      tabs_(new QTabWidget(window)),
      wall_(new CLiveWall(setup.pictures, window, std::move(setup.cycle_clock))),
      player_(new CPlanPlayer(wall_, this)),
      renewal_(new CPlanRenewal(wall_, this)),
      saver_(new CPlanSaver(
          wall_, [this]() -> CPlanFamily& { return CurrentFamily(); }, this)),
      show_in_tree_(new CShowInTree(actions, wall_, this)),
      history_(setup.history),
      walls_(setup.walls) {
  if (number_ == kTimedWall) {
    player_->FollowTimedPlans();
  }
  BuildParts(setup.station_id);
  BuildHistory(setup.history);
  ConnectActions();
  AddFamilies();
  BuildComposer(setup.snapshot_folder);
  AddCameras();
  ConnectMessages();
}

CWallDesk::~CWallDesk() {
  End();
}

void CWallDesk::End() {
  for (const auto& family : families_) {
    family->Panel()->StopWorking();
  }
  std::exchange(families_, {}).clear();  // what hears of their end finds none of them any more
}

void CWallDesk::BuildParts(const QString& station_id) {
  tabs_->setMinimumWidth(260);
  MarUIControl::SetAccessibleRole(tabs_, QAccessible::LayeredPane);
  tabs_->setAccessibleName(tr("Plans"));
  tabs_->tabBar()->setAccessibleName(tr("Families of plans"));
  connect(tabs_, &QTabWidget::currentChanged, this, &CWallDesk::OnTabChanged);
  wall_->AcceptDropsOf(station_id);
  parts_->setHandleWidth(1);
  parts_->setChildrenCollapsible(false);
  parts_->addWidget(tabs_);
  parts_->addWidget(wall_);
  parts_->setStretchFactor(1, 1);
  parts_->setSizes({kSideWidth, 4 * kSideWidth});
}

void CWallDesk::BuildHistory(CPlayHistory* history) {
  history_button_ = new QToolButton(window_);
  history_button_->setObjectName(QStringLiteral("history_btn"));
  history_button_->setFocusPolicy(Qt::TabFocus);
  BindButton(history_button_, actions_->Of(WindowCommand::History));
  history_button_->setIconSize(kCornerIcon);
  tabs_->setCornerWidget(history_button_);
  history_popup_ = new CHistoryPopup(history, window_);
  history_check_ = new CHistoryCheck(history, this);
  connect(history_popup_, &CHistoryPopup::SignalTaken, this, &CWallDesk::OnHistoryTaken);
  connect(player_, &CPlanPlayer::SignalPlayed, this, &CWallDesk::OnPlayed);
}

void CWallDesk::ConnectMessages() {
  offers_ = new CWallOffers(player_, wall_, this);
  connect(saver_, &CPlanSaver::SignalSaved, offers_, &CWallOffers::OnSaved);
  auto* texts = new CWallTexts(
      player_, wall_, [this](const QString& code) { return NameOfPlan(code); }, this);
  connect(texts, &CWallTexts::SignalTitle, this, &CWallDesk::SignalTitle);
  connect(player_, &CPlanPlayer::SignalMessage, this, &CWallDesk::ShowTip);
  connect(saver_, &CPlanSaver::SignalMessage, this, &CWallDesk::ShowTip);
  connect(show_in_tree_, &CShowInTree::SignalMessage, this, &CWallDesk::ShowTip);
  connect(saver_, &CPlanSaver::SignalSavedAsNew, this,
          [this](const QString& code) { player_->Play(QStringToString(code), PlayOrigin::User, wall_->Place()); });
  connect(wall_, &CLiveWall::SignalDropped, this, &CWallDesk::OnDropped);
}

void CWallDesk::ConnectActions() {
  actions_->Connect(WindowCommand::Save, [this] { Save(); });
  actions_->Connect(WindowCommand::SaveAs, [this] { SaveAs(); });
  actions_->Connect(WindowCommand::WaysToSave, [this] { OpenSaveMenu(); });
  actions_->Connect(WindowCommand::History, [this] { OpenHistory(); });
  actions_->Connect(WindowCommand::PlayAgain, [this] { PlayAgain(); });
  connect(player_, &CPlanPlayer::SignalStateChanged, this, &CWallDesk::RenewPlayAgain);
  RenewPlayAgain();
  BindButton(wall_->Bar()->SaveButton(), actions_->Of(WindowCommand::Save));
  BindButton(wall_->Bar()->SaveMenuButton(), actions_->Of(WindowCommand::WaysToSave));
  connect(saver_, &CPlanSaver::SignalReasons, this, &CWallDesk::OnSaveReasons);
}

void CWallDesk::AddFamilies() {
  for (const auto theme : {TarnPlanView::PublicTheme, TarnPlanView::OwnTheme}) {
    families_.push_back(std::make_unique<CPlanFamily>(theme, QString::number(number_), wall_, tabs_));
    AddFamily(families_.back().get());
  }
}

void CWallDesk::AddFamily(CPlanFamily* family) {
  CViewExternWidget* panel = family->Panel();
  tabs_->addTab(panel, family->Title());
  connect(family, &CPlanFamily::SignalSaid, this, &CWallDesk::SignalSaid);
  player_->Attach(family);
  saver_->Attach(family);
  renewal_->Attach(family);
  show_in_tree_->Attach(family, [this, panel] {
    Q_EMIT SignalPanelsWanted();
    tabs_->setCurrentWidget(panel);
  });
  row_menus_.push_back(new CRowMenu({family, player_, walls_, number_}, this));
  connect(row_menus_.back(), &CRowMenu::SignalMessage, this, &CWallDesk::ShowTip);
  // Later: the panel is still in the middle of closing its editor.
  connect(panel, &CViewExternWidget::SignalMayLeave, this, &CWallDesk::SignalMayLeave, Qt::QueuedConnection);
  if (family->Controller()) {
    connect(family->Controller(), &CStandardViewController::SignalUpdatePlanSucc, this, &CWallDesk::OnPlanUpdated);
  }
}

void CWallDesk::StandBeside(const CWallDesk& other) {
  for (CPlanFamily* family : other.Families()) {
    renewal_->Attach(family);
    saver_->Watch(family);
  }
}

IWallChoice::Wall CWallDesk::State() const {
  return {number_, wall_->PlanName()};
}

void CWallDesk::BuildComposer(const std::function<QString()>& snapshot_folder) {
  composer_ = new CComposer(wall_, {[this] { return IsEditing(); }, snapshot_folder}, this);
  wall_->Bar()->SetSplitActions(composer_->Commands().Splits());
  connect(composer_, &CComposer::SignalMessage, this, &CWallDesk::ShowTip);
  connect(composer_, &CComposer::SignalCameraWanted, this, [this] {
    ShowCameras();
    cameras_->FocusSearch();
  });
  auto* presets = new CPresetCalls(this);
  connect(wall_, &CLiveWall::SignalPresetWanted, presets, &CPresetCalls::CallForPlan);
  connect(composer_, &CComposer::SignalPresetWanted, presets, &CPresetCalls::CallForUser);
  connect(presets, &CPresetCalls::SignalMessage, this, &CWallDesk::ShowTip);
  for (const auto& family : families_) {
    connect(family->Panel(), &CViewExternWidget::SignalEditorChanged, composer_, &CComposer::Renew);
  }
}

bool CWallDesk::IsEditing() const {
  return std::any_of(families_.begin(), families_.end(),
                     [](const auto& family) { return family->Panel()->IsEditorOpen(); });
}

void CWallDesk::AddCameras() {
  cameras_ = new CCameraPanel(tabs_);
  tabs_->addTab(cameras_, tr("Cameras"));
  cameras_->addActions(composer_->Commands().Splits());
  connect(cameras_, &CCameraPanel::SignalCameraChosen, composer_,
          [this](const ResourceTreeKit::CCameraItemInfo& camera) {
            composer_->Put({camera.index_code, camera.name});
          });
  connect(cameras_, &CCameraPanel::SignalCamerasChosen, composer_,
          [this](const QVector<ResourceTreeKit::CCameraItemInfo>& chosen) {
            QVector<WallCamera> cameras;
            for (const auto& camera : chosen) {
              cameras.append({camera.index_code, camera.name});
            }
            composer_->Fill(cameras);
          });
}

QVector<QWidget*> CWallDesk::TabStops() const {
  QVector<QWidget*> stops{tabs_->tabBar(), history_button_};
  for (const auto& family : families_) {
    stops << family->Panel();
  }
  return stops << cameras_ << wall_;
}

QVector<CPlanFamily*> CWallDesk::Families() const {
  QVector<CPlanFamily*> families;
  for (const auto& family : families_) {
    families << family.get();
  }
  return families;
}

QList<QAction*> CWallDesk::PlanEntries(QObject* owner) const {
  QList<QAction*> entries = CurrentFamily().Panel()->NewBarEntries(owner);
  for (size_t family = 0; family < families_.size(); ++family) {
    if (families_[family].get() == &CurrentFamily()) {
      const CRowMenu* rows = row_menus_[family];
      entries << rows->Of(RowCommand::Duplicate) << rows->Of(RowCommand::MoveTo) << rows->Of(RowCommand::Rename);
    }
  }
  return entries;
}

CPlanFamily& CWallDesk::CurrentFamily() const {
  return *families_.at(static_cast<size_t>(current_family_));
}

void CWallDesk::ShowCameras() {
  Q_EMIT SignalPanelsWanted();
  tabs_->setCurrentWidget(cameras_);
}

void CWallDesk::ShowFamily(size_t number) {
  tabs_->setCurrentIndex(static_cast<int>(number));
}

void CWallDesk::FocusRows() {
  if (tabs_->isHidden()) {
    wall_->setFocus(Qt::OtherFocusReason);
  } else if (tabs_->currentWidget() == cameras_) {
    cameras_->FocusRows();
  } else {
    FocusRowsOf(CurrentFamily().Panel());
  }
}

// Left to itself the focus would go on to the first button of the panel that comes.
void CWallDesk::OnTabChanged() {
  const QWidget* front = tabs_->currentWidget();
  if (qobject_cast<const CViewExternWidget*>(front)) {
    current_family_ = tabs_->currentIndex();
  }
  if (front && front->isAncestorOf(window_->focusWidget())) {
    FocusRows();
  }
}

QString CWallDesk::WhyNotPlayAgain() const {
  if (player_->State().stopped) {
    return QString();
  }
  return tr("no plan was stopped in the last seconds");
}

void CWallDesk::RenewPlayAgain() {
  actions_->SetReason(WindowCommand::PlayAgain, WhyNotPlayAgain());
}

void CWallDesk::PlayAgain() {
  const QString why_not = WhyNotPlayAgain();
  if (why_not.isEmpty()) {
    player_->PlayAgain();
  } else {
    ShowTip(tr("Nothing to play again: %1").arg(why_not), CNomalMessage::Hint);
  }
}

void CWallDesk::OnSaveReasons(const QString& why_not_save, const QString& why_not_save_as) {
  actions_->SetReason(WindowCommand::Save, why_not_save);
  actions_->SetReason(WindowCommand::SaveAs, why_not_save_as);
  QString why_no_way;  // to save it, old or new
  if (!why_not_save.isEmpty()) {
    why_no_way = why_not_save_as;
  }
  actions_->SetReason(WindowCommand::WaysToSave, why_no_way);
}

void CWallDesk::PlayPlan(const std::string& code) {
  player_->Play(code);
  for (const auto& family : families_) {
    family->Panel()->SetCurPlanByIndexCode(StringToQString(code));
  }
}

// As the trees have it; a plan whose group is not loaded may have been played before.
QString CWallDesk::NameOfPlan(const QString& code) const {
  for (const auto& family : families_) {
    const QString name = family->PlanName(code);
    if (!name.isEmpty()) {
      return name;
    }
  }
  return history_->NameOf(code);
}

void CWallDesk::OnDropped(const PlanDrop& drop) {
  if (drop.kind == PlanDrop::Kind::Group) {
    player_->PlayGroup(drop.code);
  } else {
    player_->Play(QStringToString(drop.code));
  }
}

// The turns of a cycle, also one that opens at the start, would push out of the list what the user had chosen.
void CWallDesk::OnPlayed(const view_plugin_protocol::GetPlanDetailResponse& plan, PlayOrigin origin) {
  const std::optional<CProgramme::Cycle>& cycle = player_->State().cycle;
  if (origin == PlayOrigin::GroupCycle && cycle) {
    Q_EMIT SignalPicked(StringToQString(cycle->code), true);
  }
  if (origin == PlayOrigin::GroupCycle || cycle) {
    return;
  }
  if (IsPicked(origin)) {
    Q_EMIT SignalPicked(StringToQString(plan.index_code), false);
  }
  PlayedPlan played;
  played.code = StringToQString(plan.index_code);
  played.name = StringToQString(plan.name);
  played.time = QDateTime::currentDateTime();
  played.place = StringToQString(plan.group_name);
  for (const auto& family : families_) {
    if (family->Theme() == plan.type) {
      SetPlace(*family, &played);
    }
  }
  history_->Add(played);
}

// As the tree has it. Of a group that is not loaded only the name is known, until the service was asked for the rest.
void CWallDesk::SetPlace(const CPlanFamily& family, PlayedPlan* played) {
  QStringList groups = family.GroupsOf(played->code);
  if (groups.isEmpty() && !played->place.isEmpty()) {
    groups << played->place;
    history_check_->FindPlace(*played, family.Theme(), family.Title());
  }
  played->place = (QStringList{family.Title()} + groups).join(QStringLiteral(" / "));
}

void CWallDesk::OnPlanUpdated(const view_plugin_protocol::UpdatePlanRequest& plan) {
  history_->Rename(StringToQString(plan.plan_index_code), StringToQString(plan.plan_name));
}

void CWallDesk::OnHistoryTaken(int row) {
  player_->Play(QStringToString(history_->At(row).code), PlayOrigin::History);
}

void CWallDesk::OpenHistory() {
  history_check_->Look();
  history_popup_->ShowBelow(history_button_);
}

void CWallDesk::Save() {
  for (const auto& family : families_) {
    if (family->Panel()->IsEditorOpen()) {
      return family->Panel()->SaveEdited();
    }
  }
  saver_->Save();
}

void CWallDesk::SaveAs() {
  saver_->SaveAs();
}

void CWallDesk::OpenSaveMenu() {
  saver_->ShowMenu(actions_->Of(WindowCommand::Save)->toolTip(), actions_->Of(WindowCommand::SaveAs)->toolTip());
}

bool CWallDesk::MayLeave() {
  for (const auto& family : families_) {
    if (!family->Panel()->MayLeave()) {
      return false;
    }
  }
  return true;
}

// The rows stay on, to be played.
void CWallDesk::SetLocked(bool locked) {
  for (const auto& family : families_) {
    for (const char* part : {"view_control_frame", "search_line_widget", "offer_strip"}) {
      family->Panel()->findChild<QWidget*>(QLatin1String(part))->setEnabled(!locked);
    }
  }
  for (QWidget* editor : window_->findChildren<QWidget*>(QStringLiteral("add_edit_plan_widget"))) {
    editor->setEnabled(!locked);
  }
  cameras_->setEnabled(!locked);
  composer_->SetLocked(locked);
  wall_->Bar()->SetLocked(locked);
  wall_->Strip()->setEnabled(!locked);
}

void CWallDesk::ForgetUser() {
  player_->ForgetUser();
  history_check_->Drop();
  for (const auto& family : families_) {
    family->Panel()->SwitchUserUpdate();
  }
  cameras_->ForgetUser();
  saver_->ForgetUser();
  offers_->ForgetUser();
  for (CRowMenu* menu : row_menus_) {
    menu->ForgetUser();
  }
}

void CWallDesk::ShowServiceTrouble(const QString& text) {
  for (const auto& family : families_) {
    family->Panel()->ShowServiceTrouble(text);
  }
}

void CWallDesk::ShowTip(const QString& text, int state) {
  tarn_ui_data_controller::CMessageTipManager::Instance().ShowTip(text, state, window_);
}

}  // namespace TarnClient
