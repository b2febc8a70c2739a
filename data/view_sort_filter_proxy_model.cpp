#include "view_sort_filter_proxy_model.h"

#include "LyraPluginManager/resource_business_interface_mgr.h"
#include "MarUIControl/standard_item_model.h"
#include "item_type.h"
#include "plan_item_role.h"

namespace TarnPlanView {

namespace {
constexpr int kAddRight = 5;
constexpr int kEditRight = 6;
constexpr int kCompareNames = 2;

int TypeOf(const QModelIndex& index) {
  bool ok = false;
  const int type = index.data(ItemTypeRole).toInt(&ok);
  return ok ? type : -1;
}
}  // namespace

struct CViewSortFilterProxyModel::Data {
  bool filter_enabled = false;
  bool add_mode = false;
  bool edit_mode = false;  // carried for consumers
  bool show_theme2 = false;
};

CViewSortFilterProxyModel::CViewSortFilterProxyModel(QObject* parent, bool filterEnabled)
    : CViewSortFilterProxyModel(parent, filterEnabled, false) {}

CViewSortFilterProxyModel::CViewSortFilterProxyModel(QObject* parent, bool filterEnabled, bool showTheme2)
    : QSortFilterProxyModel(parent), data_(std::make_unique<Data>()) {
  data_->filter_enabled = filterEnabled;
  data_->show_theme2 = showTheme2;
  // Without a sort column the proxy never calls lessThan().
  sort(0);
}

CViewSortFilterProxyModel::~CViewSortFilterProxyModel() = default;

void CViewSortFilterProxyModel::SetFilterEnabled(bool enabled) {
  data_->filter_enabled = enabled;
}

void CViewSortFilterProxyModel::SetAddOrEdit(bool add) {
  data_->add_mode = add;
  data_->edit_mode = !add;
}

QPair<int, int> CViewSortFilterProxyModel::GetIndexType(const QModelIndex& left, const QModelIndex& right) const {
  return {TypeOf(left), TypeOf(right)};
}

bool CViewSortFilterProxyModel::isPublicTarget() const {
  return LyraPluginManager::CResourceBusinessInterfaceMgr::Instance().CheckControlPermission(
      data_->add_mode ? kAddRight : kEditRight);
}

bool CViewSortFilterProxyModel::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const {
  if (!data_->filter_enabled) {
    return true;
  }
  switch (sourceModel()->index(sourceRow, 0, sourceParent).data(ItemTypeRole).toInt()) {
    case PublicRootItem:
    case PublicGroupItem:
      return isPublicTarget();
    case OwnRootItem:
    case OwnGroupItem:
      return true;
    case ReceivedRootItem:
    case ReceivedGroupItem:
      return data_->show_theme2;
    default:
      return false;
  }
}

bool CViewSortFilterProxyModel::lessThan(const QModelIndex& left, const QModelIndex& right) const {
  if (!left.isValid() || !right.isValid()) {
    return false;
  }
  const QPair<int, int> types = GetIndexType(left, right);
  if (types.first != types.second) {
    return types.first < types.second;
  }
  const QVariant left_text = left.data(Qt::DisplayRole);
  if (!left_text.isValid()) {
    return true;
  }
  const QVariant right_text = right.data(Qt::DisplayRole);
  if (!right_text.isValid()) {
    return false;
  }
  return MarUIControl::CStandardItemModel::CustomStringCompare(left_text.toString(), right_text.toString(),
                                                               kCompareNames);
}

}  // namespace TarnPlanView
