#include "share_keys.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QTreeView>
#include <utility>

#include "WidgetKit/new_location_view_widget.h"

namespace TarnPlanView {

using WidgetKit::CNewLocationViewWidget;

CShareKeys::CShareKeys(CNewLocationViewWidget* field, QTreeView* users, QAbstractButton* share)
    : QObject(field), field_(field), users_(users), share_(share) {
  field->installEventFilter(this);
  connect(field, &CNewLocationViewWidget::SignalLocated, this, &CShareKeys::OnLocated);
  connect(field, &QLineEdit::textChanged, this, [this] { checks_found_ = false; });
  connect(field, &WidgetKit::CNewSearchLine::SignalToHits, users, [users] { users->setFocus(Qt::TabFocusReason); });
}

QList<MarUIControl::KeyEntry> CShareKeys::Keys() {
  const auto text = [](const char* source) { return QCoreApplication::translate("TarnPlanView::CShareKeys", source); };
  const QString group = text(QT_TRANSLATE_NOOP("TarnPlanView::CShareKeys", "Sharing"));
  return {
      {group,
       {Qt::Key_Return},
       text(QT_TRANSLATE_NOOP("TarnPlanView::CShareKeys", "Check the user that was found; in the empty field: share"))},
      {group,
       {Qt::Key_Space},
       text(QT_TRANSLATE_NOOP("TarnPlanView::CShareKeys", "In the empty field: check the current user"))},
  };
}

// A name does not begin with a space, so in the empty field that is none.
bool CShareKeys::eventFilter(QObject* watched, QEvent* event) {
  if (watched != field_ || event->type() != QEvent::KeyPress) {
    return false;
  }
  const auto* press = static_cast<QKeyEvent*>(event);
  if ((press->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) {
    return false;
  }
  if (press->key() == Qt::Key_Return || press->key() == Qt::Key_Enter) {
    OnReturn();
    return true;
  }
  if (press->key() == Qt::Key_Space && field_->text().isEmpty()) {
    ToggleCurrent();
    return true;
  }
  return false;
}

void CShareKeys::OnReturn() {
  if (field_->text().isEmpty()) {
    share_->click();
  } else if (field_->IsLocating()) {
    checks_found_ = true;
    field_->Locate();
  } else if (field_->HitCount() > 0) {
    ToggleCurrent();
    field_->selectAll();  // the next name takes its place
  }
}

void CShareKeys::OnLocated() {
  if (std::exchange(checks_found_, false)) {
    OnReturn();
  }
}

void CShareKeys::ToggleCurrent() {
  const QModelIndex user = users_->currentIndex();
  if (!user.isValid()) {
    return;
  }
  int state = Qt::Checked;
  if (user.data(Qt::CheckStateRole).toInt() == Qt::Checked) {
    state = Qt::Unchecked;
  }
  users_->model()->setData(user, state, Qt::CheckStateRole);
}

}  // namespace TarnPlanView
