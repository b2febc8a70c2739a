#include "share_view_wgt.h"

#include <QApplication>
#include <QKeyEvent>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/modal_tip_dialog.h"
#include "MarUIControl/shadow_widget.h"
#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/message_tip_manager.h"
#include "keep_on_screen.h"
#include "plan_log.h"
#include "share_keys.h"
#include "share_view_model.h"
#include "ui_share_view_wgt.h"
#include "why_off.h"

namespace TarnPlanView {

using MarUIControl::CModalTipDialog;
using MarUIControl::CShadowWidget;
using tarn_ui_data_controller::CMessageTipManager;

namespace {

constexpr int kSuccessTip = 0;
constexpr int kHintTip = 3;

void ShowTip(QWidget* window, const QString& text, int kind) {
  constexpr int kAtTop = 1;
  constexpr int kDistance = 15;
  CMessageTipManager::Instance().ShowMessage(window, text, kind, kAtTop, kDistance);
}

}  // namespace

CShareViewWgt::CShareViewWgt(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::CShareViewWgt>()), parent_(parent) {
  BuildForm();
  model_ = new CShareViewModel(this);
  ui_->user_tree_view_->setModel(model_);
  ui_->location_view_->SetView(ui_->user_tree_view_);
  new CShareKeys(ui_->location_view_, ui_->user_tree_view_, ui_->share_button_);
  connect(ui_->share_button_, &QPushButton::clicked, this, &CShareViewWgt::OnShareBtnClick);
  connect(ui_->location_view_, &WidgetKit::CNewSearchLine::SignalLeave, this, &CShareViewWgt::close);
}

CShareViewWgt::~CShareViewWgt() = default;

void CShareViewWgt::BuildForm() {
  ui_->setupUi(this);
  setAttribute(Qt::WA_StyledBackground);
  setWindowFlags(windowFlags() | Qt::Dialog | Qt::FramelessWindowHint);
  installEventFilter(this);
  shadow_ = new CShadowWidget(this, Qt::Tool | Qt::WindowTransparentForInput);
  shadow_->SetContentWidget(this, 0);
  shadow_->SetShadowMode(1);
  shadow_->SetAutoShow(true);
  ui_->share_label_->SetText(tr("SelectShareUserYARNUQUuPK"));
  ui_->share_button_->setText(tr("Share"));
  ui_->no_users_label_->setText(tr("There are no other users to share with."));
  ui_->no_users_label_->hide();
  ui_->user_tree_view_->setAccessibleName(ui_->share_label_->text());
  ui_->location_view_->setPlaceholderText(tr("Find a user"));
  ui_->location_view_->setAccessibleName(ui_->location_view_->placeholderText());
  setAccessibleName(ui_->share_label_->text());
}

void CShareViewWgt::SetShareViewIndexCode(const std::string& indexCode) {
  plan_index_code_ = indexCode;
}

void CShareViewWgt::ClearCheck() {
  if (model_) {
    model_->ClearCheck();
  }
}

void CShareViewWgt::RefreshUsers() {
  if (!model_) {
    return;
  }
  ui_->location_view_->ClearFilterText();
  model_->ResetUsers();
  model_->GetUserInfoInsert();
  ui_->user_tree_view_->expandRecursively(model_->index(0, 0));
  ui_->user_tree_view_->setVisible(model_->HasUsers());
  ui_->location_view_->setVisible(model_->HasUsers());
  ui_->no_users_label_->setVisible(!model_->HasUsers());
  QString no_one;
  if (!model_->HasUsers()) {
    no_one = ui_->no_users_label_->text();
  }
  SetWhyOff(ui_->share_button_, no_one);
  repaint();
}

void CShareViewWgt::OnShareBtnClick() {
  view_plugin_protocol::ViewShareResquestInfo request;
  request.user_ids = model_->GetCheckedUserIds();
  request.plan_index_code = plan_index_code_;
  if (request.user_ids.empty()) {
    ShowTip(MarUIControl::GetIndependentWindow(parent_), tr("ShareUserNotSelectedxvCWOZhu"), kHintTip);
    TARN_PLAN_LOG_INFO("UserId Null");
    return;
  }
  view_plugin_protocol::ShareViewResponseInfo response;
  if (!LyraPluginManager::CViewBusinessInterfaceMgr::Instance().ViewShareUsers(request, response)) {
    ShowFailure(response);
    return;
  }
  // A host that answers an error here shows it to its users itself.
  if (!response.error_info.empty() || response.error_code != 0) {
    return;
  }
  ShowTip(MarUIControl::GetIndependentWindow(parent_), tr("Orbis-ControlClient.0fe6c50bd0374aa995cf6c6f39844977.msg"),
          kSuccessTip);
  TARN_PLAN_LOG_INFO("Share View Success");
  close();
}

void CShareViewWgt::ShowFailure(const view_plugin_protocol::ShareViewResponseInfo& response) {
  const QPointer<CShareViewWgt> self(this);
  const QPointer<CModalTipDialog> box(new CModalTipDialog(MarUIControl::GetIndependentWindow(parent_)));
  box->SetDialogSize(CModalTipDialog::MiddleSize);
  box->SetDialogModel(CModalTipDialog::WarningModel);
  box->SetTitle(
      tr("Orbis-ControlClient.bd027996d94a4b8cba21495e77820e58.msg").arg(response.error_code, 0, 10, QLatin1Char(' ')));
  box->SetContent(MarUIControl::StringToQString(response.error_info));
  box->SetConfirmVisible(false);
  box->SetCancelText(tr("Orbis-ControlClient.a3f5ec5b970e4b29b44d626ba9dca3b1.button"));
  box->exec();
  delete box;
  marlog::Write("LyraClientInfo", marlog::Info, "[%s(%d)] - error_model: %d, error_code: %d, error_info: %s",
                "TarnPlanView::CShareViewWgt::OnShareBtnClick", __LINE__, response.error_model, response.error_code,
                response.error_info.c_str());
  // The window, and this pop-up with it, may have gone while the box was open.
  if (self) {
    close();
  }
}

bool CShareViewWgt::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ActivationChange && QApplication::activeWindow() != this && watched == this) {
    if (!geometry().contains(QCursor::pos())) {
      close();
    }
  } else if (watched != this) {
    return false;
  }
  return QWidget::eventFilter(watched, event);
}

void CShareViewWgt::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Cancel)) {
    close();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void CShareViewWgt::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  activateWindow();
  ui_->location_view_->setFocus(Qt::PopupFocusReason);
}

void CShareViewWgt::moveEvent(QMoveEvent* event) {
  QWidget::moveEvent(event);
  // It opens beside the cursor, half above it: near an edge it would stick out.
  if (isVisible()) {
    KeepOnScreen(this, QPoint(x(), y() + height() / 2));
  }
}

}  // namespace TarnPlanView
