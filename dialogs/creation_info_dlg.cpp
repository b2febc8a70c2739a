#include "creation_info_dlg.h"

#include "MarUIControl/accessible_role.h"
#include "TarnUIDataController/signal_transfer_manager.h"
#include "ui_creation_info_dlg.h"

namespace TarnPlanView {

namespace {
constexpr QSize kBoxSize(400, 216);
}

using tarn_ui_data_controller::CQssWidgetBox;
using tarn_ui_data_controller::CSignalTransferManager;

CCreationInfoDlg::CCreationInfoDlg(QWidget* parent)
    : CQssWidgetBox(parent, 0), ui_(std::make_unique<Ui::CreationInfoDlgUi>()) {
  ui_->setupUi(this);
  setFixedSize(kBoxSize);
  setWindowModality(Qt::WindowModal);
  ui_->close_push_button->setText(tr("Close"));
  connect(ui_->close_push_button, &QPushButton::clicked, this, &CCreationInfoDlg::CloseBox);
  connect(this, &CQssWidgetBox::signalVisiblityChanged, &CSignalTransferManager::Instance(),
          &CSignalTransferManager::signalModalityRequested);
  // The box carries no title bar: what a screen reader says must not be the internal title.
  setAccessibleName(tr("Creation information"));
  ui_->close_push_button->setFocus();
}

CCreationInfoDlg::~CCreationInfoDlg() = default;

void CCreationInfoDlg::SetCreationInfo(const QString& creator, const QString& creationTime) {
  ui_->creator_info_widget->SetText(creator);
  ui_->creation_time_info_widget->SetText(creationTime);
  setAccessibleDescription(
      QStringLiteral("%1: %2, %3: %4")
          .arg(ui_->creator_tip_widget->text(), creator, ui_->creation_time_tip_widget->text(), creationTime));
  MarUIControl::AnnounceAlert(this);
}

}  // namespace TarnPlanView
