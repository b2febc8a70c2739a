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
  if (!options.store_url.isEmpty()) {
    return options.store_url;
  }
  return QStringLiteral("sqlite:") + DataFile("plans.sqlite");
}

}  // namespace TarnClient
