#include <QGuiApplication>
#include <QScreen>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/message_tip_manager.h"
#include "TarnUIDataController/show_message_tip.h"
#include "WidgetKit/dock_widget.h"
#include "host_calls/ask.h"
#include "plan_commands.h"
#include "plan_item_role.h"
#include "plan_log.h"
#include "row_move_check.h"
#include "view_config_manager.h"
#include "view_extern_widget_p.h"
#include "view_public_def.h"

namespace TarnPlanView {

using MarUIControl::QStringToString;
using MarUIControl::StringToQString;

namespace {

constexpr int kMaxGroupDepth = 6;
constexpr int kAddMode = 0;
constexpr int kRenameMode = 1;
constexpr int kConfirmed = 1;
constexpr int kCloseButton = 2;
constexpr int kQuestionButtons = 3;

bool IsPlanRow(const QModelIndex& index) {
  return CViewPublicDef::GetIndexItemType(index) == 1;
}

int DepthOf(QModelIndex index) {
  int depth = 0;
  for (; index.isValid(); index = index.parent()) {
    ++depth;
  }
  return depth;
}

// At `position` where that leaves the pop-up in sight, else as near to it as its screen allows.
void MoveOntoScreen(QWidget* popup, const QPoint& position) {
  const QScreen* screen = QGuiApplication::screenAt(position);
  if (!screen) {
    screen = QGuiApplication::primaryScreen();
  }
  const QRect room = screen->availableGeometry();
  const int left = qMax(room.left(), qMin(position.x(), room.right() + 1 - popup->width()));
  const int top = qMax(room.top(), qMin(position.y(), room.bottom() + 1 - popup->height()));
  popup->move(left, top);
}

}  // namespace

QModelIndex CViewExternWidget::Private::RowOf(const QString& code, bool is_group) const {
  if (!model || !proxy) {
    return QModelIndex();
  }
  return proxy->mapFromSource(model->FindIndexByIndexCode(code, is_group));
}

QModelIndex CViewExternWidget::Private::Pinned(const std::optional<CPlanNodeRef>& pin) const {
  return pin ? QModelIndex(pin->Resolve()) : Current();
}

QString CViewExternWidget::Private::MonitorId() const {
  return model ? model->GetViewManagerMonitorId() : monitor_id;
}

void CViewExternWidget::onCurrentIndexChanged(const QModelIndex& current, const QModelIndex& previous) {
  if (previous.data(PlanIndexCodeRole).toString() != d_->removed_current) {
    d_->removed_current.clear();  // somebody has gone on from where that row stood
  }
  if (!current.isValid()) {
    return;
  }
  if (d_->row_before_load && current.parent().isValid()) {
    d_->row_before_load.reset();  // the user has gone on from where the load found him
  }
  d_->renewForRow(current);
  // Own plans may always be moved; public ones by those who may edit them.
  const bool is_public = CViewPublicDef::GetIndexType(current) == PublicTheme;
  d_->ui.plan_view_tree->SetMovePermission(!is_public || d_->known.rights.edit);
}

// --- Play -----------------------------------------------------------------------------------------------------------

void CViewExternWidget::Private::play(const QString& code) {
  if (!controller || code.isEmpty() || stopped) {
    return;
  }
  const QPointer<CViewExternWidget> alive(q);
  if (!monitor_id.isEmpty()) {
    Q_EMIT q->SignalPlayPlanToMonitor(
        QVariantMap{{QStringLiteral("monitor_id"), monitor_id}, {QStringLiteral("plan_code"), code}});
  }
  if (alive && controller) {
    controller->PlayPlanViewByIndexCode(QStringToString(code));
  }
}

void CViewExternWidget::onStartPlayView(const QModelIndex& index) {
  PlayPlanByIndex(index);
}

void CViewExternWidget::onStartPlayViewByString(const QString& index_code, const bool& automatic) {
  PlayPlanByString(index_code, automatic);
}

void CViewExternWidget::onStartPlayViewByString(const QString& index_code, int window) {
  OnPlayPlanByString(index_code, window);
}

// --- Delete ---------------------------------------------------------------------------------------------------------

bool CViewExternWidget::Private::IsChildPlaying(const QModelIndex& group) const {
  const QAbstractItemModel* rows = group.model();
  for (int row = 0; rows && row < rows->rowCount(group); ++row) {
    const QModelIndex child = rows->index(row, 0, group);
    if (CViewPublicDef::IsPlanGroup(child) ? IsChildPlaying(child) : child.data(PlayingRole).toBool()) {
      return true;
    }
  }
  return false;
}

bool CViewExternWidget::Private::HasChildren(const QModelIndex& group) const {
  // First, because the host is asked only where its answer counts.
  if (CViewConfigManager::Instance().IsSupportDelPlanWithChildren()) {
    return false;
  }
  return proxy->rowCount(group) > 0 || controller->IsHaveChilds(group);
}

QString CViewExternWidget::Private::PlayingWarning() const {
  return CViewConfigManager::Instance().IsShowPlanOrView() ? CViewExternWidget::tr("TheUserCurrentlyHasAWPBwgUrC")
                                                           : CViewExternWidget::tr("TheUserCurrentlyHasAwlMLoHj");
}

bool CViewExternWidget::Private::Confirm(const QString& question) {
  const QPointer<CViewExternWidget> alive(q);
  const int asked_in = session;
  const int answer = tarn_ui_data_controller::ShowMessageTip(question, 1, q, kQuestionButtons);
  return alive && !stopped && session == asked_in && answer == kConfirmed;
}

void CViewExternWidget::onDeleteBtnClicked() {
  const QModelIndex index = d_->Current();
  if (!index.isValid() || !d_->IsReady() || d_->CurrentPage() == PanelPage::Wait) {
    return;
  }
  if (index.data(IsGroupRole).toBool()) {
    d_->deleteGroup(index);
  } else {
    d_->deletePlan(index);
  }
}

void CViewExternWidget::Private::deleteGroup(const QModelIndex& index) {
  if (HasChildren(index)) {
    tarn_ui_data_controller::ShowMessageTip(CViewExternWidget::tr("ContainsChildNodesThPmmApRHD"), 1, q, kCloseButton);
    return;
  }
  const CPlanNodeRef row(index);
  const QString code = index.data(GroupIndexCodeRole).toString();
  const QString question = IsChildPlaying(index) ? PlayingWarning() : CViewExternWidget::tr("ConfirmToDelete");
  // The row may have gone while the question was open, and a second key press may come before the first answer.
  if (deleting.contains({true, code}) || !Confirm(question) || !controller || !row.Resolve().isValid()) {
    return;
  }
  controller->DeletePlanGroupByIndex(row.Resolve(), noteDeletion({true, code}));
}

// Until its own answer comes, and no other, the row is not deleted once more.
CStandardViewController::PlanAnswer CViewExternWidget::Private::noteDeletion(const QPair<bool, QString>& row) {
  deleting.insert(row);
  return [this, panel = QPointer<CViewExternWidget>(q), row, begun_in = session](bool, const QString&) {
    if (panel && session == begun_in) {
      deleting.remove(row);
    }
  };
}

void CViewExternWidget::Private::deletePlan(const QModelIndex& index) {
  const CPlanNodeRef row(index);
  const QString code = index.data(PlanIndexCodeRole).toString();
  const bool playing = index.data(PlayingRole).toBool();
  const QString question = playing ? PlayingWarning() : CViewExternWidget::tr("ConfirmToDelete");
  if (deleting.contains({false, code}) || !Confirm(question) || !controller || !row.Resolve().isValid()) {
    return;
  }
  const QPointer<CViewExternWidget> alive(q);
  if (playing) {
    Q_EMIT q->SignalStopPlan();
  }
  if (alive && controller && row.Resolve().isValid()) {
    controller->DeletePlanByIndex(row.Resolve(), noteDeletion({false, code}));
  }
}

// --- Groups ---------------------------------------------------------------------------------------------------------

CViewNameEdit* CViewExternWidget::Private::NameEdit() {
  if (!name_edit) {
    name_edit = new CViewNameEdit(q);
    connect(name_edit, &CViewNameEdit::SignalEditPlanViewGroup, q, &CViewExternWidget::onEditPlanViewGroupName);
    connect(name_edit, &CViewNameEdit::SignalAddPlanViewGroup, q, &CViewExternWidget::onAddPlanViewGroupName);
    connect(name_edit, &CViewNameEdit::SignalClosed, q, [this] {
      name_edit_row.reset();
      new_group_parent.reset();
    });
  }
  return name_edit;
}

// One pixel below the button, left edges aligned.
void CViewExternWidget::Private::showNameEdit(const QWidget* button) {
  const QPoint below(button->x(), button->y() + button->height() + 1);
  CViewNameEdit* edit = NameEdit();
  edit->setFocusPolicy(Qt::StrongFocus);
  MoveOntoScreen(edit, button->parentWidget()->mapToGlobal(below));
  edit->show();
  edit->activateWindow();
}

// The group that a new group or plan goes into: the current one, or the one of the current plan.
QModelIndex CViewExternWidget::Private::GroupForNew() const {
  const QModelIndex row = Current();
  return IsPlanRow(row) ? row.parent() : row;
}

void CViewExternWidget::onAddGroupBtnClicked() {
  if (!d_->IsReady()) {
    return;
  }
  d_->NameEdit()->SetMode(kAddMode);
  if (!d_->unused_name.isEmpty()) {
    d_->NameEdit()->SetName(std::exchange(d_->unused_name, QString()));
  }
  const QModelIndex parent = d_->GroupForNew();
  d_->name_edit_row.reset();
  d_->new_group_parent = parent.isValid() ? std::make_optional(CPlanNodeRef(parent)) : std::nullopt;
  d_->showNameEdit(d_->ui.add_group_btn);
}

void CViewExternWidget::onAddPlanViewGroupName(const QString& name) {
  const auto pinned = std::exchange(d_->new_group_parent, std::nullopt);
  QModelIndex parent = pinned ? QModelIndex(pinned->Resolve()) : d_->GroupForNew();
  if (pinned && !parent.isValid()) {
    d_->unused_name = name;
    Q_EMIT SignalMessageTipNeeded(
        tr("The group around the new one is no longer there. Choose another; the name is kept."), 1);
    return;
  }
  if (DepthOf(parent) >= kMaxGroupDepth) {
    tarn_ui_data_controller::CMessageTipManager::Instance().ShowMessage(MarUIControl::GetIndependentWindow(this),
                                                                        tr("MplOHCzygFvfHFyDzE"), 2, 1, 15);
    TARN_PLAN_LOG_INFO("CNomalMessageManager::Instance().ShowMessage ViewGroup Tips Show");
    return;
  }
  if (!d_->IsReady()) {
    return;
  }
  if (!parent.isValid() && d_->proxy) {
    parent = d_->proxy->index(0, 0);  // nothing chosen: below the root
  }
  d_->controller->AddPlanGroupByIndexName(parent, name);
}

void CViewExternWidget::onEditPlanViewGroupName(const QString& name) {
  if (!d_->IsReady()) {
    return;
  }
  const QModelIndex row = d_->Pinned(d_->name_edit_row);
  if (!row.isValid()) {
    Q_EMIT SignalMessageTipNeeded(tr("This group is no longer there."), 1);
    return;
  }
  d_->controller->UpdatePlanGroupName(row, name);
}

// --- Plans ----------------------------------------------------------------------------------------------------------

// None for a hit whose group is not loaded here: then the user chooses one.
QString CViewExternWidget::Private::GroupForNewPlan() const {
  if (CurrentPage() != PanelPage::Search) {
    return GroupForNew().data(GroupIndexCodeRole).toString();
  }
  const QString code = MarkedHit().data(kSearchGroupRole).toString();
  return RowOf(code, true).isValid() ? code : QString();
}

void CViewExternWidget::onAddPlanBtnClicked() {
  TARN_PLAN_LOG_INFO("Add plan button clicked");
  if (!d_->IsReady()) {
    return;
  }
  const QPointer<CViewExternWidget> alive(this);
  const bool had_focus = d_->ui.add_view_btn->hasFocus();
  d_->known.opening = true;
  d_->restoreEnableState();
  const QString group_code = d_->GroupForNewPlan();
  const bool opened = d_->openPlanEditor([group_code](CTarnAddPlanWidget* editor) { editor->OpenNew(group_code); });
  if (!alive) {
    return;
  }
  if (opened) {
    TARN_PLAN_LOG_INFO("Add plan dock widget show.");
  }
  d_->known.opening = false;
  d_->restoreEnableState();
  if (had_focus && !opened) {
    d_->ui.add_view_btn->setFocus();  // disabling has moved it on
  }
}

void CViewExternWidget::onEditBtnClicked() {
  if (!d_->IsReady() || d_->CurrentPage() == PanelPage::Wait) {
    return;
  }
  if (d_->CurrentPage() == PanelPage::Search) {
    d_->editHit();
  } else {
    d_->editRow(d_->Current());
  }
}

void CViewExternWidget::Private::editRow(const QModelIndex& index) {
  if (!index.isValid() || !IsReady() || CurrentPage() == PanelPage::Wait) {
    return;
  }
  if (!index.data(IsGroupRole).toBool()) {
    editPlan(index.data(PlanIndexCodeRole).toString());
    return;
  }
  NameEdit()->SetMode(kRenameMode);
  NameEdit()->SetName(index.data().toString());
  name_edit_row = CPlanNodeRef(index);
  showNameEdit(ui.edit_btn);
}

void CViewExternWidget::Private::fillUpdate(const QModelIndex& row,
                                            view_plugin_protocol::UpdatePlanRequest& request) const {
  request.plan_name = QStringToString(row.data().toString());
  request.index_type = row.data(PlanTypeRole).toInt();
  request.parent_index_code = QStringToString(row.parent().data(GroupIndexCodeRole).toString());
  request.parent_name = QStringToString(row.parent().data().toString());
}

// --- Menu -----------------------------------------------------------------------------------------------------------

// The row may have vanished under the open menu, and another one become current. No code means the current row.
bool CViewExternWidget::Private::isCurrent(const QString& code) const {
  const QModelIndex row = Current();
  const int role = row.data(IsGroupRole).toBool() ? GroupIndexCodeRole : PlanIndexCodeRole;
  return code.isEmpty() || row.data(role).toString() == code;
}

// Whether what a command of the menu is about is still there to act on.
bool CViewExternWidget::Private::isThere(PlanCommand command, const QString& code) const {
  switch (command) {
    case PlanCommand::Play:
      return RowOf(code, false).isValid();
    case PlanCommand::Cycle:
      return RowOf(code, true).isValid();
    case PlanCommand::CreationInfo:
      return true;
    default:
      return isCurrent(code);
  }
}

void CViewExternWidget::OnMenuClicked(tarn_ui_data_controller::MsgType type, QVariant menu_data) {
  const std::optional<PlanCommand> command = CommandOf(type);
  if (command && d_->isThere(*command, menu_data.toString())) {
    d_->renewRights();
    d_->actions->Run(*command, menu_data.toString());
  }
}

void CViewExternWidget::OnMoveRow(const QPoint& start, const QPoint& end, const QRect& targetRect) {
  switch (CheckRowMove(*d_->ui.plan_view_tree, start, end, targetRect)) {
    case RowMoveRefusal::SameGroup:
      Q_EMIT SignalMessageTipNeeded(tr("ViewSortFailedadOMakQWZCpToC"), 0);
      break;
    case RowMoveRefusal::OtherGroup:
      Q_EMIT SignalMessageTipNeeded(tr("TheMoveViewOperationrvQbjaeS"), 0);
      break;
    case RowMoveRefusal::None:
      break;
  }
}

// --- Creation information, share, save as
// -----------------------------------------------------------------------------

void CViewExternWidget::Private::requestCreationInfo(const QString& code) {
  if (stopped) {
    return;
  }
  view_plugin_protocol::GetPlanDetailRequest request;
  request.plan_index_code = QStringToString(code);
  HostCalls::Ask(&LyraPluginManager::CViewBusinessInterfaceMgr::GetPlanDetail, request)
      .Replacing(creation_info_calls)
      .Then(q, [this](const auto& answer) {
        const view_plugin_protocol::GetPlanDetailResponse& plan = answer.response;
        if (answer.ok) {
          Q_EMIT q->signalSucceedToGetCreationInfo(StringToQString(plan.creator), StringToQString(plan.creation_time));
        } else {
          Q_EMIT q->SignalMessageTipNeeded(StringToQString(plan.error_info), 1);
        }
      });
}

void CViewExternWidget::onSucceedToGetCreationInfo(const QString& creator, const QString& creation_time) {
  QWidget* window = MarUIControl::GetIndependentWindow(this);
  if (!window) {
    return;
  }
  if (!d_->creation_info) {
    d_->creation_info = new CCreationInfoDlg(window);
  }
  CCreationInfoDlg* box = d_->creation_info;
  box->SetCreationInfo(creator, creation_time);
  box->move(
      window->mapToGlobal(QPoint(window->width() / 2 - box->width() / 2, window->height() / 2 - box->height() / 2)));
  box->show();
}

void CViewExternWidget::Private::SetViewShareShow(const QString& plan_code) {
  if (!share_view) {
    share_view = new CShareViewWgt(q);
  }
  share_view->ClearCheck();
  share_view->show();
  const QPoint cursor = QCursor::pos();
  MoveOntoScreen(share_view, QPoint(cursor.x(), cursor.y() - share_view->height() / 2));
  if (Current().isValid() || !plan_code.isEmpty()) {
    share_view->SetShareViewIndexCode(QStringToString(plan_code));
    share_view->RefreshUsers();
  }
}

CSavePlanAsDlg* CViewExternWidget::Private::SaveAsDialog() {
  if (!save_as) {
    save_as = new CSavePlanAsDlg(MonitorId(), q);
    connect(save_as, &CSavePlanAsDlg::signalSavePlanAs, q, &CViewExternWidget::SignalSavePlanAs);
  }
  return save_as;
}

void CViewExternWidget::OnPopupSavePlanAsDlg(const QPoint& position) {
  if (d_->stopped) {
    return;
  }
  CSavePlanAsDlg* dialog = d_->SaveAsDialog();
  dialog->SetViewController(d_->controller);
  dialog->SetCurIndexByPlayItem();
  dialog->ExpandDefaultIndex();
  dialog->installEventFilter(this);
  MoveOntoScreen(dialog, position);
  dialog->show();
  dialog->activateWindow();
}

void CViewExternWidget::Private::closePopups() {
  WidgetKit::HideDockWidget(plan_editor);
  if (plan_editor) {
    plan_editor->deleteLater();
    plan_editor = nullptr;
  }
  // Made again when next asked for: what they hold belongs to another user.
  for (QWidget* popup : {static_cast<QWidget*>(share_view), static_cast<QWidget*>(save_as),
                         static_cast<QWidget*>(creation_info), static_cast<QWidget*>(name_edit)}) {
    if (popup) {
      popup->hide();
      popup->deleteLater();
    }
  }
  share_view = nullptr;
  save_as = nullptr;
  creation_info = nullptr;
  name_edit = nullptr;
  unused_name.clear();
}

}  // namespace TarnPlanView
