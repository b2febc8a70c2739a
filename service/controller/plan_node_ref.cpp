#include "plan_node_ref.h"

#include <QAbstractProxyModel>

#include "plan_rows.h"
#include "standard_plan_model.h"

namespace TarnPlanView {

namespace {

/// The row with this code in `model`, a plan tree or a proxy over one.
QModelIndex FindByCode(const QAbstractItemModel* model, const QString& code, bool is_group) {
  if (const auto* tree = qobject_cast<const CStandardPlanModel*>(model)) {
    return tree->FindIndexByIndexCode(code, is_group);
  }
  if (const auto* proxy = qobject_cast<const QAbstractProxyModel*>(model)) {
    const QModelIndex source = FindByCode(proxy->sourceModel(), code, is_group);
    const QModelIndex shown = proxy->mapFromSource(source);
    return shown.isValid() ? shown : source;  // the proxy may hide the row in the meantime
  }
  return QModelIndex();
}

}  // namespace

CPlanNodeRef::CPlanNodeRef(const QModelIndex& index)
    : index_(index), model_(index.model()), code_(CodeOfRow(index)), is_group_(index.data(IsGroupRole).toBool()) {}

QPersistentModelIndex CPlanNodeRef::Resolve() const {
  if (!model_) {
    return QPersistentModelIndex();
  }
  if (index_.isValid() && CodeOfRow(index_) == code_) {
    return index_;
  }
  return FindByCode(model_, code_, is_group_);
}

}  // namespace TarnPlanView
