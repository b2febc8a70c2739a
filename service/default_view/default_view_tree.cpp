#include "default_view_tree.h"

#include <QElapsedTimer>

#include "MarUIControl/tree_view.h"
#include "both_families_model.h"
#include "item_type.h"
#include "plan_item_role.h"
#include "standard_view_controller.h"
#include "view_config_manager.h"
#include "view_manager_param.h"
#include "view_model_data_manager.h"

namespace TarnPlanView {

namespace {

constexpr char kModelId[] = "default_view";
constexpr int kSliceMs = 8;

}  // namespace

CDefaultViewTree::CDefaultViewTree(MarUIControl::CTreeView* view, QObject* parent)
    : QObject(parent), view_(view), manager_(&CViewModelDataManager::Instance()) {
  public_ = MakeModel(PublicTheme);
  own_ = MakeModel(OwnTheme);
  found_ = new CFoundPlans([this](const QString& code) { return Find(code, false).isValid(); }, this);
  joint_ = new CBothFamiliesModel(public_, own_, found_->Rows(), this);
  rows_ = new CDefaultViewRows(joint_, public_, this);
  view_->setModel(rows_);
  roots_came_.setSingleShot(true);
  rows_came_.setSingleShot(true);
  connect(&roots_came_, &QTimer::timeout, this, &CDefaultViewTree::ExpandRoots);
  // Other rows are loaded from now on, perhaps of another user.
  connect(&roots_came_, &QTimer::timeout, found_, &CFoundPlans::Renew);
  connect(&rows_came_, &QTimer::timeout, found_, &CFoundPlans::DropLoaded);
  connect(&fill_, &QTimer::timeout, this, &CDefaultViewTree::FillOn);
  connect(rows_, &QAbstractItemModel::rowsInserted, this, &CDefaultViewTree::OnRowsInserted);
  connect(view_, &MarUIControl::CTreeView::AsynchronousExpand, this, &CDefaultViewTree::Expand);
  Load();
}

// The joint tree goes before the models that it stands on.
CDefaultViewTree::~CDefaultViewTree() {
  view_->setModel(nullptr);
  delete rows_;
  delete joint_;
  for (CStandardPlanModel* model : {public_, own_}) {
    if (manager_) {
      manager_->RemViewManagerModel(model);
    }
  }
}

CStandardPlanModel* CDefaultViewTree::MakeModel(int theme) {
  ViewManagerParam param(static_cast<ThemeNodeType>(theme), QString::fromLatin1(kModelId));
  param.flag9 = true;
  auto* model = new CStandardPlanModel(param, this);
  model->SetViewGroupSeleted(CViewConfigManager::Instance().IsSupportPlanGroupCycle());
  connect(model, &CStandardPlanModel::SignalFinshAsynchronous, this, &CDefaultViewTree::FinishExpand);
  manager_->AddViewManagerModel(model);
  return model;
}

// While the manager is still loading it fills these models with all others.
void CDefaultViewTree::Load() {
  if (!manager_->IsViewModelInitFinish()) {
    return;
  }
  for (CStandardPlanModel* model : {public_, own_}) {
    if (model->rowCount() == 0) {
      model->LoadPlanModel();
    }
  }
  if (CViewConfigManager::Instance().IsLoadAll()) {
    unfilled_ << QString::fromLatin1(kPublicRootCode) << QString::fromLatin1(kOwnRootCode);
    fill_.start(0);
  }
}

void CDefaultViewTree::SetViewController(CStandardViewController* controller) {
  if (controller_) {
    disconnect(controller_, nullptr, this, nullptr);
  }
  controller_ = controller;
  if (controller) {
    connect(controller, &CStandardViewController::SignalFinishAnsyGetSubItem, this, &CDefaultViewTree::FinishOwnExpand);
    roots_came_.start(0);
  }
}

QModelIndex CDefaultViewTree::Find(const QString& code, bool is_group) const {
  for (const CStandardPlanModel* model : {public_, own_}) {
    const QModelIndex found = rows_->MapFromFamily(model->FindIndexByIndexCode(code, is_group));
    if (found.isValid()) {
      return found;
    }
  }
  return QModelIndex();
}

// Not by the models below: these rows are gone before those are.
bool CDefaultViewTree::HasRoots() const {
  int roots = 0;
  for (int row = 0; row < rows_->rowCount(); ++row) {
    const int type = rows_->index(row, 0).data(ItemTypeRole).toInt();
    roots += static_cast<int>(type == PublicRootItem || type == OwnRootItem);
  }
  return roots == 2;
}

bool CDefaultViewTree::IsFound(const QModelIndex& row) const {
  return row.isValid() && joint_->MapToSource(rows_->mapToSource(row)).model() == found_->Rows();
}

bool CDefaultViewTree::ExpandLowest(const QStringList& groups) {
  for (auto code = groups.crbegin(); code != groups.crend(); ++code) {
    const QModelIndex row = Find(*code, true);
    if (row.isValid()) {
      const bool is_loaded = !rows_->canFetchMore(row);
      view_->ExpandAsync(row);
      return !is_loaded;
    }
  }
  return true;
}

void CDefaultViewTree::OnRowsInserted(const QModelIndex& parent, int first) {
  const QPersistentModelIndex row = rows_->index(first, 0, parent);
  const bool is_top = !parent.isValid();
  if (IsFound(row)) {
    view_->expand(is_top ? QModelIndex(row) : parent);
    return;
  }
  // Later: they may have come in the middle of a load.
  QTimer& came = is_top ? roots_came_ : rows_came_;
  came.start(0);
}

void CDefaultViewTree::ExpandRoots() {
  for (int row = 0; controller_ && row < rows_->rowCount(); ++row) {
    const QPersistentModelIndex root = rows_->index(row, 0);
    if (!IsFound(root) && root.data(GroupIndexCodeRole).toString() != QLatin1String(kPlaceholderCode)) {
      view_->ExpandAsync(root);
    }
  }
}

void CDefaultViewTree::Expand(const QModelIndex& index) {
  if (!controller_) {
    FinishOwnExpand(index, false);
  } else if (CViewConfigManager::Instance().IsLoadAll()) {
    const QPersistentModelIndex row = index;
    Fill(index.data(GroupIndexCodeRole).toString());
    FinishOwnExpand(row, true);
  } else {
    controller_->OnExpandViewTreeItem(index);
  }
}

// Every model announces every expansion, whether it has got rows by it or another one, and also of those that were
// asked for elsewhere, whose index is not of these rows.
void CDefaultViewTree::FinishExpand(const QModelIndex& index, bool expand) {
  if (!index.isValid() || index.model() != rows_) {
    return;
  }
  const QString group = index.data(GroupIndexCodeRole).toString();
  const bool is_loaded = !rows_->canFetchMore(index);
  view_->FinishExpand(index, expand, is_loaded);
  if (is_loaded) {
    Q_EMIT SignalExpanded(group, true);
  }
}

// The controller answers only where it has nothing to hand to the models: after a failure above all.
void CDefaultViewTree::FinishOwnExpand(const QModelIndex& index, bool expand) {
  const bool is_unfetched = index.isValid() && index.model() == rows_ && rows_->canFetchMore(index);
  const QString group = index.data(GroupIndexCodeRole).toString();  // read now, for the row may go
  FinishExpand(index, expand);
  if (is_unfetched && !group.isEmpty()) {
    Q_EMIT SignalExpanded(group, false);
  }
}

// Where everything is loaded at the start, expanding fetches nothing: models that come late are filled here, a slice
// at a time.
void CDefaultViewTree::FillOn() {
  QElapsedTimer slice;
  slice.start();
  while (manager_ && !unfilled_.isEmpty() && slice.elapsed() < kSliceMs) {
    const QString code = unfilled_.dequeue();
    Fill(code);
    const QModelIndex group = Find(code, true);
    for (int row = 0; row < rows_->rowCount(group); ++row) {
      const QModelIndex child = rows_->index(row, 0, group);
      if (child.data(IsGroupRole).toBool()) {
        unfilled_.enqueue(child.data(GroupIndexCodeRole).toString());
      }
    }
  }
  if (!manager_ || unfilled_.isEmpty()) {
    fill_.stop();
  }
}

void CDefaultViewTree::Fill(const QString& code) {
  for (CStandardPlanModel* model : {public_, own_}) {
    const QPersistentModelIndex group = model->FindIndexByIndexCode(code, true);
    if (!manager_ || !group.isValid() || model->AreChildrenFetched(group)) {
      continue;
    }
    const int theme = model->GetViewManagerThemeNodeType();
    const bool has_groups = manager_->InsertSubGroupNode(code, theme);
    const bool has_plans = manager_->InsertSubPlanNode(code, theme);
    model->SetChildrenFetched(group, has_groups && has_plans);
  }
}

}  // namespace TarnPlanView
