// MarUIControl: Qt's own controls, with what the panel asks of them besides.
#include <QAccessibleWidget>
#include <QtEndian>
#include <QtWidgets>

#include "MarUIControl/accessible_role.h"
#include "MarUIControl/collation_key.h"
#include "MarUIControl/frame.h"
#include "MarUIControl/key_guide.h"
#include "MarUIControl/label.h"
#include "MarUIControl/modal_tip_dialog.h"
#include "MarUIControl/moment_text.h"
#include "MarUIControl/multilevel_combo_box.h"
#include "MarUIControl/offer_strip.h"
#include "MarUIControl/placehold_line_edit.h"
#include "MarUIControl/primary_button.h"
#include "MarUIControl/range_time_edit.h"
#include "MarUIControl/shadow_widget.h"
#include "MarUIControl/spin_box.h"
#include "MarUIControl/standard_item.h"
#include "MarUIControl/standard_item_model.h"
#include "MarUIControl/string_conversion.h"
#include "MarUIControl/switch_control.h"
#include "MarUIControl/tree_view.h"
#include "WidgetKit/new_location_view_widget.h"

namespace MarUIControl {

// --- Texts ---

QString StringToQString(const std::string& text) { return QString::fromStdString(text); }
std::string QStringToString(const QString& text) { return text.toStdString(); }
QWidget* GetIndependentWindow(QWidget* widget) { return widget ? widget->window() : nullptr; }
QString MomentText(const QDateTime& moment, const QDateTime& now) {
  return QLocale().toString(moment, moment.date() == now.date() ? "HH:mm" : "yyyy-MM-dd HH:mm");
}
QString TextOfKeys(const QList<QKeySequence>& keys) {
  return QKeySequence::listToString(keys, QKeySequence::NativeText).replace("; ", ", ");
}
QString TipWithKeys(const QString& text, const QList<QKeySequence>& keys, const QString& why_not) {
  const QString tip = keys.isEmpty() ? text : QStringLiteral("%1 (%2)").arg(text, TextOfKeys(keys));
  return "<span>" + (tip + '\n' + why_not).trimmed().toHtmlEscaped().replace('\n', "<br>") + "</span>";
}

void SetAccessibleRole(QWidget* widget, QAccessible::Role role) {
  static const bool installed = [] {
    QAccessible::installFactory([](const QString&, QObject* object) -> QAccessibleInterface* {
      const QVariant wanted = object->property("accessible_role");
      return wanted.isValid() && object->isWidgetType()
                 ? new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Role(wanted.toInt()))
                 : nullptr;
    });
    return true;
  }();
  widget->setProperty("accessible_role", installed ? int(role) : 0);
}
void AnnounceAlert(QWidget* widget) {
  QAccessibleEvent event(widget, QAccessible::Alert);
  QAccessible::updateAccessibility(&event);
}

CollationKey CollationKey::FromBytes(const QByteArray& bytes) {
  const QByteArray head = bytes.leftJustified(16, '\0', true);
  return {{qFromBigEndian<quint64>(head.constData()), qFromBigEndian<quint64>(head.constData() + 8)},
          bytes.size() > 16 ? bytes : QByteArray()};
}
// Numbers by value: before the digits stands how many there are.
CollationKey MakeCollationKey(const QString& text) {
  static const QRegularExpression runs("0*(\\d+)|\\D");
  QString key;
  for (auto run = runs.globalMatch(text.toCaseFolded()); run.hasNext();) {
    const QRegularExpressionMatch next = run.next();
    key += next.captured(1).isEmpty() ? next.captured()
                                      : '0' + QString(QChar(ushort(next.capturedLength(1)))) + next.captured(1);
  }
  return CollationKey::FromBytes(key.toUtf8());
}
CollationKey RecentCollationKey(const QString& text) { return MakeCollationKey(text); }

// --- Models and trees ---

CModelKeyMapping::~CModelKeyMapping() = default;
CStandardItem::CStandardItem() = default;
CStandardItem::CStandardItem(const QString& text) : QStandardItem(text) {}
CStandardItem::~CStandardItem() = default;
QStandardItem* CStandardItem::clone() const { return new CStandardItem(*this); }
int CStandardItem::type() const { return UserType; }
// Down every row gets the check; up each takes what those below it say together.
void CStandardItem::setData(const QVariant& value, int role) {
  const bool changed = role == Qt::CheckStateRole && data(role) != value;
  QStandardItem::setData(value, role);
  for (int row = 0; changed && value != Qt::PartiallyChecked && row < rowCount(); ++row) {
    child(row)->setData(value, role);
  }
  if (changed && parent()) {
    bool same = true;
    for (int row = 0; row < parent()->rowCount(); ++row) {
      same = same && parent()->child(row)->data(role) == value;
    }
    parent()->QStandardItem::setData(same ? value : QVariant(Qt::PartiallyChecked), role);
  }
}

CStandardItemModel::CStandardItemModel(QObject* parent) : QStandardItemModel(parent) {}
CStandardItemModel::~CStandardItemModel() = default;
bool CStandardItemModel::hasChildren(const QModelIndex& parent) const {
  return QStandardItemModel::hasChildren(parent) || canFetchMore(parent);
}
bool CStandardItemModel::canFetchMore(const QModelIndex& parent) const {
  return parent.data(GroupMarkRole).toBool() && !AreChildrenFetched(parent);
}
void CStandardItemModel::fetchMore(const QModelIndex&) {}
void CStandardItemModel::SetChildrenFetched(const QModelIndex& index, bool fetched) {
  setData(index, fetched, ChildrenFetchedRole);
}
bool CStandardItemModel::AreChildrenFetched(const QModelIndex& index) const {
  return index.data(ChildrenFetchedRole).toBool();
}
bool CStandardItemModel::CustomStringCompare(const QString& left, const QString& right, int mode) {
  if (mode < 2) {
    return mode == 0 ? left < right : left.toCaseFolded() < right.toCaseFolded();
  }
  const int order = MakeCollationKey(left).Compare(MakeCollationKey(right));
  return order < 0 || (order == 0 && left < right);
}

CAbstractItemView::CAbstractItemView(QWidget* parent) : QTreeView(parent) { setEditTriggers(NoEditTriggers); }
CAbstractItemView::~CAbstractItemView() = default;
void CAbstractItemView::setColumnResizeToContents(int column, bool resize) {
  if (column < header()->count()) {
    header()->setSectionResizeMode(column, resize ? QHeaderView::ResizeToContents : QHeaderView::Stretch);
  }
}

class CTreeView::Private {
 public:
  bool Asks(const CTreeView& view, const QModelIndex& row) const {
    return row.isValid() && !view.isExpanded(row) && !fetched.contains(row) && view.model()->canFetchMore(row);
  }
  bool IsExpander(const CTreeView& view, const QMouseEvent& event) const {
    const QModelIndex row = view.indexAt(event.pos());
    return event.button() == Qt::LeftButton && event.pos().x() < view.visualRect(row).left() && Asks(view, row);
  }
  QSet<QPersistentModelIndex> waiting, fetched;
};

CTreeView::CTreeView(QWidget* parent) : CAbstractItemView(parent), d_(new Private) { setUniformRowHeights(true); }
CTreeView::~CTreeView() = default;
void CTreeView::setModel(QAbstractItemModel* rows) {
  *d_ = Private();
  CAbstractItemView::setModel(rows);
  if (rows) {
    connect(rows, &QAbstractItemModel::modelReset, this, [this] { *d_ = Private(); });
  }
}
void CTreeView::ExpandAsync(const QModelIndex& index) {
  const QModelIndex row = index.siblingAtColumn(0);
  if (!row.isValid() || row.model() != model() || d_->waiting.contains(row)) {
    return;
  }
  if (!d_->Asks(*this, row)) {
    return expand(row);
  }
  d_->waiting.insert(row);
  viewport()->update();
  Q_EMIT AsynchronousExpand(row);
}
void CTreeView::FinishExpand(const QModelIndex& index, bool opens, bool fetched) {
  d_->waiting.remove(index);
  if (fetched) {
    d_->fetched.insert(index);
  }
  scheduleDelayedItemsLayout();  // an expander may have come or gone
  if (opens && model()->rowCount(index) > 0) {
    expand(index);
  }
}
void CTreeView::ForgetWaiting() { d_->waiting.clear(); }
bool CTreeView::IsWaiting(const QModelIndex& index) const { return d_->waiting.contains(index); }
void CTreeView::mousePressEvent(QMouseEvent* event) {
  if (d_->IsExpander(*this, *event)) {
    return ExpandAsync(indexAt(event->pos()));
  }
  CAbstractItemView::mousePressEvent(event);
}
void CTreeView::mouseReleaseEvent(QMouseEvent* event) {
  if (!d_->IsExpander(*this, *event)) {
    CAbstractItemView::mouseReleaseEvent(event);
  }
}
void CTreeView::mouseDoubleClickEvent(QMouseEvent* event) {
  const QPersistentModelIndex row = indexAt(event->pos());
  const bool asks = expandsOnDoubleClick() && d_->Asks(*this, row);
  const bool expands = expandsOnDoubleClick();
  setExpandsOnDoubleClick(expands && !asks);
  CAbstractItemView::mouseDoubleClickEvent(event);
  setExpandsOnDoubleClick(expands);
  if (asks && row.isValid()) {
    ExpandAsync(row);
  }
}
void CTreeView::keyPressEvent(QKeyEvent* event) {
  const QModelIndex row = currentIndex();
  const QSet<int> keys{Qt::Key_Right, Qt::Key_Plus, Qt::Key_Asterisk, Qt::Key_Return, Qt::Key_Enter};
  const bool is_return = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (keys.contains(event->key()) && d_->Asks(*this, row)) {
    ExpandAsync(row);
  } else if (is_return && row.isValid() && model()->hasChildren(row)) {
    setExpanded(row, !isExpanded(row));
  } else {
    CAbstractItemView::keyPressEvent(event);
  }
}
void CTreeView::drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const {
  if (!d_->waiting.contains(index)) {
    return CAbstractItemView::drawBranches(painter, rect, index);
  }
  painter->drawText(rect, Qt::AlignRight | Qt::AlignVCenter, QStringLiteral("\u2026"));
}
void CTreeView::dataChanged(const QModelIndex& first, const QModelIndex& last, const QVector<int>& roles) {
  CAbstractItemView::dataChanged(first, last, roles);
  if (roles.contains(CStandardItemModel::ChildrenFetchedRole)) {
    scheduleDelayedItemsLayout();
  }
}
void CTreeView::timerEvent(QTimerEvent* event) { CAbstractItemView::timerEvent(event); }

// --- Plain controls ---

CFrame::CFrame(QWidget* parent) : QFrame(parent) {}
CFrame::~CFrame() = default;
CPushButton::CPushButton(QWidget* parent) : QPushButton(parent) { setAutoDefault(true); }
CPushButton::CPushButton(const QString& text, QWidget* parent) : QPushButton(text, parent) { setAutoDefault(true); }
CPushButton::~CPushButton() = default;
CPrimaryButton::CPrimaryButton(QWidget* parent) : CPushButton(parent) { setDefault(true); }
CPrimaryButton::CPrimaryButton(const QString& text, QWidget* parent) : CPushButton(text, parent) { setDefault(true); }
CPrimaryButton::~CPrimaryButton() = default;

CLabel::CLabel(QWidget* parent) : QLabel(parent) { setTextFormat(Qt::PlainText); }
CLabel::CLabel(const QString& text, QWidget* parent) : CLabel(parent) { setText(text); }
CLabel::~CLabel() = default;
void CLabel::SetText(const QString& text) { setText(text); }
QSize CLabel::minimumSizeHint() const {
  return wordWrap() ? QLabel::minimumSizeHint() : QSize(24, sizeHint().height());
}
bool CLabel::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip && IsElided()) {
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text().toHtmlEscaped(), this);
    return true;
  }
  return QLabel::event(event);
}
bool CLabel::IsElided() const { return !wordWrap() && fontMetrics().horizontalAdvance(text()) > width(); }
void CLabel::paintEvent(QPaintEvent* event) {
  if (!IsElided()) {
    return QLabel::paintEvent(event);
  }
  const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, width());
  QPainter(this).drawText(rect(), int(alignment()), shown);
}

CLineEdit::CLineEdit(QWidget* parent) : QLineEdit(parent) {}
CLineEdit::~CLineEdit() = default;
void CLineEdit::setMaxLineEditLength(int length) { setMaxLength(length); }
void CLineEdit::setToolTip(const QString& text) { QLineEdit::setToolTip(text.toHtmlEscaped()); }
bool CLineEdit::event(QEvent* event) { return QLineEdit::event(event); }
void CLineEdit::keyPressEvent(QKeyEvent* event) { QLineEdit::keyPressEvent(event); }
void CLineEdit::contextMenuEvent(QContextMenuEvent* event) { QLineEdit::contextMenuEvent(event); }
void CLineEdit::mouseReleaseEvent(QMouseEvent* event) { QLineEdit::mouseReleaseEvent(event); }
void CLineEdit::dropEvent(QDropEvent* event) { QLineEdit::dropEvent(event); }
CPlaceholdLineEdit::CPlaceholdLineEdit(QWidget* parent) : CLineEdit(parent) {}
CPlaceholdLineEdit::~CPlaceholdLineEdit() = default;
void CPlaceholdLineEdit::setPlaceholderText(const QString& text) { CLineEdit::setPlaceholderText(text); }
bool CPlaceholdLineEdit::event(QEvent* event) { return CLineEdit::event(event); }
CSpinBox::CSpinBox(QWidget* parent) : QSpinBox(parent) {}
CSpinBox::~CSpinBox() = default;
bool CSpinBox::event(QEvent* event) { return QSpinBox::event(event); }
void CSpinBox::wheelEvent(QWheelEvent* event) { event->ignore(); }

CSwitchControl::CSwitchControl(QWidget* parent) : QAbstractButton(parent) { setCheckable(true); }
CSwitchControl::~CSwitchControl() = default;
bool CSwitchControl::isToggled() const { return isChecked(); }
void CSwitchControl::setToggle(bool on) { setChecked(on); }
QSize CSwitchControl::sizeHint() const { return {24, 24}; }
void CSwitchControl::paintEvent(QPaintEvent*) {
  QStyleOptionButton option;
  option.initFrom(this);
  option.state |= isChecked() ? QStyle::State_On : QStyle::State_Off;
  QStylePainter(this).drawPrimitive(QStyle::PE_IndicatorCheckBox, option);
}
void CSwitchControl::keyPressEvent(QKeyEvent* event) { QAbstractButton::keyPressEvent(event); }

CRangeTimeLineEdit::CRangeTimeLineEdit(QWidget* parent)
    : QWidget(parent), begin_(new QTimeEdit(this)), end_(new QTimeEdit(this)) {
  auto* row = new QHBoxLayout(this);
  for (QTimeEdit* edit : {begin_, end_}) {
    edit->setDisplayFormat("HH:mm:ss");
    row->addWidget(edit);
    connect(edit, &QTimeEdit::timeChanged, this, [this] { Q_EMIT SignalTimeChanged(GetBeginTime(), GetEndTime()); });
  }
}
CRangeTimeLineEdit::~CRangeTimeLineEdit() = default;
void CRangeTimeLineEdit::SetBeginTime(const QTime& time) { begin_->setTime(time.isValid() ? time : QTime(0, 0)); }
void CRangeTimeLineEdit::SetEndTime(const QTime& time) { end_->setTime(time.isValid() ? time : QTime(0, 0)); }
QTime CRangeTimeLineEdit::GetBeginTime() const { return begin_->time(); }
QTime CRangeTimeLineEdit::GetEndTime() const { return end_->time(); }
CRangeTimeEdit::CRangeTimeEdit(QWidget* parent) : CRangeTimeLineEdit(parent) {}
CRangeTimeEdit::~CRangeTimeEdit() = default;

// This host casts no shadows: pop-ups have the desktop's.
CShadowWidget::CShadowWidget(QWidget* parent, Qt::WindowFlags flags) : QWidget(parent, flags) {}
CShadowWidget::~CShadowWidget() = default;
void CShadowWidget::SetContentWidget(QWidget*, int) {}
void CShadowWidget::SetShadowMode(int) {}
void CShadowWidget::SetAutoShow(bool) {}
bool CShadowWidget::eventFilter(QObject*, QEvent*) { return false; }
void CShadowWidget::paintEvent(QPaintEvent*) {}

// --- Boxes and drop-downs ---

class CLocationComboBox::Private {
 public:
  explicit Private(QWidget* box) : popup(new QFrame(box, Qt::Popup)), search(new WidgetKit::CNewLocationViewWidget) {
    (new QVBoxLayout(popup))->addWidget(search);
  }
  QFrame* popup;
  WidgetKit::CNewLocationViewWidget* search;
  QPointer<QAbstractItemView> view;
  QString text, placeholder;
};

CLocationComboBox::CLocationComboBox(QWidget* parent) : QWidget(parent), d_(new Private(this)) {
  setFocusPolicy(Qt::StrongFocus);
}
CLocationComboBox::~CLocationComboBox() = default;
void CLocationComboBox::SetLocationView(QAbstractItemView* view) {
  if (d_->view) {
    d_->view->disconnect(this);
    d_->view->setParent(nullptr);
  }
  d_->view = view;
  d_->search->SetView(view);
  if (view) {
    d_->popup->layout()->addWidget(view);
    const auto choose = [this](const QModelIndex& index) {
      if (IsPopupVisible() && index.flags().testFlag(Qt::ItemIsSelectable)) {
        HidePopup();
        Choose(index);
      }
    };
    connect(view, &QAbstractItemView::clicked, this, choose);
    connect(view, &QAbstractItemView::activated, this, choose);
  }
}
QAbstractItemView* CLocationComboBox::LocationView() const { return d_->view; }
QAbstractItemModel* CLocationComboBox::LocationModel() const { return d_->view ? d_->view->model() : nullptr; }
void CLocationComboBox::SetEditLabelVisible(bool visible) { d_->search->setVisible(visible); }
WidgetKit::CNewLocationViewWidget* CLocationComboBox::SearchLine() const { return d_->search; }
void CLocationComboBox::ShowPopup() {
  if (isEnabled() && isVisible() && d_->view) {
    PrepareView();
    d_->popup->setGeometry(QRect(mapToGlobal(rect().bottomLeft()), QSize(width(), 320)));
    d_->popup->show();
    d_->view->setFocus();
  }
}
void CLocationComboBox::HidePopup() { d_->popup->hide(); }
bool CLocationComboBox::IsPopupVisible() const { return d_->popup->isVisible(); }
QString CLocationComboBox::CurrentText() const { return d_->text; }
void CLocationComboBox::SetPlaceholderText(const QString& text) { d_->placeholder = text; }
void CLocationComboBox::SetCurrentText(const QString& text) {
  d_->text = text;
  update();
}
void CLocationComboBox::Choose(const QModelIndex& index) {
  SetCurrentText(index.data().toString());
  Q_EMIT SignalIndexActivated(index);
}
void CLocationComboBox::PrepareView() {}
QSize CLocationComboBox::sizeHint() const { return {200, 32}; }
QSize CLocationComboBox::minimumSizeHint() const { return {80, 32}; }
void CLocationComboBox::paintEvent(QPaintEvent*) {
  QStyleOptionComboBox option;
  option.initFrom(this);
  option.currentText = d_->text.isEmpty() ? d_->placeholder : d_->text;
  QStylePainter painter(this);
  painter.drawComplexControl(QStyle::CC_ComboBox, option);
  painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}
void CLocationComboBox::mousePressEvent(QMouseEvent*) { ShowPopup(); }
void CLocationComboBox::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Space || event->key() == Qt::Key_F4 || event->key() == Qt::Key_Down) {
    return ShowPopup();
  }
  QWidget::keyPressEvent(event);
}
void CLocationComboBox::wheelEvent(QWheelEvent* event) { event->ignore(); }
void CLocationComboBox::focusInEvent(QFocusEvent*) { update(); }
void CLocationComboBox::focusOutEvent(QFocusEvent*) { update(); }
void CLocationComboBox::changeEvent(QEvent* event) { QWidget::changeEvent(event); }
void CLocationComboBox::hideEvent(QHideEvent*) { HidePopup(); }

CMultilevelComboBox::CMultilevelComboBox(QWidget* parent) : CLocationComboBox(parent) {}
CMultilevelComboBox::~CMultilevelComboBox() = default;
void CMultilevelComboBox::SetCurrentIndex(const QModelIndex& index) {
  const QModelIndex row = index.model() == LocationModel() ? index : QModelIndex();
  const bool changed = row != current_;
  current_ = row;
  chosen_ = row.isValid();
  disconnect(on_removed_);
  if (chosen_) {
    on_removed_ = connect(LocationModel(), &QAbstractItemModel::rowsRemoved, this, [this] { RenewText(); });
  }
  RenewText();
  if (changed) {
    Q_EMIT SignalCurrentIndexChanged(row);
  }
}
QModelIndex CMultilevelComboBox::GetCurrentIndex() const { return current_; }
void CMultilevelComboBox::Choose(const QModelIndex& index) {
  SetCurrentIndex(index);
  Q_EMIT SignalIndexActivated(index);
}
void CMultilevelComboBox::PrepareView() { LocationView()->setCurrentIndex(current_); }
void CMultilevelComboBox::RenewText() {
  SetCurrentText(current_.data().toString());
  if (chosen_ && !current_.isValid()) {
    chosen_ = false;
    Q_EMIT SignalCurrentIndexChanged({});
  }
}

class CModalTipDialog::Private {
 public:
  QLabel* content = new QLabel;
  CPushButton *confirm = new CPrimaryButton(tr("OK")), *other = new CPushButton,
              *cancel = new CPushButton(tr("Cancel"));
};

CModalTipDialog::CModalTipDialog(QWidget* parent) : QDialog(parent), d_(new Private) {
  auto* grid = new QGridLayout(this);
  d_->content->setTextFormat(Qt::PlainText);
  grid->addWidget(d_->content, 0, 0, 1, 3);
  int column = 0;
  for (auto [button, result] : {std::make_pair(d_->confirm, Confirmed), {d_->other, Other}, {d_->cancel, Cancelled}}) {
    grid->addWidget(button, 1, column++);
    connect(button, &QPushButton::clicked, this, [this, result = result] { done(result); });
  }
  d_->other->hide();
}
CModalTipDialog::~CModalTipDialog() = default;
void CModalTipDialog::SetDialogSize(int size) { setMinimumWidth(320 + 100 * size); }
void CModalTipDialog::SetDialogModel(int model) {
  (model == QuestionModel ? d_->cancel : d_->confirm)->setDefault(true);
}
void CModalTipDialog::SetTitle(const QString& title) { setWindowTitle(title); }
void CModalTipDialog::SetContent(const QString& content) { d_->content->setText(content); }
void CModalTipDialog::SetConfirmText(const QString& text) { d_->confirm->setText(text); }
void CModalTipDialog::SetCancelText(const QString& text) { d_->cancel->setText(text); }
void CModalTipDialog::SetOtherText(const QString& text) {
  d_->other->setText(text);
  d_->other->setVisible(!text.isEmpty());
}
void CModalTipDialog::SetConfirmVisible(bool visible) { d_->confirm->setVisible(visible); }
void CModalTipDialog::SetCancelVisible(bool visible) { d_->cancel->setVisible(visible); }
int CModalTipDialog::exec() { return QDialog::exec(); }
void CModalTipDialog::showEvent(QShowEvent* event) { QDialog::showEvent(event); }

class COfferStrip::Private {
 public:
  QLabel* text = new QLabel;
  CPushButton* action = new CPushButton;
  std::function<void()> callback;
  QBasicTimer time;
};

COfferStrip::COfferStrip(QWidget* parent) : QFrame(parent), d_(new Private) {
  auto* row = new QHBoxLayout(this);
  row->addWidget(d_->text, 1);
  row->addWidget(d_->action);
  connect(d_->action, &QPushButton::clicked, this, &COfferStrip::Take);
  hide();
}
COfferStrip::~COfferStrip() = default;
void COfferStrip::Offer(const QString& text, const QString& action, int seconds, std::function<void()> callback) {
  Withdraw();
  d_->text->setText(text);
  d_->action->setText(action);
  d_->callback = std::move(callback);
  d_->time.start(seconds * 1000, this);
  show();
}
void COfferStrip::Withdraw() {
  if (IsOffering()) {
    d_->time.stop();
    hide();
    Q_EMIT SignalOver();
  }
}
void COfferStrip::Take() {
  if (IsOffering()) {
    d_->time.stop();
    hide();
    Q_EMIT SignalTaken();
    std::exchange(d_->callback, nullptr)();
  }
}
bool COfferStrip::IsOffering() const { return d_->time.isActive(); }
void COfferStrip::timerEvent(QTimerEvent*) { Withdraw(); }
void COfferStrip::keyPressEvent(QKeyEvent* event) { QFrame::keyPressEvent(event); }
void COfferStrip::paintEvent(QPaintEvent* event) { QFrame::paintEvent(event); }

}  // namespace MarUIControl
