#include "view_sort_filter_proxy_model.h"

#include <QTimer>
#include <optional>
#include <vector>

#include "item_type.h"
#include "level_order.h"
#include "plan_item_role.h"
#include "plan_rules/rights.h"
#include "standard_plan_model.h"

namespace TarnPlanView {

namespace {
constexpr int kSortedWhenOpened = 200;  // more children than these are sorted as soon as their expander is shown

int RankOf(const QModelIndex& index) {
  return RankOfType(index.data(ItemTypeRole));
}

/// Of rows of any model.
bool IndexStandsBefore(const QModelIndex& left, const QModelIndex& right) {
  const QVariant left_name = left.data(Qt::DisplayRole);
  const QVariant right_name = right.data(Qt::DisplayRole);
  return StandsBefore({RankOf(left), left_name.isValid()}, {RankOf(right), right_name.isValid()}, [&] {
    return view_plugin_protocol::NameStandsBefore(left_name.toString(), right_name.toString());
  });
}
}  // namespace

struct CViewSortFilterProxyModel::Data {
  bool filter_enabled = false;
  bool ever_filtered = false;  // some rows may be hidden until the next pass, whatever the flag says now
  bool add_mode = false;
  bool edit_mode = false;  // carried for consumers
  bool show_theme2 = false;
  std::optional<CLevelOrder> order;  // while the source is a plan tree
  std::vector<QMetaObject::Connection> on_change;
};

CViewSortFilterProxyModel::CViewSortFilterProxyModel(QObject* parent, bool filterEnabled)
    : CViewSortFilterProxyModel(parent, filterEnabled, false) {}

CViewSortFilterProxyModel::CViewSortFilterProxyModel(QObject* parent, bool filterEnabled, bool showTheme2)
    : QSortFilterProxyModel(parent), data_(std::make_unique<Data>()) {
  data_->filter_enabled = filterEnabled;
  data_->ever_filtered = filterEnabled;
  data_->show_theme2 = showTheme2;
  // Without a sort column the proxy never calls lessThan().
  sort(0);
}

CViewSortFilterProxyModel::~CViewSortFilterProxyModel() = default;

void CViewSortFilterProxyModel::setSourceModel(QAbstractItemModel* source) {
  for (const QMetaObject::Connection& connection : data_->on_change) {
    disconnect(connection);
  }
  data_->on_change.clear();
  data_->order.reset();
  if (const auto* tree = qobject_cast<const CStandardPlanModel*>(source)) {
    data_->order.emplace(tree);
  }
  if (source) {
    listenBeforeTheBase(source);
  }
  QSortFilterProxyModel::setSourceModel(source);
}

// Connected before the base class is: whatever it compares after a change is looked at again.
void CViewSortFilterProxyModel::listenBeforeTheBase(QAbstractItemModel* source) {
  const auto forget = [this] { forgetLevel(); };
  data_->on_change = {
      connect(source, &QObject::destroyed, this, [this] { data_->order.reset(); }),
      connect(source, &QAbstractItemModel::rowsAboutToBeRemoved, this,
              &CViewSortFilterProxyModel::takeInBeforeLastOnesGo),
      connect(source, &QAbstractItemModel::rowsAboutToBeRemoved, this, forget),
      connect(source, &QAbstractItemModel::rowsRemoved, this, forget),
      connect(source, &QAbstractItemModel::rowsInserted, this, forget),
      connect(source, &QAbstractItemModel::rowsMoved, this, forget),
      connect(source, &QAbstractItemModel::dataChanged, this, forget),
      connect(source, &QAbstractItemModel::layoutChanged, this, forget),
      connect(source, &QAbstractItemModel::modelReset, this, forget),
  };
}

void CViewSortFilterProxyModel::forgetLevel() {
  if (data_->order) {
    data_->order->Forget();
  }
}

// The base class tells of the removal of rows that it has taken in; a view that saw an expander waits for it.
void CViewSortFilterProxyModel::takeInBeforeLastOnesGo(const QModelIndex& sourceParent, int first, int last) {
  if (!data_->ever_filtered && first == 0 && last == sourceModel()->rowCount(sourceParent) - 1) {
    rowCount(mapFromSource(sourceParent));
  }
}

bool CViewSortFilterProxyModel::hasChildren(const QModelIndex& parent) const {
  if (data_->ever_filtered || !sourceModel()) {
    return QSortFilterProxyModel::hasChildren(parent);
  }
  const QModelIndex row = mapToSource(parent);
  if (sourceModel()->rowCount(row) > kSortedWhenOpened) {
    return QSortFilterProxyModel::hasChildren(parent);
  }
  return sourceModel()->hasChildren(row);
}

void CViewSortFilterProxyModel::SetFilterEnabled(bool enabled) {
  data_->filter_enabled = enabled;
  data_->ever_filtered |= enabled;
}

void CViewSortFilterProxyModel::SetAddOrEdit(bool add) {
  data_->add_mode = add;
  data_->edit_mode = !add;
}

QPair<int, int> CViewSortFilterProxyModel::GetIndexType(const QModelIndex& left, const QModelIndex& right) const {
  return {RankOf(left), RankOf(right)};
}

bool CViewSortFilterProxyModel::isPublicTarget() const {
  return view_plugin_protocol::HasRight(data_->add_mode ? view_plugin_protocol::AddRight
                                                        : view_plugin_protocol::EditRight);
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
  if (data_->order && data_->order->HasPlaces(left, right)) {
    return data_->order->IsPlacedBefore(left, right);
  }
  if (!left.isValid() || !right.isValid()) {
    return false;
  }
  // Changes in other models are not announced here.
  if (!data_->order || !data_->order->IsOfTree(left) || !data_->order->IsOfTree(right)) {
    return IndexStandsBefore(left, right);
  }
  const bool held_level = data_->order->HoldsLevel();
  const bool is_before = data_->order->IsBefore(left, right);
  if (!held_level && data_->order->HoldsLevel()) {
    QTimer::singleShot(0, this, &CViewSortFilterProxyModel::forgetLevel);  // the sort is over by then
  }
  return is_before;
}

}  // namespace TarnPlanView
