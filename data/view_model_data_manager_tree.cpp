#include <QStandardItem>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "plan_item_role.h"
#include "row_record.h"
#include "standard_plan_model.h"
#include "view_group_item.h"
#include "view_model_data_manager_p.h"
#include "view_plan_item.h"

// Building the trees, and the observers of what stands in them.
namespace TarnPlanView {

int RowAfterGroups(const QStandardItem* parent) {
  int row = 0;
  while (row < parent->rowCount() && parent->child(row)->data(IsGroupRole).toBool()) {
    ++row;
  }
  return row;
}

using LyraPluginManager::CViewBusinessInterfaceMgr;
using MarUIControl::QStringToString;
using MarUIControl::StringToQString;
using view_plugin_protocol::PlanBasicInfo;
using view_plugin_protocol::PlanGroup;

namespace {

template <class Observer>
void RegisterObserver(Observer* observer, ResourceData::ResourceType type, int action) {
  CViewBusinessInterfaceMgr::Instance().ViewRegisterResourceUpdate(observer, {type, observer->GetIndexCode(), action});
}

}  // namespace

void CViewModelDataManager::InsertAllChildItem(const QString& code, int theme) {
  if (code.isEmpty()) {
    return;
  }
  InsertSubGroupNode(code, theme);
  InsertSubPlanNode(code, theme);
  markChildrenFetched(code);
  // The first model leads: families that it does not show get this one level.
  QStandardItem* group = d_->models.isEmpty() ? nullptr : d_->models.first()->FindTargetItemByIndexCode(code, true);
  if (!group) {
    return;
  }
  for (int row = 0; row < group->rowCount(); ++row) {
    const QStandardItem* child = group->child(row);
    if (child->data(IsGroupRole).toBool()) {
      InsertAllChildItem(child->data(GroupIndexCodeRole).toString(), theme);
    }
  }
}

bool CViewModelDataManager::InsertSubGroupNode(const QString& code, int theme, int32_t* error_kind) {
  return fetchSubGroups(code, theme, error_kind, false);
}

// The host says what is in a group when its observer is registered. A row that comes back, for its deletion was taken
// back, may have its observer of before.
bool CViewModelDataManager::fetchSubGroups(const QString& code, int theme, int32_t* error_kind, bool renews_observers) {
  if (code.isEmpty()) {
    return false;
  }
  view_plugin_protocol::GetPlanGroupsRequest request;
  request.parent_index_code = QStringToString(code);
  request.node_type = theme;
  view_plugin_protocol::GetPlanGroupsResponse response;
  if (!CViewBusinessInterfaceMgr::Instance().GetPlanGroups(request, response)) {
    if (error_kind) {
      *error_kind = response.error_kind;
    }
    return false;
  }
  for (const PlanGroup& group : qAsConst(response.groups)) {
    if (renews_observers && !isShown(StringToQString(group.index_code), true)) {
      DeleteViewGroup(group.index_code);
    }
    CreateViewGroup(group);
  }
  const RowRecords records = CRowRecord::OfAll(response.groups);
  for (CStandardPlanModel* model : qAsConst(d_->models)) {
    if (QStandardItem* parent = model->FindTargetItemByIndexCode(code, true)) {
      insertGroups(model, parent, records);
    }
  }
  return true;
}

void CViewModelDataManager::insertGroups(CStandardPlanModel* model, QStandardItem* parent, const RowRecords& groups) {
  const ViewManagerParam param = model->GetViewMangageParam();
  QList<QStandardItem*> rows;
  for (const RowRecord& group : groups) {
    if (QStandardItem* row = model->FindTargetItemByIndexCode(group->Code(), true)) {
      row->setText(group->Name());
    } else {
      rows.append(new CViewGroupItem(param, group));
    }
  }
  if (!rows.isEmpty()) {
    parent->insertRows(RowAfterGroups(parent), rows);
    parent->setData(true, GroupLoadedRole);
  }
}

bool CViewModelDataManager::InsertSubPlanNode(const QString& code, int theme, int32_t* error_kind) {
  if (code.isEmpty()) {
    return false;
  }
  view_plugin_protocol::GetPlansInGroupRequest request;
  request.group_index_code = QStringToString(code);
  request.node_type = theme;
  view_plugin_protocol::GetPlansInGroupResponse response;
  if (!CViewBusinessInterfaceMgr::Instance().GetPlansInGroup(request, response)) {
    if (error_kind) {
      *error_kind = response.error_kind;
    }
    return false;
  }
  for (const PlanBasicInfo& plan : qAsConst(response.plans)) {
    CreateView(plan);
  }
  const RowRecords records = CRowRecord::OfAll(response.plans);
  for (CStandardPlanModel* model : qAsConst(d_->models)) {
    if (QStandardItem* parent = model->FindTargetItemByIndexCode(code, true)) {
      insertPlans(model, parent, records);
    }
  }
  return true;
}

void CViewModelDataManager::insertPlans(CStandardPlanModel* model, QStandardItem* parent, const RowRecords& plans) {
  const ViewManagerParam param = model->GetViewMangageParam();
  QList<QStandardItem*> rows;
  for (const RowRecord& plan : plans) {
    if (!model->FindItemByIndexCode(plan->Code(), false)) {
      rows.append(new CViewPlanItem(param, plan));
    }
  }
  if (!rows.isEmpty()) {
    parent->appendRows(rows);
    parent->setData(true, GroupLoadedRole);
  }
}

void CViewModelDataManager::markChildrenFetched(const QString& code) {
  for (CStandardPlanModel* model : qAsConst(d_->models)) {
    if (const QStandardItem* row = model->FindTargetItemByIndexCode(code, true)) {
      model->SetChildrenFetched(row->index(), true);
    }
  }
}

void CViewModelDataManager::addPlanGroupList(CStandardPlanModel* model, QStandardItem* parent,
                                             const view_plugin_protocol::GetPlanGroupsResponse& groups) {
  if (model && parent) {
    appendGroups(model, parent, CRowRecord::OfAll(groups.groups));
  }
}

void CViewModelDataManager::appendGroups(CStandardPlanModel* model, QStandardItem* parent, const RowRecords& groups) {
  const ViewManagerParam param = model->GetViewMangageParam();
  QList<QStandardItem*> rows;
  for (const RowRecord& group : groups) {
    if (!model->FindItemByIndexCode(group->Code(), true)) {
      rows.append(new CViewGroupItem(param, group));
    }
  }
  if (!rows.isEmpty()) {
    parent->appendRows(rows);
  }
}

void CViewModelDataManager::addPlanList(CStandardPlanModel* model, QStandardItem* parent,
                                        const view_plugin_protocol::GetPlansInGroupResponse& plans) {
  if (model && parent) {
    appendPlans(model, parent, CRowRecord::OfAll(plans.plans));
  }
}

void CViewModelDataManager::appendPlans(CStandardPlanModel* model, QStandardItem* parent, const RowRecords& plans) {
  const ViewManagerParam param = model->GetViewMangageParam();
  const QString playing = model->GetPlayingIndexCode();
  QList<QStandardItem*> rows;
  for (const RowRecord& plan : plans) {
    if (model->FindItemByIndexCode(plan->Code(), false)) {
      continue;
    }
    auto* row = new CViewPlanItem(param, plan);
    if (!playing.isEmpty() && plan->Code() == playing) {
      row->SetPlayState(true);
    }
    rows.append(row);
  }
  if (!rows.isEmpty()) {
    parent->appendRows(rows);
  }
}

void CViewModelDataManager::addPlanView(CStandardPlanModel* model, QStandardItem* parent, const PlanBasicInfo& plan) {
  if (model && parent) {
    appendPlan(model, parent, CRowRecord::Of(plan));
  }
}

void CViewModelDataManager::appendPlan(CStandardPlanModel* model, QStandardItem* parent, const RowRecord& plan) {
  if (!model->FindItemByIndexCode(plan->Code(), false)) {
    parent->appendRow(new CViewPlanItem(model->GetViewMangageParam(), plan));
  }
}

std::shared_ptr<CView> CViewModelDataManager::CreateView(const PlanBasicInfo& plan) {
  return makeView(plan.index_code);
}

std::shared_ptr<CViewGroup> CViewModelDataManager::CreateViewGroup(const PlanGroup& group) {
  return makeViewGroup(group.index_code);
}

std::shared_ptr<CView> CViewModelDataManager::makeView(const std::string& code) {
  if (code.empty() || d_->ended) {
    return nullptr;
  }
  auto& view = d_->views[code];
  if (!view) {
    view = std::make_shared<CView>(code);
    connect(view.get(), &CView::SignalViewChanged, this, &CViewModelDataManager::OnViewChanged);
    RegisterObserver(view.get(), ResourceData::RT_VIEW, kRegister);
  }
  return view;
}

std::shared_ptr<CViewGroup> CViewModelDataManager::makeViewGroup(const std::string& code) {
  if (code.empty() || d_->ended) {
    return nullptr;
  }
  auto& group = d_->groups[code];
  if (!group) {
    group = std::make_shared<CViewGroup>(code);
    connect(group.get(), &CViewGroup::SignalViewGroupNameChanged, this, &CViewModelDataManager::OnViewGroupNameChanged);
    connect(group.get(), &CViewGroup::SignalViewGroupChildAdded, this, &CViewModelDataManager::OnViewGroupChildAdded);
    connect(group.get(), &CViewGroup::SignalViewGroupChildRemoved, this,
            &CViewModelDataManager::OnViewGroupChildRemoved);
    RegisterObserver(group.get(), ResourceData::RT_VIEW_GROUP, kRegister);
  }
  return group;
}

void CViewModelDataManager::DeleteView(const std::string& indexCode) {
  const auto found = d_->views.find(indexCode);
  if (found != d_->views.end()) {
    RegisterObserver(found->second.get(), ResourceData::RT_VIEW, kUnregister);
    d_->views.erase(found);
  }
}

void CViewModelDataManager::DeleteViewGroup(const std::string& indexCode) {
  const auto found = d_->groups.find(indexCode);
  if (found != d_->groups.end()) {
    RegisterObserver(found->second.get(), ResourceData::RT_VIEW_GROUP, kUnregister);
    d_->groups.erase(found);
  }
}

void CViewModelDataManager::dropObservers() {
  for (const auto& [code, view] : d_->views) {
    RegisterObserver(view.get(), ResourceData::RT_VIEW, kUnregister);
  }
  for (const auto& [code, group] : d_->groups) {
    RegisterObserver(group.get(), ResourceData::RT_VIEW_GROUP, kUnregister);
  }
  d_->views.clear();
  d_->groups.clear();
}

void CViewModelDataManager::CreateObserverUpdateResource(const ResourceData::IResourceObserver::Param& param) {
  if (param.type == ResourceData::RT_VIEW_GROUP) {
    CreateGroupObserver(param.second, param.type);
  } else if (param.type == ResourceData::RT_VIEW) {
    CreateViewObserverUpdate(param.second, param.type);
  }
}

void CViewModelDataManager::CreateObserverRootUpdate(const ResourceData::IResourceObserver::Param& param) {
  CreateObserverUpdateResource(param);
}

void CViewModelDataManager::CreateGroupObserver(const std::string& indexCode, const int& type) {
  if (type == ResourceData::RT_VIEW_GROUP) {
    makeViewGroup(indexCode);
  }
}

void CViewModelDataManager::CreateViewObserverUpdate(const std::string& indexCode, const int& type) {
  if (type == ResourceData::RT_VIEW) {
    makeView(indexCode);
  }
}

}  // namespace TarnPlanView
