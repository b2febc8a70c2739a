#include "commands/free_name.h"

#include <QRegularExpression>

#include "plan_rules/plan_limits.h"

namespace TarnClient {

QString NameOfCopy(const QString& name, const QSet<QString>& taken) {
  QSet<QString> folded;
  for (const QString& one : taken) {
    folded.insert(one.toCaseFolded());
  }
  static const QRegularExpression number(QStringLiteral(R"( \((\d{1,6})\)$)"));
  const QString base = QString(name).remove(number);
  for (int copy = 2;; ++copy) {
    const QString end = QStringLiteral(" (%1)").arg(copy);
    const QString found = base.left(view_plugin_protocol::kLongestName - end.size()) + end;
    if (!folded.contains(found.toCaseFolded())) {
      return found;
    }
  }
}

}  // namespace TarnClient
