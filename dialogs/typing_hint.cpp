#include "typing_hint.h"

#include <QLineEdit>
#include <QToolTip>
#include <utility>

#include "plan_rules/names.h"

namespace TarnPlanView {

namespace {

constexpr int kShownMs = 4000;
constexpr int kRise = 12;  // a tip stands so far below the point that it is shown for

}  // namespace

CTypingHint::CTypingHint(QLineEdit* field) : QObject(field), field_(field) {
  connect(field, &QLineEdit::textEdited, this, &CTypingHint::Hide);
  // Of a paste that is cut the field tells first, and then that its text was edited.
  connect(field, &QLineEdit::inputRejected, this, &CTypingHint::Show, Qt::QueuedConnection);
}

QString CTypingHint::Text() const {
  if (field_->text().size() >= field_->maxLength()) {
    return tr("Not more than %1 characters.").arg(field_->maxLength());
  }
  return tr("None of these can be typed here: %1").arg(QLatin1String(view_plugin_protocol::kNotTypedInNames));
}

// The description is read out where the tip is not seen.
void CTypingHint::Show() {
  const QString text = Text().toHtmlEscaped();
  const QPoint below = field_->mapToGlobal(QPoint(0, field_->height() - kRise));
  QToolTip::showText(below, QStringLiteral("<p style=\"white-space: pre\">%1</p>").arg(text), field_, QRect(),
                     kShownMs);
  if (!described_) {
    described_ = field_->accessibleDescription();
  }
  field_->setAccessibleDescription(Text());
}

void CTypingHint::Hide() {
  if (const auto described = std::exchange(described_, std::nullopt)) {
    QToolTip::hideText();
    field_->setAccessibleDescription(*described);
  }
}

}  // namespace TarnPlanView
