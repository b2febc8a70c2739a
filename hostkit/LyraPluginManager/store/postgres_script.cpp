#include "store/postgres_script.h"

#include <QFile>

namespace TarnHost::Store {

QString PostgresScript(const char* file, const QMap<QString, QString>& names) {
  QFile script(QStringLiteral(":/TarnHost/store/") + QLatin1String(file));
  if (!script.open(QIODevice::ReadOnly)) {
    throw CStoreError(CStoreError::kFailed, script.errorString());
  }
  QString statements = QString::fromUtf8(script.readAll());
  for (auto name = names.begin(); name != names.end(); ++name) {
    statements.replace('@' + name.key() + '@', name.value());
  }
  return statements;
}

QString QuotedName(const QString& name) {
  QString quoted = name;
  quoted.replace('"', QLatin1String("\"\""));
  return '"' + quoted + '"';
}

QString CurrentSchema(CSqlEngine& engine) {
  return QuotedName(engine.Value("SELECT current_schema()").toString());
}

}  // namespace TarnHost::Store
