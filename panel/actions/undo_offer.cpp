#include "undo_offer.h"

#include <QAction>
#include <QApplication>
#include <QPointer>

#include "MarUIControl/offer_strip.h"
#include "tarn_add_plan_widget.h"
#include "view_extern_widget.h"

namespace TarnPlanView {

using MarUIControl::COfferStrip;

namespace {

/// The offer that was made last, in whatever panel.
QPointer<COfferStrip>& Latest() {
  static QPointer<COfferStrip> latest;
  return latest;
}

// The plan editor undoes edits. Text fields take the key before it becomes a shortcut.
bool IsInEditor(const QWidget* widget) {
  while (widget && !qobject_cast<const CTarnAddPlanWidget*>(widget)) {
    widget = widget->parentWidget();
  }
  return widget;
}

}  // namespace

CUndoOffer::CUndoOffer(COfferStrip* strip, QWidget* panel)
    : QObject(panel), strip_(strip), action_(new QAction(CViewExternWidget::tr("Undo"), panel)) {
  action_->setObjectName(QStringLiteral("undo_action"));
  action_->setShortcut(QKeySequence::Undo);
  action_->setShortcutContext(Qt::WindowShortcut);
  panel->addAction(action_);
  connect(action_, &QAction::triggered, strip_, &COfferStrip::Take);
  connect(strip_, &COfferStrip::SignalTaken, this, &CUndoOffer::RenewAction);
  connect(strip_, &COfferStrip::SignalOver, this, &CUndoOffer::RenewAction);
  connect(qApp, &QApplication::focusChanged, this, &CUndoOffer::RenewAction);
  RenewAction();
}

void CUndoOffer::Offer(const QString& text, int seconds, const std::function<void()>& undo) {
  if (Latest() && Latest() != strip_) {
    Latest()->Withdraw();
  }
  Latest() = strip_;
  strip_->Offer(text, CViewExternWidget::tr("Undo"), seconds, undo);
  RenewAction();
}

void CUndoOffer::Withdraw() {
  strip_->Withdraw();
}

void CUndoOffer::RenewAction() {
  action_->setEnabled(strip_->IsOffering() && !IsInEditor(QApplication::focusWidget()));
}

}  // namespace TarnPlanView
