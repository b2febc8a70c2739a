#include "conflict_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "MarUIControl/accessible_role.h"
#include "MarUIControl/push_button.h"

namespace TarnPlanView {

using MarUIControl::CPushButton;

CConflictBar::CConflictBar(QWidget* parent) : QFrame(parent), text_(new QLabel(this)) {
  setObjectName(QStringLiteral("conflict_bar"));
  text_->setObjectName(QStringLiteral("conflict_text"));
  text_->setTextFormat(Qt::PlainText);
  text_->setWordWrap(true);
  theirs_ = MakeButton("load_theirs_btn", QString(), &CConflictBar::SignalLoadTheirs);
  keep_ = MakeButton("keep_mine_btn", tr("Keep mine"), &CConflictBar::SignalKeepMine);
  overwrite_ = MakeButton("overwrite_btn", tr("Overwrite"), &CConflictBar::SignalOverwrite);
  as_new_ = MakeButton("save_as_new_btn", tr("Save as a new plan"), &CConflictBar::SignalSaveAsNew);
  back_ = MakeButton("back_to_mine_btn", tr("Back to mine"), &CConflictBar::SignalBackToMine);
  retry_ = MakeButton("retry_btn", tr("Try again"), &CConflictBar::SignalRetry);
  theirs_->setToolTip(tr("Show the plan as it is now; Undo brings your changes back"));
  keep_->setToolTip(tr("Go on with yours; saving goes over theirs"));
  overwrite_->setToolTip(tr("Save your version over theirs"));
  back_->setToolTip(tr("Show your version again; saving goes over theirs"));
  SetNewRefused(QString());
  auto* row = new QHBoxLayout;
  row->setSpacing(8);
  row->addStretch();
  for (CPushButton* button : {theirs_, keep_, overwrite_, as_new_, back_, retry_}) {
    row->addWidget(button);
  }
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(10, 8, 10, 8);
  column->setSpacing(6);
  column->addWidget(text_);
  column->addLayout(row);
  hide();
}

CPushButton* CConflictBar::MakeButton(const char* name, const QString& text, void (CConflictBar::*clicked)()) {
  auto* button = new CPushButton(text, this);
  button->setObjectName(QString::fromLatin1(name));
  connect(button, &QPushButton::clicked, this, clicked);
  return button;
}

void CConflictBar::ShowRefused(const QString& text, bool with_back) {
  Say(WithRefusal(text), {theirs_, overwrite_, as_new_}, with_back);
}

void CConflictBar::ShowChanged(const QString& text) {
  Say(WithRefusal(text), {theirs_, keep_, as_new_});
}

void CConflictBar::ShowTheirs(const QString& text) {
  Say(text, {back_});
}

void CConflictBar::ShowNewer(const QString& text) {
  Say(text, {theirs_, back_});
  theirs_->setText(tr("Show the newest"));
}

void CConflictBar::ShowDeleted(const QString& text, bool with_back) {
  Say(WithRefusal(text), {as_new_}, with_back);
}

void CConflictBar::SetNewRefused(const QString& reason) {
  new_refused_ = reason;
  as_new_->setEnabled(reason.isEmpty());
  as_new_->setToolTip(reason.isEmpty() ? tr("Keep both") : reason);
}

// In words as well: who goes by keys does not come to the tool tip of a disabled button.
QString CConflictBar::WithRefusal(const QString& text) const {
  if (new_refused_.isEmpty()) {
    return text;
  }
  return text + '\n' + new_refused_;
}

void CConflictBar::ShowNotLoaded(const QString& text) {
  Say(text, {retry_});
}

bool CConflictBar::OffersWayBack() const {
  return !isHidden() && !back_->isHidden();
}

void CConflictBar::FocusRetry() {
  retry_->setFocus(Qt::OtherFocusReason);
}

void CConflictBar::FocusBack() {
  back_->setFocus(Qt::OtherFocusReason);
}

void CConflictBar::Say(const QString& text, QVector<CPushButton*> ways, bool with_back) {
  if (with_back) {
    ways.append(back_);
  }
  const bool is_news = isHidden() || text_->text() != text;
  text_->setText(text);
  setAccessibleName(text);
  theirs_->setText(tr("Show theirs"));
  for (CPushButton* button : {theirs_, keep_, overwrite_, as_new_, back_, retry_}) {
    button->setVisible(ways.contains(button));
  }
  show();
  if (is_news) {
    MarUIControl::AnnounceAlert(this);
  }
}

}  // namespace TarnPlanView
