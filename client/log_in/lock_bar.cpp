#include "log_in/lock_bar.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>

#include "MarUIControl/accessible_role.h"
#include "MarUIControl/primary_button.h"

namespace TarnClient {

CLockBar::CLockBar(QAction* unlock, QWidget* parent)
    : QFrame(parent), text_(new QLabel(this)), button_(new MarUIControl::CPrimaryButton(this)) {
  setObjectName(QStringLiteral("lock_bar"));
  text_->setObjectName(QStringLiteral("lock_text"));
  text_->setTextFormat(Qt::PlainText);
  text_->setWordWrap(true);
  button_->setObjectName(QStringLiteral("unlock_btn"));
  button_->setText(tr("Unlock (%1)").arg(unlock->shortcut().toString(QKeySequence::NativeText)));
  connect(button_, &QPushButton::clicked, unlock, &QAction::trigger);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(16, 8, 16, 8);
  layout->setSpacing(16);
  layout->addWidget(text_, 1);
  layout->addWidget(button_);
  hide();
}

void CLockBar::ShowText(const QString& text) {
  text_->setText(text);
  setAccessibleName(text);
  button_->setAccessibleDescription(text);
  MarUIControl::AnnounceAlert(this);
}

}  // namespace TarnClient
