#include "MarUIControl/key_guide.h"

#include <QStringList>

#include "MarUIControl/plain_tool_tip.h"

namespace MarUIControl {

QString TextOfKeys(const QList<QKeySequence>& keys) {
  QStringList texts;
  for (const QKeySequence& one : keys) {
    if (!one.isEmpty()) {
      texts << one.toString(QKeySequence::NativeText);
    }
  }
  return texts.join(QStringLiteral(", "));
}

QString TipWithKeys(const QString& text, const QList<QKeySequence>& keys, const QString& why_not) {
  QString tip = text;
  const QString key_text = TextOfKeys(keys);
  if (!key_text.isEmpty()) {
    tip = QStringLiteral("%1 (%2)").arg(text, key_text);
  }
  if (!why_not.isEmpty()) {
    tip += QLatin1Char('\n') + why_not;
  }
  return PlainToolTip(tip);
}

}  // namespace MarUIControl
