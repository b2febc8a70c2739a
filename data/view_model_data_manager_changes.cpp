#include <QPointer>
#include <QScopedValueRollback>
#include <QStandardItem>
#include <algorithm>
#include <utility>

#include "LyraPluginManager/error_kind.h"
#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "item_type.h"
#include "level_places.h"
#include "plan_item_role.h"
#include "plan_rows.h"
#include "standard_plan_model.h"
#include "view_group_item.h"
#include "view_model_data_manager_p.h"
#include "view_plan_item.h"
#include "view_public_def.h"

// Applying results of the panel's own operations and notices of changes made elsewhere.
namespace TarnPlanView {

using LyraPluginManager::CViewBusinessInterfaceMgr;
using MarUIControl::QStringToString;
using MarUIControl::StringToQString;
using view_plugin_protocol::PlanBasicInfo;
using view_plugin_protocol::PlanPage;

namespace {

void TakePages(PlanBasicInfo& plan, const std::list<PlanPage>& pages) {
  plan.page_count = static_cast<int32_t>(pages.size());
  if (!pages.empty()) {
    plan.split_type = pages.front().split_type;
  }
}

PlanBasicInfo BasicInfo(const view_plugin_protocol::AddPlanRequest& request, const std::string& code) {
  PlanBasicInfo plan;
  plan.index_code = code;
  plan.name = request.plan_name;
  plan.group_index_code = request.parent_index_code;
  plan.type = request.index_type;
  plan.auto_run = request.auto_play;
  TakePages(plan, request.pages);
  return plan;
}

PlanBasicInfo BasicInfo(const view_plugin_protocol::GetPlanDetailResponse& detail) {
  PlanBasicInfo plan;
  plan.index_code = detail.index_code;
  plan.name = detail.name;
  plan.group_index_code = detail.group_index_code;
  plan.type = detail.type;
  plan.auto_run = detail.auto_run;
  TakePages(plan, detail.pages);
  return plan;
}

void RemoveRow(CStandardPlanModel* model, const QStandardItem* row) {
  const QModelIndex index = row->index();
  model->removeRow(index.row(), index.parent());
}

void SetPlayState(QStandardItem* row, bool playing) {
  if (auto* plan = dynamic_cast<CViewPlanItem*>(row)) {
    plan->SetPlayState(playing);
  }
}

/// Those that are `ready` when they were made of this very list.
template <class Source>
QVector<CRowRecord::Ptr> RecordsOf(const QList<Source>& list, const QList<Source>& made_of,
                                   const QVector<CRowRecord::Ptr>& ready) {
  return list.isSharedWith(made_of) ? ready : CRowRecord::OfAll(list);
}

/// Whether a child notice of this type concerns the trees.
bool IsPlanResource(ResourceData::ResourceType type) {
  return type == ResourceData::RT_VIEW || type == ResourceData::RT_VIEW_GROUP;
}

}  // namespace

bool CViewModelDataManager::takesChildren(const QStandardItem* group) const {
  return isLoadAll() || group->data(GroupLoadedRole).toBool();
}

void CViewModelDataManager::OnGetPlanGroupListSucc(const QModelIndex& index,
                                                   const view_plugin_protocol::GetPlanGroupsResponse& plan_group_list,
                                                   const view_plugin_protocol::GetPlansInGroupResponse& plan_list) {
  const int type = index.data(ItemTypeRole).toInt();
  // Marked before the fetch already, unless a reload put a new row in between: then additions must go under that one.
  const bool marks_loaded =
      type == PublicRootItem || type == PublicGroupItem || type == OwnRootItem || type == OwnGroupItem;
  if (index.isValid()) {
    createObservers(plan_group_list, plan_list);
  }
  // A copy: the panels' slots run in between and may bring models along or take them away.
  const QList<QPointer<CStandardPlanModel>> models(d_->models.cbegin(), d_->models.cend());
  const ChildRecords offered = std::exchange(d_->offered, {});
  CLevelPlaces::Share(offered.places);
  const RowRecords groups = RecordsOf(plan_group_list.groups, offered.groups, offered.of_groups);
  const RowRecords plans = RecordsOf(plan_list.plans, offered.plans, offered.of_plans);
  for (const auto& model : models) {
    if (!model) {
      continue;
    }
    if (QStandardItem* parent = model->FindItemByIndex(index)) {
      AppendChildren(model, parent, groups, plans);
      model->SetChildrenFetched(parent->index(), true);
      if (marks_loaded) {
        parent->setData(true, GroupLoadedRole);
      }
    }
    model->FinishAddChildItems(index);
  }
  if (type == PublicRootItem || type == OwnRootItem) {
    Q_EMIT SignalFinshExpandPublicView();
  }
  Q_EMIT SignalFinshAddGroupPlanList();
}

void CViewModelDataManager::OfferRecords(const ChildRecords& records) {
  d_->offered = records;
}

// Once a record, not once a model: rows loaded by expanding follow changes made elsewhere, too.
void CViewModelDataManager::createObservers(const view_plugin_protocol::GetPlanGroupsResponse& groups,
                                            const view_plugin_protocol::GetPlansInGroupResponse& plans) {
  for (const auto& group : groups.groups) {
    makeViewGroup(group.index_code);
  }
  makeViews(plans.plans);
}

bool CViewModelDataManager::IsOpened(const QModelIndex& index) const {
  return std::any_of(d_->models.cbegin(), d_->models.cend(), [&index](const CStandardPlanModel* model) {
    const QStandardItem* row = model->FindItemByIndex(index);
    return row && model->AreChildrenFetched(row->index());
  });
}

void CViewModelDataManager::ShowLeftOut(const QModelIndex& index,
                                        const view_plugin_protocol::GetPlanGroupsResponse& groups,
                                        const view_plugin_protocol::GetPlansInGroupResponse& plans) {
  if (!index.isValid()) {
    return;
  }
  createObservers(groups, plans);
  for (CStandardPlanModel* model : qAsConst(d_->models)) {
    QStandardItem* parent = model->FindItemByIndex(index);
    if (parent && model->AreChildrenFetched(parent->index())) {
      addPlanGroupList(model, parent, groups);
      addPlanList(model, parent, plans);
    }
  }
}

void CViewModelDataManager::OnDeletePlanGroupPlanSucc(const QModelIndex& index) {
  const bool is_group = index.data(IsGroupRole).toBool();
  const QString code = CodeOfRow(index);
  noteChange(code, is_group, {});
  if (code.isEmpty()) {
    return;
  }
  if (is_group) {
    // The observers of what stood below stay: they are silent until the group comes back, if it does.
    DeleteViewGroup(QStringToString(code));
  } else {
    DeleteView(QStringToString(code));
  }
  for (CStandardPlanModel* model : qAsConst(d_->models)) {
    if (const QStandardItem* row = model->FindTargetItemByIndexCode(code, is_group)) {
      RemoveRow(model, row);
    }
  }
  Q_EMIT SignalPlanStateChanged();
  if (!is_group) {
    recheckTimedPlay();
  }
}

// Without a record to make the row from: the parent's rows are read, which are in memory.
void CViewModelDataManager::OnRestored(const QString& parent_code, bool is_group) {
  showNewChildren(parent_code, is_group ? ResourceData::RT_VIEW_GROUP : ResourceData::RT_VIEW);
  Q_EMIT SignalPlanStateChanged();
  recheckTimedPlay();
}

void CViewModelDataManager::OnAddPlanGroupSucc(const QModelIndex& parent_index,
                                               const view_plugin_protocol::PlanGroup& plan_group) {
  d_->changes.NoteGroup(plan_group.index_code, plan_group.parent_index_code);
  CreateViewGroup(plan_group);
  // Looks at the given row only: a group that was never expanded shows the new one when it is.
  if (!isLoadAll() && !parent_index.data(GroupLoadedRole).toBool()) {
    return;
  }
  const CRowRecord::Ptr group = CRowRecord::Of(plan_group);
  for (CStandardPlanModel* model : qAsConst(d_->models)) {
    QStandardItem* parent = model->FindItemByIndex(parent_index);
    if (!parent || model->FindItemByIndexCode(group->Code(), true)) {
      continue;
    }
    parent->insertRow(RowAfterGroups(parent), new CViewGroupItem(model->GetViewMangageParam(), group));
  }
}

void CViewModelDataManager::OnUpdatePlanGroupNameSucc(const QModelIndex& index, const QString& group_name) {
  noteChange(CodeOfRow(index), true, {});
  // A renamed row moves in a sorted tree: what was this row's place is then a neighbour's.
  const QPersistentModelIndex node(index);
  for (CStandardPlanModel* model : qAsConst(d_->models)) {
    if (QStandardItem* row = model->FindItemByIndex(node)) {
      row->setText(group_name);
    }
  }
}

void CViewModelDataManager::OnAddPlanSucc(const view_plugin_protocol::AddPlanRequest& plan_param,
                                          const QString& get_plan_index_code) {
  const PlanBasicInfo plan = BasicInfo(plan_param, QStringToString(get_plan_index_code));
  d_->changes.NotePlan(plan.index_code, plan.group_index_code);
  CreateView(plan);
  const CRowRecord::Ptr record = CRowRecord::Of(plan);
  const QString group_code = StringToQString(plan.group_index_code);
  for (CStandardPlanModel* model : qAsConst(d_->models)) {
    QStandardItem* group = model->FindTargetItemByIndexCode(group_code, true);
    if (!group) {
      continue;
    }
    // A group not yet loaded in one model is loaded in none of those after it.
    if (!takesChildren(group)) {
      break;
    }
    AppendPlan(model, group, record);
  }
  Q_EMIT SignalPlanStateChanged();
  Q_EMIT SignalAddPlanSucc(get_plan_index_code);
  recheckTimedPlay();
}

void CViewModelDataManager::OnUpdatePlanSucc(const view_plugin_protocol::UpdatePlanRequest& plan_param) {
  const PlanBasicInfo plan = BasicInfo(plan_param, plan_param.plan_index_code);
  d_->changes.NotePlan(plan.index_code, plan.group_index_code);
  CreateView(plan);  // it may never have been listed
  const CRowRecord::Ptr record = CRowRecord::Of(plan);
  for (CStandardPlanModel* model : qAsConst(d_->models)) {
    QString group_code = StringToQString(plan.group_index_code);
    if (const QStandardItem* row = model->FindTargetItemByIndexCode(record->Code(), false)) {
      if (group_code.isEmpty()) {
        group_code = row->index().parent().data(GroupIndexCodeRole).toString();  // an update that moves nothing
      }
      RemoveRow(model, row);
    }
    QStandardItem* group = model->FindTargetItemByIndexCode(group_code, true);
    if (group && takesChildren(group)) {
      AppendPlan(model, group, record);
    }
  }
  Q_EMIT SignalPlanStateChanged();
  Q_EMIT SignalUpdatePlanSucc(plan_param);
  recheckTimedPlay();
}

const CChangeJournal& CViewModelDataManager::GetChanges() const {
  return d_->changes;
}

int CViewModelDataManager::GetNoticeCount() const {
  return d_->notice_count;
}

void CViewModelDataManager::noteChange(const QString& code, bool is_group, const std::string& parent) {
  if (code.isEmpty()) {
    d_->changes.NoteEverything();  // of a row that has gone meanwhile
  } else if (is_group) {
    d_->changes.NoteGroup(QStringToString(code), parent);
  } else {
    d_->changes.NotePlan(QStringToString(code), parent);
  }
}

void CViewModelDataManager::noteNotice() {
  ++d_->notice_count;
  Q_EMIT SignalNoticed();
}

void CViewModelDataManager::OnSetGroupNodeLoaded(const QString& index_code, bool is_loaded) {
  for (CStandardPlanModel* model : qAsConst(d_->models)) {
    if (QStandardItem* row = model->FindTargetItemByIndexCode(index_code, true)) {
      row->setData(is_loaded, GroupLoadedRole);
      if (is_loaded && isLoadAll()) {
        model->SetChildrenFetched(row->index(), true);  // nothing more will come for it
      }
    }
  }
}

void CViewModelDataManager::OnViewGroupNameChanged(const QString& index_code, const QString& new_name) {
  noteChange(index_code, true, {});
  noteNotice();
  for (CStandardPlanModel* model : qAsConst(d_->models)) {
    if (QStandardItem* row = model->FindTargetItemByIndexCode(index_code, true)) {
      row->setText(new_name);
    }
  }
}

void CViewModelDataManager::OnViewGroupChildAdded(const QString& group_index_code,
                                                  ResourceData::ResourceType child_type) {
  noteNotice();
  showNewChildren(group_index_code, child_type);
  d_->fresh_group.clear();
}

void CViewModelDataManager::showNewChildren(const QString& group_code, ResourceData::ResourceType child_type) {
  int theme = -1;
  if (!d_->models.isEmpty()) {
    const QModelIndex group = d_->models.first()->FindIndexByIndexCode(group_code, true);
    if (group.isValid()) {
      theme = CViewPublicDef::GetIndexType(group);
    }
  }
  showNewChildren(group_code, theme, child_type);
}

void CViewModelDataManager::showNewChildren(const QString& group_code, int theme,
                                            ResourceData::ResourceType child_type) {
  if (!IsPlanResource(child_type)) {
    return;
  }
  d_->changes.NoteChildrenOf(QStringToString(group_code));
  int32_t error_kind = view_plugin_protocol::UnknownFailure;
  bool ok = false;
  if (child_type == ResourceData::RT_VIEW_GROUP) {
    const bool comes_back = isLoadAll() && isShown(group_code, true);
    ok = fetchSubGroups(group_code, theme, &error_kind,
                        comes_back ? GroupContent::AnnouncedAgain : GroupContent::Announced);
  } else {
    ok = InsertSubPlanNode(group_code, theme, &error_kind);
  }
  if (!ok) {
    repeatBelow(group_code, theme, child_type, error_kind);
  }
}

void CViewModelDataManager::repeatBelow(const QString& group_code, int theme, ResourceData::ResourceType child_type,
                                        int32_t error_kind) {
  if (isShown(group_code, true)) {
    d_->unanswered.Add(QString("below %1 %2").arg(group_code).arg(child_type), RepeatsAfter(false, error_kind),
                       [=] { showNewChildren(group_code, theme, child_type); });
  }
}

void CViewModelDataManager::OnViewGroupChildRemoved(const QString& child_index_code,
                                                    ResourceData::ResourceType child_type) {
  noteNotice();
  if (!IsPlanResource(child_type)) {
    return;
  }
  const bool is_group = child_type == ResourceData::RT_VIEW_GROUP;
  noteChange(child_index_code, is_group, {});
  for (CStandardPlanModel* model : qAsConst(d_->models)) {
    if (const QStandardItem* row = model->FindTargetItemByIndexCode(child_index_code, is_group)) {
      RemoveRow(model, row);
    }
  }
}

void CViewModelDataManager::OnViewChanged(const QString& view_index_code) {
  noteNotice();
  view_plugin_protocol::GetPlanDetailRequest request;
  request.plan_index_code = QStringToString(view_index_code);
  view_plugin_protocol::GetPlanDetailResponse detail;
  const bool ok = CViewBusinessInterfaceMgr::Instance().GetPlanDetail(request, detail);
  noteChange(view_index_code, false, detail.group_index_code);
  if (!ok) {
    return;
  }
  const CRowRecord::Ptr plan = CRowRecord::Of(BasicInfo(detail));
  for (CStandardPlanModel* model : qAsConst(d_->models)) {
    QStandardItem* row = model->FindTargetItemByIndexCode(view_index_code, false);
    if (!row) {
      continue;
    }
    const QString group_code = row->index().parent().data(GroupIndexCodeRole).toString();
    if (group_code == StringToQString(plan->Plan().group_index_code)) {
      row->setText(plan->Name());
      row->setData(plan->Host(), CurrentRecordRole);
    } else if (!followMove(model, row, plan)) {
      break;
    }
  }
}

/// Moves a row to the group that the plan has now. False when that group is not loaded: later models stay as they are.
bool CViewModelDataManager::followMove(CStandardPlanModel* model, QStandardItem* row, const CRowRecord::Ptr& plan) {
  RemoveRow(model, row);
  QStandardItem* group = model->FindTargetItemByIndexCode(StringToQString(plan->Plan().group_index_code), true);
  if (!group) {
    return true;
  }
  if (!takesChildren(group)) {
    return false;
  }
  AppendPlan(model, group, plan);
  return true;
}

void CViewModelDataManager::OnRootChildAdded(ResourceData::ResourceType child_type) {
  noteNotice();
  const struct {
    const char* code;
    ThemeNodeType theme;
  } roots[] = {{kPublicRootCode, PublicTheme}, {kOwnRootCode, OwnTheme}, {kReceivedRootCode, ReceivedTheme}};
  for (const auto& root : roots) {
    showNewChildren(QString::fromLatin1(root.code), root.theme, child_type);
  }
  d_->fresh_group.clear();
}

void CViewModelDataManager::Recheck(const QString& code, bool is_group) {
  if (code.isEmpty()) {
    return;
  }
  const QScopedValueRollback<int> uncounted(d_->notice_count);  // it follows from notices that were counted
  const auto ask_again = [this, code, is_group] { Recheck(code, is_group); };
  if (is_group) {
    d_->unanswered.Add("group " + code, recheckGroup(code), ask_again);
  } else {
    d_->unanswered.Add("plan " + code, recheckPlan(code), ask_again);
  }
}

// A group never changes its parent: it stands there under its name, or it is gone; so is what is below a group that is
// gone.
int CViewModelDataManager::recheckGroup(const QString& code) {
  const QModelIndex parent = parentOf(code, true);
  if (!parent.isValid()) {
    return 0;
  }
  view_plugin_protocol::GetPlanGroupsRequest request;
  request.parent_index_code = QStringToString(GroupCodeOf(parent));
  request.node_type = CViewPublicDef::GetIndexType(parent);
  view_plugin_protocol::GetPlanGroupsResponse response;
  const bool ok = CViewBusinessInterfaceMgr::Instance().GetPlanGroups(request, response);
  if (!ok && response.error_kind != view_plugin_protocol::Gone) {
    return RepeatsAfter(ok, response.error_kind);
  }
  for (const auto& group : qAsConst(response.groups)) {
    if (group.index_code == QStringToString(code)) {
      OnViewGroupNameChanged(code, StringToQString(group.name));
      return 0;
    }
  }
  OnViewGroupChildRemoved(code, ResourceData::RT_VIEW_GROUP);
  return 0;
}

int CViewModelDataManager::recheckPlan(const QString& code) {
  OnViewChanged(code);  // follows a move
  const QModelIndex parent = parentOf(code, false);
  if (!parent.isValid()) {
    return showMissingPlan(code);
  }
  view_plugin_protocol::GetPlansInGroupRequest request;
  request.group_index_code = QStringToString(GroupCodeOf(parent));
  request.node_type = CViewPublicDef::GetIndexType(parent);
  view_plugin_protocol::GetPlansInGroupResponse response;
  const bool ok = CViewBusinessInterfaceMgr::Instance().GetPlansInGroup(request, response);
  if (!ok && response.error_kind != view_plugin_protocol::Gone) {
    return RepeatsAfter(ok, response.error_kind);
  }
  const bool is_there = std::any_of(response.plans.cbegin(), response.plans.cend(), [&code](const PlanBasicInfo& plan) {
    return plan.index_code == QStringToString(code);
  });
  if (is_there) {
    return 0;
  }
  OnViewGroupChildRemoved(code, ResourceData::RT_VIEW);
  return showMissingPlan(code);  // it may stand elsewhere, where OnViewChanged() had no answer
}

int CViewModelDataManager::showMissingPlan(const QString& code) {
  view_plugin_protocol::GetPlanDetailRequest request;
  request.plan_index_code = QStringToString(code);
  view_plugin_protocol::GetPlanDetailResponse detail;
  if (!CViewBusinessInterfaceMgr::Instance().GetPlanDetail(request, detail)) {
    return RepeatsAfter(false, detail.error_kind);
  }
  for (const CStandardPlanModel* model : qAsConst(d_->models)) {
    const QStandardItem* group = model->FindTargetItemByIndexCode(StringToQString(detail.group_index_code), true);
    if (group) {
      if (takesChildren(group)) {
        showNewChildren(StringToQString(detail.group_index_code), CViewPublicDef::GetIndexType(group->index()),
                        ResourceData::RT_VIEW);
      }
      break;
    }
  }
  return 0;
}

bool CViewModelDataManager::isShown(const QString& code, bool is_group) const {
  return std::any_of(d_->models.cbegin(), d_->models.cend(), [&](const CStandardPlanModel* model) {
    return model->FindIndexByIndexCode(code, is_group).isValid();
  });
}

QModelIndex CViewModelDataManager::parentOf(const QString& code, bool is_group) const {
  for (const CStandardPlanModel* model : qAsConst(d_->models)) {
    const QModelIndex row = model->FindIndexByIndexCode(code, is_group);
    if (row.isValid()) {
      return row.parent();
    }
  }
  return {};
}

void CViewModelDataManager::SetPlanPlayStateByIndexCode(const QString& monitorId, const QString& code, bool playing) {
  if (code.isEmpty()) {
    return;
  }
  for (CStandardPlanModel* model : qAsConst(d_->models)) {
    if (model->GetViewManagerMonitorId() != monitorId) {
      continue;
    }
    if (QStandardItem* current = model->FindItemPlanPlaying()) {
      if (playing && current->data(PlanIndexCodeRole).toString() == code) {
        continue;
      }
      SetPlayState(current, false);
    }
    if (QStandardItem* row = model->FindTargetItemByIndexCode(code, false)) {
      SetPlayState(row, playing);
    }
  }
}

}  // namespace TarnPlanView
