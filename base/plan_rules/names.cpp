#include "plan_rules/names.h"

#include <QDateTime>
#include <QLatin1String>
#include <QLocale>
#include <algorithm>

#include "plan_rules/plan_limits.h"

namespace view_plugin_protocol {

namespace {

bool IsForbidden(QChar c) {
  return QLatin1String(kForbiddenInNames).contains(c);
}

bool IsControl(QChar c) {
  return c.category() == QChar::Other_Control;
}

}  // namespace

NameFault FaultOfName(const QString& name) {
  if (name.trimmed().isEmpty()) {
    return NameFault::Empty;
  }
  if (std::any_of(name.begin(), name.end(), IsForbidden)) {
    return NameFault::ForbiddenCharacter;
  }
  if (name.size() > kLongestName) {
    return NameFault::TooLong;
  }
  return std::any_of(name.begin(), name.end(), IsControl) ? NameFault::ControlCharacter : NameFault::None;
}

QString TypedNamePattern() {
  QString listed = QLatin1String(kNotTypedInNames);
  listed.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
  return QStringLiteral("^[^%1]{1,%2}$").arg(listed, QString::number(kLongestName));
}

QString NamingRule(const QString& text) {
  return text.arg(QStringLiteral("1"), 0, QLatin1Char(' '))
      .arg(QString::number(kLongestName), 0, QLatin1Char(' '))
      .arg(QString::fromLatin1(kNotTypedInNames), 0, QLatin1Char(' '));
}

// In the digits that everybody reads.
QString NameWithTime(const QString& kind) {
  return kind + QLocale::c().toString(QDateTime::currentDateTime(), QStringLiteral("yyyyMMddhhmmss"));
}

}  // namespace view_plugin_protocol
