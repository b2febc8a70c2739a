#include "view_sort_filter_proxy_model.h"

#include <vector>

#include "item_type.h"
#include "plan_item_role.h"
#include "plan_rules/rights.h"
#include "plan_rules/row_order.h"
#include "standard_plan_model.h"

namespace TarnPlanView {

namespace {
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
  /// A row of the source as it was compared last. Of two rows that a sort compares one was in the comparison before.
  struct Side {
    QModelIndex index;
    int type = -1;
    QVariant text;
  };

  const Side& Look(Side& side, const QModelIndex& index) const {
    if (side.index != index) {
      const SourceRow row(tree, index);
      side = {index, row.Type(), row.Data(Qt::DisplayRole)};
    }
    return side;
  }
  void ForgetSides() { left = right = Side(); }
  static bool Less(const Side& left, const Side& right);

  bool filter_enabled = false;
  bool ever_filtered = false;  // some rows may be hidden until the next pass, whatever the flag says now
  bool add_mode = false;
  bool edit_mode = false;  // carried for consumers
  bool show_theme2 = false;
  const CStandardPlanModel* tree = nullptr;  // the source when it is a plan tree
  Side left, right;
  std::vector<QMetaObject::Connection> on_change;
};

bool CViewSortFilterProxyModel::Data::Less(const Side& left, const Side& right) {
  if (left.type == right.type && !left.text.isValid()) {
    return true;
  }
  if (left.type == right.type && !right.text.isValid()) {
    return false;
  }
  QString left_scratch;
  QString right_scratch;
  return view_plugin_protocol::StandsBefore(left.type, TextOf(left.text, left_scratch), right.type,
                                            TextOf(right.text, right_scratch));
}

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
  for (const QMetaObject::Connection& connection : data_->on_change) {
    disconnect(connection);
  }
  data_->on_change.clear();
  data_->ForgetSides();
  if (source) {
    listenBeforeTheBase(source);
  }
  QSortFilterProxyModel::setSourceModel(source);
}

// Connected before the base class is: whatever it compares after a change is looked at again.
void CViewSortFilterProxyModel::listenBeforeTheBase(QAbstractItemModel* source) {
  const auto forget = [this] { data_->ForgetSides(); };
  data_->on_change = {
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
  return {SourceRow(nullptr, left).Type(), SourceRow(nullptr, right).Type()};
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
  if (!left.isValid() || !right.isValid()) {
    return false;
  }
  if (left.model() == sourceModel() && right.model() == sourceModel()) {
    return Data::Less(data_->Look(data_->left, left), data_->Look(data_->right, right));
  }
  Data::Side other_left, other_right;  // changes in other models are not announced here
  return Data::Less(data_->Look(other_left, left), data_->Look(other_right, right));
}

}  // namespace TarnPlanView
