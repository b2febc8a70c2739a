#include "commands/free_name.h"

#include <QRegularExpression>

#include "plan_rules/plan_limits.h"

namespace TarnClient {

namespace {

// At most as many characters as that; never half of one that takes two.
QString CutTo(const QString& text, int length) {
  if (length < text.size() && length > 0 && text.at(length - 1).isHighSurrogate()) {
    --length;
  }
  return text.left(length);
}

}  // namespace

QString NameOfCopy(const QString& name, const QSet<QString>& taken) {
  QSet<QString> folded;
  for (const QString& one : taken) {
    folded.insert(one.toCaseFolded());
  }
  static const QRegularExpression number(QStringLiteral(R"( \((\d{1,6})\)$)"));
  const QString base = QString(name).remove(number);
  for (int copy = 2;; ++copy) {
    const QString end = QStringLiteral(" (%1)").arg(copy);
    const QString found = CutTo(base, view_plugin_protocol::kLongestName - end.size()) + end;
    if (!folded.contains(found.toCaseFolded())) {
      return found;
    }
  }
}

}  // namespace TarnClient
