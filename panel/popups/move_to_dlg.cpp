#include "move_to_dlg.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>
#include <utility>

#include "MarUIControl/primary_button.h"
#include "MarUIControl/push_button.h"
#include "WidgetKit/new_location_view_widget.h"
#include "group_tree.h"
#include "plan_item_role.h"
#include "standard_plan_model.h"
#include "standard_view_controller.h"
#include "view_sort_filter_proxy_model.h"

namespace TarnPlanView {

namespace {

constexpr int kMostFetches = 300;
constexpr int kFieldHeight = 32;
constexpr QSize kSize(380, 440);

}  // namespace

CMoveToDlg::CMoveToDlg(const QString& plan_name, const QString& group_code, QWidget* parent)
    : QDialog(parent),
      group_code_(group_code),
      field_(new WidgetKit::CNewLocationViewWidget(this)),
      tree_(new CGroupTree(this)),
      note_(new QLabel(this)) {
  setObjectName(QStringLiteral("move_to_dlg"));
  setWindowTitle(tr("Move plan"));
  setWindowModality(Qt::WindowModal);
  Build(plan_name);
  for (const char* root : {kPublicRootCode, kOwnRootCode}) {
    tree_->ExpandWhenLoaded(QString::fromLatin1(root));
  }
  field_->SetView(tree_);
  connect(tree_, &CPlanViewTree::SignalCurrentIndexChanged, this, &CMoveToDlg::Renew);
  connect(field_, &QLineEdit::textChanged, this, &CMoveToDlg::FetchNext);
  connect(field_, &QLineEdit::textChanged, this, [this] { choose_found_ = false; });
  connect(field_, &WidgetKit::CNewLocationViewWidget::SignalLocated, this, &CMoveToDlg::OnLocated);
  field_->installEventFilter(this);
  tree_->installEventFilter(this);
  connect(tree_->Groups(), &QAbstractItemModel::rowsInserted, this, &CMoveToDlg::Renew);
  connect(tree_->Groups(), &QAbstractItemModel::rowsInserted, this, &CMoveToDlg::Queue);
  connect(tree_->Groups(), &QAbstractItemModel::rowsRemoved, this, &CMoveToDlg::Renew);
  connect(tree_->Groups(), &QAbstractItemModel::modelReset, this, &CMoveToDlg::Renew);
  connect(tree_->Groups(), &QAbstractItemModel::modelReset, this, &CMoveToDlg::QueueAll);
  Renew();
  resize(kSize);
  field_->setFocus();
}

void CMoveToDlg::Build(const QString& plan_name) {
  auto* title = new QLabel(tr("Move \"%1\" to").arg(plan_name), this);
  title->setTextFormat(Qt::PlainText);
  title->setWordWrap(true);
  field_->setMinimumHeight(kFieldHeight);
  field_->setPlaceholderText(tr("Find a group"));
  field_->setAccessibleName(tr("Find a group"));
  tree_->setAccessibleName(tr("Groups"));
  note_->setObjectName(QStringLiteral("settings_note"));
  note_->setWordWrap(true);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(20, 20, 20, 16);
  layout->setSpacing(8);
  layout->addWidget(title);
  layout->addWidget(field_);
  layout->addWidget(tree_, 1);
  layout->addWidget(note_);
  layout->addWidget(BuildButtons());
}

QWidget* CMoveToDlg::BuildButtons() {
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 8, 0, 0);
  move_ = new MarUIControl::CPrimaryButton(row);
  move_->setObjectName(QStringLiteral("move_to_btn"));
  move_->setText(tr("Move"));
  move_->setDefault(true);
  auto* cancel = new MarUIControl::CPushButton(row);
  cancel->setText(tr("Cancel"));
  cancel->setAutoDefault(false);
  layout->addStretch();
  layout->addWidget(move_);
  layout->addWidget(cancel);
  connect(move_, &QPushButton::clicked, this, &CMoveToDlg::Choose);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  return row;
}

void CMoveToDlg::Offer(CStandardPlanModel* groups, CStandardViewController* controller) {
  tree_->SetController(controller);
  tree_->Groups()->SetAddOrEdit(false);
  tree_->SetModel(groups);
  controller_ = controller;
  if (groups && controller) {
    connect(groups, &CStandardPlanModel::SignalFinshAsynchronous, this, &CMoveToDlg::OnFetched);
    connect(controller, &CStandardViewController::SignalFinishAnsyGetSubItem, this, &CMoveToDlg::OnFetched);
  }
  tree_->expandToDepth(0);
  const QModelIndex now = tree_->RowOf(group_code_, true);
  if (now.isValid()) {
    tree_->setCurrentIndex(now);
  }
  QueueAll();
  Renew();
}

void CMoveToDlg::Queue(const QModelIndex& parent, int first, int last) {
  const QAbstractItemModel& rows = *tree_->Groups();
  for (int row = first; row <= last; ++row) {
    const QModelIndex group = rows.index(row, 0, parent);
    if (rows.canFetchMore(group)) {
      unfetched_.enqueue(group);
    }
    Queue(group, 0, rows.rowCount(group) - 1);
  }
}

void CMoveToDlg::QueueAll() {
  unfetched_.clear();
  Queue(QModelIndex(), 0, tree_->Groups()->rowCount() - 1);
}

void CMoveToDlg::OnLocated() {
  Renew();
  if (std::exchange(choose_found_, false)) {
    ChooseByKey();
  }
}

// A group is found only once it is loaded. One by one: what comes may bring more.
void CMoveToDlg::FetchNext() {
  if (fetching_.isValid()) {
    return;
  }
  if (!field_->text().isEmpty() && controller_ && fetches_ < kMostFetches) {
    fetching_ = NextUnfetched();
  }
  if (!fetching_.isValid()) {
    EndFetching();
    return;
  }
  field_->SetAwaitsRows(true);  // before they come: a first hit among them becomes current
  Renew();
  ++fetches_;
  controller_->OnExpandViewTreeItem(fetching_);
}

void CMoveToDlg::EndFetching() {
  field_->SetAwaitsRows(false);
  choose_found_ = choose_found_ && field_->IsLocating();
  Renew();
}

QModelIndex CMoveToDlg::NextUnfetched() {
  while (!unfetched_.isEmpty()) {
    const QModelIndex group = unfetched_.dequeue();
    if (tree_->Groups()->canFetchMore(group)) {  // it may have gone, or been opened meanwhile
      return group;
    }
  }
  return QModelIndex();
}

// After a failure, which the controller has said, the search goes on with the next letter.
void CMoveToDlg::OnFetched(const QModelIndex& index) {
  if (!fetching_.isValid() || index.data(GroupIndexCodeRole) != fetching_.data(GroupIndexCodeRole)) {
    return;
  }
  const QPersistentModelIndex fetched = std::exchange(fetching_, QPersistentModelIndex());
  if (!tree_->Groups()->canFetchMore(fetched)) {
    QMetaObject::invokeMethod(this, &CMoveToDlg::FetchNext, Qt::QueuedConnection);
  } else {
    unfetched_.enqueue(fetched);
    EndFetching();
  }
}

QString CMoveToDlg::Problem() const {
  const QModelIndex group = tree_->currentIndex();
  if (!group.isValid()) {
    return tr("Choose a group.");
  }
  if (!CGroupTree::MayHoldPlans(group)) {
    return tr("A plan cannot stand directly at the top. Choose a group below.");
  }
  if (group.data(GroupIndexCodeRole).toString() == group_code_) {
    return tr("The plan stands in this group now.");
  }
  return QString();
}

bool CMoveToDlg::HasFoundNothing() const {
  return !field_->text().isEmpty() && field_->HitCount() == 0;
}

bool CMoveToDlg::HasMissedGroups() const {
  return HasFoundNothing() && !unfetched_.isEmpty() && !fetching_.isValid();
}

void CMoveToDlg::Renew() {
  const QString problem = Problem();
  note_->setText(problem);
  if (HasMissedGroups()) {
    note_->setText(tr("Not all groups were looked through. Open those in which it may stand."));
  }
  move_->setEnabled(problem.isEmpty());
  move_->setToolTip(problem);
}

// Return and Esc are the dialog's, wherever the focus stands; the field would step to the next hit and be emptied.
bool CMoveToDlg::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) {
    return QDialog::eventFilter(watched, event);
  }
  const auto* press = static_cast<QKeyEvent*>(event);
  const bool plain = (press->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
  if (press->matches(QKeySequence::Cancel)) {
    reject();
    return true;
  }
  if (plain && (press->key() == Qt::Key_Return || press->key() == Qt::Key_Enter)) {
    ChooseByKey();
    return true;
  }
  return QDialog::eventFilter(watched, event);
}

void CMoveToDlg::ChooseByKey() {
  if (field_->IsLocating()) {
    choose_found_ = true;
    field_->Locate();
    return;
  }
  if (field_->hasFocus() && HasFoundNothing()) {
    choose_found_ = fetching_.isValid();
  } else if (move_->isEnabled()) {
    Choose();
  }
}

void CMoveToDlg::Choose() {
  Q_EMIT SignalChosen(tree_->currentIndex().data(GroupIndexCodeRole).toString());
  accept();
}

}  // namespace TarnPlanView
