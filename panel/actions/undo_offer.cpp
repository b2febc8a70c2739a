#include "undo_offer.h"

#include <QAction>
#include <QApplication>
#include <QPointer>

#include "MarUIControl/offer_strip.h"
#include "editor_place.h"
#include "view_extern_widget.h"

namespace TarnPlanView {

using MarUIControl::COfferStrip;

namespace {

/// The offer that was made last, in whatever panel.
QPointer<COfferStrip>& Latest() {
  static QPointer<COfferStrip> latest;
  return latest;
}

}  // namespace

CUndoOffer::CUndoOffer(COfferStrip* strip, QWidget* panel)
    : QObject(panel), panel_(panel), strip_(strip), action_(new QAction(CViewExternWidget::tr("Undo"), panel)) {
  action_->setObjectName(QStringLiteral("undo_action"));
  action_->setShortcut(QKeySequence::Undo);
  action_->setShortcutContext(Qt::WindowShortcut);
  panel->addAction(action_);
  connect(action_, &QAction::triggered, this, &CUndoOffer::Undo);
  connect(qApp, &QApplication::focusChanged, this, &CUndoOffer::RenewAction);
  RenewAction();
}

void CUndoOffer::Offer(const Undoable& done) {
  if (Latest() && Latest() != strip_) {
    Latest()->Withdraw();
  }
  Latest() = strip_;
  strip_->Offer(done.notice, CViewExternWidget::tr("Undo"), done.seconds, done.undo);
}

void CUndoOffer::OfferAgain(const Undoable& done) {
  if (!Latest() || !Latest()->IsOffering()) {
    Offer(done);
  }
}

void CUndoOffer::Withdraw() {
  strip_->Withdraw();
}

void CUndoOffer::Undo() {
  if (strip_->IsOffering()) {
    strip_->Take();
  } else {
    Q_EMIT SignalNothing();
  }
}

// Text fields take the key before it becomes a shortcut.
void CUndoOffer::RenewAction() {
  action_->setEnabled(!CEditorPlace::IsOpenIn(panel_->window()));
}

}  // namespace TarnPlanView
