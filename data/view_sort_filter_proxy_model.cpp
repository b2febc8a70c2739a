#include "view_sort_filter_proxy_model.h"

#include "LyraPluginManager/resource_business_interface_mgr.h"
#include "MarUIControl/standard_item_model.h"
#include "item_type.h"
#include "plan_item_role.h"
#include "standard_plan_model.h"

namespace TarnPlanView {

namespace {
constexpr int kAddRight = 5;
constexpr int kEditRight = 6;
constexpr int kCompareNames = 2;
constexpr int kSortedWhenOpened = 200;  // more children than these are sorted as soon as their expander is shown

/// One row of the source while it is compared. A plan tree's row is looked up once for all roles: a long sort asks for
/// millions of them.
class SourceRow {
 public:
  SourceRow(const CStandardPlanModel* tree, const QModelIndex& index)
      : index_(index), item_(tree && index.model() == tree ? tree->itemFromIndex(index) : nullptr) {}

  QVariant Data(int role) const { return item_ ? item_->data(role) : index_.data(role); }

  int Type() const {
    bool ok = false;
    const int type = Data(ItemTypeRole).toInt(&ok);
    return ok ? type : -1;
  }

 private:
  const QModelIndex& index_;
  const QStandardItem* item_;
};

/// The text in `value` itself where it holds one: a long sort would copy it millions of times.
const QString& TextOf(const QVariant& value, QString& scratch) {
  if (value.userType() == QMetaType::QString) {
    return *static_cast<const QString*>(value.constData());
  }
  scratch = value.toString();
  return scratch;
}
}  // namespace

struct CViewSortFilterProxyModel::Data {
  bool filter_enabled = false;
  bool ever_filtered = false;  // some rows may be hidden until the next pass, whatever the flag says now
  bool add_mode = false;
  bool edit_mode = false;  // carried for consumers
  bool show_theme2 = false;
  const CStandardPlanModel* tree = nullptr;  // the source when it is a plan tree
  QMetaObject::Connection on_removing;
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
  data_->tree = qobject_cast<const CStandardPlanModel*>(source);
  if (data_->tree) {
    connect(source, &QObject::destroyed, this, [this, source] {
      if (static_cast<const QObject*>(data_->tree) == source) {
        data_->tree = nullptr;
      }
    });
  }
  disconnect(data_->on_removing);
  if (source) {  // connected before the base class is
    data_->on_removing = connect(source, &QAbstractItemModel::rowsAboutToBeRemoved, this,
                                 &CViewSortFilterProxyModel::takeInBeforeLastOnesGo);
  }
  QSortFilterProxyModel::setSourceModel(source);
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
  return sourceModel()->rowCount(row) > kSortedWhenOpened ? QSortFilterProxyModel::hasChildren(parent)
                                                          : sourceModel()->hasChildren(row);
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
  return {SourceRow(nullptr, left).Type(), SourceRow(nullptr, right).Type()};
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
  const SourceRow left_row(data_->tree, left);
  const SourceRow right_row(data_->tree, right);
  const int left_type = left_row.Type();
  const int right_type = right_row.Type();
  if (left_type != right_type) {
    return left_type < right_type;
  }
  const QVariant left_text = left_row.Data(Qt::DisplayRole);
  if (!left_text.isValid()) {
    return true;
  }
  const QVariant right_text = right_row.Data(Qt::DisplayRole);
  if (!right_text.isValid()) {
    return false;
  }
  QString left_scratch;
  QString right_scratch;
  return MarUIControl::CStandardItemModel::CustomStringCompare(TextOf(left_text, left_scratch),
                                                               TextOf(right_text, right_scratch), kCompareNames);
}

}  // namespace TarnPlanView
