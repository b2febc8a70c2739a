#include "MarUIControl/plain_tool_tip.h"

#include <QTextDocument>

namespace MarUIControl {

// Tool tips guess whether they hold markup; a text that could be taken for it has to become markup itself.
QString PlainToolTip(const QString& text) {
  return Qt::mightBeRichText(text)
             ? QStringLiteral("<p>%1</p>").arg(text.toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>")))
             : text;
}

}  // namespace MarUIControl
