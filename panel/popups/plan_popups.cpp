#include "plan_popups.h"

#include <QCursor>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "host_calls/ask.h"
#include "keep_on_screen.h"
#include "move_to_dlg.h"

namespace TarnPlanView {

using MarUIControl::CNomalMessage;
using MarUIControl::QStringToString;
using MarUIControl::StringToQString;

namespace {

template <class Popup>
void End(QPointer<Popup>& popup) {
  if (popup) {
    popup->hide();
    popup->deleteLater();
    popup = nullptr;
  }
}

}  // namespace

CPlanPopups::CPlanPopups(QWidget* panel) : QObject(panel), panel_(panel) {}

void CPlanPopups::ShowShare(const std::optional<QString>& plan_code) {
  if (!share_) {
    share_ = new CShareViewWgt(panel_);
  }
  share_->ClearCheck();
  share_->show();
  const QPoint cursor = QCursor::pos();
  share_->move(cursor.x(), cursor.y() - share_->height() / 2);
  KeepOnScreen(share_, cursor);
  if (plan_code) {
    share_->SetShareViewIndexCode(QStringToString(*plan_code));
    share_->RefreshUsers();
  }
}

void CPlanPopups::RequestCreationInfo(const QString& plan_code) {
  view_plugin_protocol::GetPlanDetailRequest request;
  request.plan_index_code = QStringToString(plan_code);
  HostCalls::Ask(&LyraPluginManager::CViewBusinessInterfaceMgr::GetPlanDetail, request)
      .Replacing(calls_)
      .Then(this, [this](const auto& answer) {
        const view_plugin_protocol::GetPlanDetailResponse& plan = answer.response;
        if (answer.ok) {
          Q_EMIT SignalCreationInfo(StringToQString(plan.creator), StringToQString(plan.creation_time));
        } else {
          Q_EMIT SignalMessageTipNeeded(StringToQString(plan.error_info), CNomalMessage::Failure);
        }
      });
}

void CPlanPopups::ShowCreationInfo(const QString& creator, const QString& creation_time) {
  QWidget* window = MarUIControl::GetIndependentWindow(panel_);
  if (!window) {
    return;
  }
  if (!creation_info_) {
    creation_info_ = new CCreationInfoDlg(window);
  }
  creation_info_->SetCreationInfo(creator, creation_time);
  creation_info_->move(window->mapToGlobal(
      QPoint(window->width() / 2 - creation_info_->width() / 2, window->height() / 2 - creation_info_->height() / 2)));
  creation_info_->show();
}

void CPlanPopups::ShowSaveAs(const QPoint& position, const QString& monitor_id, CStandardViewController* controller) {
  if (!save_as_) {
    save_as_ = new CSavePlanAsDlg(monitor_id, panel_);
    connect(save_as_, &CSavePlanAsDlg::signalSavePlanAs, this, &CPlanPopups::SignalSavePlanAs);
  }
  save_as_->SetViewController(controller);
  save_as_->SetCurIndexByPlayItem();
  save_as_->ExpandDefaultIndex();
  save_as_->installEventFilter(panel_);
  save_as_->move(position);
  KeepOnScreen(save_as_, position);
  save_as_->show();
  save_as_->activateWindow();
}

bool CPlanPopups::FillSaveAs(view_plugin_protocol::AddPlanRequest& request) const {
  if (save_as_) {
    save_as_->GetPlanParam(request);
  }
  return save_as_;
}

void CPlanPopups::ShowMoveTo(const view_plugin_protocol::TarnPlanViewInfo& plan, CStandardPlanModel* groups,
                             CStandardViewController* controller) {
  End(move_to_);
  move_to_ = new CMoveToDlg(StringToQString(plan.name), StringToQString(plan.group_index_code), panel_);
  move_to_->setAttribute(Qt::WA_DeleteOnClose);
  connect(
      move_to_, &CMoveToDlg::SignalChosen, this,
      [this, code = StringToQString(plan.index_code)](const auto& group) { Q_EMIT SignalGroupChosen(code, group); });
  move_to_->Offer(groups, controller);
  move_to_->show();
}

void CPlanPopups::Drop() {
  calls_.Drop();
}

void CPlanPopups::Close() {
  End(share_);
  End(save_as_);
  End(creation_info_);
  End(move_to_);
}

}  // namespace TarnPlanView
