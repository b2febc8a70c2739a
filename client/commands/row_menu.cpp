#include "commands/row_menu.h"

#include <TarnPlanView/plan_view_tree.h>
#include <TarnPlanView/view_config_manager.h>
#include <TarnPlanView/view_model_data_manager_export.h>

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "ResourceData/resource_type.h"
#include "TarnUIDataController/popup_menu.h"
#include "commands/plan_copier.h"
#include "commands/play_on_menu.h"
#include "commands/wall_choice.h"
#include "host_calls/ask.h"
#include "plan_rules/families.h"
#include "plans/plan_family.h"
#include "plans/plan_player.h"

namespace TarnClient {

using LyraPluginManager::CViewBusinessInterfaceMgr;
using MarUIControl::CNomalMessage;
using MarUIControl::StringToQString;
using TarnPlanView::CViewExternWidget;

namespace {

// The keys of `shown_keys` are the panel's or the window's, which do the same for the current row.
struct EntryLook {
  const char* text;
  const char* keys;
  const char* shown_keys;
};

constexpr EntryLook kLooks[kRowCommands] = {
    {QT_TRANSLATE_NOOP("TarnClient::CRowMenu", "New plan here"), "", "Ctrl+N"},
    {QT_TRANSLATE_NOOP("TarnClient::CRowMenu", "New group here"), "", "Ctrl+Shift+N"},
    {QT_TRANSLATE_NOOP("TarnClient::CRowMenu", "Duplicate"), "Ctrl+D", ""},
    {QT_TRANSLATE_NOOP("TarnClient::CRowMenu", "Move to..."), "Ctrl+Shift+M", ""},
    {QT_TRANSLATE_NOOP("TarnClient::CRowMenu", "Rename"), "Shift+F2", ""},
    {QT_TRANSLATE_NOOP("TarnClient::CRowMenu", "Play on wall"), "Ctrl+Shift+P", ""},
    {QT_TRANSLATE_NOOP("TarnClient::CRowMenu", "Stop"), "", "Esc"},
    {QT_TRANSLATE_NOOP("TarnClient::CRowMenu", "Set as default view"), "Ctrl+Shift+D", ""},
};

RowCommand CommandAt(size_t place) {
  return static_cast<RowCommand>(place);
}

QString GroupOf(const view_plugin_protocol::TarnPlanViewInfo& row) {
  return StringToQString(row.is_group ? row.index_code : row.group_index_code);
}

RowKind KindOf(const view_plugin_protocol::TarnPlanViewInfo& row) {
  if (row.index_code.empty()) {
    return RowKind::None;
  }
  if (!row.is_group) {
    return RowKind::Plan;
  }
  return view_plugin_protocol::IsRootCode(StringToQString(row.index_code).toInt()) ? RowKind::Root : RowKind::Group;
}

// As the panel of that family has it on its tab.
QString TitleOfList(int32_t family) {
  const char* title = QT_TRANSLATE_NOOP("TarnPlanView::CViewExternWidget", "Public plans");
  if (family == view_plugin_protocol::OwnFamily) {
    title = QT_TRANSLATE_NOOP("TarnPlanView::CViewExternWidget", "My plans");
  }
  return QCoreApplication::translate("TarnPlanView::CViewExternWidget", title);
}

}  // namespace

CRowMenu::CRowMenu(const Desk& desk, QObject* parent)
    : QObject(parent),
      family_(desk.family),
      player_(desk.player),
      walls_(desk.walls),
      copier_(new CPlanCopier(desk.family->Controller(), this)),
      play_on_(new CPlayOnMenu(desk.walls, desk.number, desk.family->Panel())) {
  MakeActions();
  ConnectWalls();
  ConnectPanel();
  connect(copier_, &CPlanCopier::SignalFailed, this, &CRowMenu::Refuse);
}

void CRowMenu::MakeActions() {
  for (size_t place = 0; place < actions_.size(); ++place) {
    auto* action = new QAction(tr(kLooks[place].text), this);
    if (*kLooks[place].shown_keys) {
      const QKeySequence keys(QString::fromLatin1(kLooks[place].shown_keys));
      action->setText(QStringLiteral("%1\t%2").arg(action->text(), keys.toString(QKeySequence::NativeText)));
    }
    action->setShortcut(QString::fromLatin1(kLooks[place].keys));
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    action->setAutoRepeat(false);
    connect(action, &QAction::triggered, this, [this, command = CommandAt(place)] { Run(command); });
    actions_[place] = action;
  }
}

void CRowMenu::ConnectWalls() {
  Of(RowCommand::PlayOn)->setMenu(play_on_);
  connect(play_on_, &CPlayOnMenu::SignalChosen, this, [this](int number) {
    if (const std::optional<Row> row = RowFor(RowCommand::PlayOn)) {
      walls_->PlayOn(number, StringToQString(row->index_code), row->is_group);
    }
  });
  connect(play_on_, &CPlayOnMenu::SignalNewChosen, this, [this] {
    if (const std::optional<Row> row = RowFor(RowCommand::PlayOn)) {
      walls_->PlayOnNew(StringToQString(row->index_code), row->is_group);
    }
  });
}

void CRowMenu::ConnectPanel() {
  CViewExternWidget* panel = family_->Panel();
  QList<QAction*> actions = Actions();
  panel->addActions(actions);
  panel->SetViewMoreActions(actions);
  connect(panel, &CViewExternWidget::SignalRowMenuAboutToShow, this, &CRowMenu::OnMenuAboutToShow);
  connect(copier_, &CPlanCopier::SignalCopied, panel, &CViewExternWidget::SetCurPlanByIndexCode);
  for (auto* menu : panel->findChildren<tarn_ui_data_controller::CPopupMenu*>()) {
    // Later: a menu hides before it triggers what was chosen.
    connect(menu, &QMenu::aboutToHide, this, &CRowMenu::Release, Qt::QueuedConnection);
  }
}

void CRowMenu::OnMenuAboutToShow() {
  Row row;
  if (!family_->Panel()->GetCommandRow(row)) {
    return;
  }
  bound_ = row;
  bound_was_loaded_ = false;
  bound_was_loaded_ = !HasVanished();
  const RowSituation situation = SituationOf(row);
  for (size_t place = 0; place < actions_.size(); ++place) {
    const RowCommandState state = StateOf(CommandAt(place), situation);
    actions_[place]->setVisible(state.shown);
    actions_[place]->setEnabled(state.IsEnabled());
    actions_[place]->setToolTip(state.reason);
  }
}

// Without a menu all are on: a key says by itself why it does nothing.
void CRowMenu::Release() {
  for (const QMenu* menu : family_->Panel()->findChildren<tarn_ui_data_controller::CPopupMenu*>()) {
    if (menu->isVisible()) {
      return;  // the next one has opened already
    }
  }
  bound_.reset();
  for (QAction* action : actions_) {
    action->setVisible(true);
    action->setEnabled(true);
  }
}

// Says why when there is none that the command suits now.
std::optional<CRowMenu::Row> CRowMenu::RowFor(RowCommand command) {
  Row row;
  if (bound_) {
    row = *bound_;
  } else {
    family_->Panel()->GetCommandRow(row);
  }
  if (bound_ && bound_was_loaded_ && HasVanished()) {
    Refuse(tr("This row is no longer there."));
    return std::nullopt;
  }
  const RowCommandState state = StateOf(command, SituationOf(row));
  if (!state.IsEnabled()) {
    Q_EMIT SignalMessage(state.reason, CNomalMessage::Hint);
    return std::nullopt;
  }
  return row;
}

void CRowMenu::Run(RowCommand command) {
  if (const std::optional<Row> row = RowFor(command)) {
    Do(command, *row);
  }
}

void CRowMenu::Do(RowCommand command, const Row& row) {
  CViewExternWidget* panel = family_->Panel();
  switch (command) {
    case RowCommand::NewPlan:
      return panel->AddPlanTo(GroupOf(row));
    case RowCommand::NewGroup:
      return panel->AddGroupTo(GroupOf(row));
    case RowCommand::Duplicate:
      return copier_->Copy(row.index_code);
    case RowCommand::MoveTo:
      return panel->MovePlan(row);
    case RowCommand::Rename:
      return panel->RenameRow(row);
    case RowCommand::PlayOn:
      return OpenWalls();
    case RowCommand::Stop:
      return player_->Stop();
    case RowCommand::OpenAtStart:
      return OpenAtStart(row);
  }
}

// At the current row of the tree or the hits.
void CRowMenu::OpenWalls() {
  const QWidget* rows = family_->Panel();
  QPoint place = rows->rect().center();
  if (const auto* view = qobject_cast<QAbstractItemView*>(QApplication::focusWidget())) {
    rows = view->viewport();
    place = view->visualRect(view->currentIndex()).bottomLeft();
  }
  play_on_->OpenAt(rows->mapToGlobal(place));
}

void CRowMenu::OpenAtStart(const Row& row) {
  view_plugin_protocol::ClienDefaultViewConfigRequest request;
  request.index_code = row.index_code;
  request.type = row.is_group ? ResourceData::RT_VIEW_GROUP : ResourceData::RT_VIEW;
  HostCalls::Ask(&CViewBusinessInterfaceMgr::SetClientViewConfig, request)
      .AsCurrentUser()
      .Replacing(calls_)
      .Then(this, [this, name = StringToQString(row.name)](const auto& answer) {
        if (answer.ok) {
          Q_EMIT SignalMessage(tr("\"%1\" opens at the start from now on.").arg(name), CNomalMessage::Success);
        } else {
          Refuse(StringToQString(answer.response.error_info));
        }
      });
}

RowSituation CRowMenu::SituationOf(const Row& row) const {
  const auto& switches = TarnPlanView::CViewConfigManager::Instance();
  RowSituation situation;
  situation.kind = KindOf(row);
  situation.family = row.type;
  situation.rights = view_plugin_protocol::Rights::OfCurrentUser();
  situation.cycles = switches.IsSupportPlanGroupCycle();
  situation.why_no_new_plan = family_->Panel()->WhyNoNewPlan(row);
  situation.why_no_new_group = family_->Panel()->WhyNoNewGroup(row);
  situation.edited = CViewExternWidget::IsPlanEdited(StringToQString(row.index_code));
  situation.loading = !TarnPlanView::CViewModelDataManagerExport::Instance().IsViewModelInitFinish();
  if (situation.kind == RowKind::Plan && row.type != family_->Theme()) {
    situation.list_of_row = TitleOfList(row.type);
  }
  situation.playing = IsPlaying(row);
  return situation;
}

bool CRowMenu::IsPlaying(const Row& row) const {
  const CProgramme::State& state = player_->State();
  if (row.is_group) {
    return state.cycle && state.cycle->code == row.index_code;
  }
  return state.on_wall && state.on_wall->code == row.index_code;
}

bool CRowMenu::HasVanished() const {
  const QString code = StringToQString(bound_->index_code);
  return !family_->Panel()->GetPlanViewTree()->RowOf(code, bound_->is_group).isValid();
}

void CRowMenu::Refuse(const QString& reason) {
  Q_EMIT SignalMessage(reason, CNomalMessage::Failure);
}

void CRowMenu::ForgetUser() {
  copier_->Drop();
  calls_.Drop();
}

}  // namespace TarnClient
