#include "window/store_state.h"

#include <TarnPlanView/plan_clock.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>

#include "MarUIControl/accessible_role.h"
#include "MarUIControl/moment_text.h"
#include "TarnHost/plan_store.h"
#include "wall/plain_text_tip.h"

namespace TarnClient {

using TarnHost::StoreTrouble;
using TarnPlanView::CPlanClock;

namespace {

QString ShownStore(const QString& url) {
  const QString file = QStringLiteral("sqlite:");
  if (url.startsWith(file)) {
    return url.mid(file.size());
  }
  return TarnHost::CPlanStore::ShownAddress(url);
}

// With a place for the time.
QString TextOf(StoreTrouble trouble) {
  switch (trouble) {
    case StoreTrouble::kConnectionLost:
      return CStoreState::tr("No connection to the plan store since %1. Trying again...");
    case StoreTrouble::kNotAnswering:
      return CStoreState::tr("The plan store has not answered since %1. Trying again...");
    case StoreTrouble::kLocked:
      return CStoreState::tr("The plan store has been locked by another program since %1. Trying again...");
    case StoreTrouble::kReadOnly:
      return CStoreState::tr("The plan store has been read-only since %1. Changes cannot be saved.");
    case StoreTrouble::kNoRoom:
      return CStoreState::tr("The disk of the plan store has been full since %1. Changes cannot be saved.");
    case StoreTrouble::kOther:
      return CStoreState::tr("The plan store has not been readable since %1. Trying again...");
    case StoreTrouble::kNoAnswerYet:
      return CStoreState::tr("Plans as of %1; the plan store does not answer. Trying again...");
    case StoreTrouble::kPasswordRefused:
      return CStoreState::tr("Plans as of %1; the plan store does not take your password any more.");
    case StoreTrouble::kOtherSite:
      return CStoreState::tr("Plans as of %1; where the plan store was there is that of another site.");
    case StoreTrouble::kNone:
      break;
  }
  return QString();
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

bool CStoreState::IsOneOutage(StoreTrouble before, StoreTrouble now) {
  const auto is_away = [](StoreTrouble trouble) {
    return trouble == StoreTrouble::kConnectionLost || trouble == StoreTrouble::kNotAnswering;
  };
  return before == now || (is_away(before) && is_away(now));
}

void CStoreState::ShowTrouble(StoreTrouble trouble, const QDateTime& since, const QString& line) {
  trouble_ = TextOf(trouble);
  if (HasTrouble()) {
    trouble_ = trouble_.arg(MarUIControl::MomentText(since, CPlanClock::Now()));
  }
  ShowText(HasTrouble() ? trouble_ : name_, line, HasTrouble());
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
    MarUIControl::AnnounceAlert(this);
  }
}

}  // namespace TarnClient
