#include "messages/messages_window.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTreeView>
#include <QVBoxLayout>

#include "MarUIControl/key_guide.h"
#include "MarUIControl/line_edit.h"
#include "MarUIControl/push_button.h"
#include "messages/message_filter.h"
#include "messages/message_log.h"

namespace TarnClient {

namespace {

constexpr QSize kSize(640, 420);
constexpr int kKinds = 4;

MarUIControl::CPushButton* NewButton(const char* name, const QString& text, QWidget* parent) {
  auto* button = new MarUIControl::CPushButton(parent);
  button->setObjectName(QString::fromLatin1(name));
  button->setText(text);
  button->setAutoDefault(false);
  return button;
}

}  // namespace

CMessagesWindow::CMessagesWindow(CMessageLog* log, QWidget* parent)
    : QDialog(parent), log_(log), filter_(new CMessageFilter(this)) {
  setObjectName(QStringLiteral("messages_window"));
  setWindowTitle(tr("Messages"));
  setAttribute(Qt::WA_DeleteOnClose);
  resize(kSize);
  filter_->setSourceModel(log_);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(16, 16, 16, 12);
  layout->setSpacing(10);
  layout->addWidget(BuildFilter());
  BuildList();
  layout->addWidget(list_, 1);
  layout->addWidget(empty_, 1);
  layout->addWidget(BuildButtons());
  connect(filter_, &QAbstractItemModel::rowsInserted, this, &CMessagesWindow::Renew);
  connect(filter_, &QAbstractItemModel::rowsRemoved, this, &CMessagesWindow::Renew);
  connect(filter_, &QAbstractItemModel::modelReset, this, &CMessagesWindow::Renew);
  connect(log_, &CMessageLog::SignalUnreadChanged, this, &CMessagesWindow::MarkReadInSight);
  // Current, so that arrows work at once, but not marked: all is copied.
  list_->selectionModel()->setCurrentIndex(filter_->index(0, 0), QItemSelectionModel::NoUpdate);
  Renew();
}

QList<MarUIControl::KeyEntry> CMessagesWindow::Keys() {
  const QString group = tr("On the page of messages");
  return {{group, QKeySequence::keyBindings(QKeySequence::Find).mid(0, 1), tr("Filter messages")},
          {group, QKeySequence::keyBindings(QKeySequence::Copy).mid(0, 1), tr("Copy what is marked, or all")}};
}

QWidget* CMessagesWindow::BuildFilter() {
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  words_ = new MarUIControl::CLineEdit(row);
  words_->setObjectName(QStringLiteral("messages_filter"));
  words_->setMinimumHeight(30);
  words_->setPlaceholderText(tr("Filter messages"));
  words_->setAccessibleName(words_->placeholderText());
  words_->setClearButtonEnabled(true);
  kind_ = new QComboBox(row);
  kind_->setObjectName(QStringLiteral("messages_kind"));
  kind_->setAccessibleName(tr("Kind of messages"));
  kind_->setToolTip(kind_->accessibleName());  // on Linux readers are given what is chosen as the name
  kind_->addItem(tr("All kinds"), CMessageFilter::kAllKinds);
  for (int kind = 0; kind < kKinds; ++kind) {
    kind_->addItem(CMessageLog::NameOf(kind), kind);
  }
  layout->addWidget(words_, 1);
  layout->addWidget(kind_);
  connect(words_, &QLineEdit::textChanged, filter_, &CMessageFilter::SetText);
  connect(kind_, QOverload<int>::of(&QComboBox::currentIndexChanged), filter_,
          [this] { filter_->SetKind(kind_->currentData().toInt()); });
  auto* find = new QAction(words_->placeholderText(), this);
  find->setShortcut(QKeySequence::Find);
  connect(find, &QAction::triggered, words_, [this] { words_->setFocus(Qt::ShortcutFocusReason); });
  addAction(find);
  return row;
}

void CMessagesWindow::BuildList() {
  list_ = new QTreeView(this);
  list_->setObjectName(QStringLiteral("messages_list"));
  list_->setAccessibleName(windowTitle());
  list_->setRootIsDecorated(false);
  list_->setAllColumnsShowFocus(true);
  list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list_->setUniformRowHeights(true);  // the whole of a long text is in its tool tip
  list_->setTextElideMode(Qt::ElideRight);
  list_->setModel(filter_);
  list_->header()->setSectionsMovable(false);
  list_->header()->setSectionResizeMode(CMessageLog::Time, QHeaderView::ResizeToContents);
  list_->header()->setSectionResizeMode(CMessageLog::Kind, QHeaderView::ResizeToContents);
  list_->header()->setSectionResizeMode(CMessageLog::Text, QHeaderView::Stretch);
  list_->header()->setResizeContentsPrecision(0);  // what is in sight is enough
  empty_ = new QLabel(this);
  empty_->setObjectName(QStringLiteral("messages_empty"));
  empty_->setAlignment(Qt::AlignCenter);
}

QWidget* CMessagesWindow::BuildButtons() {
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* copy = NewButton("messages_copy_btn", tr("Copy"), row);
  auto* clear = NewButton("messages_clear_btn", tr("Clear"), row);
  auto* close = NewButton("messages_close_btn", tr("Close"), row);
  layout->addWidget(copy);
  layout->addWidget(clear);
  layout->addStretch();
  layout->addWidget(close);
  auto* copy_keys = new QAction(tr("Copy"), list_);
  copy_keys->setShortcut(QKeySequence::Copy);
  copy_keys->setShortcutContext(Qt::WidgetShortcut);  // the filter copies its own text
  list_->addAction(copy_keys);
  copy->setToolTip(MarUIControl::TipWithKeys(tr("Copy what is marked, or all"), copy_keys->shortcuts()));
  connect(copy_keys, &QAction::triggered, this, &CMessagesWindow::Copy);
  connect(copy, &QPushButton::clicked, this, &CMessagesWindow::Copy);
  connect(clear, &QPushButton::clicked, log_, &CMessageLog::Clear);
  connect(close, &QPushButton::clicked, this, &QDialog::reject);
  return row;
}

bool CMessagesWindow::IsInSight() const {
  const QWidget* main_window = parentWidget();
  return isVisible() && !isMinimized() && !(main_window && main_window->window()->isMinimized());
}

void CMessagesWindow::MarkReadInSight() {
  if (IsInSight()) {
    log_->MarkRead();
  }
}

// Back in sight, from the task bar or with its main window.
void CMessagesWindow::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() == QEvent::WindowStateChange || event->type() == QEvent::ActivationChange) {
    MarkReadInSight();
  }
}

void CMessagesWindow::Copy() {
  QModelIndexList rows;
  const bool marked_only = list_->selectionModel()->hasSelection();
  for (int row = 0; row < filter_->rowCount(); ++row) {
    const QModelIndex one = filter_->index(row, 0);
    if (!marked_only || list_->selectionModel()->isRowSelected(row, QModelIndex())) {
      rows << filter_->mapToSource(one);
    }
  }
  QGuiApplication::clipboard()->setText(log_->TextOf(rows));
}

void CMessagesWindow::Renew() {
  const bool any = filter_->rowCount() > 0;
  list_->setVisible(any);
  empty_->setVisible(!any);
  if (log_->rowCount() == 0) {
    empty_->setText(tr("There are no messages."));
  } else {
    empty_->setText(tr("No message like this."));
  }
}

}  // namespace TarnClient
