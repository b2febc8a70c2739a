#include "app/scenes.h"

#include <TarnPlanView/view_extern_widget.h>

#include <QAbstractButton>
#include <QLineEdit>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "ResourceTreeKit/camera_tree.h"
#include "plan_rules/update_request.h"
#include "plans/plan_family.h"
#include "window/main_window.h"

namespace TarnClient {

using LyraPluginManager::CViewBusinessInterfaceMgr;
using ResourceTreeKit::CCameraTree;

namespace {

const QString kPlan = QStringLiteral("Whole site");

// As another workstation would.
void ChangePlan(const QString& plan_code) {
  view_plugin_protocol::GetPlanDetailRequest question;
  question.plan_index_code = MarUIControl::QStringToString(plan_code);
  view_plugin_protocol::GetPlanDetailResponse plan;
  CViewBusinessInterfaceMgr::Instance().GetPlanDetail(question, plan);
  view_plugin_protocol::UpdatePlanResponse response;
  CViewBusinessInterfaceMgr::Instance().UpdatePlan(UpdateRequestFrom(plan), response);
}

}  // namespace

template <class Widget>
Widget* CScene::InEditor(const char* name) const {
  auto* editor = window_->findChild<QWidget*>(QStringLiteral("add_edit_plan_widget"));
  return editor ? editor->template findChild<Widget*>(QString::fromLatin1(name)) : nullptr;
}

void CScene::AddEditor() {
  Browse();
  AddExpansion(QStringLiteral("Tours"));
  AddCurrent(kPlan);
  AddClick(QStringLiteral("edit_btn"));
  Add([this] {
    const auto* cameras = InEditor<CCameraTree>("camera_tree");
    const auto* name = InEditor<QLineEdit>("plan_name_edit");
    return cameras && cameras->IsLoaded() && name && name->text() == kPlan;
  });
}

void CScene::AddEditedName(const QString& name) {
  Add([this, name] {
    InEditor<QLineEdit>("plan_name_edit")->setText(name);
    return true;
  });
}

void CScene::PlanEditor() {
  AddEditor();
  Add([this] {
    auto* cameras = InEditor<CCameraTree>("camera_tree");
    const QModelIndex site = cameras->model()->index(0, 0);
    cameras->expand(cameras->model()->index(1, 0, site));
    return true;
  });
}

void CScene::PlanEditorNew() {
  Browse();
  AddCurrent(QStringLiteral("Gates"));
  AddClick(QStringLiteral("add_view_btn"));
}

void CScene::PlanEditorCameras() {
  AddEditor();
  Add([this] {
    InEditor<QLineEdit>("camera_search")->setText(QStringLiteral("fence"));
    return true;
  });
}

void CScene::PlanEditorConflict() {
  AddEditor();
  AddEditedName(QStringLiteral("Whole site by night"));
  Add([this] {
    ChangePlan(window_->CurrentFamily().Panel()->GetCurrentSelectedViewID());
    InEditor<QAbstractButton>("save_plan_btn")->click();
    return true;
  });
}

void CScene::PlanEditorQuestion() {
  AddEditor();
  AddEditedName(QStringLiteral("Whole site by night"));
  Add([this] {
    InEditor<QAbstractButton>("cancel_plan_btn")->click();
    return true;
  });
}

}  // namespace TarnClient
