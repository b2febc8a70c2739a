#include "tree_notice.h"

#include <algorithm>

#include "empty_state.h"
#include "plan_view_tree.h"
#include "view_extern_widget.h"
#include "view_model_data_manager.h"

namespace TarnPlanView {

namespace {

bool HasPlans(const QAbstractItemModel& rows) {
  for (int row = 0; row < rows.rowCount(); ++row) {
    const QModelIndex root = rows.index(row, 0);
    if (rows.canFetchMore(root) || rows.rowCount(root) > 0) {
      return true;
    }
  }
  return false;
}

}  // namespace

CTreeNotice::CTreeNotice(CPlanViewTree* tree) : QObject(tree), tree_(tree), state_(new CEmptyState(tree->viewport())) {
  connect(state_, &CEmptyState::SignalAction, this, &CTreeNotice::SignalRetry);
}

bool CTreeNotice::Renew() {
  const QAbstractItemModel& rows = *tree_->model();
  const int roots = rows.rowCount();
  if (roots == 0 && !load_failed_) {
    return CViewModelDataManager::Instance().IsViewModelInitFinish();
  }
  if (roots == 0) {
    state_->SetTopDistance(0);
    state_->ShowState(CViewExternWidget::tr("The plans could not be loaded."), CViewExternWidget::tr("Try again"));
  } else if (HasPlans(rows)) {
    state_->hide();
  } else {
    state_->SetTopDistance(roots * std::max(1, tree_->sizeHintForRow(0)));
    state_->ShowState(CViewExternWidget::tr("There are no plans yet."));
  }
  return true;
}

void CTreeNotice::OnLoadEnded() {
  load_failed_ = tree_->model()->rowCount() == 0;
}

void CTreeNotice::Hide() {
  state_->hide();
}

void CTreeNotice::RenewPicture() {
  state_->RenewPicture();
}

}  // namespace TarnPlanView
