#include "WidgetKit/hit_counter.h"

#include <QLineEdit>
#include <QStyle>
#include <QToolButton>

#include "WidgetKit/new_location_view_widget.h"

namespace WidgetKit {

HitCounter::HitCounter(QLineEdit* field) : QLabel(field), field_(field) {
  setObjectName(QStringLiteral("locate_counter"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  hide();
}

void HitCounter::ShowNothing() {
  Show(QString(), QString(), true);
}

void HitCounter::ShowSearching() {
  Show(QStringLiteral("\u2026"), CNewLocationViewWidget::tr("Searching"), true);
}

void HitCounter::ShowAwaiting() {
  const QString searching = CNewLocationViewWidget::tr("Searching");
  Show(searching + QStringLiteral("\u2026"), searching, true);
}

void HitCounter::ShowHits(int at, int count) {
  if (count == 0) {
    Show(CNewLocationViewWidget::tr("No hit"), CNewLocationViewWidget::tr("No hit"), true);
  } else {
    Show(QStringLiteral("%1/%2").arg(at).arg(count), CNewLocationViewWidget::tr("Hit %1 of %2").arg(at).arg(count),
         false);
  }
}

void HitCounter::Show(const QString& text, const QString& spoken, bool no_hit) {
  setProperty("no_hit", no_hit);
  style()->unpolish(this);
  style()->polish(this);
  setText(text);
  field_->setAccessibleDescription(spoken);
  Place();
}

// Between the text and the cross that clears, which the field's own layout puts at the right.
void HitCounter::Place() {
  int right = field_->width() - 4;
  const auto buttons = field_->findChildren<QToolButton*>(QString(), Qt::FindDirectChildrenOnly);
  for (const QToolButton* button : buttons) {
    if (button->x() > field_->width() / 2) {
      right = qMin(right, button->x() - 2);
    }
  }
  const int width = sizeHint().width();
  const bool fits = !text().isEmpty() && width < field_->width() / 2;
  setGeometry(right - width, 0, width, field_->height());
  setVisible(fits);
  field_->setTextMargins(0, 0, fits ? width + 4 : 0, 0);
}

}  // namespace WidgetKit
