#include "help/help_window.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QTreeView>
#include <QVBoxLayout>

#include "MarUIControl/line_edit.h"
#include "help/key_filter.h"
#include "help/key_list.h"

namespace TarnClient {

namespace {

constexpr QSize kSize(620, 560);

// Keys of the list that the field has no use for.
bool IsForList(const QKeyEvent& press) {
  switch (press.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      return !(press.modifiers() & ~Qt::KeypadModifier);
    default:
      return false;
  }
}

}  // namespace

CHelpWindow::CHelpWindow(const QList<MarUIControl::KeyEntry>& keys, QWidget* parent)
    : QDialog(parent), filter_(new CKeyFilter(this)) {
  setObjectName(QStringLiteral("help_window"));
  setWindowTitle(tr("Keys"));
  setAttribute(Qt::WA_DeleteOnClose);
  resize(kSize);
  words_ = new MarUIControl::CLineEdit(this);
  words_->setObjectName(QStringLiteral("help_filter"));
  words_->setMinimumHeight(30);
  words_->setPlaceholderText(tr("Find a key or what it does"));
  words_->setAccessibleName(words_->placeholderText());
  words_->setClearButtonEnabled(true);
  words_->installEventFilter(this);
  filter_->setSourceModel(new CKeyList(keys, this));
  list_ = new QTreeView(this);
  list_->setObjectName(QStringLiteral("help_list"));
  list_->setAccessibleName(windowTitle());
  list_->setModel(filter_);
  list_->setHeaderHidden(true);
  list_->setItemsExpandable(false);
  list_->setRootIsDecorated(false);
  list_->setAllColumnsShowFocus(true);
  list_->setIndentation(14);
  list_->header()->setStretchLastSection(false);
  list_->header()->setSectionResizeMode(CKeyList::What, QHeaderView::Stretch);
  list_->header()->setSectionResizeMode(CKeyList::Keys, QHeaderView::ResizeToContents);
  empty_ = new QLabel(tr("No key like this."), this);
  empty_->setObjectName(QStringLiteral("help_empty"));
  empty_->setAlignment(Qt::AlignCenter);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(16, 16, 16, 16);
  layout->setSpacing(10);
  layout->addWidget(words_);
  layout->addWidget(list_, 1);
  layout->addWidget(empty_, 1);
  connect(words_, &QLineEdit::textChanged, this, &CHelpWindow::Filter);
  connect(words_, &QLineEdit::returnPressed, list_, [this] { list_->setFocus(Qt::OtherFocusReason); });
  Filter(QString());
}

bool CHelpWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == words_ && event->type() == QEvent::KeyPress && IsForList(*static_cast<QKeyEvent*>(event))) {
    QCoreApplication::sendEvent(list_, event);
    return true;
  }
  return QDialog::eventFilter(watched, event);
}

void CHelpWindow::Filter(const QString& words) {
  filter_->SetText(words);
  list_->expandAll();
  list_->setCurrentIndex(filter_->index(0, 0, filter_->index(0, 0)));
  list_->scrollToTop();
  const bool any = filter_->rowCount() > 0;
  list_->setVisible(any);
  empty_->setVisible(!any);
}

}  // namespace TarnClient
