#include "window/store_state.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>

#include "TarnHost/plan_store.h"
#include "wall/plain_text_tip.h"

namespace TarnClient {

using TarnHost::StoreTrouble;

namespace {

QString ShownStore(const QString& url) {
  const QString file = QStringLiteral("sqlite:");
  if (url.startsWith(file)) {
    return url.mid(file.size());
  }
  return TarnHost::CPlanStore::ShownAddress(url);
}

}  // namespace

CStoreState::CStoreState(const QString& store_url, QWidget* parent)
    : QFrame(parent),
      name_(tr("Store: %1").arg(ShownStore(store_url))),
      mark_(new QLabel(QStringLiteral("!"), this)),
      text_(new QLabel(this)) {
  setObjectName(QStringLiteral("store_state"));
  mark_->setObjectName(QStringLiteral("store_state_mark"));
  mark_->setAlignment(Qt::AlignCenter);
  text_->setObjectName(QStringLiteral("store_state_text"));
  text_->setTextFormat(Qt::PlainText);
  text_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(mark_);
  layout->addWidget(text_, 1);
  ShowText(name_, QString(), false);
}

QString CStoreState::TextOf(StoreTrouble trouble) {
  switch (trouble) {
    case StoreTrouble::kConnectionLost:
      return tr("No connection to the plan store. Trying again...");
    case StoreTrouble::kLocked:
      return tr("The plan store is locked by another program. Trying again...");
    case StoreTrouble::kReadOnly:
      return tr("The plan store can only be read. Changes cannot be saved.");
    case StoreTrouble::kOther:
      return tr("The plan store cannot be read. Trying again...");
    case StoreTrouble::kNone:
      break;
  }
  return QString();
}

void CStoreState::ShowTrouble(StoreTrouble trouble, const QString& line) {
  if (trouble == StoreTrouble::kNone) {
    ShowText(name_, line, false);
  } else {
    ShowText(TextOf(trouble), line, true);
  }
}

void CStoreState::ShowText(const QString& text, const QString& more, bool is_trouble) {
  const bool news = is_trouble && text_->text() != text;
  text_->setText(text);
  mark_->setVisible(is_trouble);
  setToolTip(PlainTextTip(more.isEmpty() ? text : more));
  setAccessibleName(text);
  setAccessibleDescription(more);
  setProperty("trouble", is_trouble);
  for (QWidget* part : {static_cast<QWidget*>(this), static_cast<QWidget*>(mark_), static_cast<QWidget*>(text_)}) {
    style()->unpolish(part);
    style()->polish(part);
  }
  if (news) {
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
  }
}

}  // namespace TarnClient
