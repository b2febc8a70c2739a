#include <QStandardItem>
#include <algorithm>

#include "LyraPluginManager/error_kind.h"
#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "plan_item_role.h"
#include "qt/first_rows.h"
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

constexpr int kFetchedAhead = 8;  // look-ups whose memory is under way at a time

template <class Observer>
void RegisterObserver(Observer* observer, ResourceData::ResourceType type, int action, bool reads_content = false) {
  CViewBusinessInterfaceMgr::Instance().ViewRegisterResourceUpdate(
      observer, {type, observer->GetIndexCode(), action, reads_content});
}

/// New rows for the groups that the model does not have yet.
QList<QStandardItem*> MissingGroups(const CStandardPlanModel* model, const RowRecords& groups) {
  const ViewManagerParam param = model->GetViewMangageParam();
  const RowRecords missing = model->WithoutRow(groups);
  QList<QStandardItem*> rows;
  rows.reserve(missing.size());
  for (const CRowRecord::Ptr& group : missing) {
    rows.append(new CViewGroupItem(param, group));
  }
  return rows;
}

/// New rows for the plans that the model does not have yet; that of `playing` is marked.
QList<QStandardItem*> MissingPlans(const CStandardPlanModel* model, const RowRecords& plans, const QString& playing) {
  const ViewManagerParam param = model->GetViewMangageParam();
  const RowRecords missing = model->WithoutRow(plans);
  QList<QStandardItem*> rows;
  rows.reserve(missing.size());
  for (const CRowRecord::Ptr& plan : missing) {
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

// Groups stay above plans. Rows that come to stand one behind the other come in at once.
void InsertChildren(const CStandardPlanModel* model, QStandardItem* parent, const RowRecords& groups,
                    const RowRecords& plans) {
  QList<QStandardItem*> rows = MissingGroups(model, groups);
  if (rows.size() < groups.size()) {
    RenameKnown(model, groups);
  }
  const int after_groups = RowAfterGroups(parent);
  const bool is_changed = !rows.isEmpty();
  if (!rows.isEmpty() && after_groups < parent->rowCount()) {
    parent->insertRows(after_groups, rows);
    rows.clear();
  }
  rows += MissingPlans(model, plans, QString());
  if (!rows.isEmpty()) {
    TarnQt::AppendRows(parent, rows);
  }
  if (is_changed || !rows.isEmpty()) {
    parent->setData(true, GroupLoadedRole);
  }
}

bool IsShownAs(const QStandardItem* row, const PlanGroup& group) {
  return row && row->text() == StringToQString(group.name);
}

bool IsShownAs(const QStandardItem* row, const PlanBasicInfo&) {
  return row;
}

template <class Source>
RowRecords RecordsOfChanged(const QList<CStandardPlanModel*>& models, const QString& parent_code,
                            const QList<Source>& children, bool are_groups) {
  QVector<const CStandardPlanModel*> filled;
  for (const CStandardPlanModel* model : models) {
    const QStandardItem* parent = model->FindTargetItemByIndexCode(parent_code, true);
    if (parent && parent->rowCount() == 0) {
      return CRowRecord::OfAll(children);
    }
    if (parent) {
      filled.append(model);
    }
  }
  RowRecords records;
  for (const Source& child : children) {
    const QString code = StringToQString(child.index_code);
    const bool is_shown = std::all_of(filled.cbegin(), filled.cend(), [&](const CStandardPlanModel* model) {
      return IsShownAs(model->FindTargetItemByIndexCode(code, are_groups), child);
    });
    if (!is_shown) {
      records.append(CRowRecord::Of(child));
    }
  }
  return records;
}

}  // namespace

RowRecords RecordsToShow(const QList<CStandardPlanModel*>& models, const QString& parent_code,
                         const QList<PlanGroup>& groups) {
  return RecordsOfChanged(models, parent_code, groups, true);
}

RowRecords RecordsToShow(const QList<CStandardPlanModel*>& models, const QString& parent_code,
                         const QList<PlanBasicInfo>& plans) {
  return RecordsOfChanged(models, parent_code, plans, false);
}

void AppendChildren(const CStandardPlanModel* model, QStandardItem* parent, const RowRecords& groups,
                    const RowRecords& plans) {
  const QList<QStandardItem*> rows =
      MissingGroups(model, groups) + MissingPlans(model, plans, model->GetPlayingIndexCode());
  if (!rows.isEmpty()) {
    TarnQt::AppendRows(parent, rows);
  }
}

void AppendPlan(const CStandardPlanModel* model, QStandardItem* parent, const CRowRecord::Ptr& plan) {
  const QList<QStandardItem*> rows = MissingPlans(model, {plan}, QString());
  if (!rows.isEmpty()) {
    TarnQt::AppendRows(parent, rows);
  }
}

void CViewModelDataManager::InsertAllChildItem(const QString& code, int theme) {
  if (code.isEmpty()) {
    return;
  }
  // The first model leads: families that it does not show get this one level.
  const QStandardItem* group = nullptr;
  if (!d_->models.isEmpty()) {
    group = d_->models.first()->FindTargetItemByIndexCode(code, true);
  }
  if (!group) {
    insertChildItems(code, theme, GroupContent::Announced);
    return;
  }
  insertChildItems(code, theme, GroupContent::ReadNext);
  for (int row = 0; row < group->rowCount(); ++row) {
    const QStandardItem* child = group->child(row);
    if (child->data(IsGroupRole).toBool()) {
      InsertAllChildItem(child->data(GroupIndexCodeRole).toString(), theme);
    }
  }
}

void CViewModelDataManager::insertChildItems(const QString& code, int theme, GroupContent content) {
  int32_t error_kind = view_plugin_protocol::UnknownFailure;
  const auto groups = fetchGroups(code, theme, &error_kind, content);
  if (!groups) {
    repeatBelow(code, theme, ResourceData::RT_VIEW_GROUP, error_kind);
  }
  const auto plans = fetchPlans(code, theme, &error_kind);
  if (!plans) {
    repeatBelow(code, theme, ResourceData::RT_VIEW, error_kind);
  }
  for (CStandardPlanModel* model : qAsConst(d_->models)) {
    if (QStandardItem* parent = model->FindTargetItemByIndexCode(code, true)) {
      InsertChildren(model, parent, groups.value_or(RowRecords()), plans.value_or(RowRecords()));
      model->SetChildrenFetched(parent->index(), true);
    }
  }
}

bool CViewModelDataManager::InsertSubGroupNode(const QString& code, int theme, int32_t* error_kind) {
  return fetchSubGroups(code, theme, error_kind, GroupContent::Announced);
}

bool CViewModelDataManager::fetchSubGroups(const QString& code, int theme, int32_t* error_kind, GroupContent content) {
  const auto groups = fetchGroups(code, theme, error_kind, content);
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

// A row that comes back, for its deletion was taken back, may have its observer of before.
std::optional<RowRecords> CViewModelDataManager::fetchGroups(const QString& code, int theme, int32_t* error_kind,
                                                             GroupContent content) {
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
    if (content == GroupContent::AnnouncedAgain && !is_fresh && !isShown(StringToQString(group.index_code), true)) {
      DeleteViewGroup(group.index_code);
    }
    makeViewGroup(group.index_code, content);
  }
  return RecordsToShow(d_->models, code, response.groups);
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
  makeViews(response.plans);
  return RecordsToShow(d_->models, code, response.plans);
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
  CViewWatch* const watch = watchView(plan.index_code);
  if (!watch) {
    return nullptr;
  }
  const std::shared_ptr<CView> view = watch->View();
  Follow(*view);
  return view;
}

std::shared_ptr<CViewGroup> CViewModelDataManager::CreateViewGroup(const PlanGroup& group) {
  const auto view_group = makeViewGroup(group.index_code);
  if (view_group) {
    Follow(*view_group);
  }
  return view_group;
}

void CViewModelDataManager::makeViews(const QList<PlanBasicInfo>& plans) {
  const int ahead = qMin(kFetchedAhead, plans.size());
  const auto fetch = [this](const PlanBasicInfo& plan) { d_->views.Fetch(plan.index_code); };
  std::for_each(plans.cbegin(), plans.cbegin() + ahead, fetch);
  for (int at = 0; at < plans.size(); ++at) {
    if (at + ahead < plans.size()) {
      fetch(plans[at + ahead]);
    }
    watchView(plans[at].index_code);
  }
}

// Null after the end, and for no code.
CViewWatch* CViewModelDataManager::watchView(const std::string& code) {
  if (code.empty() || d_->ended) {
    return nullptr;
  }
  auto watch = d_->views.Find(code);
  if (!watch) {
    watch = std::make_shared<CViewWatch>(code);
    d_->views.Insert(watch);
    RegisterObserver(watch.get(), ResourceData::RT_VIEW, kRegister);
  }
  return watch.get();
}

std::shared_ptr<CViewGroup> CViewModelDataManager::makeViewGroup(const std::string& code, GroupContent content) {
  if (code.empty() || d_->ended) {
    return nullptr;
  }
  auto group = d_->groups.Find(code);
  if (!group) {
    group = std::make_shared<CViewGroup>(code);
    d_->groups.Insert(group);
    RegisterObserver(group.get(), ResourceData::RT_VIEW_GROUP, kRegister, content == GroupContent::ReadNext);
  }
  return group;
}

void CViewModelDataManager::Follow(CView& view) {
  const auto watch = d_->views.Find(view.GetIndexCode());
  if (watch && watch->Made(view)) {
    connect(&view, &CView::SignalViewChanged, this, &CViewModelDataManager::OnViewChanged, Qt::UniqueConnection);
  }
}

void CViewModelDataManager::Follow(CViewGroup& group) {
  if (d_->groups.Find(group.GetIndexCode()).get() != &group) {
    return;
  }
  connect(&group, &CViewGroup::SignalViewGroupNameChanged, this, &CViewModelDataManager::OnViewGroupNameChanged,
          Qt::UniqueConnection);
  connect(&group, &CViewGroup::SignalViewGroupChildAdded, this, &CViewModelDataManager::OnViewGroupChildAdded,
          Qt::UniqueConnection);
  connect(&group, &CViewGroup::SignalViewGroupChildRemoved, this, &CViewModelDataManager::OnViewGroupChildRemoved,
          Qt::UniqueConnection);
}

void CViewModelDataManager::DeleteView(const std::string& indexCode) {
  if (const auto watch = d_->views.Take(indexCode)) {
    RegisterObserver(watch.get(), ResourceData::RT_VIEW, kUnregister);
  }
}

void CViewModelDataManager::DeleteViewGroup(const std::string& indexCode) {
  if (const auto group = d_->groups.Take(indexCode)) {
    RegisterObserver(group.get(), ResourceData::RT_VIEW_GROUP, kUnregister);
  }
}

void CViewModelDataManager::dropObservers() {
  d_->views.ForAll([](const auto& watch) { RegisterObserver(watch.get(), ResourceData::RT_VIEW, kUnregister); });
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
    watchView(indexCode);
  }
}

}  // namespace TarnPlanView
