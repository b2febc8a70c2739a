#include "plans/plan_pane.h"

#include <TarnPlanView/plan_item_role.h>
#include <TarnPlanView/standard_plan_model_export.h>
#include <TarnPlanView/view_model_data_manager_export.h>
#include <TarnPlanView/view_sort_filter_proxy_model_export.h>

#include <QLabel>
#include <QVBoxLayout>

#include "TarnUIDataController/message_tip_manager.h"
#include "TarnUIDataController/signal_transfer_manager.h"
#include "plans/plan_tree.h"

namespace TarnClient {

using TarnPlanView::CStandardPlanModel;
using TarnPlanView::CStandardViewController;

namespace {

QString GroupCode(const QModelIndex& index) {
  return index.data(TarnPlanView::GroupIndexCodeRole).toString();
}

}  // namespace

CPlanPane::CPlanPane(TarnPlanView::ThemeNodeType theme, const QString& empty_text, QWidget* parent)
    : QWidget(parent), tree_(new CPlanTree(this)), empty_(new QLabel(empty_text, this)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(tree_, 1);
  empty_->setObjectName(QStringLiteral("plan_pane_empty"));
  empty_->setAlignment(Qt::AlignCenter);
  empty_->setWordWrap(true);
  empty_->setMargin(24);
  layout->addWidget(empty_);
  setFocusProxy(tree_);
  BuildModels(theme);
  RenewEmptyText();
}

CPlanPane::~CPlanPane() {
  // The controller is the model's child and would outlive the pane that made it.
  delete controller_;
}

void CPlanPane::BuildModels(TarnPlanView::ThemeNodeType theme) {
  const std::unique_ptr<TarnPlanView::CStandardPlanModelExport> handle(
      TarnPlanView::CViewModelDataManagerExport::Instance().GetViewManagerByTheme(QStringLiteral("0"), theme));
  model_ = qobject_cast<CStandardPlanModel*>(handle->GetPlanViewModel());
  if (!model_) {
    return;
  }
  proxy_export_ = new TarnPlanView::CViewSortFilterProxyModelExport(nullptr, false);
  proxy_export_->setParent(this);
  proxy_export_->SetQSortFilterModel(model_);
  proxy_ = proxy_export_->GetQSortFilterModel();
  controller_ = new CStandardViewController(model_);
  tree_->setModel(proxy_);
  ConnectTree();
  expanded_codes_.insert(QString::fromLatin1(theme == TarnPlanView::PublicTheme ? TarnPlanView::kPublicRootCode
                                                                                : TarnPlanView::kOwnRootCode));
  OnRowsInserted(QModelIndex(), 0, proxy_->rowCount() - 1);
}

void CPlanPane::Reveal(const QString& plan_code) {
  const QModelIndex source = model_ ? model_->FindIndexByIndexCode(plan_code, false) : QModelIndex();
  if (source.isValid()) {
    tree_->setCurrentIndex(proxy_->mapFromSource(source));
  }
}

void CPlanPane::ConnectTree() {
  connect(tree_, &CPlanTree::AsynchronousExpand, controller_, &CStandardViewController::OnExpandViewTreeItem);
  connect(tree_, &QTreeView::expanded, this, [this](const QModelIndex& index) { RememberExpanded(index, true); });
  connect(tree_, &QTreeView::collapsed, this, [this](const QModelIndex& index) { RememberExpanded(index, false); });
  connect(controller_, &CStandardViewController::SignalFinishAnsyGetSubItem, this, &CPlanPane::FinishExpand);
  connect(model_, &CStandardPlanModel::SignalFinshAsynchronous, this, &CPlanPane::FinishExpand);
  connect(controller_, &CStandardViewController::signalShowMessage, this, &CPlanPane::ShowMessage);
  TellOfChanges();
  connect(proxy_, &QAbstractItemModel::rowsInserted, this, &CPlanPane::OnRowsInserted);
  connect(proxy_, &QAbstractItemModel::rowsRemoved, this, &CPlanPane::RenewEmptyText);
  connect(proxy_, &QAbstractItemModel::modelReset, this, &CPlanPane::RenewEmptyText);
}

// After the trees have taken the change: whoever asks for plans on this notice finds them as they are now.
void CPlanPane::TellOfChanges() {
  auto* client = &tarn_ui_data_controller::CSignalTransferManager::Instance();
  const auto changed = &tarn_ui_data_controller::CSignalTransferManager::SignalPlanStateChanged;
  connect(controller_, &CStandardViewController::SignalAddPlanSucc, client, changed);
  connect(controller_, &CStandardViewController::SignalUpdatePlanSucc, client, changed);
  connect(controller_, &CStandardViewController::SignalDeletePlanSucc, client, changed);
  connect(controller_, &CStandardViewController::SignalDeletePlanGroupSucc, client, changed);
}

// Every model tells of the row that one tree asked for, so an index may be of this tree, of its source or foreign.
void CPlanPane::FinishExpand(const QModelIndex& index, bool expand) {
  const QModelIndex own = index.model() == model_ ? proxy_->mapFromSource(index) : index;
  if (!own.isValid() || own.model() != proxy_) {
    return;
  }
  tree_->FinishExpand(own, expand, !proxy_->canFetchMore(own));
  RenewEmptyText();
}

void CPlanPane::OnRowsInserted(const QModelIndex& parent, int first, int last) {
  for (int row = first; row <= last; ++row) {
    const QModelIndex index = proxy_->index(row, 0, parent);
    if (expanded_codes_.contains(GroupCode(index))) {
      to_expand_.append(index);
    }
  }
  if (!to_expand_.isEmpty()) {
    // Later: the rows may have come in the middle of a load.
    QMetaObject::invokeMethod(this, &CPlanPane::ExpandAgain, Qt::QueuedConnection);
  }
  RenewEmptyText();
}

void CPlanPane::ExpandAgain() {
  const QList<QPersistentModelIndex> rows = to_expand_;
  to_expand_.clear();
  for (const QPersistentModelIndex& row : rows) {
    if (row.isValid() && !tree_->isExpanded(row)) {
      tree_->ExpandAsync(row);
    }
  }
}

void CPlanPane::RememberExpanded(const QModelIndex& index, bool expanded) {
  if (expanded) {
    expanded_codes_.insert(GroupCode(index));
  } else {
    expanded_codes_.remove(GroupCode(index));
  }
}

void CPlanPane::ShowMessage(const QString& text, MarUIControl::CNomalMessage::AlertState state) {
  tarn_ui_data_controller::CMessageTipManager::Instance().ShowTip(text, state, this);
}

bool CPlanPane::HasNothingToShow() const {
  if (!proxy_ || proxy_->rowCount() == 0) {
    return true;
  }
  return proxy_->rowCount() == 1 && !proxy_->hasChildren(proxy_->index(0, 0));
}

void CPlanPane::RenewEmptyText() {
  empty_->setVisible(HasNothingToShow());
}

}  // namespace TarnClient
