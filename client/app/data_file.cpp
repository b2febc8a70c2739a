#include "app/data_file.h"

#include <QDir>
#include <QStandardPaths>

namespace TarnClient {

QString DataFile(const char* name) {
  const QDir folder(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
  folder.mkpath(QStringLiteral("."));
  return folder.filePath(QString::fromLatin1(name));
}

QString StoreUrlOf(const ClientOptions& options) {
  return options.store_url.isEmpty() ? QStringLiteral("sqlite:") + DataFile("plans.sqlite") : options.store_url;
}

}  // namespace TarnClient
