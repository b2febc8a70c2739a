#include "save_plan_as_dlg.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLocale>
#include <QPointer>
#include <QTimerEvent>
#include <QToolTip>
#include <optional>

#include "MarUIControl/accessible_role.h"
#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/nomal_message_manager.h"
#include "group_tree.h"
#include "keep_on_screen.h"
#include "plan_item_role.h"
#include "plan_node_ref.h"
#include "plan_rules/names.h"
#include "plan_rules/plan_limits.h"
#include "qt/pattern_validator.h"
#include "standard_plan_model.h"
#include "typing_hint.h"
#include "ui_save_plan_as_dlg.h"
#include "view_config_manager.h"
#include "view_model_data_manager.h"
#include "view_public_def.h"
#include "view_sort_filter_proxy_model.h"

namespace TarnPlanView {

namespace {

constexpr int kHeightPlain = 264;     // without timed play
constexpr int kHeightTimesOff = 328;  // with its switch off
constexpr int kHeightTimesOn = 360;
constexpr int kHintDelay = 1000;  // ms
constexpr int kHintRise = 5;      // how far above the field's lower edge the hint begins
const QTime kMidnight(0, 0);

}  // namespace

struct CSavePlanAsDlg::Data {
  Ui::CSavePlanAsDlg ui;
  CGroupTree* tree = nullptr;                  // null without a model
  CViewSortFilterProxyModel* proxy = nullptr;  // the tree's
  QPointer<CStandardPlanModel> model;
  QString theme_name;
  QPointer<QWidget> parent;
  bool default_index_set = false;
  std::optional<CPlanNodeRef> awaited;  // chosen before the tree began to load again
  int hint_timer = 0;
};

CSavePlanAsDlg::CSavePlanAsDlg(QString themeName, QWidget* parent) : QWidget(parent), d_(std::make_unique<Data>()) {
  d_->parent = parent;
  d_->theme_name = std::move(themeName);
  d_->ui.setupUi(this);
  setAttribute(Qt::WA_StyledBackground);
  setAccessibleName(tr("Save as"));
  setUpNameField();
  d_->ui.node_label_->SetText(tr("TheParentNodeVCLPCajSCK"));
  d_->ui.node_combox_->setAccessibleName(d_->ui.node_label_->text());
  d_->ui.node_combox_->SetPlaceholderText(tr("Choose a group"));
  d_->ui.auto_run_duration_->hide();
  setUpTimedPlay();
  setUpPlanTree();
  connectSignalAndSlot();
  // By way of a pop-up to a dialog: it needs the activation, so that typing in its drop-down goes there.
  setWindowFlag(Qt::Popup);
  setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
  installEventFilter(this);
}

CSavePlanAsDlg::~CSavePlanAsDlg() = default;

void CSavePlanAsDlg::setUpNameField() {
  auto* field = d_->ui.name_line_edit_;
  field->setValidator(TarnQt::MakePatternValidator(view_plugin_protocol::TypedNamePattern(), field));
  new CTypingHint(field);
  field->setMaxLineEditLength(view_plugin_protocol::kLongestName);
  field->setPlaceholderText(namingRule());
  field->setToolTip(namingRule());
  field->setAccessibleName(d_->ui.name_label_->text());
  field->installEventFilter(this);
  connect(field, &QLineEdit::textChanged, this,
          [this, field](const QString& text) { field->setToolTip(text.isEmpty() ? namingRule() : text); });
}

QString CSavePlanAsDlg::namingRule() const {
  return view_plugin_protocol::NamingRule(tr("PleaseEnterCharacterUYoapXK"));
}

void CSavePlanAsDlg::setUpTimedPlay() {
  const bool timed = CViewConfigManager::Instance().IsSupportTimedPlay();
  for (QWidget* widget :
       {static_cast<QWidget*>(d_->ui.auto_run_label_), static_cast<QWidget*>(d_->ui.auto_run_duration_),
        static_cast<QWidget*>(d_->ui.auto_run_switch_), d_->ui.auto_run_widget}) {
    widget->setVisible(timed);
  }
  if (!timed) {
    setFixedHeight(kHeightPlain);
  }
  d_->ui.auto_run_switch_->setAccessibleName(d_->ui.auto_run_label_->text());
  d_->ui.auto_run_duration_->setAccessibleName(tr("Begin and end of the daily run"));
  d_->ui.over_midnight_note_->setText(tr("Over midnight:\nnever starts"));
  d_->ui.over_midnight_note_->hide();
}

void CSavePlanAsDlg::setUpPlanTree() {
  d_->model = CViewModelDataManager::Instance().GetViewManagerByTheme(d_->theme_name, OwnTheme);
  if (!d_->model) {
    return;
  }
  d_->tree = new CGroupTree(this);
  d_->tree->setObjectName(QStringLiteral("plan_tree_view_white_"));
  d_->tree->SetModel(d_->model);
  d_->proxy = d_->tree->Groups();
  d_->ui.node_combox_->SetLocationView(d_->tree);
  d_->ui.node_combox_->SetEditLabelVisible(false);
  connect(d_->proxy, &QAbstractItemModel::rowsAboutToBeRemoved, this, [this](const QModelIndex& parent) {
    const QModelIndex chosen = d_->ui.node_combox_->GetCurrentIndex();
    if (!parent.isValid() && chosen.isValid()) {
      d_->awaited = CPlanNodeRef(chosen);
    }
  });
  // Later: the rows may come in the middle of a load.
  connect(d_->proxy, &QAbstractItemModel::rowsInserted, this, &CSavePlanAsDlg::chooseAwaited, Qt::QueuedConnection);
}

void CSavePlanAsDlg::chooseAwaited() {
  if (!d_->awaited) {
    return;
  }
  const QModelIndex row = d_->awaited->Resolve();
  if (row.isValid() && row.model() == d_->proxy) {
    choose(row);
  }
}

void CSavePlanAsDlg::connectSignalAndSlot() {
  connect(d_->ui.save_button_, &QPushButton::clicked, this, &CSavePlanAsDlg::OnClickSaveAsPlan);
  connect(d_->ui.node_combox_, &MarUIControl::CLocationComboBox::SignalIndexActivated, this, [this] {
    d_->default_index_set = true;
    d_->awaited.reset();
  });
  connect(d_->ui.auto_run_switch_, &MarUIControl::CSwitchControl::toggled, this, &CSavePlanAsDlg::showDuration);
  connect(d_->ui.auto_run_duration_, &MarUIControl::CRangeTimeEdit::SignalTimeChanged, this,
          &CSavePlanAsDlg::renewOverMidnightNote);
}

void CSavePlanAsDlg::showDuration(bool on) {
  d_->ui.auto_run_duration_->setVisible(on);
  setFixedHeight(on ? kHeightTimesOn : kHeightTimesOff);
  renewOverMidnightNote();
  if (isVisible()) {
    KeepOnScreen(this, pos());
  }
}

void CSavePlanAsDlg::renewOverMidnightNote() {
  const auto* times = d_->ui.auto_run_duration_;
  auto* note = d_->ui.over_midnight_note_;
  const bool needed = d_->ui.auto_run_switch_->isToggled() && times->GetBeginTime() > times->GetEndTime();
  if (needed == !note->isHidden()) {
    return;
  }
  note->setVisible(needed);
  d_->ui.auto_run_duration_->setToolTip(needed ? note->text() : QString());
  if (needed) {
    MarUIControl::AnnounceAlert(note);
  }
}

void CSavePlanAsDlg::SetViewController(CStandardViewController* controller) {
  if (!controller) {
    return;
  }
  connect(&CViewModelDataManager::Instance(), &CViewModelDataManager::SignalFinshExpandPublicView, this,
          &CSavePlanAsDlg::OnSetDefaultIndex, Qt::UniqueConnection);
  if (d_->tree) {
    d_->tree->SetController(controller);
  }
}

void CSavePlanAsDlg::OnSetDefaultIndex() {
  if (d_->default_index_set || !d_->proxy) {
    return;
  }
  QModelIndex target = d_->proxy->index(0, 0);
  if (target.isValid() && d_->proxy->rowCount(target) > 0) {
    target = d_->proxy->index(0, 0, target);
  }
  choose(target);
  d_->default_index_set = true;
}

// The first call makes the drop-down expand down to the row; only with the row laid out does the second one reach it.
void CSavePlanAsDlg::choose(const QModelIndex& index) {
  d_->awaited.reset();
  const QPersistentModelIndex target(index);
  d_->ui.node_combox_->SetCurrentIndex(target);
  d_->ui.node_combox_->SetCurrentIndex(target);
}

void CSavePlanAsDlg::setDefaultIndex() {
  OnSetDefaultIndex();
}

void CSavePlanAsDlg::SetCurIndexByPlayItem() {
  if (!d_->model || !d_->proxy) {
    return;
  }
  if (const QStandardItem* playing = d_->model->FindItemPlanPlaying()) {
    const QModelIndex index = playing->index();
    if (index.isValid() && index.parent().isValid()) {
      d_->default_index_set = true;  // a branch that finishes expanding later must not put another group in its place
      choose(d_->proxy->mapFromSource(index.parent()));
    }
    return;
  }
  const QModelIndex root = d_->proxy->index(0, 0);
  if (!root.isValid()) {
    return;
  }
  if (CViewConfigManager::Instance().CreatePlanUnderRootNode()) {
    choose(root);
  } else if (d_->proxy->rowCount(root) > 0) {
    choose(d_->proxy->index(0, 0, root));
  }
}

void CSavePlanAsDlg::ExpandDefaultIndex() {
  if (d_->proxy && d_->proxy->hasIndex(0, 0)) {
    d_->tree->ExpandAsync(d_->proxy->index(0, 0));
  }
}

void CSavePlanAsDlg::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (event->spontaneous()) {
    return;
  }
  const auto& config = CViewConfigManager::Instance();
  d_->ui.name_line_edit_->setText(
      view_plugin_protocol::NameWithTime(config.IsShowPlanOrView() ? tr("Plan") : tr("View")));
  d_->ui.auto_run_switch_->setToggle(false);
  d_->ui.auto_run_duration_->hide();
  d_->ui.auto_run_duration_->SetBeginTime(kMidnight);
  d_->ui.auto_run_duration_->SetEndTime(kMidnight);
  if (config.IsSupportTimedPlay()) {
    setFixedHeight(kHeightTimesOff);
  }
  KeepOnScreen(this, pos());
  activateWindow();
  d_->ui.name_line_edit_->setFocus(Qt::PopupFocusReason);
  d_->ui.name_line_edit_->selectAll();
}

bool CSavePlanAsDlg::eventFilter(QObject* watched, QEvent* event) {
  if (watched == d_->ui.name_line_edit_) {
    if (event->type() == QEvent::Enter) {
      stopHint();
      d_->hint_timer = startTimer(kHintDelay, Qt::CoarseTimer);
    } else if (event->type() == QEvent::Leave || event->type() == QEvent::Hide) {
      stopHint();
    }
  }
  if (watched != this) {
    return false;
  }
  if (event->type() == QEvent::ActivationChange && QApplication::activeWindow() != this &&
      !geometry().contains(QCursor::pos())) {
    close();
  }
  return QWidget::eventFilter(watched, event);
}

void CSavePlanAsDlg::stopHint() {
  if (d_->hint_timer != 0) {
    killTimer(d_->hint_timer);
    d_->hint_timer = 0;
    QToolTip::hideText();
  }
}

void CSavePlanAsDlg::timerEvent(QTimerEvent* event) {
  const auto* field = d_->ui.name_line_edit_;
  if (event->timerId() == d_->hint_timer && field->text().isEmpty()) {
    const int y = field->mapTo(this, QPoint()).y() + field->height() - kHintRise;
    const QPoint place(mapFromGlobal(QCursor::pos()).x(), y);
    // A hint that stands already is moved only where its own rectangle no longer holds the place.
    QToolTip::showText(mapToGlobal(place), namingRule(), this, QRect(place, QSize(1, 1)));
  }
  QWidget::timerEvent(event);
}

bool CSavePlanAsDlg::event(QEvent* event) {
  return QWidget::event(event);
}

void CSavePlanAsDlg::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    OnClickSaveAsPlan();
  } else if (event->matches(QKeySequence::Cancel)) {
    close();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void CSavePlanAsDlg::OnClickSaveAsPlan() {
  if (!checkInput() || (!CViewConfigManager::Instance().CreatePlanUnderRootNode() && !checkParentNodeAllowed()) ||
      !checkAutoPlayTime()) {
    return;
  }
  // Who hears the signal may end the panel, and this dialog with it.
  const QPointer<CSavePlanAsDlg> self(this);
  if (d_->ui.node_combox_->GetCurrentIndex().isValid()) {
    Q_EMIT signalSavePlanAs();
  }
  if (self) {
    hide();
  }
}

bool CSavePlanAsDlg::checkInput() const {
  const QString problem = nameProblem();
  if (problem.isEmpty()) {
    return true;
  }
  showRefusal(problem);
  d_->ui.name_line_edit_->setFocus();
  return false;
}

// Narrower than what may be typed: apostrophe and percent come in with names set by the client and are kept.
QString CSavePlanAsDlg::nameProblem() const {
  using view_plugin_protocol::NameFault;
  switch (view_plugin_protocol::FaultOfName(d_->ui.name_line_edit_->text().trimmed())) {
    case NameFault::Empty:
      return tr("NameCanNotBeEmpty");
    case NameFault::ForbiddenCharacter:
      return tr("TheInputCannotContainAnyOfTheFollowingCharacters") + QStringLiteral(R"(/ \ : * ? " < > |)");
    case NameFault::TooLong:
      return tr("NoMoreThan%1CharactersCanBeInput").arg(view_plugin_protocol::kLongestName);
    case NameFault::ControlCharacter:  // the service names them
    case NameFault::None:
      return QString();
  }
  return QString();
}

bool CSavePlanAsDlg::checkParentNodeAllowed() {
  const QModelIndex node = d_->ui.node_combox_->GetCurrentIndex();
  if (!node.isValid()) {
    // No message: the empty box with its request to choose a group is in sight, and now has the focus.
    d_->ui.node_combox_->setFocus();
    return false;
  }
  if (!CGroupTree::MayHoldPlans(node)) {
    showRefusal(tr("XZeAMVRefJrzdBvsJW"));
    return false;
  }
  return true;
}

// A begin later than the end passes: the times may belong to a plan that is switched on later. The note says it.
bool CSavePlanAsDlg::checkAutoPlayTime() {
  const auto* times = d_->ui.auto_run_duration_;
  if (!d_->ui.auto_run_switch_->isToggled() || times->GetBeginTime() != times->GetEndTime()) {
    return true;
  }
  showRefusal(tr("TheBeginningTimeCannotEqualTheEndTime"));
  return false;
}

void CSavePlanAsDlg::showRefusal(const QString& text) const {
  tarn_ui_data_controller::CNomalMessageManager::Instance().ShowMessage(MarUIControl::GetIndependentWindow(d_->parent),
                                                                        text, MarUIControl::CNomalMessage::Failure);
}

void CSavePlanAsDlg::GetPlanParam(view_plugin_protocol::AddPlanRequest& request) {
  using MarUIControl::QStringToString;
  const QString time_form = QStringLiteral("hh:mm:ss");
  const QLocale c_locale = QLocale::c();  // the store reads no other digits
  const QModelIndex node = d_->ui.node_combox_->GetCurrentIndex();
  // The name goes out as typed: blanks around it are the user's own way to order names.
  request.plan_name = QStringToString(d_->ui.name_line_edit_->text());
  request.index_type = CViewPublicDef::GetIndexType(node);
  request.parent_index_code = QStringToString(node.data(GroupIndexCodeRole).toString());
  request.auto_play = d_->ui.auto_run_switch_->isToggled();
  request.begin_time = QStringToString(c_locale.toString(d_->ui.auto_run_duration_->GetBeginTime(), time_form));
  request.end_time = QStringToString(c_locale.toString(d_->ui.auto_run_duration_->GetEndTime(), time_form));
}

}  // namespace TarnPlanView
