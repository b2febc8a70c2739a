#include "wall/wall_hint.h"

#include <QLabel>
#include <QVBoxLayout>

#include "MarUIControl/accessible_role.h"
#include "MarUIControl/push_button.h"

namespace TarnClient {

CWallHint::CWallHint(QWidget* parent)
    : QWidget(parent),
      note_(new QLabel(this)),
      text_(new QLabel(this)),
      reason_(new QLabel(this)),
      again_(new MarUIControl::CPushButton(tr("Try again"), this)) {
  note_->setObjectName(QStringLiteral("wall_note"));
  text_->setObjectName(QStringLiteral("live_wall_hint"));
  reason_->setObjectName(QStringLiteral("wall_failure_reason"));
  again_->setObjectName(QStringLiteral("wall_try_again"));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(24, 24, 24, 24);
  layout->setSpacing(12);
  layout->addStretch();
  for (QLabel* label : {note_, text_, reason_}) {
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    layout->addWidget(label);
  }
  layout->addWidget(again_, 0, Qt::AlignHCenter);
  layout->addStretch();
  connect(again_, &QPushButton::clicked, this, &CWallHint::SignalTryAgain);
  ShowNote(QString());
  ShowFailure(QString(), QString(), false);
}

void CWallHint::ShowNote(const QString& text) {
  note_->setText(text);
  note_->setVisible(!text.isEmpty());
}

void CWallHint::ShowFailure(const QString& text, const QString& reason, bool may_try_again) {
  const bool is_news = !text.isEmpty() && text != failure_;
  failure_ = text;
  text_->setText(text);
  if (text.isEmpty()) {
    text_->setText(tr("Double-click a plan, or press Return on it, or drag it here, to play it"));
  }
  reason_->setText(reason);
  reason_->setVisible(!reason.isEmpty());
  again_->setAccessibleDescription(text);
  if (again_->hasFocus() && !may_try_again) {
    setFocus();  // and not to the button's neighbour in some other part of the window
  }
  again_->setVisible(may_try_again);
  setAccessibleName((text_->text() + QLatin1Char(' ') + reason).trimmed());
  if (is_news) {
    MarUIControl::AnnounceAlert(this);
  }
}

}  // namespace TarnClient
