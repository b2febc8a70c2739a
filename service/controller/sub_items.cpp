#include "sub_items.h"

#include <algorithm>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "unanswered_questions.h"

namespace TarnPlanView {

using namespace view_plugin_protocol;

namespace {

constexpr int kFetchesAtOnce = 5;

bool Contains(const std::unordered_set<std::string>& codes, const std::string& code) {
  return codes.count(code) > 0;
}

template <class Record>
bool HasAny(const QList<Record>& records, const std::unordered_set<std::string>& codes) {
  return !codes.empty() && std::any_of(records.cbegin(), records.cend(),
                                       [&codes](const Record& record) { return Contains(codes, record.index_code); });
}

/// Out of the records, too, that were made of the list. A list that nothing is taken out of stays the shared one.
template <class Record>
void TakeOut(const std::unordered_set<std::string>& codes, QList<Record>& list, QList<Record>& made_of,
             QVector<CRowRecord::Ptr>& records) {
  if (!HasAny(list, codes)) {
    return;
  }
  list.erase(std::remove_if(list.begin(), list.end(),
                            [&codes](const Record& record) { return Contains(codes, record.index_code); }),
             list.end());
  records.erase(std::remove_if(records.begin(), records.end(),
                               [&codes](const auto& record) { return Contains(codes, record->Code().toStdString()); }),
                records.end());
  made_of = list;
}

}  // namespace

SubItems FetchSubItems(const std::string& code, int type, bool with_plans) {
  auto& host = LyraPluginManager::CViewBusinessInterfaceMgr::Instance();
  SubItems items;
  GetPlanGroupsRequest groups_request;
  groups_request.parent_index_code = code;
  groups_request.node_type = type;
  items.ok = host.GetPlanGroups(groups_request, items.groups);
  if (!items.ok) {
    items.error_info = items.groups.error_info;
    items.error_kind = items.groups.error_kind;
    return items;
  }
  if (with_plans) {
    GetPlansInGroupRequest plans_request;
    plans_request.group_index_code = code;
    plans_request.node_type = type;
    items.ok = host.GetPlansInGroup(plans_request, items.plans);
    items.error_info = items.plans.error_info;
    items.error_kind = items.plans.error_kind;
  }
  if (items.ok) {
    items.records = ChildRecords::Of(items.groups.groups, items.plans.plans);
    items.records.PlaceAll();
  }
  return items;
}

bool IsOvertaken(const SubItems& items, const std::string& code, const RecentChanges& changes) {
  if (!items.ok || changes.IsEmpty()) {
    return false;
  }
  return changes.everything || Contains(changes.parents, code) || Contains(changes.groups, code) ||
         HasAny(items.groups.groups, changes.groups) || HasAny(items.plans.plans, changes.plans);
}

SubItems WhatStillHolds(const SubItems& items, const RecentChanges& changes) {
  SubItems rest = items;
  if (changes.everything) {
    rest.groups.groups.clear();
    rest.plans.plans.clear();
    rest.records = {};
    return rest;
  }
  TakeOut(changes.groups, rest.groups.groups, rest.records.groups, rest.records.of_groups);
  TakeOut(changes.plans, rest.plans.plans, rest.records.plans, rest.records.of_plans);
  return rest;
}

FetchStep StepAfter(const SubItems& items, bool is_overtaken, bool has_row, FetchCourse& course) {
  ++course.fetches;
  if (course.is_shown && !has_row) {
    return FetchStep::Drop;
  }
  if (course.is_shown && !items.ok) {
    if (!MayRepeat(course.repeats, RepeatsAfter(false, items.error_kind))) {
      return FetchStep::Drop;
    }
    ++course.repeats;
    return FetchStep::AskLater;
  }
  course.repeats = 0;
  if (!is_overtaken || !has_row) {
    return FetchStep::Finish;
  }
  if (course.fetches < kFetchesAtOnce) {
    return FetchStep::AskAgain;
  }
  return FetchStep::ShowPartly;
}

}  // namespace TarnPlanView
