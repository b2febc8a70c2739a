#pragma once

#include <QtGlobal>
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
#include <QRegularExpressionValidator>
#else
#include <QRegExpValidator>
#endif

namespace TarnQt {

/// Lets only be typed what `pattern` may match as a whole in the end. The parent, which may be null, owns it.
inline QValidator* MakePatternValidator(const QString& pattern, QObject* parent) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
  return new QRegularExpressionValidator(QRegularExpression(pattern), parent);
#else
  return new QRegExpValidator(QRegExp(pattern), parent);
#endif
}

}  // namespace TarnQt
