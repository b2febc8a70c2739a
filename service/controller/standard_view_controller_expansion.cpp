#include <QPointer>
#include <QTimer>
#include <algorithm>
#include <future>
#include <system_error>
#include <thread>
#include <utility>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "host_calls/ask.h"
#include "item_type.h"
#include "plan_item_role.h"
#include "plan_node_ref.h"
#include "plan_rows.h"
#include "qt/live_index.h"
#include "standard_view_controller.h"
#include "sub_items.h"
#include "view_config_manager.h"
#include "view_model_data_manager.h"

namespace TarnPlanView {

using HostCalls::Ask;
using LyraPluginManager::CViewBusinessInterfaceMgr;
using MarUIControl::QStringToString;
using namespace view_plugin_protocol;

namespace {

constexpr int kFirstPauseMs = 250;
constexpr int kLongestPauseMs = 8000;

/// Whether the host has anything below `code`. Runs on a thread of its own; sets the promise exactly once.
void getSubPlanGroupListThread(std::promise<bool> result, const std::string& code, int /*type*/) {
  bool has_children = false;
  try {
    auto& host = CViewBusinessInterfaceMgr::Instance();
    GetPlanGroupsRequest groups_request;
    groups_request.parent_index_code = code;
    GetPlanGroupsResponse groups;
    if (!code.empty() && host.GetPlanGroups(groups_request, groups)) {
      has_children = !groups.groups.isEmpty();
      if (!has_children) {
        GetPlansInGroupRequest plans_request;
        plans_request.group_index_code = code;
        GetPlansInGroupResponse plans;
        has_children = host.GetPlansInGroup(plans_request, plans) && !plans.plans.isEmpty();
      }
    }
  } catch (...) {
    has_children = false;
  }
  result.set_value(has_children);
}

}  // namespace

/// The fetching of one node's children.
struct CStandardViewController::Expansion {
  CPlanNodeRef node;
  std::string code;
  int type = 0;
  FetchCourse course;
  int pause = kFirstPauseMs;

  // After a load the row may be another with the same code, which the user has not opened.
  bool HasRow() const {
    const QModelIndex row = node.Resolve();
    if (course.is_shown) {
      return CViewModelDataManager::Instance().IsOpened(row);
    }
    return row.isValid();
  }
};

void CStandardViewController::OnExpandViewTreeItem(const QModelIndex& index) {
  if (!index.isValid()) {
    return;
  }
  // A group without a code keeps its waiting mark: there is nothing to ask for, and nothing to say.
  if (index.data(IsGroupRole).toBool() && GroupCodeOf(index).isEmpty()) {
    return;
  }
  const CPlanNodeRef node(index);
  announceLoading(GroupCodeOf(index), TypeOf(index));
  if (CViewConfigManager::Instance().IsLoadAll()) {
    Q_EMIT SignalFinishAnsyGetSubItem(TarnQt::CLiveIndex(node.Resolve()), true);
  } else {
    downloadSubPlanGroupListThread(node.Resolve());
  }
}

void CStandardViewController::announceLoading(const QString& code, int type) {
  switch (type) {
    case PublicRootItem:
    case PublicGroupItem:
    case OwnRootItem:
    case OwnGroupItem:
      // Before the fetch: what is added elsewhere from now on goes into the tree.
      Q_EMIT signalSetNodeLoaded(code, true);
      break;
    default:
      break;
  }
}

void CStandardViewController::downloadSubPlanGroupListThread(const QModelIndex& index) {
  const CPlanNodeRef node(index);
  const bool is_group = index.data(IsGroupRole).toBool();
  const std::string code = QStringToString(GroupCodeOf(index));
  const int type = TypeOf(index);
  if (is_group) {
    Expansion expansion;
    expansion.node = node;
    expansion.code = code;
    expansion.type = type;
    fetchSubItems(expansion);
    return;
  }
  Ask([] { return true; }).Then(this, [this, node](bool) {
    Q_EMIT SignalFinishAnsyGetSubItem(TarnQt::CLiveIndex(node.Resolve()), true);
  });
}

void CStandardViewController::fetchSubItems(const Expansion& expansion) {
  const int asked_at = CViewModelDataManager::Instance().GetChanges().Now();
  const auto task = [code = expansion.code, type = expansion.type] {
    const bool root = type == PublicRootItem || type == OwnRootItem;
    return FetchSubItems(code, type, !root || CViewConfigManager::Instance().CreatePlanUnderRootNode());
  };
  Ask(task).Then(this, [=](const SubItems& items) {
    takeSubItems(expansion, items, CViewModelDataManager::Instance().GetChanges().Since(asked_at));
  });
}

void CStandardViewController::takeSubItems(Expansion expansion, const SubItems& items, const RecentChanges& changes) {
  switch (StepAfter(items, IsOvertaken(items, expansion.code, changes), expansion.HasRow(), expansion.course)) {
    case FetchStep::Finish:
      showSubItems(expansion, items);
      break;
    case FetchStep::AskAgain:
      fetchSubItems(expansion);
      break;
    case FetchStep::ShowPartly:
      fetchLater(expansion);
      showSubItems(expansion, WhatStillHolds(items, changes));
      break;
    case FetchStep::AskLater:
      fetchLater(expansion);
      break;
    case FetchStep::Drop:
      break;
  }
}

void CStandardViewController::showSubItems(const Expansion& expansion, const SubItems& items) {
  if (expansion.course.is_shown) {
    CViewModelDataManager::Instance().ShowLeftOut(expansion.node.Resolve(), items.groups, items.plans);
  } else {
    finishExpand(expansion.node, items);
  }
}

void CStandardViewController::fetchLater(const Expansion& expansion) {
  Expansion next = expansion;
  next.course.is_shown = true;
  next.pause = std::min(2 * expansion.pause, kLongestPauseMs);
  QTimer::singleShot(expansion.pause, this, [this, next] {
    if (next.HasRow()) {
      fetchSubItems(next);
    }
  });
}

void CStandardViewController::finishExpand(const CPlanNodeRef& node, const SubItems& items) {
  if (items.ok) {
    CViewModelDataManager::Instance().OfferRecords(items.records);
    Q_EMIT SignalGetPlanGroupListSucc(TarnQt::CLiveIndex(node.Resolve()), items.groups, items.plans);
    return;
  }
  const QPointer<CStandardViewController> alive(this);
  Q_EMIT SignalFinishAnsyGetSubItem(TarnQt::CLiveIndex(node.Resolve()), true);
  if (alive) {
    showFailure(items.error_info);
  }
}

bool CStandardViewController::IsHaveChilds(const QModelIndex& index) {
  const std::string code = QStringToString(GroupCodeOf(index));
  if (code.empty()) {
    return false;
  }
  std::promise<bool> promise;
  std::future<bool> result = promise.get_future();
  try {
    std::thread probe(getSubPlanGroupListThread, std::move(promise), code, TypeOf(index));
    probe.join();
  } catch (const std::system_error&) {
    return false;  // no thread to be had
  }
  return result.get();
}

}  // namespace TarnPlanView
