#pragma once

#include <QString>
#include <QTextDocument>

namespace TarnClient {

/// `text` as a tool tip: one that a tool tip would take for markup has to become markup itself.
inline QString PlainTextTip(const QString& text) {
  return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

}  // namespace TarnClient
