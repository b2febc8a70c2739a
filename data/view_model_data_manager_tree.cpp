#include <QStandardItem>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "plan_item_role.h"
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

/// New rows for the groups that the model does not have yet.
QList<QStandardItem*> MissingGroups(const CStandardPlanModel* model, const RowRecords& groups) {
  const ViewManagerParam param = model->GetViewMangageParam();
  QList<QStandardItem*> rows;
  for (const CRowRecord::Ptr& group : groups) {
    if (!model->FindItemByIndexCode(group->Code(), true)) {
      rows.append(new CViewGroupItem(param, group));
    }
  }
  return rows;
}

/// New rows for the plans that the model does not have yet; that of `playing` is marked.
QList<QStandardItem*> MissingPlans(const CStandardPlanModel* model, const RowRecords& plans, const QString& playing) {
  const ViewManagerParam param = model->GetViewMangageParam();
  QList<QStandardItem*> rows;
  for (const CRowRecord::Ptr& plan : plans) {
    if (model->FindItemByIndexCode(plan->Code(), false)) {
      continue;
    }
    auto* row = new CViewPlanItem(param, plan);
    if (!playing.isEmpty() && plan->Code() == playing) {
      row->SetPlayState(true);
    }
    rows.append(row);
  }
  return rows;
}

void RenameKnown(const CStandardPlanModel* model, const RowRecords& groups) {
  for (const CRowRecord::Ptr& group : groups) {
    if (QStandardItem* row = model->FindTargetItemByIndexCode(group->Code(), true)) {
      row->setText(group->Name());
    }
  }
}

// Groups stay above plans. Where nothing stands yet all rows come in at once.
void InsertChildren(const CStandardPlanModel* model, QStandardItem* parent, const RowRecords& groups,
                    const RowRecords& plans) {
  RenameKnown(model, groups);
  QList<QStandardItem*> group_rows = MissingGroups(model, groups);
  QList<QStandardItem*> plan_rows = MissingPlans(model, plans, QString());
  if (parent->rowCount() == 0) {
    plan_rows = group_rows + plan_rows;
    group_rows.clear();
  }
  if (!group_rows.isEmpty()) {
    parent->insertRows(RowAfterGroups(parent), group_rows);
  }
  if (!plan_rows.isEmpty()) {
    parent->appendRows(plan_rows);
  }
  if (!group_rows.isEmpty() || !plan_rows.isEmpty()) {
    parent->setData(true, GroupLoadedRole);
  }
}

}  // namespace

void AppendChildren(const CStandardPlanModel* model, QStandardItem* parent, const RowRecords& groups,
                    const RowRecords& plans) {
  const QList<QStandardItem*> rows =
      MissingGroups(model, groups) + MissingPlans(model, plans, model->GetPlayingIndexCode());
  if (!rows.isEmpty()) {
    parent->appendRows(rows);
  }
}

void AppendPlan(const CStandardPlanModel* model, QStandardItem* parent, const CRowRecord::Ptr& plan) {
  const QList<QStandardItem*> rows = MissingPlans(model, {plan}, QString());
  if (!rows.isEmpty()) {
    parent->appendRows(rows);
  }
}

void CViewModelDataManager::InsertAllChildItem(const QString& code, int theme) {
  if (code.isEmpty()) {
    return;
  }
  const RowRecords groups = fetchGroups(code, theme, nullptr, false).value_or(RowRecords());
  const RowRecords plans = fetchPlans(code, theme, nullptr).value_or(RowRecords());
  for (CStandardPlanModel* model : qAsConst(d_->models)) {
    if (QStandardItem* parent = model->FindTargetItemByIndexCode(code, true)) {
      InsertChildren(model, parent, groups, plans);
      model->SetChildrenFetched(parent->index(), true);
    }
  }
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

bool CViewModelDataManager::fetchSubGroups(const QString& code, int theme, int32_t* error_kind, bool renews_observers) {
  const auto groups = fetchGroups(code, theme, error_kind, renews_observers);
  if (groups) {
    insertBelow(code, *groups, {});
  }
  return groups.has_value();
}

bool CViewModelDataManager::InsertSubPlanNode(const QString& code, int theme, int32_t* error_kind) {
  const auto plans = fetchPlans(code, theme, error_kind);
  if (plans) {
    insertBelow(code, {}, *plans);
  }
  return plans.has_value();
}

void CViewModelDataManager::insertBelow(const QString& code, const RowRecords& groups, const RowRecords& plans) {
  for (const CStandardPlanModel* model : qAsConst(d_->models)) {
    if (QStandardItem* parent = model->FindTargetItemByIndexCode(code, true)) {
      InsertChildren(model, parent, groups, plans);
    }
  }
}

// The host says what is in a group when its observer is registered. A row that comes back, for its deletion was taken
// back, may have its observer of before.
std::optional<RowRecords> CViewModelDataManager::fetchGroups(const QString& code, int theme, int32_t* error_kind,
                                                             bool renews_observers) {
  if (code.isEmpty()) {
    return std::nullopt;
  }
  view_plugin_protocol::GetPlanGroupsRequest request;
  request.parent_index_code = QStringToString(code);
  request.node_type = theme;
  view_plugin_protocol::GetPlanGroupsResponse response;
  if (!CViewBusinessInterfaceMgr::Instance().GetPlanGroups(request, response)) {
    if (error_kind) {
      *error_kind = response.error_kind;
    }
    return std::nullopt;
  }
  for (const PlanGroup& group : qAsConst(response.groups)) {
    const bool is_fresh = group.index_code == d_->fresh_group;
    if (renews_observers && !is_fresh && !isShown(StringToQString(group.index_code), true)) {
      DeleteViewGroup(group.index_code);
    }
    CreateViewGroup(group);
  }
  return CRowRecord::OfAll(response.groups);
}

std::optional<RowRecords> CViewModelDataManager::fetchPlans(const QString& code, int theme, int32_t* error_kind) {
  if (code.isEmpty()) {
    return std::nullopt;
  }
  view_plugin_protocol::GetPlansInGroupRequest request;
  request.group_index_code = QStringToString(code);
  request.node_type = theme;
  view_plugin_protocol::GetPlansInGroupResponse response;
  if (!CViewBusinessInterfaceMgr::Instance().GetPlansInGroup(request, response)) {
    if (error_kind) {
      *error_kind = response.error_kind;
    }
    return std::nullopt;
  }
  for (const PlanBasicInfo& plan : qAsConst(response.plans)) {
    CreateView(plan);
  }
  return CRowRecord::OfAll(response.plans);
}

void CViewModelDataManager::addPlanGroupList(CStandardPlanModel* model, QStandardItem* parent,
                                             const view_plugin_protocol::GetPlanGroupsResponse& groups) {
  if (model && parent) {
    AppendChildren(model, parent, CRowRecord::OfAll(groups.groups), {});
  }
}

void CViewModelDataManager::addPlanList(CStandardPlanModel* model, QStandardItem* parent,
                                        const view_plugin_protocol::GetPlansInGroupResponse& plans) {
  if (model && parent) {
    AppendChildren(model, parent, {}, CRowRecord::OfAll(plans.plans));
  }
}

void CViewModelDataManager::addPlanView(CStandardPlanModel* model, QStandardItem* parent, const PlanBasicInfo& plan) {
  if (model && parent) {
    AppendPlan(model, parent, CRowRecord::Of(plan));
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
  auto view = d_->views.Find(code);
  if (!view) {
    view = std::make_shared<CView>(code);
    d_->views.Insert(view);
    connect(view.get(), &CView::SignalViewChanged, this, &CViewModelDataManager::OnViewChanged);
    RegisterObserver(view.get(), ResourceData::RT_VIEW, kRegister);
  }
  return view;
}

std::shared_ptr<CViewGroup> CViewModelDataManager::makeViewGroup(const std::string& code) {
  if (code.empty() || d_->ended) {
    return nullptr;
  }
  auto group = d_->groups.Find(code);
  if (!group) {
    group = std::make_shared<CViewGroup>(code);
    d_->groups.Insert(group);
    connect(group.get(), &CViewGroup::SignalViewGroupNameChanged, this, &CViewModelDataManager::OnViewGroupNameChanged);
    connect(group.get(), &CViewGroup::SignalViewGroupChildAdded, this, &CViewModelDataManager::OnViewGroupChildAdded);
    connect(group.get(), &CViewGroup::SignalViewGroupChildRemoved, this,
            &CViewModelDataManager::OnViewGroupChildRemoved);
    RegisterObserver(group.get(), ResourceData::RT_VIEW_GROUP, kRegister);
  }
  return group;
}

void CViewModelDataManager::DeleteView(const std::string& indexCode) {
  if (const auto view = d_->views.Take(indexCode)) {
    RegisterObserver(view.get(), ResourceData::RT_VIEW, kUnregister);
  }
}

void CViewModelDataManager::DeleteViewGroup(const std::string& indexCode) {
  if (const auto group = d_->groups.Take(indexCode)) {
    RegisterObserver(group.get(), ResourceData::RT_VIEW_GROUP, kUnregister);
  }
}

void CViewModelDataManager::dropObservers() {
  d_->views.ForAll([](const auto& view) { RegisterObserver(view.get(), ResourceData::RT_VIEW, kUnregister); });
  d_->groups.ForAll([](const auto& group) { RegisterObserver(group.get(), ResourceData::RT_VIEW_GROUP, kUnregister); });
  d_->views.Clear();
  d_->groups.Clear();
}

void CViewModelDataManager::CreateObserverUpdateResource(const ResourceData::IResourceObserver::Param& param) {
  if (param.type == ResourceData::RT_VIEW_GROUP) {
    if (!d_->groups.Find(param.second)) {
      d_->fresh_group = param.second;
    }
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
