#include "plans/plan_family.h"

#include <TarnPlanView/plan_view_tree.h>
#include <TarnPlanView/standard_plan_model_export.h>
#include <TarnPlanView/view_model_data_manager_export.h>

#include <memory>

#include "TarnUIDataController/message_tip_manager.h"
#include "TarnUIDataController/signal_transfer_manager.h"
#include "messages/change_tips.h"
#include "plan_rules/rights.h"

namespace TarnClient {

using tarn_ui_data_controller::CSignalTransferManager;
using TarnPlanView::CStandardPlanModel;
using TarnPlanView::CStandardViewController;
using TarnPlanView::CViewExternWidget;
using TarnPlanView::CViewModelDataManagerExport;

namespace {

CStandardPlanModel* ModelOf(const QString& monitor_id, TarnPlanView::ThemeNodeType theme) {
  const std::unique_ptr<TarnPlanView::CStandardPlanModelExport> handle(
      CViewModelDataManagerExport::Instance().GetViewManagerByTheme(monitor_id, theme));
  return qobject_cast<CStandardPlanModel*>(handle->GetPlanViewModel());
}

}  // namespace

CPlanFamily::CPlanFamily(TarnPlanView::ThemeNodeType theme, const QString& monitor_id, QWidget* monitor,
                         QWidget* panel_parent)
    : theme_(theme), model_(ModelOf(monitor_id, theme)), panel_(new CViewExternWidget(panel_parent)) {
  panel_->SetMonitorId(monitor_id);
  panel_->SetMonitorPointer(monitor);
  if (model_) {
    controller_ = new CStandardViewController(model_);
  }
  SayChanges();
  if (!model_) {
    return;
  }
  panel_->SetModel(model_);
  panel_->SetStandardViewControl(controller_);
  ReportChanges();
}

CPlanFamily::~CPlanFamily() {
  if (panel_) {
    panel_->StopWorking();
  }
  // It is the model's child and would outlive the family that made it.
  delete controller_;
}

bool CPlanFamily::MayEdit() const {
  using namespace view_plugin_protocol;
  return MayChange(theme_, EditRight, Rights::OfCurrentUser());
}

QModelIndex CPlanFamily::RowOf(const QString& code, bool is_group) const {
  if (!model_) {
    return QModelIndex();
  }
  return model_->FindIndexByIndexCode(code, is_group);
}

QString CPlanFamily::GroupName(const QString& code) const {
  return RowOf(code, true).data().toString();
}

QString CPlanFamily::PlanName(const QString& code) const {
  return RowOf(code, false).data().toString();
}

QStringList CPlanFamily::GroupsOf(const QString& plan_code) const {
  QStringList names;
  const QModelIndex plan = RowOf(plan_code, false);
  for (QModelIndex group = plan.parent(); group.parent().isValid(); group = group.parent()) {
    names.prepend(group.data().toString());
  }
  return names;
}

void CPlanFamily::MarkPlaying(const QString& code) {
  panel_->SetCurPlayItemByIndexCode(code);
}

void CPlanFamily::RenewMark(const QString& code) {
  if (code.isEmpty() || !model_) {
    return;
  }
  model_->SetPlayingIndexCode(code);  // rows that are loaded later take their mark from here
  CViewModelDataManagerExport::Instance().SetPlanPlayStateByIndexCode(model_->GetViewManagerMonitorId(), code, true);
  panel_->RenewPlayingIcons(code);
}

void CPlanFamily::MarkCycling(const QString& code) {
  panel_->GetPlanViewTree()->SetCyclingGroup(code);
}

// After the trees have taken the change: so those who ask for plans on this notice find them as they are now.
void CPlanFamily::ReportChanges() {
  auto* client = &CSignalTransferManager::Instance();
  const auto changed = &CSignalTransferManager::SignalPlanStateChanged;
  connect(controller_, &CStandardViewController::SignalAddPlanSucc, client, changed);
  connect(controller_, &CStandardViewController::SignalUpdatePlanSucc, client, changed);
  connect(controller_, &CStandardViewController::SignalDeletePlanSucc, client, changed);
  connect(controller_, &CStandardViewController::SignalDeletePlanGroupSucc, client, changed);
}

void CPlanFamily::SayChanges() {
  auto* tips = new CChangeTips(panel_, model_, controller_, this);
  connect(tips, &CChangeTips::SignalTip, this, &CPlanFamily::ShowTip);
  connect(tips, &CChangeTips::SignalSaidByStrip, this, &CPlanFamily::SignalSaid);
}

void CPlanFamily::ShowTip(const QString& text, int state) {
  tarn_ui_data_controller::CMessageTipManager::Instance().ShowTip(text, state, panel_->window());
}

}  // namespace TarnClient
