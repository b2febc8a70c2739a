#include "view_sort_filter_proxy_model_export.h"

#include <QPointer>

#include "view_sort_filter_proxy_model.h"

namespace TarnPlanView {

class CViewSortFilterProxyModelExport::Private {
 public:
  QPointer<CViewSortFilterProxyModel> proxy;  // child of the handle
};

CViewSortFilterProxyModelExport::CViewSortFilterProxyModelExport(QObject* parent, bool flag)
    : QSortFilterProxyModel(nullptr), d_(std::make_unique<Private>()) {
  setParent(parent);
  d_->proxy = new CViewSortFilterProxyModel(this, flag);
}

CViewSortFilterProxyModelExport::~CViewSortFilterProxyModelExport() = default;

void CViewSortFilterProxyModelExport::SetQSortFilterModel(QAbstractItemModel* model) {
  if (d_->proxy) {
    d_->proxy->setSourceModel(model);
  }
}

QSortFilterProxyModel* CViewSortFilterProxyModelExport::GetQSortFilterModel() {
  return d_->proxy;
}

void CViewSortFilterProxyModelExport::SetFilterEnabled(bool enabled) {
  if (d_->proxy) {
    d_->proxy->SetFilterEnabled(enabled);
  }
}

void CViewSortFilterProxyModelExport::SetAddOrEdit(bool add) {
  if (d_->proxy) {
    d_->proxy->SetAddOrEdit(add);
  }
}

}  // namespace TarnPlanView
